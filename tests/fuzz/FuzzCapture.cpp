// Fuzz target for captures: any bytes as a capture's lines and as a capture file; and any bytes as what came on two
// ports, written as a capture, which must bring back each byte and give the report the lines that came.
#include <string>

#include "app/CaptureLine.h"
#include "tests/fuzz/MemoryFile.h"
#include "tests/fuzz/ReportCounter.h"
#include "tests/fuzz/SentenceReading.h"

namespace {

using fuzz::Promise;

bool Same(const app::CaptureLine& a, const app::CaptureLine& b) {
    return a.tMoment.dt == b.tMoment.dt && a.tMoment.iMilliseconds == b.tMoment.iMilliseconds && a.Index == b.Index &&
           a.cKind == b.cKind && a.sBytes == b.sBytes;
}

// What was read is written and read again as the same.
void Line(std::string_view sLine) {
    const auto t = app::ReadCaptureLine(sLine);
    Promise(!t || !app::IsCaptureHead(sLine));
    if (!t) return;
    Promise(t->sBytes.size() <= sLine.size() && (t->Index == 0 || t->Index == 1));
    Promise(t->tMoment.iMilliseconds >= 0 && t->tMoment.iMilliseconds <= 999);
    std::string sWritten;
    app::WriteCaptureLine(sWritten, t->tMoment, t->Index, t->cKind, t->sBytes);
    const auto tAgain = app::ReadCaptureLine(sWritten);
    Promise(tAgain && Same(*t, *tAgain));
}

void AsFile(std::string_view sText) {
    const fuzz::MemoryFile tFile(sText);
    fuzz::ReportCounter().Count(tFile.Path());
    while (!sText.empty()) {
        const std::size_t iEnd = std::min(sText.find('\n'), sText.size());
        std::string_view sLine = sText.substr(0, iEnd);
        if (sLine.ends_with('\r')) sLine.remove_suffix(1);
        Line(sLine);
        sText.remove_prefix(std::min(iEnd + 1, sText.size()));
    }
}

// In pieces of many lengths, on either port.
void AsBytes(std::string_view sBytes) {
    app::CaptureMoment tMoment{runtime::MakeDateTime({2011, 5, 15}, 12, 0, 0), 0};
    std::string sFile, sLine;
    runtime::PerPort<std::string> sCame;
    app::WriteCaptureHead(sLine, tMoment);
    sFile = sLine + "\r\n";
    while (!sBytes.empty()) {
        const auto iFirst = static_cast<unsigned char>(sBytes[0]);
        const std::string_view sPiece = sBytes.substr(0, 1 + iFirst % 32);
        const runtime::PortIndex Index = iFirst % 3 == 0 ? 1 : 0;
        app::WriteCaptureLine(sLine, tMoment, Index, app::CaptureReceived, sPiece);
        const auto t = app::ReadCaptureLine(sLine);
        Promise(t && Same(*t, {tMoment, Index, app::CaptureReceived, std::string(sPiece)}));
        for (const char c : sLine) Promise(c >= ' ' && c <= '~');
        sFile += sLine + "\r\n";
        sCame(Index) += sPiece;
        sBytes.remove_prefix(sPiece.size());
        tMoment.iMilliseconds = (tMoment.iMilliseconds + 7) % 1000;
    }
    const fuzz::MemoryFile tFile(sFile);
    fuzz::ReportCounter tCounter;
    Promise(tCounter.Count(tFile.Path()).sFault.empty());
    const std::size_t iLines = fuzz::ReadLines(sCame(0)).size() + fuzz::ReadLines(sCame(1)).size();
    Promise(tCounter.lLines == static_cast<std::int64_t>(iLines));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    const std::string_view sText = fuzz::Text(pData, iSize);
    const fuzz::Cost tCost = fuzz::CostOf([sText] {
        AsFile(sText);
        AsBytes(sText);
    });
    fuzz::PromiseLinear(tCost, iSize, {50000, 400}, {1500, 10});
    return 0;
}
