// Columns and escapes.
#include "app/CaptureLine.h"

#include "platform/runtime/Format.h"

namespace app {
namespace {

constexpr std::size_t StampLength = 23;  // "05/15/2011 12:00:00.123"
constexpr std::size_t PortColumn = 24;   // 0-based
constexpr std::size_t KindColumn = 26;
constexpr std::size_t BytesColumn = 28;
constexpr std::string_view Head = " Tidewatch capture 1";

void AppendMoment(std::string& sLine, const CaptureMoment& t) {
    runtime::AppendRecordStamp(sLine, t.dt);
    sLine += '.';
    sLine += static_cast<char>('0' + t.iMilliseconds / 100);
    runtime::AppendTwoDigits(sLine, t.iMilliseconds % 100);
}

std::optional<CaptureMoment> ReadMoment(std::string_view sLine) {
    if (sLine.size() < StampLength || sLine[StampLength - 4] != '.') return std::nullopt;
    const auto dt = runtime::FromRecordStamp(sLine.substr(0, StampLength - 4));
    if (!dt) return std::nullopt;
    CaptureMoment t{*dt, 0};
    for (const char c : sLine.substr(StampLength - 3, 3)) {
        if (c < '0' || c > '9') return std::nullopt;
        t.iMilliseconds = t.iMilliseconds * 10 + (c - '0');
    }
    return t;
}

char HexDigit(int i) { return "0123456789ABCDEF"[i]; }

int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

void AppendEscaped(std::string& sLine, char c) {
    const auto i = static_cast<unsigned char>(c);
    if (c == '\r') {
        sLine += "\\r";
    } else if (c == '\n') {
        sLine += "\\n";
    } else if (c == '\\') {
        sLine += "\\\\";
    } else if (i < 32 || i > 126) {
        sLine += {'\\', 'x', HexDigit(i >> 4), HexDigit(i & 15)};
    } else {
        sLine += c;
    }
}

// The byte of the escape that sText begins behind, which is taken off; nothing where there is no such escape.
std::optional<char> TakeEscape(std::string_view& sText) {
    if (sText.empty()) return std::nullopt;
    const char c = sText.front();
    sText.remove_prefix(1);
    if (c == 'r') return '\r';
    if (c == 'n') return '\n';
    if (c == '\\') return '\\';
    if (c != 'x' || sText.size() < 2) return std::nullopt;
    const int iHigh = HexValue(sText[0]);
    const int iLow = HexValue(sText[1]);
    if (iHigh < 0 || iLow < 0) return std::nullopt;
    sText.remove_prefix(2);
    return static_cast<char>(iHigh * 16 + iLow);
}

std::optional<std::string> Unescaped(std::string_view sText) {
    std::string sBytes;
    while (!sText.empty()) {
        const char c = sText.front();
        sText.remove_prefix(1);
        if (c != '\\') {
            sBytes += c;
            continue;
        }
        const auto cByte = TakeEscape(sText);
        if (!cByte) return std::nullopt;
        sBytes += *cByte;
    }
    return sBytes;
}

}  // namespace

void WriteCaptureHead(std::string& sLine, const CaptureMoment& t) {
    sLine.clear();
    AppendMoment(sLine, t);
    sLine += Head;
}

void WriteCaptureLine(std::string& sLine, const CaptureMoment& t, runtime::PortIndex Index, char cKind,
                      std::string_view sBytes) {
    sLine.clear();
    AppendMoment(sLine, t);
    sLine += {' ', static_cast<char>('1' + Index), ' ', cKind, ' '};
    for (const char c : sBytes) AppendEscaped(sLine, c);
}

bool IsCaptureHead(std::string_view sLine) { return ReadMoment(sLine) && sLine.substr(StampLength) == Head; }

std::optional<CaptureLine> ReadCaptureLine(std::string_view sLine) {
    const auto tMoment = ReadMoment(sLine);
    if (!tMoment || sLine.size() < BytesColumn) return std::nullopt;
    if (sLine[PortColumn - 1] != ' ' || sLine[KindColumn - 1] != ' ' || sLine[BytesColumn - 1] != ' ') {
        return std::nullopt;
    }
    const int iPort = sLine[PortColumn] - '1';
    if (iPort < 0 || iPort >= runtime::PortCount) return std::nullopt;
    const char cKind = sLine[KindColumn];
    if (cKind != CaptureReceived && cKind != CaptureSent && cKind != CaptureEvent) return std::nullopt;
    auto sBytes = Unescaped(sLine.substr(BytesColumn));
    if (!sBytes) return std::nullopt;
    return CaptureLine{*tMoment, static_cast<runtime::PortIndex>(iPort), cKind, *std::move(sBytes)};
}

}  // namespace app
