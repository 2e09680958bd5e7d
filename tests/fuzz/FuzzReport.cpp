// Fuzz target for tidewatch-report: any bytes as a recording or a capture, plain or packed, through one of the commands
// that end. Sums must come out, JSON must be JSON, and CSV a table. Which command, and how it is asked, hangs on the
// bytes, so that an input always does the same.
#include <fcntl.h>

#include <nlohmann/json.hpp>

#include "report/Run.h"
#include "tests/fuzz/MemoryFile.h"
#include "tests/fuzz/ReportCounter.h"

namespace {

using fuzz::Promise;

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

std::vector<const report::Command*> EndingCommands() {
    std::vector<const report::Command*> p;
    for (const report::Command& t : report::Commands()) {
        if (!(t.iTakes & report::TakesWatch)) p.push_back(&t);
    }
    return p;
}

void Command(const std::string& sPath, std::size_t iChoice) {
    static const int iNowhere = ::open("/dev/null", O_WRONLY);
    static fuzz::MemoryFile tResult;
    static const std::vector<const report::Command*> pCommands = EndingCommands();
    const auto Choose = [&iChoice](std::size_t iOf) {
        const std::size_t i = iChoice % iOf;
        iChoice /= iOf;
        return i;
    };
    const report::Command* pCommand = pCommands[Choose(pCommands.size())];
    report::Asked tAsked{pCommand, {}};
    tAsked.tOptions.sFiles = {sPath};
    if (Choose(2) == 1 || !pCommand->pMake) tAsked.tOptions.sFiles.push_back(sPath);
    tAsked.tOptions.eFormat = static_cast<report::Format>(Choose(3));
    if (Choose(2) == 1) tAsked.tOptions.tPosition = nav::Position{50, 1};
    if (Choose(3) == 1) tAsked.tOptions.eBy = report::Period::Hour;
    tAsked.tOptions.bRaw = Choose(4) == 1;
    Promise(report::Run(tAsked, tResult.Descriptor(), iNowhere) <= report::ExitUnsaid);
    const std::string sResult = tResult.Take();
    if (tAsked.tOptions.eFormat == report::Format::Json) Promise(nlohmann::json::accept(sResult));
    if (tAsked.tOptions.eFormat == report::Format::Csv) Promise(IsCsv(sResult));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    const fuzz::MemoryFile tFile(fuzz::Text(pData, iSize));
    const fuzz::Cost tCost = fuzz::CostOf([&tFile] { fuzz::ReportCounter().Count(tFile.Path()); });
    const bool bPacked =
        iSize > 1 && ((pData[0] == 0x1F && pData[1] == 0x8B) || (pData[0] == 0x28 && pData[1] == 0xB5));
    if (!bPacked) fuzz::PromiseLinear(tCost, iSize, {20000, 200}, {100, 1});  // else few bytes may be many lines
    std::size_t iChoice = iSize;
    for (std::size_t i = 0; i < iSize; ++i) iChoice = iChoice * 31 + pData[i];
    Command(tFile.Path(), iChoice);
    return 0;
}
