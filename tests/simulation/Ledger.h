// What the devices said: lines, what is wrong with them, and which complete a message.
// Knows nothing of the program; what the program shows and records is held against this.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace simulation {

enum class Verdict { TooShort, WrongChecksum, Unknown, Decoded };

struct Line {
    std::string sText;
    Verdict eVerdict;
};

class Ledger {
public:
    // Both ports begin anew, and the counts.
    void Begin();
    // Bytes that the program has read from a port: the lines that they complete.
    std::vector<Line> Take(int iPort, std::string_view sBytes);
    // The device has gone and is back: how many characters of a line wait for an end that never comes.
    std::size_t DropHalfLine(int iPort);

    std::int64_t Messages() const { return m_lMessages; }    // complete, since Begin
    std::int64_t Sentences() const { return m_lSentences; }  // lines that pass all tests, ever

private:
    std::array<std::string, 2> m_sPartial;
    std::int64_t m_lMessages = 0;
    std::int64_t m_lSentences = 0;
};

}  // namespace simulation
