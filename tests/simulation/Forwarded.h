// What is to be forwarded, and what comes out of the output port: every line whole and in order. While the port is
// behind the oldest may be dropped; how many is counted.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace simulation {

class Forwarded {
public:
    void Begin() { *this = {}; }  // the port is opened
    void Expect(std::string_view sLine) { m_sWaiting.append(sLine).append("\r\n"); }
    // The port writes. It is called by the program: what is wrong is told by Check.
    void Came(std::string_view sText);
    // Raises Failure: something came that was not next.
    void Check() const;
    bool AllCame() const { return m_iFirst == m_sWaiting.size(); }
    std::int64_t Missing() const { return m_lMissing; }

private:
    std::string m_sWaiting;    // lines, one after the other
    std::size_t m_iFirst = 0;  // those before have come
    std::int64_t m_lMissing = 0;
    std::string m_sWrong;
};

}  // namespace simulation
