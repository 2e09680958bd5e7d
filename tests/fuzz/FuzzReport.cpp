// Fuzz target for tidewatch-report: any bytes as a record file, plain or packed, through every command that ends. Sums
// must come out, JSON must be JSON, and CSV a table.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
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

// What a descriptor of memory holds; it is empty afterwards.
std::string Taken(int iFile) {
    std::string s(static_cast<std::size_t>(::lseek(iFile, 0, SEEK_END)), '\0');
    Promise(::pread(iFile, s.data(), s.size(), 0) == static_cast<ssize_t>(s.size()));
    Promise(::ftruncate(iFile, 0) == 0 && ::lseek(iFile, 0, SEEK_SET) == 0);
    return s;
}

// Every record has as many fields as the first.
bool IsCsv(const std::string& s) {
    int iFirst = 0, iFields = 1;
    bool bQuoted = false;
    for (const char c : s) {
        if (c == '"') bQuoted = !bQuoted;
        if (bQuoted) continue;
        if (c == ',') ++iFields;
        if (c != '\n') continue;
        if (iFirst == 0) iFirst = iFields;
        if (iFields != iFirst) return false;
        iFields = 1;
    }
    return !bQuoted && (s.empty() || s.back() == '\n');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    static const int iNowhere = ::open("/dev/null", O_WRONLY);
    static const int iResult = ::memfd_create("result", 0);
    const int iFile = ::memfd_create("record", 0);
    if (iFile < 0 || ::write(iFile, pData, iSize) < 0) return 0;
    const std::string sPath = "/proc/self/fd/" + std::to_string(iFile);
    Count(sPath);
    for (const report::Command& t : report::Commands()) {
        if (t.iTakes & report::TakesWatch) continue;  // it would not end
        report::Asked tAsked{&t, {}};
        tAsked.tOptions.sFiles = {sPath, sPath};
        tAsked.tOptions.eFormat = static_cast<report::Format>(iSize % 3);
        if (iSize % 2 == 0) tAsked.tOptions.tPosition = nav::Position{50, 1};
        if (iSize % 5 == 0) tAsked.tOptions.eBy = report::Period::Hour;
        tAsked.tOptions.bRaw = iSize % 7 == 0;
        Promise(report::Run(tAsked, iResult, iNowhere) <= report::ExitUnsaid);
        const std::string sResult = Taken(iResult);
        if (tAsked.tOptions.eFormat == report::Format::Json) Promise(nlohmann::json::accept(sResult));
        if (tAsked.tOptions.eFormat == report::Format::Csv) Promise(IsCsv(sResult));
    }
    ::close(iFile);
    return 0;
}
