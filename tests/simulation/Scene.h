// The world of one simulation: a harbour heard by two receivers, a GPS beside the second, the real window between its
// devices, clock and disk, and the books that are kept of what happens. Causes and the hand act through it.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/simulation/Captures.h"
#include "tests/simulation/Disk.h"
#include "tests/simulation/Forwarded.h"
#include "tests/simulation/Ledger.h"
#include "tests/simulation/Meter.h"
#include "tests/simulation/Notices.h"
#include "tests/simulation/Played.h"
#include "tests/simulation/Recordings.h"
#include "tests/simulation/Setting.h"
#include "tests/support/FullDisk.h"
#include "tests/support/TestWindow.h"
#include "tools/Random.h"
#include "tools/Traffic.h"

namespace simulation {

class Window : public support::TestWindow {
public:
    using TestWindow::TestWindow;
    std::string RunFile() const { return m_sRunFile.toStdString(); }
    bool IsCapturing() const { return m_bRecording && !m_bCaptureFailed; }
    std::string CaptureFile() const { return m_tCapturePath.native(); }
    using frmMain::m_iCaptureFile;
    // Files that are done with are closed when they are on the disk: waits for that.
    void FinishFiles() { RecordFinishFiles(true); }
};

// A device that keeps nothing of what is written to it, months of it would fill the memory, but hands it on.
class PortDevice : public support::MemoryDevice {
public:
    using Listener = std::function<void(int iPort, std::string_view sText)>;
    PortDevice(std::function<void(const QString&)> tOpen, Listener tListener)
        : MemoryDevice(std::move(tOpen)), m_tListener(std::move(tListener)) {}
    void Open(const QString& sDevice, const runtime::SerialSettings& t) override;
    void Write(std::string_view sText) override { m_tListener(m_iPort, sText); }

private:
    Listener m_tListener;
    int m_iPort = 0;  // counted from 0, the output behind the inputs
};

// Of the file that is played.
inline constexpr char PlayedName[] = "played.txt";

class Scene {
public:
    explicit Scene(const Setting& t);
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    void Begin();
    // One second of the world: what the devices say meanwhile, then the program's ticks.
    void PassSecond();
    void End();  // the window is closed

    // By a person, or in the name of one. Nothing where the button is disabled.
    void PressStart();
    void PressStop();
    void PressRecord();
    // Stops, and plays the end of what was recorded last, at its own pace or as a burst. Nothing where nothing is
    // there.
    void PlayBack(bool bBurst);

    // The device of a port, counted from 0; null while it is closed or away.
    PortDevice* Device(int iPort);
    void Unplug(int iPort, bool bRefused);  // bRefused: it is back at once and cannot be opened
    void PlugIn(int iPort);
    void RaiseLineError(int iPort, int iEvent, const char* sNotice);
    // The lines of the next second end in the middle, or have wrong checksums, or are noise.
    void HoldBack(int iPort) { m_tSpeakers[Index(iPort)].bHoldBack = true; }
    void Damage(int iPort) { m_tSpeakers[Index(iPort)].iDamaged = 3; }
    void Garble(int iPort, bool bGarble) { m_tSpeakers[Index(iPort)].bGarbled = bGarble; }
    // What was written may end anywhere; may be removed; is not where it was.
    void FilesInTrouble();
    void FilesMayGo(bool bMayGo);
    void FolderAway(bool bAway);
    bool HasKeepRule() const { return tSetting.lKeepDays > 0 || tSetting.lKeepMegabytes > 0; }
    // Shows everything that waits, and paints it.
    void TakeOver();
    // What the logs say is held against what was to come.
    void Look();
    void VerifyRecordings();

    const Setting tSetting;
    support::World tWorld;
    Disk tDisk;
    std::unique_ptr<Window> pWindow;
    Ledger tLedger;
    Notices tNotices;
    Recordings tRecordings;
    Captures tCaptures;
    Forwarded tForwarded;
    Meter tMeter;
    std::optional<support::FullDisk> tFullDisk;
    std::int64_t lSecond = 0;       // since the beginning, whatever the clock says
    QString sFolder;                // of an unattended recording
    std::int64_t lNewFile = 0;      // when the recording got its present file
    std::int64_t lNumbersFrom = 0;  // the message number that this run began behind
    std::int64_t lIdleSince = 0;    // nothing has been recorded for no reason since; -1 while there is a reason

private:
    struct Speaker {
        std::unique_ptr<simulator::Traffic> pTraffic;
        const simulator::TrafficLine* pNext = nullptr;  // not said yet
        std::string sRest;                              // held back from the second before
        bool bHoldBack = false;
        int iDamaged = 0;
        bool bGarbled = false;
        int iRefused = 0;  // how often its device could not be opened again
    };
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    std::string Said(int iPort);
    void Receive(int iPort);
    bool IsOrdinary(const std::vector<Line>& tLines) const;
    void Tick();
    void Written(int iPort, std::string_view sText);
    void CaptureEvent(int iPort, int iEvent);
    void CaptureDone();
    void FailDisk();
    void BeginPlaying(Played t);
    std::vector<std::string> HearPlayed();
    void CheckPlayed(const std::vector<std::string>& sPlayed);
    void CheckAllCounted() const;
    void CheckLogEndsWith(const std::vector<std::string>& sLines) const;
    void Hear(const std::vector<std::string>& sLines);
    void RetryPorts();
    void RemoveRecording();  // that was made by hand and compared
    void CheckRecordingGoesOn();
    void RunBegan();

    std::array<Speaker, 2> m_tSpeakers;
    simulator::Random m_tChance;
    std::optional<Played> m_tPlayed;
    bool m_bDiskFailed = false;  // and the program can tell
    int m_iRecordings = 0;
};

}  // namespace simulation
