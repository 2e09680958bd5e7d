// The real window in a test's world, with the members opened that show nowhere.
#pragma once

#include <QEventLoop>
#include <string>
#include <string_view>
#include <vector>

#include "app/frmMain.h"
#include "tests/support/World.h"

namespace support {

class TestWindow : public app::frmMain {
public:
    // Not loaded yet: Load() does that, with the profile that lies in the world's folder.
    explicit TestWindow(World& tWorld) : frmMain(tWorld.MakePlatform()), m_tWorld(tWorld) {}

    void Load() { Form_Load(); }
    // Loaded, shown and laid out.
    void LoadAndShow();

    // Everything that the user would see by the next beat is shown now.
    void Synchronize();

    // As a click on a toolbar button; nothing when it is disabled.
    void Press(const char* sKey);
    // Starts with both input ports on memory devices 1 and 2.
    void StartBoth();
    // Bytes arrive on an input port.
    void Feed(app::PortIndex i, std::string_view sData);
    // One line as it would arrive, CR LF added.
    void FeedLine(app::PortIndex i, std::string_view sLine) { Feed(i, std::string(sLine).append("\r\n")); }
    // Each second: clock + 1, then the ticks of the clocks that run, message clock first.
    void Advance(int iSeconds);
    // Sentence without checksum to one with it, sBody begins with "$" or "!".
    static std::string WithChecksum(std::string_view sBody) { return std::string(sBody) + "*" + NmeaChecksum(sBody); }

    QWidget& Page(int iTab);
    // What the lists show, once synchronised.
    std::vector<std::string> Lines(toolkit::LogList& lst);
    std::vector<bool> Marks(toolkit::LogList& lst);
    std::string LastLine(toolkit::LogList& lst);
    std::string Panel(int iPanel);
    // Text of a cell as the view shows it; row 0 is the header.
    std::string Cell(toolkit::Grid& grd, int iRow, int iCol);
    // The texts of a column of the target table, top to bottom, header left out.
    std::vector<std::string> Column(int iCol);

    MemoryDevice* Device(toolkit::SerialPort& tPort);
    World& TheWorld() { return m_tWorld; }

    using frmMain::m_bCommLastVdm;
    using frmMain::m_bCommReceived;
    using frmMain::m_bPlayback;
    using frmMain::m_bPlaybackBurst;
    using frmMain::m_bRecording;
    using frmMain::m_bTargetGridLaidOut;
    using frmMain::m_dLatitude;
    using frmMain::m_dLongitude;
    using frmMain::m_dtCommLast;
    using frmMain::m_dtPlaybackStart;
    using frmMain::m_dtRecordStart;
    using frmMain::m_dtVdm;
    using frmMain::m_fLastMouseX;
    using frmMain::m_fLastMouseY;
    using frmMain::m_iRecordFile;
    using frmMain::m_iSortKeys;
    using frmMain::m_lCommSeconds;
    using frmMain::m_lMessageNumber;
    using frmMain::m_lMessageRow;
    using frmMain::m_sCommBuffer;
    using frmMain::m_sGllLatitude;
    using frmMain::m_sGllLongitude;
    using frmMain::m_sGllTime;
    using frmMain::m_sProfileFile;
    using frmMain::m_sVdmChannel;
    using frmMain::m_tFiles;
    using frmMain::m_tFolderWork;
    using frmMain::m_tProfile;
    using frmMain::m_tSortKeys;
    using frmMain::m_tVdmMessage;

private:
    World& m_tWorld;
};

}  // namespace support
