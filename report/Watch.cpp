// The loop around WatchRules: files, clocks, signals.
#include "report/Watch.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <ctime>

#include "platform/runtime/Format.h"
#include "report/CommandLine.h"
#include "report/EventCommand.h"
#include "report/FollowedFile.h"
#include "report/SentenceRoad.h"

namespace report {

namespace {

constexpr double LongestPause = 1;  // seconds between two looks at the file
constexpr std::int64_t LinesPerLook = 1 << 16;

double SteadySeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// SIGINT and SIGTERM, kept back and asked for, so that none is lost between a look and a pause.
class EndSignals {
public:
    EndSignals() {
        ::sigemptyset(&m_tSignals);
        ::sigaddset(&m_tSignals, SIGINT);
        ::sigaddset(&m_tSignals, SIGTERM);
        ::pthread_sigmask(SIG_BLOCK, &m_tSignals, &m_tBefore);
    }
    ~EndSignals() { ::pthread_sigmask(SIG_SETMASK, &m_tBefore, nullptr); }
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    // Waits so long at the most. True once one has come.
    bool Wait(double dSeconds) {
        const double dWhole = std::floor(dSeconds);
        const timespec t{static_cast<std::time_t>(dWhole), static_cast<long>((dSeconds - dWhole) * 1e9)};
        m_bCame = m_bCame || ::sigtimedwait(&m_tSignals, nullptr, &t) > 0;
        return m_bCame;
    }

private:
    sigset_t m_tSignals{}, m_tBefore{};
    bool m_bCame = false;
};

// What the rules want to know of the road's events.
class Feed final : public Collector {
public:
    explicit Feed(WatchRules& t) : m_tRules(t) {}
    void Line(const LineEvent& t) override {
        if (t.bTimed) m_tRules.Line(t.dt);
    }
    void Message(const Report&) override { m_tRules.Message(); }
    bool Finish() override { return true; }

private:
    WatchRules& m_tRules;
};

struct EndWanted {};

// One file's lines to the rules. Raises EndWanted.
class Road {
public:
    Road(WatchRules& tRules, EndSignals& tEnd) : m_tFeed(tRules), m_tEnd(tEnd) {}
    void Take(Record& t) {
        if ((++m_lLines & (LinesPerLook - 1)) == 0 && m_tEnd.Wait(0)) throw EndWanted();
        if (t.tLine.eKind != LineKind::Other) return m_tFeed.Line(t.tLine);
        m_tRoad.Take(t.tLine, t.sSentence);
        m_tRoad.Finish();  // at once: levels do not matter here
    }

private:
    OwnPosition m_tOwn;
    Ships m_tShips;
    Feed m_tFeed;
    EndSignals& m_tEnd;
    SentenceRoad m_tRoad{0, m_tOwn, m_tShips, m_tFeed};
    std::int64_t m_lLines = 0;
};

const char* NameOf(Trouble e) { return e == Trouble::Quiet ? "quiet" : e == Trouble::Stopped ? "stopped" : "below"; }

std::string TextOf(const WatchEvent& t, bool bThere) {
    const std::string sFor = DurationText(std::lround(t.dSeconds));
    if (t.eTrouble == Trouble::Below) {
        return std::string(t.bOver ? "again " : "only ") + std::to_string(*t.lHeard) + " messages in the hour from " +
               IsoText(t.dtHour) + ", usually " + runtime::Format(*t.dUsual, {1, 0});
    }
    if (t.eTrouble == Trouble::Quiet) return (t.bOver ? "an AIS message after " : "no AIS message for ") + sFor;
    if (t.bOver) return "the file grows again after " + sFor;
    return (bThere ? "the file has not grown for " : "there is no such file, for ") + sFor;
}

// An event as a row, or as the command's environment.
class Teller {
public:
    Teller(const Options& t, Writer& tWriter, Sink& tResult, Sink& tNotes)
        : m_sFile(t.sFiles.back()), m_tCommand(t.sRun, tNotes), m_tWriter(tWriter), m_tResult(tResult) {
        m_bRun = !t.sRun.empty();
        m_tWriter.BeginTable("events", "Events of " + m_sFile,
                             {{"time", "time", 19, true},
                              {"event", "event", 7, true},
                              {"state", "state", 6, true},
                              {"seconds", "s", 7},
                              {"messages", "msgs", 7},
                              {"usual", "usual", 7},
                              {"text", "what", 0, true}});
        m_tResult.Flush();
    }

    void Tell(const WatchEvent& t, bool bThere) {
        const std::string sTime = IsoText(runtime::LocalNow()), sState = t.bOver ? "over" : "begins";
        const std::string sText = TextOf(t, bThere);
        const bool bHour = t.eTrouble == Trouble::Below;
        const Cell tSeconds = bHour ? Cell() : Cell(Number{t.dSeconds, 0});
        const Cell tHeard = t.lHeard ? Cell(*t.lHeard) : Cell(),
                   tUsual = t.dUsual ? Cell(Number{*t.dUsual, 1}) : Cell();
        if (!m_bRun) {
            m_tWriter.Row({sTime, std::string(NameOf(t.eTrouble)), sState, tSeconds, tHeard, tUsual, sText});
            m_tResult.Flush();
            return;
        }
        m_tCommand.Run({"TIDEWATCH_EVENT=" + std::string(NameOf(t.eTrouble)), "TIDEWATCH_STATE=" + sState,
                        "TIDEWATCH_TIME=" + sTime, "TIDEWATCH_FILE=" + m_sFile, "TIDEWATCH_TEXT=" + sText,
                        "TIDEWATCH_SECONDS=" + CellText(tSeconds, ""), "TIDEWATCH_MESSAGES=" + CellText(tHeard, ""),
                        "TIDEWATCH_USUAL=" + CellText(tUsual, "")});
    }
    void LookAfterCommands() { m_tCommand.Reap(); }

private:
    const std::string m_sFile;
    EventCommand m_tCommand;
    Writer& m_tWriter;
    Sink& m_tResult;
    bool m_bRun = false;
};

void ReadPast(const std::string& sFile, WatchRules& tRules, EndSignals& tEnd, Sink& tNotes) {
    Road tRoad(tRules, tEnd);
    try {
        RecordReader tReader(sFile);
        Record t;
        while (tReader.Next(t)) tRoad.Take(t);
    } catch (const InputError& tError) {
        tNotes.Write("tidewatch-report: " + sFile + ": " + tError.what() + "\n");
    }
}

// Until an end is wanted. Raises InputError.
void Follow(const Options& tOptions, Teller& tTeller, EndSignals& tEnd, Sink& tNotes) {
    WatchRules tRules(tOptions.tWatch);
    const auto Note = [&](const std::string& s) {
        tNotes.Write("tidewatch-report: " + s + "\n");
        tNotes.Flush();
    };
    for (std::size_t i = 0; i + 1 < tOptions.sFiles.size(); ++i) ReadPast(tOptions.sFiles[i], tRules, tEnd, tNotes);
    FollowedFile tFile(tOptions.sFiles.back());
    Road tRoad(tRules, tEnd);
    const auto Take = [&](Record& t) { tRoad.Take(t); };
    tFile.Read(Take);
    tRules.Begin(SteadySeconds());
    if (!tFile.Open()) Note(tOptions.sFiles.back() + " is not there yet; waiting for it");
    if (tOptions.tWatch.iBelow) {
        Note("what is usual is known for " + std::to_string(tRules.HoursKnown()) +
             " of the 24 hours of the day; it takes " + std::to_string(tOptions.tWatch.iDays) + " days");
    }
    const double dPause = std::min({LongestPause, tOptions.tWatch.dQuiet / 4, tOptions.tWatch.dStopped / 4});
    while (!tEnd.Wait(dPause)) {
        if (tFile.Read(Take)) tRules.Grew();
        for (const WatchEvent& t : tRules.Tick(SteadySeconds())) tTeller.Tell(t, tFile.Open());
        tTeller.LookAfterCommands();
    }
}

}  // namespace

int Watch(const Options& tOptions, Writer& tWriter, Sink& tResult, Sink& tNotes) {
    EndSignals tEnd;
    int iExit = ExitGood;
    Teller tTeller(tOptions, tWriter, tResult, tNotes);
    try {
        Follow(tOptions, tTeller, tEnd, tNotes);
    } catch (const EndWanted&) {
    } catch (const InputError& tError) {
        tNotes.Write("tidewatch-report: " + tOptions.sFiles.back() + ": " + tError.what() + "\n");
        iExit = ExitUnsaid;
    }
    tWriter.EndTable();
    tWriter.End();
    tResult.Flush();
    tNotes.Flush();
    return iExit;
}

}  // namespace report
