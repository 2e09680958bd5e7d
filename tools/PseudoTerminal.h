// A pseudo-terminal under a link name of one's choice: the far end of a serial port. Writing never blocks; a line goes
// out whole or not at all, and one that nobody listens to is lost, as on a wire.
#pragma once

#include <string>
#include <string_view>

namespace simulator {

class PseudoTerminal {
public:
    // Raises std::system_error. A link that stands there already is replaced; any other file is an error.
    explicit PseudoTerminal(std::string sLink);
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    const std::string& Device() const { return m_sDevice; }
    int Handle() const { return m_iMaster; }
    // Whether somebody has the port open. To be asked now and then: it also forgets what the last listener left.
    bool Listened();
    // Adds CR LF. False when the line was dropped.
    bool WriteLine(std::string_view sLine);
    // What has come in; empty when nothing has.
    std::string Read();

private:
    bool WriteRest();

    std::string m_sLink;
    std::string m_sDevice;
    std::string m_sRest;  // of the line that the port has taken in part
    int m_iMaster = -1;
    bool m_bListened = false;
};

}  // namespace simulator
