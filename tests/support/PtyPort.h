// A real pseudo-terminal for tests: the program under test opens its device like a serial port, the test is the far
// end. The far end can hang up and come back under the same link, as a plug that is pulled and put in again.
#pragma once

#include <termios.h>

#include <QString>
#include <QTemporaryDir>
#include <string>
#include <string_view>

namespace support {

class PtyPort {
public:
    PtyPort();
    ~PtyPort();
    PtyPort(const PtyPort&) = delete;
    PtyPort& operator=(const PtyPort&) = delete;

    QString Device() const { return m_sDevice; }  // "/dev/pts/3", another one after Recreate
    QString Link() const;                         // a link to the device whose path stays the same

    // Sends all of it to the device, as fast as it is taken. False when it is not taken within a second.
    bool Write(std::string_view sData);
    // Sends what is taken at once; returns how many characters that was.
    std::size_t WriteSome(std::string_view sData);
    // Everything that has been sent by the device's user and waits here now.
    std::string Read();
    // Reads until iSize characters have come, with the event loop running, for five seconds at most.
    std::string ReadAtLeast(std::size_t iSize);

    // While held, not a character leaves the device's user; without it the system takes thousands on its own.
    void Hold(bool bHold);

    // The device vanishes, and its link. Nobody else gets its number before it is back or this object is gone.
    void HangUp();
    void Recreate();  // it is back under the same link, always as another device
    bool Exists() const { return m_iMaster >= 0; }

    // What the device's user has set (the kernel keeps the rate, but not parity and data bits).
    termios Settings() const;

private:
    QTemporaryDir m_tFolder;
    QString m_sDevice;
    int m_iMaster = -1;
    // Kept open, so that a program may close and open the device without the far end noticing; after a hang-up too:
    // the system gives a number to the next who asks as soon as both ends are closed, and other tests run meanwhile.
    int m_iSlave = -1;
};

}  // namespace support
