// JSON: an object with a member for each group and each table, and "notes". Rows are written as they come, so that a
// table of millions of rows needs no memory.
#include <cmath>
#include <nlohmann/json.hpp>

#include "report/Writer.h"

namespace report {

namespace {

using nlohmann::ordered_json;

ordered_json ValueOf(const Cell& t) {
    if (const auto* p = std::get_if<std::string>(&t)) return *p;
    if (const auto* p = std::get_if<std::int64_t>(&t)) return *p;
    const auto* p = std::get_if<Number>(&t);
    if (!p || !std::isfinite(p->dValue)) return nullptr;
    return std::stod(CellText(t, ""));  // the digits that the other formats show
}

// File names need not be UTF-8.
std::string Dumped(const ordered_json& t) { return t.dump(-1, ' ', false, ordered_json::error_handler_t::replace); }

class JsonWriter : public Writer {
public:
    JsonWriter(const std::string& sCommand, Sink& tResult) : m_tResult(tResult) {
        m_tResult.Write("{\n\"command\": " + Dumped(sCommand));
    }

    void Fields(const std::string& sKey, const std::string&, const std::vector<Field>& tFields) override {
        ordered_json t = ordered_json::object();
        for (const Field& tField : tFields) t[tField.sKey] = ValueOf(tField.tValue);
        Member(sKey);
        m_tResult.Write(Dumped(t));
    }

    void BeginTable(const std::string& sKey, const std::string&, std::vector<Column> tColumns) override {
        m_tColumns = std::move(tColumns);
        m_bFirstRow = true;
        Member(sKey);
        m_tResult.Write("[");
    }

    void Row(const std::vector<Cell>& tCells) override {
        ordered_json t = ordered_json::object();
        for (std::size_t i = 0; i < tCells.size(); ++i) t[m_tColumns[i].sKey] = ValueOf(tCells[i]);
        m_tResult.Write(m_bFirstRow ? "\n" : ",\n");
        m_bFirstRow = false;
        m_tResult.Write(Dumped(t));
    }

    void EndTable() override { m_tResult.Write("]"); }
    void Note(const std::string& sText) override { m_tNotes.push_back(sText); }

    void End() override {
        Member("notes");
        m_tResult.Write(Dumped(m_tNotes) + "\n}\n");
    }

private:
    void Member(const std::string& sKey) { m_tResult.Write(",\n" + Dumped(sKey) + ": "); }

    Sink& m_tResult;
    std::vector<Column> m_tColumns;
    bool m_bFirstRow = true;
    ordered_json m_tNotes = ordered_json::array();
};

}  // namespace

std::unique_ptr<Writer> MakeJsonWriter(const std::string& sCommand, Sink& tResult) {
    return std::make_unique<JsonWriter>(sCommand, tResult);
}

}  // namespace report
