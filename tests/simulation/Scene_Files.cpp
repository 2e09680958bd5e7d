// What happens to the files of a scene: captures, disks, and a recording that is played.
#include <sys/stat.h>

#include "tests/simulation/Failure.h"
#include "tests/simulation/Scene.h"

namespace simulation {

namespace {

constexpr const char* NoBurst = "Comm Output is not available with Burst Playback";
constexpr int OutputPort = 2;

}  // namespace

void PortDevice::Open(const QString& sDevice, const runtime::SerialSettings& t) {
    MemoryDevice::Open(sDevice, t);
    m_iPort = sDevice.section(QLatin1Char(':'), 1).toInt() - 1;
}

void Scene::FilesInTrouble() {
    tRecordings.Trouble();
    tCaptures.Trouble();
}

void Scene::FilesMayGo(bool bMayGo) {
    tRecordings.MayGo(bMayGo);
    tCaptures.MayGo(bMayGo);
}

void Scene::FolderAway(bool bAway) {
    tRecordings.Away(bAway);
    tCaptures.Away(bAway);
}

// The program writes to a port.
void Scene::Written(int iPort, std::string_view sText) {
    if (iPort == OutputPort) {
        tForwarded.Came(sText);
    } else if (tSetting.bCapture) {
        tCaptures.Expect(tWorld.dtNow, iPort, '>', sText);
    }
}

void Scene::CaptureEvent(int iPort, int iEvent) {
    if (!tSetting.bCapture) return;
    tCaptures.Expect(tWorld.dtNow, iPort, '!', std::to_string(iEvent));
    CaptureDone();
}

// The program has done with what it was to capture.
void Scene::CaptureDone() {
    if (!tSetting.bCapture) return;
    if (!pWindow->IsCapturing() && !(tFullDisk && tCaptures.Knows(pWindow->CaptureFile()))) {
        tCaptures.WentNowhere();
        return;
    }
    tCaptures.WentTo(pWindow->CaptureFile(), !pWindow->m_tFiles.IsOpen(pWindow->m_iRecordFile));
    if (tFullDisk) tCaptures.Trouble();
}

// The disk fails as soon as it can, if it shall: the program knows with the next second.
void Scene::FailDisk() {
    if (!tDisk.Fails() || !pWindow->m_bRecording || !pWindow->m_tFiles.IsOpen(pWindow->m_iRecordFile)) return;
    struct stat t {};
    if (::stat(pWindow->RunFile().c_str(), &t) != 0) return;
    tDisk.Second(t.st_ino, pWindow->m_tFiles.Written(pWindow->m_iRecordFile));
    m_bDiskFailed = !tDisk.Fails();
}

void Scene::PlayBack(bool bBurst) {
    if (tFullDisk || tRecordings.Away()) return;
    const QString sFile = tWorld.Path(QLatin1String(PlayedName));
    Played tPlayed(tRecordings.Newest(), sFile.toStdString());
    if (tPlayed.Empty()) return;
    PressStop();
    Look();
    tWorld.tFileAnswers = {sFile};
    pWindow->Press(bBurst ? ui::KeyPlaybackBurst : ui::KeyPlayback);
    if (!bBurst) {
        BeginPlaying(std::move(tPlayed));
    } else if (tSetting.bOutput) {
        if (tWorld.sMessages != QStringList{QString::fromLatin1(NoBurst)}) throw Failure("a burst beside an output");
        tWorld.sMessages.clear();
        tWorld.eMessageIcons.clear();
    } else {
        tLedger.Begin();
        lNumbersFrom = 0;
        Hear(tPlayed.All());
        CheckLogEndsWith(tPlayed.All());
        CheckAllCounted();
    }
    tWorld.tFileAnswers.clear();
    Look();
}

void Scene::BeginPlaying(Played t) {
    if (!pWindow->m_bPlayback) throw Failure("nothing is played");
    tLedger.Begin();
    tForwarded.Begin();
    lNumbersFrom = tSetting.lFirstNumber;
    if (lNumbersFrom > 0) pWindow->m_lMessageNumber = lNumbersFrom;
    m_tPlayed = std::move(t);
}

void Scene::Hear(const std::vector<std::string>& sLines) {
    for (const std::string& s : sLines) {
        tLedger.Take(0, s + "\r\n");
        if (tSetting.bOutput) tForwarded.Expect(s);
    }
}

// What is due with this tick.
std::vector<std::string> Scene::HearPlayed() {
    if (!m_tPlayed) return {};
    std::vector<std::string> sDue = m_tPlayed->Due(tWorld.dtNow);
    Hear(sDue);
    return sDue;
}

void Scene::CheckPlayed(const std::vector<std::string>& sPlayed) {
    if (!m_tPlayed) return;
    CheckLogEndsWith(sPlayed);
    const std::string& sState = pWindow->StatusBar.PanelText(ui::PanelState);
    const bool bOver = !pWindow->m_bPlayback && sState == "Done";
    if (bOver != m_tPlayed->Over()) throw Failure("the playback is not over when its lines are: " + sState);
    CheckAllCounted();
    if (bOver) m_tPlayed.reset();
}

// The total of the messages is compared once an hour; what is played ends before.
void Scene::CheckAllCounted() const {
    const std::int64_t lCounted = pWindow->m_lMessageNumber - lNumbersFrom;
    if (lCounted == tLedger.Messages()) return;
    throw Failure("played were " + std::to_string(tLedger.Messages()) + " messages, numbered are " +
                  std::to_string(lCounted));
}

void Scene::CheckLogEndsWith(const std::vector<std::string>& sLines) const {
    const runtime::LogLines& t = pWindow->lstCommData(0).Lines;
    for (std::size_t i = 0; i < sLines.size() && i < runtime::LogLines::Capacity; ++i) {
        const int iLine = t.Count() - 1 - static_cast<int>(i);
        const std::string& sWanted = sLines[sLines.size() - 1 - i];
        if (iLine < 0 || t.Line(iLine) != sWanted) throw Failure("played, and not in the log: " + sWanted);
    }
}

}  // namespace simulation
