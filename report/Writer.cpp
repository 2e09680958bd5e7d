// Text for a person and CSV for a spreadsheet.
#include "report/Writer.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <system_error>

#include "platform/runtime/CsvText.h"
#include "platform/runtime/Format.h"
#include "report/PlainText.h"

namespace report {

namespace {

constexpr std::size_t SinkBlock = 64 * 1024;
constexpr std::size_t LabelWidth = 30;
constexpr std::size_t NoteWidth = 100;

std::string Padded(std::string s, int iWidth, bool bLeft) {
    const auto lWidth = static_cast<std::size_t>(iWidth);
    if (s.size() < lWidth) s.insert(bLeft ? s.size() : 0, lWidth - s.size(), ' ');
    return s;
}

class TextWriter : public Writer {
public:
    explicit TextWriter(Sink& t) : m_tResult(t) {}

    void Fields(const std::string&, const std::string& sTitle, const std::vector<Field>& tFields) override {
        Begin(sTitle);
        for (const Field& t : tFields) {
            std::string sLine = t.sLabel.empty() ? "  " : "  " + Padded(t.sLabel, LabelWidth, true) + " ";
            sLine += CellText(t.tValue, "not known");
            if (!t.sUnit.empty() && t.tValue.index() != 0) sLine += " " + t.sUnit;
            m_tResult.Write(sLine + "\n");
        }
    }

    void BeginTable(const std::string&, const std::string& sTitle, std::vector<Column> tColumns) override {
        Begin(sTitle);
        m_tColumns = std::move(tColumns);
        std::vector<Cell> tHeaders;
        for (Column& t : m_tColumns) {
            t.iWidth = std::max(t.iWidth, static_cast<int>(t.sHeader.size()));
            tHeaders.emplace_back(t.sHeader);
        }
        Row(tHeaders);
    }

    void Row(const std::vector<Cell>& tCells) override {
        std::string sLine;
        for (std::size_t i = 0; i < tCells.size(); ++i) {
            sLine += "  " + Padded(CellText(tCells[i], "-"), m_tColumns[i].iWidth, m_tColumns[i].bLeft);
        }
        sLine.erase(sLine.find_last_not_of(' ') + 1);
        m_tResult.Write(sLine + "\n");
    }

    void EndTable() override {}
    void Note(const std::string& sText) override { m_sNotes.push_back(sText); }

    void End() override {
        if (!m_sNotes.empty()) Begin("Notes");
        for (const std::string& s : m_sNotes) WriteNote(s);
    }

private:
    void Begin(const std::string& sTitle) {
        if (m_bBegun) m_tResult.Write("\n");
        m_bBegun = true;
        m_tResult.Write(sTitle + "\n");
    }

    void WriteNote(const std::string& s) {
        const char* sIndent = "  - ";
        for (const std::string& sLine : BrokenLines(s, NoteWidth)) {
            m_tResult.Write(sIndent + sLine + "\n");
            sIndent = "    ";
        }
    }

    Sink& m_tResult;
    std::vector<Column> m_tColumns;
    std::vector<std::string> m_sNotes;
    bool m_bBegun = false;
};

class CsvWriter : public Writer {
public:
    CsvWriter(Sink& tResult, Sink& tNotes) : m_tResult(tResult), m_tNotes(tNotes) {}

    bool OneTable() const override { return true; }
    void Fields(const std::string&, const std::string&, const std::vector<Field>&) override {}

    void BeginTable(const std::string&, const std::string&, std::vector<Column> tColumns) override {
        std::vector<Cell> tKeys;
        for (const Column& t : tColumns) tKeys.emplace_back(t.sKey);
        Row(tKeys);
    }

    void Row(const std::vector<Cell>& tCells) override {
        m_sFields.clear();
        for (const Cell& t : tCells) m_sFields.push_back(CellText(t, ""));
        m_sLine.clear();
        runtime::AppendCsvRecord(m_sLine, m_sFields);
        m_tResult.Write(m_sLine);
    }

    void EndTable() override {}
    void Note(const std::string& sText) override { m_tNotes.Write(sText + "\n"); }
    void End() override { m_tNotes.Flush(); }

private:
    Sink& m_tResult;
    Sink& m_tNotes;
    std::vector<std::string> m_sFields;  // of the row that is being written
    std::string m_sLine;
};

}  // namespace

void Sink::Write(std::string_view s) {
    m_sBuffer += s;
    if (m_sBuffer.size() >= SinkBlock) Flush();
}

void Sink::Flush() {
    std::string_view s = m_sBuffer;
    while (!s.empty()) {
        const ssize_t iWritten = ::write(m_iDescriptor, s.data(), s.size());
        if (iWritten < 0 && errno == EINTR) continue;
        if (iWritten < 0 && m_eFor == For::Notes) break;
        const int iError = errno;
        if (iWritten < 0 && iError == EPIPE) throw NobodyReads(std::generic_category().message(iError));
        if (iWritten < 0) throw std::runtime_error(std::generic_category().message(iError));
        s.remove_prefix(static_cast<std::size_t>(iWritten));
    }
    m_sBuffer.clear();
}

std::string CellText(const Cell& t, const char* sNothing) {
    if (const auto* p = std::get_if<std::string>(&t)) return *p;
    if (const auto* p = std::get_if<std::int64_t>(&t)) return std::to_string(*p);
    if (const auto* p = std::get_if<Number>(&t)) return runtime::Format(p->dValue, {1, p->iDecimals});
    return sNothing;
}

std::unique_ptr<Writer> MakeWriter(Format e, const std::string& sCommand, Sink& tResult, Sink& tNotes) {
    if (e == Format::Json) return MakeJsonWriter(sCommand, tResult);
    if (e == Format::Csv) return std::make_unique<CsvWriter>(tResult, tNotes);
    return std::make_unique<TextWriter>(tResult);
}

}  // namespace report
