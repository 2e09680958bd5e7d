// Writes record files: samples to play back, and a million lines to measure with.
#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>
#include <set>
#include <string>

#include "tools/Arguments.h"
#include "tools/RecordWriter.h"

namespace {

constexpr const char* Usage =
    "Usage: tidewatch-samples --kind harbour|night|damaged|mixed|sea|reports --out FILE --lines N | --minutes N\n"
    "                         [--seed N] [--targets N] [--missing PERCENT] [--damaged PERCENT] [--reach NM]\n"
    "                         [--clock SECONDS] [--truth FILE] [RECEPTION]\n"
    "The record file is the same for the same options.\n"
    "--clock SECONDS lets the recording computer's clock be fast, or slow with a minus. --truth FILE gets a row for "
    "each\n"
    "message sent in that time: by the right clock, whether the sender knows its place, where it was, its level before "
    "the board's steps, 1 if "
    "heard.\n";

constexpr std::size_t BlockSize = 1 << 20;
constexpr std::int64_t NoEnd = std::numeric_limits<std::int64_t>::max();

// Writes in blocks.
class OutputFile {
public:
    explicit OutputFile(const std::string& sFile) : m_sFile(sFile), m_pFile(std::fopen(sFile.c_str(), "wb")) {
        if (!m_pFile) Fail();
        sText.reserve(BlockSize + 256);
    }
    void Flush(std::size_t iFrom = 0) {
        if (sText.size() < iFrom) return;
        if (std::fwrite(sText.data(), 1, sText.size(), m_pFile.get()) != sText.size()) Fail();
        sText.clear();
    }
    void Close() {
        Flush();
        if (std::fflush(m_pFile.get()) != 0) Fail();
    }

    std::string sText;  // not yet written

private:
    struct CloseFile {
        void operator()(std::FILE* p) const { std::fclose(p); }
    };
    [[noreturn]] void Fail() const { throw simulator::ArgumentError("cannot write " + m_sFile); }

    std::string m_sFile;
    std::unique_ptr<std::FILE, CloseFile> m_pFile;
};

void AppendTruth(std::string& sText, runtime::DateTime dtStart, const simulator::SentMessage& t) {
    const runtime::DateTime dt{dtStart.lSeconds + t.lMilliseconds / 1000};
    const auto tDate = runtime::DateOf(dt);
    const int iSecond = runtime::SecondOfDay(dt);
    char s[128];
    const int i = std::snprintf(s, sizeof s, "%04d-%02d-%02d %02d:%02d:%02d.%03d,%u,%d,%c,%d,%.4f,%.4f,%.3f,%d\n",
                                tDate.iYear, tDate.iMonth, tDate.iDay, iSecond / 3600, iSecond / 60 % 60, iSecond % 60,
                                static_cast<int>(t.lMilliseconds % 1000), t.lMmsi, t.iType, t.sChannel, t.bFix ? 1 : 0,
                                t.dMiles, t.dBearing, t.dDbm, t.bHeard ? 1 : 0);
    sText.append(s, static_cast<std::size_t>(i));
}

void Write(const simulator::RecordKind& tKind, std::int64_t lLines, std::int64_t lEnd, const std::string& sFile,
           const std::string& sTruth) {
    simulator::RecordWriter tWriter(tKind, lLines);
    OutputFile tFile(sFile);
    std::unique_ptr<OutputFile> pTruth;
    if (!sTruth.empty()) {
        pTruth = std::make_unique<OutputFile>(sTruth);
        pTruth->sText = "time,mmsi,type,channel,fix,nm,bearing,dbm,heard\n";
        tWriter.TellSent([&](const simulator::SentMessage& t) {
            if (t.lMilliseconds < lEnd) AppendTruth(pTruth->sText, tKind.tTraffic.dtStart, t);
            pTruth->Flush(BlockSize);
        });
    }
    for (std::int64_t l = 0; l < lLines; ++l) {
        const std::size_t iBefore = tFile.sText.size();
        tWriter.AppendLine(tFile.sText);
        if (tWriter.Milliseconds() >= lEnd) {
            tFile.sText.resize(iBefore);
            break;
        }
        tFile.Flush(BlockSize);
    }
    tFile.Close();
    if (pTruth) pTruth->Close();
}

int Run(int argc, char** argv) {
    std::set<std::string_view> sNames = simulator::ReceptionOptions;
    sNames.insert({"--kind", "--lines", "--minutes", "--seed", "--out", "--targets", "--missing", "--damaged",
                   "--reach", "--clock", "--truth"});
    const simulator::Arguments tArguments(argc, argv, sNames);
    const std::string sKind = tArguments.Text("--kind", "");
    auto tKind = simulator::FindRecordKind(sKind);
    if (!tKind) throw simulator::ArgumentError("unknown kind \"" + sKind + "\"");
    if (tArguments.Has("--lines") == tArguments.Has("--minutes") || !tArguments.Has("--out")) {
        throw simulator::ArgumentError("--out and either --lines or --minutes are needed");
    }
    simulator::TrafficOptions& t = tKind->tTraffic;
    t.lSeed = static_cast<std::uint64_t>(tArguments.Number("--seed", 1, 0, 1e15));
    // One at least: without any target a file of reports would never be full.
    t.iTargets = static_cast<int>(tArguments.Number("--targets", t.iTargets, 1, 20000));
    t.dMissingPercent = tArguments.Number("--missing", t.dMissingPercent, 0, 99);
    t.dDamagedPercent = tArguments.Number("--damaged", t.dDamagedPercent, 0, 100);
    t.tHarbour.dReach = tArguments.Number("--reach", t.tHarbour.dReach, 1, 60);
    t.tRule = simulator::ReadReceptionRule(tArguments);
    t.lChance = static_cast<std::uint64_t>(tArguments.Number("--chance", 0, 0, 1e15));
    // Nor would one of which nothing is heard, and without a GPS nobody could tell its ranges.
    const auto IsGiven = [&](std::string_view s) { return tArguments.Has(s); };
    if (!t.bGps && std::ranges::any_of(simulator::ReceptionOptions, IsGiven)) {
        throw simulator::ArgumentError("a file of reports has no reception rule");
    }
    tKind->lClockSeconds = static_cast<std::int64_t>(tArguments.Number("--clock", 0, -86400, 86400));
    const auto lLines = static_cast<std::int64_t>(tArguments.Number("--lines", 1e10, 0, 1e10));
    const auto lMinutes = static_cast<std::int64_t>(tArguments.Number("--minutes", 0, 1, 1e6));
    Write(*tKind, lLines, lMinutes > 0 ? lMinutes * 60000 : NoEnd, tArguments.Text("--out", ""),
          tArguments.Text("--truth", ""));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const simulator::ArgumentError& tError) {
        std::fprintf(stderr, "tidewatch-samples: %s\n%s%s", tError.what(), Usage, simulator::ReceptionUsage);
        return 2;
    }
}
