// See BoardCommands.h.
#include "tools/BoardCommands.h"

#include "nmea/NmeaChecksum.h"

namespace simulator {

namespace {

constexpr std::size_t LongestCommand = 200;  // a line that grows beyond is noise
constexpr int LowestInterval = 1;
constexpr int HighestInterval = 7;

BoardCommand Channel(std::string_view sArgument) {
    BoardCommand t;
    t.sSaid = "channel " + std::string(sArgument);
    if (sArgument == "A" || sArgument == "B" || sArgument == "S") {
        t.eKind = BoardCommand::Kind::Channel;
        t.sChannel = sArgument.front();
    } else {
        t.sSaid += " unknown";
    }
    return t;
}

BoardCommand Interval(std::string_view sArgument) {
    BoardCommand t;
    if (sArgument.size() != 1) {
        t.sSaid = "interval of " + std::to_string(sArgument.size()) + " characters";
        return t;
    }
    t.iInterval = static_cast<unsigned char>(sArgument.front());
    t.sSaid = "interval " + std::to_string(t.iInterval);
    if (t.iInterval >= LowestInterval && t.iInterval <= HighestInterval)
        t.eKind = BoardCommand::Kind::Interval;
    else
        t.sSaid += " out of range";
    return t;
}

BoardCommand Understand(std::string_view sLine) {
    BoardCommand t;
    if (sLine.size() < 3 || !nmea::ChecksumMatches(sLine)) {
        t.eKind = BoardCommand::Kind::WrongChecksum;
        t.sSaid = "wrong checksum";
        return t;
    }
    const std::string_view sBody = sLine.substr(0, sLine.size() - 3);
    const std::string_view sAddress = sBody.substr(0, 7);
    if (sAddress == "$PNMLC,") return Channel(sBody.substr(7));
    if (sAddress == "$PNMLT,") return Interval(sBody.substr(7));
    t.sSaid = "unknown command";
    return t;
}

}  // namespace

std::vector<BoardCommand> BoardCommands::Take(std::string_view sBytes) {
    std::vector<BoardCommand> tCommands;
    m_sBuffer += sBytes;
    for (std::size_t iEnd = m_sBuffer.find("\r\n"); iEnd != std::string::npos; iEnd = m_sBuffer.find("\r\n")) {
        if (iEnd > 0) tCommands.push_back(Understand(std::string_view(m_sBuffer).substr(0, iEnd)));
        m_sBuffer.erase(0, iEnd + 2);
    }
    if (m_sBuffer.size() > LongestCommand) m_sBuffer.clear();
    return tCommands;
}

}  // namespace simulator
