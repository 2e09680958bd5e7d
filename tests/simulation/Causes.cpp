// The table of causes, each with what announces its notices, and the planner that draws from it.
#include "tests/simulation/Causes.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <iterator>

namespace simulation {

namespace {

constexpr std::int64_t Hour = 3600;
constexpr std::int64_t NearlyNothing = 100'000'000;
constexpr int OutputPort = 2;

struct LineError {
    int iEvent;
    const char* sNotice;
};
constexpr LineError LineErrors[] = {{1001, "<<Break Signal Received>>"},
                                    {1004, "<<Framing Error>>"},
                                    {1006, "<<Port Overrun>>"},
                                    {1008, "<<Rx Overflow>>"},
                                    {1009, "<<Parity Error>>"}};

template <Trouble e>
void Begins(Scene& t) {
    t.tNotices.Begin(e);
}
template <Trouble e>
void Ends(Scene& t) {
    t.tNotices.End(e, t.lSecond);
}

template <bool bRefused>
void PullPlug(Scene& t, int iPort) {
    Begins<TroublePort>(t);
    t.Unplug(iPort, bRefused);
}
void PutPlugBack(Scene& t, int iPort) {
    Ends<TroublePort>(t);
    t.PlugIn(iPort);
}

template <int i>
void RaiseLineError(Scene& t, int iPort) {
    t.RaiseLineError(iPort, LineErrors[i].iEvent, LineErrors[i].sNotice);
}

void BeginNoise(Scene& t, int iPort) {
    Begins<TroubleSpeed>(t);
    t.Garble(iPort, true);
}
void EndNoise(Scene& t, int iPort) {
    Ends<TroubleSpeed>(t);
    t.Garble(iPort, false);
}

template <std::int64_t lSeconds>
void StepClock(Scene& t, int) {
    t.tWorld.dtNow.lSeconds += lSeconds;
}

void BeginStop(Scene& t, int) {
    Begins<TroubleStop>(t);
    t.PressStop();
}
void EndStop(Scene& t, int) {
    Ends<TroubleStop>(t);
    t.PressStart();
}

void FillDisk(Scene& t, int) {
    Begins<TroubleDisk>(t);
    t.tFullDisk.emplace(0);
    t.FilesInTrouble();
}
void EmptyDisk(Scene& t, int) {
    Ends<TroubleDisk>(t);
    t.tFullDisk.reset();
}

void NearlyFillDisk(Scene& t, int) {
    Begins<TroubleDisk>(t);
    t.VerifyRecordings();
    t.FilesMayGo(true);
    t.tWorld.pRoom->lFree = NearlyNothing;
}
void MakeRoom(Scene& t, int) {
    Ends<TroubleDisk>(t);
    t.VerifyRecordings();
    t.FilesMayGo(t.HasKeepRule());
    t.tWorld.pRoom->lFree = t.tWorld.pRoom->lWhole / 2;
}

void TakeFolder(Scene& t, int) {
    Begins<TroubleDisk>(t);
    t.VerifyRecordings();
    t.FolderAway(true);
    QDir().rename(t.sFolder, t.sFolder + QStringLiteral(".away"));
}
void BringFolder(Scene& t, int) {
    Ends<TroubleDisk>(t);
    QDir().rename(t.sFolder + QStringLiteral(".away"), t.sFolder);
    t.FolderAway(false);
}

// As a person does who tidies up.
void TakeFile(Scene& t, int) {
    Begins<TroubleDisk>(t);
    const QString sFile = QString::fromStdString(t.tRecordings.Newest());
    const QString sTaken = t.tWorld.Path(QStringLiteral("taken.txt"));
    QFile::remove(sTaken);
    if (QFile::rename(sFile, sTaken)) t.tRecordings.Moved(sFile.toStdString(), sTaken.toStdString());
}

// A synchronisation takes as long as the cause lasts: nothing else waits, and nothing is told.
void SlowDisk(Scene& t, int) { t.tDisk.Hold(); }
void QuickenDisk(Scene& t, int) { t.tDisk.Release(); }
void BeginFailingDisk(Scene& t, int) {
    Begins<TroubleDisk>(t);
    t.tDisk.Hold();
    t.tDisk.FailOne();
}
void EndFailingDisk(Scene& t, int) {
    Ends<TroubleDisk>(t);
    t.tDisk.Release();
}

// As a person does who looks what was there.
template <bool bBurst>
void BeginPlayback(Scene& t, int) {
    Begins<TroubleStop>(t);
    t.PlayBack(bBurst);
}
void EndPlayback(Scene& t, int) {
    Ends<TroubleStop>(t);
    t.PressStop();
    t.PressStart();
}

void StickOutput(Scene& t, int) {
    Begins<TroubleOutput>(t);
    if (PortDevice* p = t.Device(OutputPort)) p->Hold(true);
}
void LoosenOutput(Scene& t, int) {
    Ends<TroubleOutput>(t);
    if (auto* p = dynamic_cast<PortDevice*>(t.pWindow->MSCommOutput.OpenDevice())) p->Hold(false);
}

// clang-format off
constexpr Cause Causes[] = {
    {"plug pulled",               6,   1,  600, false, PullPlug<false>,      PutPlugBack},
    {"device refused",            2,   3,  300, false, PullPlug<true>,       PutPlugBack},
    {"break",                     4,   0,    0, false, RaiseLineError<0>,    nullptr},
    {"framing error",             8,   0,    0, false, RaiseLineError<1>,    nullptr},
    {"overrun",                   4,   0,    0, false, RaiseLineError<2>,    nullptr},
    {"receive overflow",          4,   0,    0, false, RaiseLineError<3>,    nullptr},
    {"parity error",              4,   0,    0, false, RaiseLineError<4>,    nullptr},
    {"damaged lines",            40,   0,    0, false, [](Scene& t, int i) { t.Damage(i); },   nullptr},
    {"reception within a line", 400,   0,    0, false, [](Scene& t, int i) { t.HoldBack(i); }, nullptr},
    {"wrong speed",               2,   1,   90, false, BeginNoise,           EndNoise},
    {"clock an hour back",        2,   0,    0, false, StepClock<-Hour>,     nullptr},
    {"clock an hour forward",     2,   0,    0, false, StepClock<Hour>,      nullptr},
    {"clock a day back",        0.3,   0,    0, false, StepClock<-24 * Hour>, nullptr},
    {"clock a day forward",     0.3,   0,    0, false, StepClock<24 * Hour>, nullptr},
    {"clock some seconds back",   4,   0,    0, false, StepClock<-7>,        nullptr},
    {"stopped",                   3,   0, 1200, false, BeginStop,            EndStop},
    {"playback",                  2,  20,  900, false, BeginPlayback<false>, EndPlayback},
    {"burst playback",          1.5,   1,   60, false, BeginPlayback<true>,  EndPlayback},
    {"slow disk",                 3,   1,  300, false, SlowDisk,             QuickenDisk},
    {"failing disk",              2,   5,   60, false, BeginFailingDisk,     EndFailingDisk},
    {"full disk",                 2,   1,  400, false, FillDisk,             EmptyDisk},
    {"nearly full disk",          1,  70,  900, true,  NearlyFillDisk,       MakeRoom},
    {"folder gone",               1,   1,  900, true,  TakeFolder,           BringFolder},
    {"file taken",                2,   3,    3, true,  TakeFile,             [](Scene& t, int) { Ends<TroubleDisk>(t); }},
    {"output stuck",              3,   5,  600, false, StickOutput,          LoosenOutput},
};
// clang-format on

constexpr double SecondsOfDay = 86400;
constexpr std::size_t LatestKept = 8;

}  // namespace

void Planner::Second(Scene& t) {
    for (std::size_t i = 0; i < m_tUnderWay.size();) {
        const UnderWay tOver = m_tUnderWay[i];
        if (tOver.lEnd > t.lSecond) {
            ++i;
            continue;
        }
        m_tUnderWay.erase(m_tUnderWay.begin() + static_cast<std::ptrdiff_t>(i));
        tOver.pCause->End(t, tOver.iPort);
    }
    // One draw a second, for all rows together.
    double dDraw = m_tChance.Unit() * SecondsOfDay;
    for (const Cause& tCause : Causes) {
        if (dDraw < tCause.dPerDay) {
            Begin(t, tCause);
            return;
        }
        dDraw -= tCause.dPerDay;
    }
}

void Planner::Begin(Scene& t, const Cause& tCause) {
    const int iPort = m_tChance.Whole(0, 1);
    const int iSeconds = m_tChance.Whole(tCause.iShortest, tCause.iLongest);
    if (tCause.bUnattended && !t.tSetting.bUnattended) return;
    if (std::ranges::any_of(m_tUnderWay, [&](const UnderWay& tOther) { return tOther.pCause == &tCause; })) return;
    ++m_lPlanted;
    m_sLatest.push_back(std::string(tCause.sName) + " at second " + std::to_string(t.lSecond) + " (input #" +
                        std::to_string(iPort + 1) + ", " + std::to_string(iSeconds) + " s)");
    if (m_sLatest.size() > LatestKept) m_sLatest.erase(m_sLatest.begin());
    tCause.Begin(t, iPort);
    if (tCause.End) m_tUnderWay.push_back({&tCause, iPort, t.lSecond + iSeconds});
}

void Planner::EndAll(Scene& t) {
    for (const UnderWay& tOver : m_tUnderWay) tOver.pCause->End(t, tOver.iPort);
    m_tUnderWay.clear();
}

std::string Planner::Latest() const {
    std::string s;
    for (const std::string& sCause : m_sLatest) s += "\n  " + sCause;
    return s;
}

}  // namespace simulation
