// The stage: everything that acts on the program, and what is asked of it.
#include "tests/failing/Stage.h"

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <limits>
#include <map>

#include "platform/runtime/DiskRoom.h"
#include "tests/failing/Course.h"

namespace failing {

namespace {

std::vector<std::string> Split(const std::string& sText, std::string& sRest) {
    std::vector<std::string> sLines;
    std::size_t iFrom = 0;
    for (std::size_t iEnd; (iEnd = sText.find("\r\n", iFrom)) != std::string::npos; iFrom = iEnd + 2) {
        sLines.push_back(sText.substr(iFrom, iEnd - iFrom));
    }
    sRest = sText.substr(iFrom);
    return sLines;
}

std::string Replaced(std::string sText, const std::string& sWhat, const std::string& sBy) {
    for (std::size_t i = 0; (i = sText.find(sWhat, i)) != std::string::npos; i += sBy.size()) {
        sText.replace(i, sWhat.size(), sBy);
    }
    return sText;
}

}  // namespace

void Require(bool bHolds, const std::string& sWhat) {
    if (!bHolds) throw Failure(sWhat);
}

void RequireSame(const std::string& sIs, const std::string& sShouldBe, const std::string& sWhat) {
    Require(sIs == sShouldBe, sWhat + "\n  is:        " + sIs + "\n  should be: " + sShouldBe);
}

Stage::Stage(std::string sUnattended) {
    tWorld.bNativeDevices = true;
    tWorld.tSynchronize = runtime::DiskSync::ToDisk;
    tWorld.tAdjust = [](toolkit::Platform& t) { t.DiskRoom = runtime::RoomOfDisk; };
    QDir().mkpath(Folder());
    if (!sUnattended.empty()) {
        sUnattended = "[Unattended]\r\n" + Replaced(sUnattended, "$F", Folder().toStdString());
    }
    const auto Port = [](const support::PtyPort& t) { return t.Link().toStdString(); };
    tWorld.WriteFile(tWorld.ProfileFile(), "; mine\r\n[Nmea Data]\r\nEnabled #0=1\r\nComm Port #0=" + Port(tInputs[0]) +
                                               "\r\nSettings #0=38400,n,8,1\r\nEnabled #1=1\r\nComm Port #1=" +
                                               Port(tInputs[1]) + "\r\nSettings #1=4800,n,8,1\r\nMine=kept\r\n" +
                                               "[Output Data]\r\nEnabled=1\r\nComm Port=" + Port(tOutput) +
                                               "\r\nSettings=38400,n,8,1\r\n" + sUnattended);
}

Stage::~Stage() = default;

void Stage::Open() {
    m_pWindow = std::make_unique<Window>(tWorld);
    m_pWindow->LoadAndShow();
    // Seconds pass in Tick alone.
    for (QTimer* p : {&m_pWindow->tmrTime, &m_pWindow->tmrComm}) p->setInterval(std::numeric_limits<int>::max());
}

void Stage::Close() {
    m_pWindow->close();
    m_pWindow.reset();
}

void Stage::Step(const char* sStep) { TheCourse().Step(sStep); }

void Stage::Arm(bool bArmed) { TheCourse().tState.bArmed = bArmed; }

void Stage::Start() {
    Press("Start");
    m_sForwarded.clear();
    Require(Running(), "Start, without a failure: " + Panel(1) + ", " + Panel(2));
}

void Stage::Hear(int iLines, int iPort) {
    for (int i = 0; i < iLines; ++i) {
        const std::string sSentence = NextSentence();
        {
            const Pause tPause;
            Require(tInputs[iPort].WriteSome(sSentence + "\r\n") == sSentence.size() + 2, "the device takes no line");
        }
        const auto Shown = [&] {
            const std::vector<std::string> sLines = w().Lines(w().lstCommData(static_cast<app::PortIndex>(iPort)));
            return std::ranges::find(sLines, sSentence) != sLines.end();
        };
        toolkit::SerialPort& tPort = w().MSComm(static_cast<app::PortIndex>(iPort));
        while (!Shown() && tPort.PortOpen() && !tPort.Away()) QCoreApplication::processEvents();
        m_tSaid.back().bShown = Shown();
        m_tSaid.back().bTaken = Shown() && w().m_bRecording;
    }
}

std::string Stage::NextSentence() {
    m_tSaid.push_back({"$PNMLS," + std::to_string(m_tSaid.size()) + ",1,3*"});
    return m_tSaid.back().sSentence;
}

void Stage::HearMany(int iLines) {
    const std::size_t iFirst = m_tSaid.size();
    std::string sAll;
    for (int i = 0; i < iLines; ++i) sAll += NextSentence() + "\r\n";
    toolkit::SerialPort& tPort = w().MSComm(0);
    const auto IsThere = [&] { return tPort.PortOpen() && !tPort.Away(); };
    for (std::string_view s = sAll; !s.empty() && IsThere(); QCoreApplication::processEvents()) {
        s.remove_prefix(tInputs[0].WriteSome(s));
    }
    while (IsThere() && w().LastLine(w().lstCommData(0)) != m_tSaid.back().sSentence) QCoreApplication::processEvents();
    for (std::size_t i = iFirst; i < m_tSaid.size(); ++i) m_tSaid[i].bTaken = IsThere() && w().m_bRecording;
}

void Stage::Tick(int iSeconds) {
    for (int i = 0; i < iSeconds; ++i) {
        w().Advance(1);
        w().m_tFolderWork.Wait();
        AwaitDisk();
        Acknowledge();
    }
}

// Until something has failed the disk is waited for, so that what comes next does not depend on how quick it is.
void Stage::AwaitDisk() {
    if (Fired() == 0) AwaitSync();
}

void Stage::Acknowledge() {
    const int iTold = RecordTold();
    const bool bGood = iTold == m_iToldBefore && w().m_bRecording;
    m_iToldBefore = iTold;
    for (Line& t : m_tSaid) {
        if (bGood) t.bAcknowledged = t.bAcknowledged || t.bTaken;
        t.bTaken = t.bTaken && (bGood || t.bAcknowledged);
    }
}

void Stage::StopRecording() {
    const int iTold = RecordTold();
    Press("Stop");
    if (RecordTold() != iTold || m_iToldBefore != iTold) return;
    for (Line& t : m_tSaid) t.bAcknowledged = t.bAcknowledged || t.bTaken;
}

void Stage::Unplug(int iPort) {
    const Pause tPause;
    tInputs[iPort].HangUp();
}

void Stage::TryDevices() {
    for (toolkit::SerialPort* p : {&w().MSComm(0), &w().MSComm(1), &w().MSCommOutput}) {
        for (int i = 0; i < 3 && p->Away(); ++i) p->Retry();
    }
    QCoreApplication::processEvents();
}

void Stage::PlugIn(int iPort) {
    const Pause tPause;
    tInputs[iPort].Recreate();
}

int Stage::Notices(const std::string& sBeginning) {
    int iCount = 0;
    for (toolkit::LogList* p : {&w().lstCommData(0), &w().lstCommData(1), &w().lstOutputData}) {
        for (const std::string& s : w().Lines(*p)) iCount += s.starts_with("<<" + sBeginning) ? 1 : 0;
    }
    return iCount;
}

int Stage::RecordTold() { return Notices("Record - ") + (Panel(2).starts_with("Record - ") ? 1 : 0); }

void Stage::CheckForwarded() {
    const std::vector<std::string> sLines = w().Lines(w().lstOutputData);
    const std::vector<bool> bMarks = w().Marks(w().lstOutputData);
    std::string sMarked;
    for (std::size_t i = 0; i < sLines.size(); ++i) {
        if (bMarks[i]) sMarked += sLines[i] + "\r\n";
    }
    if (sMarked.size() > m_sForwarded.size()) m_sForwarded += tOutput.ReadAtLeast(sMarked.size() - m_sForwarded.size());
    RequireSame(m_sForwarded, sMarked, "what came out of the output, and what its log says");
}

void Stage::CheckRuns() {
    const std::vector<speed_t> iSpeeds = {B38400, B4800};
    for (int i = 0; i < 2; ++i) {
        Require(w().MSComm(static_cast<app::PortIndex>(i)).PortOpen(), "running, and an input is closed");
        const termios tSettings = tInputs[i].Settings();
        Require(::cfgetospeed(&tSettings) == iSpeeds[static_cast<std::size_t>(i)], "an input runs at another speed");
        Require((tSettings.c_lflag & (ECHO | ICANON | ISIG)) == 0, "an input echoes or waits for lines");
        const std::size_t iBefore = m_tSaid.size();
        Hear(2, i);
        Require(!w().MSComm(static_cast<app::PortIndex>(i)).Away(), "an input's device is there, and taken for gone");
        Require(m_tSaid.size() == iBefore + 2, "");
    }
    Require(w().MSCommOutput.PortOpen(), "running, and the output is closed");
    CheckForwarded();
}

void Stage::CheckRecordings(const QString& sFolder, const QStringList& sNames) {
    std::map<std::string, int> iSaid, iFound;
    for (const Line& t : m_tSaid) iSaid[t.sSentence] = t.bAcknowledged ? 1 : 0;
    int iPieces = 0;
    for (const QString& sName : QDir(sFolder).entryList(sNames, QDir::Files, QDir::Name)) {
        std::string sRest;
        for (const std::string& sLine : Split(tWorld.ReadFile(sFolder + QLatin1Char('/') + sName), sRest)) {
            Require(sLine.size() > 20 && sLine.starts_with("05/15/2011 1"),
                    "a line of a recording is no such line: " + sLine);
            Require(iSaid.contains(sLine.substr(20)), "a line of a recording that nobody said: " + sLine);
            Require(++iFound[sLine.substr(20)] == 1, "a line stands twice in recordings: " + sLine);
        }
        iPieces += sRest.empty() ? 0 : 1;
    }
    for (const auto& [sSentence, bAcknowledged] : iSaid) {
        Require(bAcknowledged == 0 || iFound[sSentence] == 1, "lost, and taken for recorded: " + sSentence);
    }
    Require(iPieces == 0 || RecordTold() > 0, "a piece of a line in a recording, and nothing was told");
}

bool Stage::AreRecorded(std::size_t iLines) const {
    return std::all_of(m_tSaid.end() - static_cast<std::ptrdiff_t>(iLines), m_tSaid.end(),
                       [](const Line& t) { return t.bAcknowledged; });
}

void Stage::CheckCaptures(const QString& sFolder) {
    std::string sAll;
    for (const QString& sName : QDir(sFolder).entryList({QStringLiteral("*.capture")}, QDir::Files)) {
        sAll += tWorld.ReadFile(sFolder + QLatin1Char('/') + sName);
    }
    if (RecordTold() > 0 || Notices("Capture - ") > 0) return;
    for (const Line& t : m_tSaid) {
        if (!t.bShown) continue;
        Require(sAll.find(t.sSentence) != std::string::npos, "not captured, and nothing was told: " + t.sSentence);
    }
}

std::string Stage::File(const QString& sName) const { return tWorld.ReadFile(tWorld.Path(sName)); }

void Stage::WriteFile(const QString& sName, std::string_view sContent) const {
    const Pause tPause;
    tWorld.WriteFile(tWorld.Path(sName), sContent);
}

std::vector<std::string> Stage::Names(const QString& sFolder) const {
    std::vector<std::string> sNames;
    for (const QString& s : QDir(sFolder).entryList(QDir::Files | QDir::Hidden, QDir::Name))
        sNames.push_back(s.toStdString());
    return sNames;
}

std::string Stage::Outcome() {
    std::string s;
    if (m_pWindow) {
        for (int i = 1; i <= 4; ++i) s += Panel(i) + "|";
        for (toolkit::LogList* p : {&w().lstCommData(0), &w().lstCommData(1), &w().lstRxData, &w().lstOutputData}) {
            const std::vector<bool> bMarks = w().Marks(*p);
            std::size_t i = 0;
            for (const std::string& sLine : w().Lines(*p)) s += (bMarks[i++] ? "\n+" : "\n-") + sLine;
            s += "\n";
        }
        s += "messages " + std::to_string(w().m_lMessageNumber) + "\n";
    }
    for (const QString& sFolder : {tWorld.Folder(), Folder()}) {
        for (const std::string& sName : Names(sFolder)) {
            s += sName + ":\n" + tWorld.ReadFile(sFolder + QLatin1Char('/') + QString::fromStdString(sName)) + "\n";
        }
    }
    s = Replaced(s, tWorld.Folder().toStdString(), "$F");
    for (const support::PtyPort* p : {&tInputs[0], &tInputs[1], &tOutput}) {
        s = Replaced(Replaced(s, p->Link().toStdString(), "$L"), p->Device().toStdString(), "$D");
    }
    return s;
}

}  // namespace failing
