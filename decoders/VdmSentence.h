// The fields of an !AIVDM sentence, and how such a sentence is read.
//
// An AIS receiver hands on each radio message that it hears in one or more lines of text ("VDM" is VHF data-link
// message, "AI" the talker: an AIS station). One line looks like this:
//
//     !AIVDM,1,1,,B,13P=BS@3iqo?vspK?N28iFvt0000,0*08
//     1      2 3 4 5 6                            7 8
//
//     1  address: start character, talker, sentence formatter
//     2  number of sentences that the message is spread over, 1 here
//     3  number of this sentence among them, from 1
//     4  sequential message id 0 to 9, the same in all sentences of one message; empty when there is only one
//     5  radio channel, A or B
//     6  payload: the message's bits, six to a character
//     7  number of fill bits that the sender added to complete the last character
//     8  checksum, the XOR of everything between "!" and "*" (nmea/NmeaChecksum)
//
// A payload character stands for the number 0 to 63: "0" to "W" for 0 to 39, "`" to "w" for 40 to 63 (VdmMessage). Here
// "1" is 1, "3" is 3 and "P" is 32. Put behind each other with six bits each, 000001 000011 100000 ..., the numbers are
// the message as it was sent. What its bits mean stands in VdmBits.
//
// A line holds at most 82 characters, so a message of more than 60 or so payload characters needs more than one. The
// ship's static and voyage data (type 5, 71 characters) comes as
//
//     !AIVDM,2,1,3,B,<the first 59 or so>,0*hh
//     !AIVDM,2,2,3,B,<the rest>,2*hh
//
// and is complete when a sentence's number equals the number of sentences. Kept on purpose: the sentences are joined in
// the order in which they come on a port, without a look at sequential id, channel or gaps. A receiver sends the
// sentences of a message without a break, and a damaged one fails its checksum.
#pragma once

#include <cstdint>
#include <string_view>

namespace decoders {

struct VdmSentence {
    std::int32_t lSentences = 0;  // number of sentences of the message
    std::int32_t lSentence = 0;   // number of this one, from 1
    std::string_view sChannel;    // as received, any length
    std::string_view sPayload;

    bool CompletesMessage() const { return lSentence == lSentences; }
};

// Splits sSentence; the views point into it. Returns an empty text when it went well, else the text of the first field
// that failed: "Error - Sentences, ", "Error - Sentence, ", "Error - SequenceId, ", "Error - Channel, " or "Error, "
// (payload). Numbers must be numeric; only the sequence id may be empty. What follows the payload is not examined.
std::string_view VdmSplit(std::string_view sSentence, VdmSentence& tFields);

}  // namespace decoders
