// The table of what must hold.
#include "tests/simulation/Invariants.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QPixmapCache>
#include <algorithm>
#include <set>
#include <string>
#include <thread>

#include "platform/toolkit/CellDelegate.h"
#include "tests/simulation/Failure.h"

namespace simulation {

namespace {

constexpr int MostLines = 101;
constexpr int MostRows = 257;  // the header and 256 messages
constexpr int TotalRow = 34;
constexpr int LastCounted = 32;
constexpr int DescriptorsOfFile = 2;   // its own, and the one that brings it to the disk
constexpr int MostPlayedFiles = 254;   // of bursts, which are closed when their number is needed
constexpr int ThreadsPatience = 5000;  // milliseconds, for one that was left to end by itself
constexpr std::int64_t Megabyte = 1'000'000;
constexpr std::int64_t Laying = 3 * Megabyte / 2;  // what views take until each has been seen once
constexpr std::int64_t Noise = Megabyte / 2;       // of a level
constexpr double Filling = 0.02;                   // allocations a sentence, where a table is filled after a new start
constexpr double LongerTexts = 5;                  // allocations a tick, of notes that are longer after a while
constexpr int TendingSeconds = 70;                 // until the folder has been looked after
constexpr int UsualWidth = 900, UsualHeight = 700;
constexpr int FirstHours = 96;  // after which every view has been seen often and every store is as large as it gets

void Demand(bool b, const std::string& sWhat) {
    if (!b) throw Failure(sWhat);
}
std::string Number(double d) { return std::to_string(d); }

std::int64_t Count(Scene& t, int iRow) {
    return static_cast<std::int64_t>(t.pWindow->grdMessageData.Cells.Number(iRow, 1));
}

void LogsAreBounded(Scene& t) {
    Window& w = *t.pWindow;
    for (const toolkit::LogList* p :
         {&w.lstCommData(0), &w.lstCommData(1), &w.lstRxData, &w.lstAisData, &w.lstGpsData, &w.lstOutputData}) {
        Demand(p->Lines.Count() <= MostLines, "a log holds " + std::to_string(p->Lines.Count()) + " lines");
        Demand(p->model()->rowCount() == p->Lines.Count(), "a log's view shows another number of lines");
    }
}

void TotalIsSumOfCounts(Scene& t) {
    std::int64_t lSum = 0;
    for (int iRow = 1; iRow <= LastCounted; ++iRow) lSum += Count(t, iRow);
    Demand(lSum == Count(t, TotalRow),
           "the total is " + std::to_string(Count(t, TotalRow)) + ", the counts make " + std::to_string(lSum));
    Demand(lSum == t.tLedger.Messages(),
           "counted are " + std::to_string(lSum) + " messages, sent were " + std::to_string(t.tLedger.Messages()));
}

void TableHoldsTheNewest(Scene& t) {
    const runtime::GridCells& tCells = t.pWindow->grdTargetData.Cells;
    Demand(tCells.Rows() <= MostRows, "the table has " + std::to_string(tCells.Rows()) + " rows");
    Demand(tCells.Rows() - 1 == std::min<std::int64_t>(t.tLedger.Messages(), MostRows - 1),
           "the table has " + std::to_string(tCells.Rows()) + " rows after " + std::to_string(t.tLedger.Messages()) +
               " messages");
    const std::int64_t lNewest = t.lNumbersFrom + t.tLedger.Messages();
    std::set<std::string> sWanted, sThere;
    for (int iRow = 1; iRow < tCells.Rows(); ++iRow) {
        sThere.insert(tCells.Text(iRow, targets::ColNumber));
        sWanted.insert(std::to_string(lNewest - iRow + 1));
    }
    Demand(sThere == sWanted, "the table does not hold the newest messages: " +
                                  (sThere.empty() ? std::string() : *sThere.begin() + " to " + *sThere.rbegin()));
}

void TableIsInOrder(Scene& t) {
    Window& w = *t.pWindow;
    if (w.cmbTargetSort.ListIndex() != targets::SortByMmsi) return;
    for (int iRow = 2; iRow < w.grdTargetData.Cells.Rows(); ++iRow) {
        Demand(w.grdTargetData.Cells.Number(iRow - 1, targets::ColMmsi) <=
                   w.grdTargetData.Cells.Number(iRow, targets::ColMmsi),
               "the table is not in order at row " + std::to_string(iRow));
    }
}

// A target that is chosen while others are tracked hides nothing before the next message: asked of rows that came
// later.
void TrackedAloneShows(Scene& t) {
    Window& w = *t.pWindow;
    for (int iRow = 1; iRow < w.grdTargetData.Cells.Rows(); ++iRow) {
        Demand(w.chkTargetTrack.isChecked() || !w.grdTargetData.Cells.Hidden(iRow),
               "a row is hidden and nothing is tracked");
    }
}

void TargetsAreFew(Scene& t) {
    const int iTargets = t.pWindow->cmbTargetTarget.Items.Count();
    Demand(iTargets <= t.tSetting.iTargets,
           "the list has " + std::to_string(iTargets) + " targets of " + std::to_string(t.tSetting.iTargets));
}

void NobodyIsAsked(Scene& t) {
    Demand(t.tWorld.iUnanswered == 0 && t.tWorld.sMessages.isEmpty(), "a dialog or a message box was shown");
    t.tWorld.tDialogs.clear();
    t.tWorld.bBusyPointer.clear();
}

// Half a minute passes, in which texts and pictures are forgotten that nobody draws: the hand paints too seldom for
// that, and no timer runs.
void ForgetDrawn(Scene& t) {
    for (const toolkit::Grid* p : {&t.pWindow->grdTargetData, &t.pWindow->grdMessageData, &t.pWindow->grdSpecData}) {
        auto* const pDelegate = dynamic_cast<toolkit::CellDelegate*>(p->itemDelegate());
        for (int i = 0; i < 2 * toolkit::CellDelegate::PaintingsToGeneration; ++i) pDelegate->BeginPainting();
    }
    QPixmapCache::clear();
}

void RecordingsAreComplete(Scene& t) { t.VerifyRecordings(); }

// What the keep rule leaves: the bytes, what a minute brings, and never less than the newest file. A foreign file
// stays.
void FolderIsKept(Scene& t) {
    const QDir tFolder(t.sFolder);
    if (!t.tSetting.bUnattended || !tFolder.exists() || t.tNotices.Recent(TroubleDisk, t.lSecond, 200)) return;
    Demand(tFolder.exists(QStringLiteral("notes.txt")), "a foreign file has gone");
    if (t.tSetting.lKeepMegabytes == 0 || !t.pWindow->m_bRecording || t.lSecond - t.lNewFile < TendingSeconds) return;
    std::int64_t lBytes = 0;
    const auto tFiles = tFolder.entryInfoList({QStringLiteral("tidewatch-*")}, QDir::Files);
    for (const QFileInfo& tFile : tFiles) lBytes += tFile.size();
    // The newest recording and the newest capture stay in every case, the former ones until the next minute.
    Demand(lBytes <= (t.tSetting.lKeepMegabytes + 1) * Megabyte || tFiles.size() <= (t.tSetting.bCapture ? 2 : 1),
           "the folder holds " + std::to_string(lBytes) + " bytes");
}

// While the port takes everything nothing waits, and what never came was told as dropped.
void OutputIsWhole(Scene& t) {
    t.tForwarded.Check();
    if (!t.pWindow->MSCommOutput.PortOpen() || t.tNotices.Recent(TroubleOutput, t.lSecond, 60)) return;
    Demand(t.tForwarded.AllCame(), "what was forwarded has not come out");
    Demand(t.tForwarded.Missing() == t.pWindow->MSCommOutput.TextsDropped(),
           std::to_string(t.tForwarded.Missing()) + " sentences are missing, dropped were " +
               std::to_string(t.pWindow->MSCommOutput.TextsDropped()));
}

struct Invariant {
    const char* sName;
    void (*Check)(Scene&);
};
constexpr Invariant Table[] = {
    {"bounded logs", LogsAreBounded},
    {"total of the counts", TotalIsSumOfCounts},
    {"newest messages in the table", TableHoldsTheNewest},
    {"order of the table", TableIsInOrder},
    {"tracking", TrackedAloneShows},
    {"list of targets", TargetsAreFew},
    {"no questions", NobodyIsAsked},
    {"complete recordings", RecordingsAreComplete},
    {"kept files", FolderIsKept},
    {"what the output says", OutputIsWhole},
};

}  // namespace

// The memory of pictures is not what grows: each is as large as the window was when its tab was shown last.
static void ShowAtUsualSize(Scene& t) {
    const int iTab = t.pWindow->SSTab.Tab();
    t.pWindow->resize(UsualWidth, UsualHeight);
    for (const int i : {static_cast<int>(ui::TabDiagram), static_cast<int>(ui::TabTiming), iTab}) {
        t.pWindow->SSTab.SetTab(i);
    }
    t.TakeOver();
}

void Invariants::Check(Scene& t) {
    ShowAtUsualSize(t);
    t.tDisk.Release();
    t.pWindow->FinishFiles();
    for (const Invariant& tRow : Table) {
        try {
            tRow.Check(t);
        } catch (const Failure& tFailure) {
            throw Failure(std::string(tRow.sName) + ": " + tFailure.what());
        }
    }
    ForgetDrawn(t);
    Measure(t);
    Digest(t);
}

// Those that are open for nothing that is known. A thread whose file has been closed may hold its own a moment longer.
int Invariants::Descriptors(Scene& t) const {
    const Window& w = *t.pWindow;
    const bool bFile = w.m_bRecording && w.m_tFiles.IsOpen(w.m_iRecordFile);
    const bool bCapture = w.m_tFiles.IsOpen(w.m_iCaptureFile);
    const int iKnown = ((bFile ? 1 : 0) + (bCapture ? 1 : 0)) * DescriptorsOfFile;
    const QDeadlineTimer tPatience(ThreadsPatience);
    int iDescriptors = OpenDescriptors(PlayedName) - iKnown;
    while (m_iHours > 0 && iDescriptors != m_tFirst.iDescriptors && !tPatience.hasExpired()) {
        std::this_thread::yield();
        iDescriptors = OpenDescriptors(PlayedName) - iKnown;
    }
    Demand(OpenDescriptors({}) - OpenDescriptors(PlayedName) <= MostPlayedFiles, "too many files of bursts are open");
    return iDescriptors;
}

// Levels: what the first hours needed must do for all that follow.
void Invariants::Measure(Scene& t) {
    m_tLast = {t.tMeter.PerSentence(), t.tMeter.PerTick(), MemoryInUse(), Descriptors(t)};
    t.tMeter.BeginHour();
    if (m_iHours++ == 0) m_tFirst = m_tLast;
    if (m_tFirst.dPerTick == 0) m_tFirst.dPerTick = m_tLast.dPerTick;
    Demand(m_tLast.iDescriptors == m_tFirst.iDescriptors, "descriptors: " + std::to_string(m_tLast.iDescriptors) +
                                                              ", at first " + std::to_string(m_tFirst.iDescriptors));
    const double dFilling = m_iHours == 1 ? m_tFirst.dPerSentence : Filling;
    Demand(m_tLast.dPerSentence <= dFilling,
           "allocations for a sentence: " + Number(m_tLast.dPerSentence) + ", bound " + Number(dFilling));
    Demand(m_tLast.dPerTick <= m_tFirst.dPerTick + LongerTexts,
           "allocations for a tick: " + Number(m_tLast.dPerTick) + ", at first " + Number(m_tFirst.dPerTick));
    if (m_iHours > 1) m_tMost.dPerSentence = std::max(m_tMost.dPerSentence, m_tLast.dPerSentence);
    m_tMost.dPerTick = std::max(m_tMost.dPerTick, m_tLast.dPerTick);
    const bool bWaits = t.tNotices.UnderWay(TroubleDisk) || t.tNotices.UnderWay(TroubleOutput);
    if (!t.pWindow->m_bPlayback && !bWaits) CheckMemory();
}

// But for what is held as long as a playback lasts, or until a disk or an output can take it.
void Invariants::CheckMemory() {
    const bool bFirst = m_iHours <= FirstHours;
    const std::int64_t lBound = bFirst ? m_tFirst.lMemory + Laying : m_lMostAtFirst + Noise;
    Demand(m_tLast.lMemory <= lBound,
           "memory: " + std::to_string(m_tLast.lMemory) + " bytes, bound " + std::to_string(lBound));
    if (bFirst) m_lMostAtFirst = std::max(m_lMostAtFirst, m_tLast.lMemory);
    if (!bFirst) m_tMost.lMemory = std::max(m_tMost.lMemory, m_tLast.lMemory);
}

void Invariants::Digest(Scene& t) {
    const std::string sHere = t.tWorld.Folder().toStdString();  // another one in every run
    const auto Take = [this, &sHere](std::string s) {
        if (const auto iAt = s.find(sHere); iAt != std::string::npos) s.erase(iAt, sHere.size());
        for (const char c : s + "\n") m_lDigest = (m_lDigest ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
    };
    Window& w = *t.pWindow;
    for (const toolkit::LogList* p : {&w.lstCommData(0), &w.lstCommData(1), &w.lstAisData, &w.lstOutputData}) {
        for (int i = 0; i < p->Lines.Count(); ++i) Take(p->Lines.Line(i));
    }
    for (int iRow = 1; iRow < w.grdTargetData.Cells.Rows(); ++iRow) {
        for (int iCol = 0; iCol < w.grdTargetData.Cells.Cols(); ++iCol) Take(w.grdTargetData.Cells.Text(iRow, iCol));
    }
    for (int i = 1; i <= 5; ++i) Take(w.StatusBar.PanelText(i));
    for (const QFileInfo& tFile : QDir(t.sFolder).entryInfoList(QDir::Files, QDir::Name)) {
        Take(tFile.fileName().toStdString() + ' ' + std::to_string(tFile.size()));
    }
}

}  // namespace simulation
