// The course of a second, and the books that are kept of it.
#include "tests/simulation/Scene.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <algorithm>
#include <utility>

#include "tests/simulation/Failure.h"

namespace simulation {

namespace {

constexpr std::int64_t Hour = 3600;
constexpr const char* Gone = "no such device";
constexpr const char* Refused = "permission denied";
constexpr int InputPorts = 2;
constexpr std::int64_t LongestPause = 125;  // until a recording goes on after trouble: tried once a minute

std::string Profile(const Setting& t, const QString& sFolder) {
    std::string s =
        "[Nmea Data]\nEnabled #0=1\nEnabled #1=1\nComm Port #0=1\nComm Port #1=2\n"
        "[Output Data]\nComm Port=3\nEnabled=" +
        std::string(t.bOutput ? "1" : "0") + "\n";
    s += "[Unattended]\nCapture=" + std::string(t.bCapture ? "1" : "0") + "\n";
    if (!t.bUnattended) return s;
    s += "Start=1\nRecord=" + sFolder.toStdString() + "\n";
    s += t.bHourly ? "Rotate=hourly\n" : t.bNever ? "Rotate=never\n" : "Rotate=daily\n";
    if (t.lKeepDays > 0) s += "Keep days=" + std::to_string(t.lKeepDays) + "\n";
    if (t.lKeepMegabytes > 0) s += "Keep MB=" + std::to_string(t.lKeepMegabytes) + "\n";
    return s;
}

std::int64_t PeriodOf(const Setting& t) {
    if (!t.bUnattended || t.bNever) return 0;
    return t.bHourly ? Hour : 24 * Hour;
}

// Bytes as a wrong speed makes them: no line of them is a sentence.
std::string Noise(simulator::Random& tChance) {
    std::string s(static_cast<std::size_t>(tChance.Whole(20, 60)), '\0');
    for (char& c : s) c = static_cast<char>(tChance.Whole(128, 255));
    return s + "\r\n";
}

// A line as a bad cable makes it: a character changed, so that the checksum tells, or nearly nothing left.
void Spoil(std::string& sLine, int iWay) {
    if (iWay % 3 == 0) {
        sLine = "$G";
    } else {
        sLine[9] = sLine[9] == '#' ? '+' : '#';
    }
}

}  // namespace

Scene::Scene(const Setting& t) : tSetting(t), tRecordings(PeriodOf(t)), m_tChance(t.lSeed ^ 0x5EA) {
    sFolder = tWorld.Path(QStringLiteral("recordings"));
    QDir().mkpath(sFolder);
    tWorld.WriteFile(sFolder + QStringLiteral("/notes.txt"), "not ours");
    tWorld.SetClock(t.sClock);
    tWorld.tYield = [] {};
    tWorld.tSynchronize = tDisk.Function();
    tWorld.tAdjust = [this](toolkit::Platform& tPlatform) {
        tPlatform.Serial.MakeDevice = [this] {
            const auto Open = [this](const QString& sDevice) {
                const auto it = tWorld.sBadPorts.find(sDevice.section(QLatin1Char(':'), 1).toInt());
                if (it == tWorld.sBadPorts.end()) return;
                if (it->second == Gone) throw toolkit::DeviceMissing(it->second);
                throw toolkit::CommError(it->second);
            };
            return std::make_unique<PortDevice>(Open, [this](int i, std::string_view s) { Written(i, s); });
        };
        // A choice acts where the hand makes it.
        tPlatform.HasFocus = [](const QWidget& tControl) {
            return tControl.objectName().startsWith(QLatin1String("cmbTarget"));
        };
    };
    for (int i = 0; i < 2; ++i) {
        simulator::TrafficOptions tOptions;
        tOptions.lSeed = t.lSeed + 1;  // the same harbour
        tOptions.lChance = static_cast<std::uint64_t>(i);
        tOptions.iTargets = t.iTargets;
        tOptions.bGps = i == 1;
        tOptions.dtStart = tWorld.dtNow;
        m_tSpeakers[Index(i)].pTraffic = std::make_unique<simulator::Traffic>(tOptions);
    }
}

Scene::~Scene() = default;

void Scene::Begin() {
    tWorld.WriteFile(tWorld.ProfileFile(), Profile(tSetting, sFolder));
    pWindow = std::make_unique<Window>(tWorld);
    // The simulation ticks; no timer of the real world does.
    pWindow->tmrComm.blockSignals(true);
    pWindow->tmrTime.blockSignals(true);
    pWindow->LoadAndShow();
    pWindow->UnattendedBegin();
    pWindow->m_tFolderWork.Wait();
    if (!tSetting.bUnattended) pWindow->Press(ui::KeyStart);
    FilesMayGo(HasKeepRule());
    RunBegan();
    if (!tSetting.bUnattended) PressRecord();
}

void Scene::RunBegan() {
    if (pWindow->StatusBar.PanelText(ui::PanelState) == "Stopped") return;
    pWindow->m_tFolderWork.Wait();
    tLedger.Begin();
    tForwarded.Begin();
    tRecordings.RunBegins();
    lNumbersFrom = tSetting.lFirstNumber;
    if (lNumbersFrom > 0) pWindow->m_lMessageNumber = lNumbersFrom;  // as if months had gone by
}

void Scene::PressStart() {
    if (!pWindow->Toolbar.Action(QLatin1String(ui::KeyStart)).isEnabled()) return;
    Look();
    pWindow->Press(ui::KeyStart);
    tLedger.Begin();  // the displays are emptied, also where a port cannot be opened then
    RunBegan();
    Look();
}

void Scene::PressStop() {
    if (!pWindow->Toolbar.Action(QLatin1String(ui::KeyStop)).isEnabled()) return;
    if (tFullDisk) FilesInTrouble();
    tDisk.Release();  // it would be waited for
    pWindow->Press(ui::KeyStop);
    m_tPlayed.reset();
    Look();
    VerifyRecordings();
    if (!tSetting.bUnattended) RemoveRecording();
}

void Scene::RemoveRecording() {
    if (!tRecordings.Newest().empty()) QFile::remove(QString::fromStdString(tRecordings.Newest()));
    tRecordings.Forget();
    tCaptures.Forget();
}

void Scene::PressRecord() {
    if (!pWindow->Toolbar.Action(QLatin1String(ui::KeyRecord)).isEnabled()) return;
    VerifyRecordings();
    RemoveRecording();
    tWorld.tFileAnswers = {tWorld.Path(QStringLiteral("record-%1.txt").arg(++m_iRecordings))};
    pWindow->Press(ui::KeyRecord);
    tRecordings.RunBegins();
}

PortDevice* Scene::Device(int iPort) {
    toolkit::SerialPort& tPort =
        iPort < InputPorts ? pWindow->MSComm(static_cast<app::PortIndex>(iPort)) : pWindow->MSCommOutput;
    return tPort.PortOpen() && !tPort.Away() ? dynamic_cast<PortDevice*>(tPort.OpenDevice()) : nullptr;
}

void Scene::Unplug(int iPort, bool bRefused) {
    if (!tWorld.sBadPorts.emplace(iPort + 1, bRefused ? Refused : Gone).second) return;
    PortDevice* pDevice = Device(iPort);
    if (!pDevice) return;
    tNotices.Expect(iPort == 0 ? Notices::Input1 : Notices::Input2, "<<Event 2001>>");
    pDevice->Vanish();
    CaptureEvent(iPort, 2001);
    m_tSpeakers[Index(iPort)].iRefused = 0;
}

void Scene::PlugIn(int iPort) { tWorld.sBadPorts.erase(iPort + 1); }

void Scene::RaiseLineError(int iPort, int iEvent, const char* sNotice) {
    PortDevice* pDevice = Device(iPort);
    if (!pDevice) return;
    tNotices.Expect(iPort == 0 ? Notices::Input1 : Notices::Input2, sNotice);
    emit pDevice->LineEvent(iEvent);
    CaptureEvent(iPort, iEvent);
}

// What a device has said in this second.
std::string Scene::Said(int iPort) {
    Speaker& t = m_tSpeakers[Index(iPort)];
    std::string s = std::exchange(t.sRest, {});
    if (!t.pNext) t.pNext = &t.pTraffic->Next();
    for (; t.pNext->lMilliseconds / 1000 < lSecond; t.pNext = &t.pTraffic->Next()) {
        std::string sLine = t.pNext->sText;
        if (t.iDamaged > 0) Spoil(sLine, t.iDamaged--);
        s.append(sLine).append("\r\n");
    }
    if (t.bGarbled) s = Noise(m_tChance);
    if (t.bHoldBack && s.size() > 1) {
        t.bHoldBack = false;
        const std::size_t iKept = static_cast<std::size_t>(m_tChance.Whole(1, static_cast<int>(s.size()) - 1));
        t.sRest = s.substr(iKept);
        s.resize(iKept);
    }
    return s;
}

void Scene::Receive(int iPort) {
    const std::string s = Said(iPort);
    const auto i = static_cast<app::PortIndex>(iPort);
    if (!Device(iPort)) return;
    const std::vector<Line> tLines = tLedger.Take(iPort, s);
    const auto eLog = iPort == 0 ? Notices::Input1 : Notices::Input2;
    for (const Line& t : tLines) {
        if (t.eVerdict == Verdict::TooShort) tNotices.Expect(eLog, "<<Size Error>>");
        if (t.eVerdict == Verdict::WrongChecksum) tNotices.Expect(eLog, "<<Checksum Error>>");
        if (t.eVerdict >= Verdict::Unknown && tSetting.bOutput) tForwarded.Expect(t.sText);
    }
    if (tSetting.bCapture) tCaptures.Expect(tWorld.dtNow, iPort, '<', s);
    const bool bRecording = pWindow->m_bRecording;
    const std::string sFile = pWindow->RunFile();
    const std::int64_t lAllocations = Meter::Count([&] { pWindow->Feed(i, s); });
    pWindow->m_tFolderWork.Wait();
    CaptureDone();
    if (sFile != pWindow->RunFile()) lNewFile = lSecond;
    if (IsOrdinary(tLines) && lNewFile != lSecond) {
        tMeter.Sentences(static_cast<std::int64_t>(tLines.size()), lAllocations);
    }
    if (!bRecording) return;
    const bool bFailed = !pWindow->m_bRecording;
    if (bFailed && !tNotices.UnderWay(TroubleDisk)) throw Failure("the recording ended without a cause");
    for (const Line& t : tLines) {
        if (t.eVerdict == Verdict::Decoded) tRecordings.Expect(pWindow->RunFile(), tWorld.dtNow, t.sText);
    }
    if (tFullDisk || bFailed) FilesInTrouble();
}

// Where nothing happens that is told, and nothing waits.
bool Scene::IsOrdinary(const std::vector<Line>& tLines) const {
    const auto Fine = [](const Line& t) { return t.eVerdict == Verdict::Decoded; };
    return std::ranges::all_of(tLines, Fine) && tForwarded.AllCame() && !tNotices.UnderWay(TroubleDisk);
}

void Scene::Tick() {
    const bool bRecording = pWindow->m_bRecording;
    const bool bStopped = !pWindow->tmrComm.isActive();
    const std::vector<std::string> sPlayed = HearPlayed();
    const std::int64_t lAllocations = Meter::Count([this] {
        if (pWindow->tmrComm.isActive()) pWindow->tmrComm_Timer();
        pWindow->tmrTime_Timer();
    });
    if (bRecording) tMeter.Tick(lAllocations);
    pWindow->m_tFolderWork.Wait();
    CheckPlayed(sPlayed);
    if (std::exchange(m_bDiskFailed, false) && pWindow->m_bRecording) {
        throw Failure("the disk has failed, and the recording goes on");
    }
    if (bStopped && pWindow->tmrComm.isActive()) RunBegan();  // it has started again by itself
    if (bRecording && !pWindow->m_bRecording && !tNotices.Recent(TroubleDisk, lSecond, 2)) {
        throw Failure("the recording ended without a cause");
    }
    if (!pWindow->m_bRecording) tRecordings.RunBegins();
    if (!tFullDisk) {
        tRecordings.Flushed();
        tCaptures.Flushed();
    }
    FailDisk();
    RetryPorts();
}

// As the ports' own timers would. A device that is back has lost what it was saying when it went.
void Scene::RetryPorts() {
    for (int i = 0; i < 2; ++i) {
        toolkit::SerialPort& tPort = pWindow->MSComm(static_cast<app::PortIndex>(i));
        if (!tPort.Away()) continue;
        const auto eLog = i == 0 ? Notices::Input1 : Notices::Input2;
        const auto itBad = tWorld.sBadPorts.find(i + 1);
        // Told once, when it was so twice: a device that has just come may still be busy.
        if (itBad != tWorld.sBadPorts.end() && itBad->second == Refused && ++m_tSpeakers[Index(i)].iRefused == 2) {
            tNotices.Expect(eLog, std::string("<<Device not opened - ") + Refused + ">>");
        }
        tPort.Retry();
        if (tPort.Away()) continue;
        tNotices.Expect(eLog, "<<Event 2002>>");
        CaptureEvent(i, 2002);
        const std::size_t iHalf = tLedger.DropHalfLine(i);
        if (iHalf == 0) continue;
        const std::string sCharacters = std::to_string(iHalf) + (iHalf == 1 ? " character" : " characters");
        tNotices.Expect(eLog, "<<Half line dropped - " + sCharacters + ">>");
    }
}

void Scene::CheckRecordingGoesOn() {
    const bool bReason = tNotices.UnderWay(TroubleDisk) || tNotices.UnderWay(TroublePort) ||
                         tNotices.UnderWay(TroubleStop) || !tSetting.bUnattended;
    if (bReason || pWindow->m_bRecording) {
        lIdleSince = lSecond;
    } else if (lSecond - lIdleSince > LongestPause) {
        throw Failure("nothing has been recorded for " + std::to_string(LongestPause) + " seconds, for no reason");
    }
}

void Scene::PassSecond() {
    ++lSecond;
    ++tWorld.dtNow.lSeconds;
    Receive(0);
    Receive(1);
    Tick();
    Look();
    tNotices.CheckAllCame();
    CheckRecordingGoesOn();
    if (lSecond % 60 == 0 && !tSetting.bUnattended && !tNotices.UnderWay(TroubleStop)) PressStart();
    if (lSecond % 600 == 0) VerifyRecordings();
}

void Scene::End() {
    PressStop();
    pWindow->Form_Unload();
    pWindow.reset();
}

void Scene::TakeOver() {
    pWindow->Synchronize();
    QCoreApplication::sendPostedEvents();  // no timers: the world's clock is not ours
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Scene::Look() {
    CaptureDone();
    tForwarded.Check();
    tNotices.Look(Notices::Input1, pWindow->lstCommData(0).Lines, lSecond);
    tNotices.Look(Notices::Input2, pWindow->lstCommData(1).Lines, lSecond);
    tNotices.Look(Notices::Output, pWindow->lstOutputData.Lines, lSecond);
}

void Scene::VerifyRecordings() {
    tRecordings.Verify();
    tCaptures.Verify();
}

}  // namespace simulation
