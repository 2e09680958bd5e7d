// The simulated receiver: opens pseudo-terminals under given names and behaves like the board on one and like a GPS on
// the other, until it is told to end.
#include <poll.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <memory>
#include <string>
#include <system_error>

#include "tools/Arguments.h"
#include "tools/BoardCommands.h"
#include "tools/PseudoTerminal.h"
#include "tools/Traffic.h"

namespace {

using Steady = std::chrono::steady_clock;
using simulator::BoardCommand;
using simulator::PseudoTerminal;

constexpr const char* Usage =
    "Usage: tidewatch-sim [--receiver LINK] [--gps LINK] [--seed N] [--rate X] [--targets N]\n"
    "                     [--missing PERCENT] [--damaged PERCENT] [RECEPTION]\n"
    "Opens a pseudo-terminal for each LINK and speaks like an AIS receiver board and like a GPS.\n"
    "--rate 10 lets the time of the harbour pass ten times as fast. Ends on SIGTERM and SIGINT.\n";

constexpr int LongestSleep = 50;  // milliseconds: how soon a new listener or a signal is noticed
constexpr int LinesPerTurn = 2000;

volatile std::sig_atomic_t g_iEnd = 0;
void End(int) { g_iEnd = 1; }

void CatchSignals() {
    struct sigaction tAction {};
    tAction.sa_handler = End;
    sigaction(SIGTERM, &tAction, nullptr);
    sigaction(SIGINT, &tAction, nullptr);
    sigaction(SIGHUP, &tAction, nullptr);
    tAction.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &tAction, nullptr);
}

runtime::DateTime UtcNow() {
    const auto tSince = std::chrono::system_clock::now().time_since_epoch();
    return {runtime::MakeDateTime({1970, 1, 1}, 0, 0, 0).lSeconds +
            std::chrono::duration_cast<std::chrono::seconds>(tSince).count()};
}

void Say(const std::string& sText) {
    std::fprintf(stdout, "%s\n", sText.c_str());
    std::fflush(stdout);
}

class Simulation {
public:
    explicit Simulation(const simulator::Arguments& t);
    void Run();

private:
    void Open(std::unique_ptr<PseudoTerminal>& pPort, const std::string& sLink, const char* sName);
    void SpeakUntilNow();
    void Listen();
    void Obey(const BoardCommand& t);
    int MillisecondsToWait() const;
    std::int64_t Now() const;

    simulator::TrafficOptions m_tOptions;
    double m_dRate;
    std::unique_ptr<PseudoTerminal> m_pReceiver;
    std::unique_ptr<PseudoTerminal> m_pGps;
    std::unique_ptr<simulator::Traffic> m_pTraffic;
    simulator::TrafficLine m_tPending;  // the next line to be said
    simulator::BoardCommands m_tCommands;
    Steady::time_point m_tStart;
};

Simulation::Simulation(const simulator::Arguments& t) {
    if (!t.Has("--receiver") && !t.Has("--gps")) throw simulator::ArgumentError("--receiver or --gps is needed");
    m_tOptions.lSeed = static_cast<std::uint64_t>(t.Number("--seed", 1, 0, 1e15));
    m_tOptions.iTargets = static_cast<int>(t.Number("--targets", 120, 0, 20000));
    m_tOptions.dMissingPercent = t.Number("--missing", 5, 0, 100);
    m_tOptions.dDamagedPercent = t.Number("--damaged", 0.3, 0, 100);
    m_tOptions.tRule = simulator::ReadReceptionRule(t);
    m_tOptions.lChance = static_cast<std::uint64_t>(t.Number("--chance", 0, 0, 1e15));
    m_tOptions.dtStart = UtcNow();
    m_dRate = t.Number("--rate", 1, 0.01, 10000);
    Open(m_pReceiver, t.Text("--receiver", ""), "receiver");
    Open(m_pGps, t.Text("--gps", ""), "gps");
    m_pTraffic = std::make_unique<simulator::Traffic>(m_tOptions);
}

void Simulation::Open(std::unique_ptr<PseudoTerminal>& pPort, const std::string& sLink, const char* sName) {
    if (sLink.empty()) return;
    pPort = std::make_unique<PseudoTerminal>(sLink);
    Say(std::string(sName) + " " + sLink + " " + pPort->Device());
}

// Milliseconds of the harbour's time.
std::int64_t Simulation::Now() const {
    const std::chrono::duration<double, std::milli> dSince = Steady::now() - m_tStart;
    return static_cast<std::int64_t>(dSince.count() * m_dRate);
}

void Simulation::Run() {
    m_tStart = Steady::now();
    m_tPending = m_pTraffic->Next();
    while (!g_iEnd) {
        SpeakUntilNow();
        Listen();
    }
}

void Simulation::SpeakUntilNow() {
    for (int i = 0; i < LinesPerTurn && m_tPending.lMilliseconds <= Now(); ++i) {
        PseudoTerminal* pPort = m_tPending.bGps ? m_pGps.get() : m_pReceiver.get();
        if (pPort) pPort->WriteLine(m_tPending.sText);
        m_tPending = m_pTraffic->Next();
    }
}

int Simulation::MillisecondsToWait() const {
    const double d = static_cast<double>(m_tPending.lMilliseconds - Now()) / m_dRate;
    return static_cast<int>(std::clamp(d, 0.0, static_cast<double>(LongestSleep)));
}

// Sleeps until the next line is due or a command comes in.
void Simulation::Listen() {
    // A port that nobody has open reports that without pause, so it is left out while it is so.
    const bool bListened = m_pReceiver && m_pReceiver->Listened();
    if (m_pReceiver && !bListened) m_tCommands.Clear();
    pollfd tPoll{bListened ? m_pReceiver->Handle() : -1, POLLIN, 0};
    ::poll(&tPoll, 1, MillisecondsToWait());
    if ((tPoll.revents & POLLIN) == 0) return;
    for (const BoardCommand& t : m_tCommands.Take(m_pReceiver->Read())) Obey(t);
}

void Simulation::Obey(const BoardCommand& t) {
    if (t.eKind == BoardCommand::Kind::Channel) m_pTraffic->SetChannel(t.sChannel);
    if (t.eKind == BoardCommand::Kind::Interval) m_pTraffic->SetInterval(t.iInterval);
    Say(t.sSaid);
}

int RunWith(int argc, char** argv) {
    std::set<std::string_view> sNames = simulator::ReceptionOptions;
    sNames.insert({"--receiver", "--gps", "--seed", "--rate", "--targets", "--missing", "--damaged"});
    const simulator::Arguments tArguments(argc, argv, sNames);
    CatchSignals();
    Simulation tSimulation(tArguments);
    tSimulation.Run();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return RunWith(argc, argv);
    } catch (const simulator::ArgumentError& tError) {
        std::fprintf(stderr, "tidewatch-sim: %s\n%s%s", tError.what(), Usage, simulator::ReceptionUsage);
        return 2;
    } catch (const std::system_error& tError) {
        std::fprintf(stderr, "tidewatch-sim: %s\n", tError.what());
        return 1;
    }
}
