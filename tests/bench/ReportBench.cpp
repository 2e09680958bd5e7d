// How fast tidewatch-report reads a plain file, command by command, beside the plain loop (Limit.h). The whole program
// is run, from the opening of the file to the result, which goes to nowhere. Prints figures in lines for a second of
// processor time, system included.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "report/Run.h"
#include "tests/bench/Limit.h"
#include "tools/RecordWriter.h"

namespace {

constexpr std::int64_t Lines = 2000000;
constexpr int Rounds = 5;

double ProcessorSeconds() {
    rusage t{};
    getrusage(RUSAGE_SELF, &t);
    const auto SecondsOf = [](const timeval& v) {
        return static_cast<double>(v.tv_sec) + static_cast<double>(v.tv_usec) * 1e-6;
    };
    return SecondsOf(t.ru_utime) + SecondsOf(t.ru_stime);
}

// The median of some rounds.
template <class Function>
double Rate(const Function& Work) {
    std::vector<double> dRates;
    for (int i = 0; i < Rounds; ++i) {
        const double dStart = ProcessorSeconds();
        Work();
        dRates.push_back(static_cast<double>(Lines) / (ProcessorSeconds() - dStart));
    }
    std::ranges::sort(dRates);
    return dRates[dRates.size() / 2];
}

std::string Simulated(const char* sKind) {
    simulator::RecordWriter tWriter(*simulator::FindRecordKind(sKind), Lines);
    std::string s;
    for (std::int64_t i = 0; i < Lines; ++i) tWriter.AppendLine(s);
    return s;
}

void Print(const char* sKind, const char* sCommand, double dRate, double dLimit) {
    std::printf("| %s | %s | %.0f | %.2f |\n", sKind, sCommand, dRate, dRate / dLimit);
    std::fflush(stdout);
}

}  // namespace

// All commands, or those that are named.
int main(int argc, char** argv) {
    const std::vector<std::string> sAsked(argv + 1, argv + argc);
    const int iNowhere = ::open("/dev/null", O_WRONLY);
    const std::string sFile = "/tmp/tidewatch-report-bench-" + std::to_string(::getpid()) + ".txt";
    std::printf("%lld lines, median of %d, lines in a second of processor time\n\n", static_cast<long long>(Lines),
                Rounds);
    std::printf("| recording | command | lines/s | of the plain loop |\n|---|---|---|---|\n");
    for (const char* sKind : {"mixed", "reports"}) {
        const std::string sRecord = Simulated(sKind);
        std::ofstream(sFile, std::ios::binary) << sRecord;
        const double dLimit = Rate([&] { bench::Limit().Read(sRecord); });
        Print(sKind, "plain loop", dLimit, dLimit);
        for (const report::Command& t : report::Commands()) {
            if (!t.pMake) continue;  // one takes two files, another would not end
            if (!sAsked.empty() && std::ranges::count(sAsked, t.sName) == 0) continue;
            report::Asked tAsked{&t, {}};
            tAsked.tOptions.sFiles = {sFile};
            if (!t.pMake) tAsked.tOptions.sFiles.push_back(sFile);  // one that reads two beside each other
            tAsked.tOptions.eFormat = report::Format::Csv;
            // "reports" recordings have no GPS.
            tAsked.tOptions.tPosition = nav::Position{50.8, -1.3};
            Print(sKind, t.sName, Rate([&] { report::Run(tAsked, iNowhere, iNowhere); }), dLimit);
        }
    }
    ::unlink(sFile.c_str());
    return 0;
}
