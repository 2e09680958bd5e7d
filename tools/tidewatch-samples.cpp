// Writes record files: samples to play back, and a million lines to measure with.
#include <cstdio>
#include <memory>
#include <string>

#include "tools/Arguments.h"
#include "tools/RecordWriter.h"

namespace {

constexpr const char* Usage =
    "Usage: tidewatch-samples --kind harbour|night|damaged|mixed|reports --lines N --out FILE\n"
    "                         [--seed N] [--targets N] [--missing PERCENT] [--damaged PERCENT]\n"
    "The record file is the same for the same options.\n";

constexpr std::size_t BlockSize = 1 << 20;

struct CloseFile {
    void operator()(std::FILE* p) const { std::fclose(p); }
};

void Write(simulator::RecordWriter& tWriter, std::int64_t lLines, const std::string& sFile) {
    const std::unique_ptr<std::FILE, CloseFile> pFile(std::fopen(sFile.c_str(), "wb"));
    if (!pFile) throw simulator::ArgumentError("cannot write " + sFile);
    std::string sBlock;
    sBlock.reserve(BlockSize + 256);
    bool bGood = true;
    const auto Flush = [&] {
        bGood = bGood && std::fwrite(sBlock.data(), 1, sBlock.size(), pFile.get()) == sBlock.size();
        sBlock.clear();
    };
    for (std::int64_t l = 0; l < lLines && bGood; ++l) {
        tWriter.AppendLine(sBlock);
        if (sBlock.size() >= BlockSize) Flush();
    }
    Flush();
    if (!bGood || std::fflush(pFile.get()) != 0) throw simulator::ArgumentError("cannot write " + sFile);
}

int Run(int argc, char** argv) {
    const simulator::Arguments tArguments(
        argc, argv, {"--kind", "--lines", "--seed", "--out", "--targets", "--missing", "--damaged"});
    const std::string sKind = tArguments.Text("--kind", "");
    auto tKind = simulator::FindRecordKind(sKind);
    if (!tKind) throw simulator::ArgumentError("unknown kind \"" + sKind + "\"");
    if (!tArguments.Has("--lines") || !tArguments.Has("--out")) {
        throw simulator::ArgumentError("--lines and --out are needed");
    }
    simulator::TrafficOptions& t = tKind->tTraffic;
    t.lSeed = static_cast<std::uint64_t>(tArguments.Number("--seed", 1, 0, 1e15));
    // One at least: without any target a file of reports would never be full.
    t.iTargets = static_cast<int>(tArguments.Number("--targets", t.iTargets, 1, 20000));
    t.dMissingPercent = tArguments.Number("--missing", t.dMissingPercent, 0, 99);
    t.dDamagedPercent = tArguments.Number("--damaged", t.dDamagedPercent, 0, 100);
    const auto lLines = static_cast<std::int64_t>(tArguments.Number("--lines", 0, 0, 1e10));
    simulator::RecordWriter tWriter(*tKind, lLines);
    Write(tWriter, lLines, tArguments.Text("--out", ""));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const simulator::ArgumentError& tError) {
        std::fprintf(stderr, "tidewatch-samples: %s\n%s", tError.what(), Usage);
        return 2;
    }
}
