// A user without special rights, for what an administrator's test cannot be forbidden.
#pragma once

#include <unistd.h>

#include <QtGlobal>

namespace support {

// While it lives an administrator's process is nobody's; another's stays what it is.
class OtherUser {
public:
    OtherUser() {
        if (m_bRoot && (::setresgid(Nobody, Nobody, 0) != 0 || ::setresuid(Nobody, Nobody, 0) != 0))
            qFatal("setresuid");
    }
    ~OtherUser() {
        if (m_bRoot && (::setresuid(0, 0, 0) != 0 || ::setresgid(0, 0, 0) != 0)) qFatal("setresuid");
    }
    OtherUser(const OtherUser&) = delete;
    OtherUser& operator=(const OtherUser&) = delete;

private:
    static constexpr uid_t Nobody = 65534;
    bool m_bRoot = ::geteuid() == 0;
};

}  // namespace support
