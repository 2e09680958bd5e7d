// A name that processes of one machine can hold, to find out that another one holds it too. The system lets go of it
// when the process ends, however that happens, and nothing lies about on any disk.
#pragma once

#include <string_view>

namespace runtime {

class NameHold {
public:
    NameHold() = default;
    ~NameHold() { Release(); }
    NameHold(const NameHold&) = delete;
    NameHold& operator=(const NameHold&) = delete;

    // Holds the name, beside others if need be. True when another holder has it, in this process or elsewhere; false
    // too where the system knows no such names.
    bool Take(std::string_view sName);
    void Release();

private:
    int m_iSocket = -1;
};

}  // namespace runtime
