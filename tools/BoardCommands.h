// The commands that the receiver board understands: "$PNMLC,A" chooses the channel (A, B, or S for both), "$PNMLT," and
// one character the report interval, the character's code being the number. Both end in "*", the checksum and CR LF.
// Because that character may itself be a CR, an LF or a "*", a command ends at the pair CR LF alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulator {

struct BoardCommand {
    enum class Kind { Channel, Interval, WrongChecksum, Unknown };
    Kind eKind = Kind::Unknown;
    char sChannel = 'S';
    int iInterval = 0;
    std::string sSaid;  // what the board understood, for a person: "channel A", "interval 3"
};

class BoardCommands {
public:
    // Takes received bytes and gives the commands that they complete, in order. Channel and Interval are to be obeyed,
    // the others are not.
    std::vector<BoardCommand> Take(std::string_view sBytes);
    // Forgets an unfinished command.
    void Clear() { m_sBuffer.clear(); }

private:
    std::string m_sBuffer;
};

}  // namespace simulator
