// Cuts an !AIVDM sentence at its commas and checks the fields in their order.
#include "decoders/VdmSentence.h"

#include "nmea/FieldReader.h"
#include "platform/runtime/Convert.h"

namespace decoders {

namespace {

bool ReadAnyNumber(std::string_view sField, std::int32_t& lNumber) {
    try {
        lNumber = runtime::ToInteger(sField);
        return true;
    } catch (const runtime::ConversionError&) {
        return false;
    }
}

inline bool ReadNumber(std::string_view sField, std::int32_t& lNumber) {
    const bool bDigit = sField.size() == 1 && sField[0] >= '0' && sField[0] <= '9';  // nearly always
    if (!bDigit) return ReadAnyNumber(sField, lNumber);
    lNumber = sField[0] - '0';
    return true;
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
    if (!tReader.NextLong(tFields.sPayload) || tFields.sPayload.empty()) return "Error, ";
    return {};
}

}  // namespace decoders
