// Cuts an !AIVDM sentence at its commas and checks the fields in their order.
#include "decoders/VdmSentence.h"

#include <cstddef>

#include "nmea/FieldReader.h"
#include "platform/runtime/Convert.h"

namespace decoders {

namespace {

constexpr std::size_t PlainDigits = 9;  // as many decimal digits always fit 32 bits

// Nearly every number here is one digit. Whatever is not made of digits alone ("1.0", " 2", "x") is left to ToInteger.
bool ReadNumber(std::string_view sField, std::int32_t& lNumber) {
    std::int32_t lValue = 0;
    bool bPlain = !sField.empty() && sField.size() <= PlainDigits;
    for (std::size_t i = 0; bPlain && i < sField.size(); ++i) {
        bPlain = sField[i] >= '0' && sField[i] <= '9';
        lValue = lValue * 10 + (sField[i] - '0');
    }
    if (bPlain) {
        lNumber = lValue;
        return true;
    }
    try {
        lNumber = runtime::ToInteger(sField);
        return true;
    } catch (const runtime::ConversionError&) {
        return false;
    }
}

}  // namespace

std::string_view VdmSplit(std::string_view sSentence, VdmSentence& tFields) {
    nmea::FieldReader tReader(sSentence);
    std::string_view sField;
    if (!tReader.NextFilled(sField) || !ReadNumber(sField, tFields.lSentences)) return "Error - Sentences, ";
    if (!tReader.NextFilled(sField) || !ReadNumber(sField, tFields.lSentence)) return "Error - Sentence, ";
    std::int32_t lSequenceId = 0;  // read for its form only: the sentences of a message are joined without it
    if (!tReader.Next(sField)) return "Error - SequenceId, ";
    if (!sField.empty() && !ReadNumber(sField, lSequenceId)) return "Error - SequenceId, ";
    if (!tReader.NextFilled(tFields.sChannel)) return "Error - Channel, ";
    if (!tReader.NextFilled(tFields.sPayload)) return "Error, ";
    return {};
}

}  // namespace decoders
