// Fuzz target for tidewatch-report: any bytes as a record file through every command, plain and as they would be read
// out of packed data, with the sums held that must come out.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "report/Run.h"
#include "report/Sequence.h"

namespace {

void Promise(bool bHeld) {
    if (!bHeld) std::abort();
}

// Every line is told of once, and every message comes out of a line.
class Counter : public report::Collector {
public:
    void Line(const report::LineEvent& t) override {
        ++lLines;
        if (t.eKind == report::LineKind::Message) ++lVdm;
    }
    void Message(const report::Report& t) override {
        ++lMessages;
        Promise(t.iShip >= 0 && t.lData.size() >= report::Report::ValuesKept);
        Promise(!t.bRange || (t.bPosition && t.bOwnPosition && t.tFromUs.Range() >= 0));
    }
    bool Finish() override { return true; }

    std::int64_t lLines = 0, lVdm = 0, lMessages = 0;
};

void Count(const std::string& sPath) {
    Counter t;
    report::Sequence tSequence({sPath}, report::OwnPosition());
    tSequence.Play(t, [](double) {});
    Promise(t.lMessages <= t.lVdm);
    Promise(tSequence.Ends().front().lLines == t.lLines);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    static const int iNowhere = ::open("/dev/null", O_WRONLY);
    const int iFile = ::memfd_create("record", 0);
    if (iFile < 0 || ::write(iFile, pData, iSize) < 0) return 0;
    const std::string sPath = "/proc/self/fd/" + std::to_string(iFile);
    Count(sPath);
    for (const report::Command& t : report::Commands()) {
        report::Asked tAsked{&t, {}};
        tAsked.tOptions.sFiles = {sPath, sPath};
        tAsked.tOptions.eFormat = static_cast<report::Format>(iSize % 3);
        if (iSize % 2 == 0) tAsked.tOptions.tPosition = nav::Position{50, 1};
        if (iSize % 5 == 0) tAsked.tOptions.eBy = report::Period::Hour;
        Promise(report::Run(tAsked, iNowhere, iNowhere) <= report::ExitUnsaid);
    }
    ::close(iFile);
    return 0;
}
