// What a result is made of, however it is written: groups of named figures, tables, and notes that stand beside them.
#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "report/Picture.h"

namespace report {

struct Number {
    double dValue;
    int iDecimals;
};
// Nothing stands for what is not known; it is never written as 0.
using Cell = std::variant<std::monostate, std::string, std::int64_t, Number>;

struct Field {
    std::string sKey;    // for programs
    std::string sLabel;  // for people; empty where the value speaks for itself
    Cell tValue;
    std::string sUnit{};
};

struct Column {
    std::string sKey;
    std::string sHeader;
    int iWidth;          // characters that its texts usually have
    bool bLeft = false;  // texts stand at the left, figures at the right
};

enum class Format { Text, Csv, Json };

class Writer {
public:
    virtual ~Writer() = default;
    // CSV knows one table in a file: a result then writes the one that says most.
    virtual bool OneTable() const { return false; }
    // Pictures are drawn; what serves them alone need not be counted where they are not.
    virtual bool Draws() const { return false; }
    // What follows is of that.
    virtual void Section(const std::string&) {}
    virtual void Fields(const std::string& sKey, const std::string& sTitle, const std::vector<Field>& tFields) = 0;
    // Rows can be written while the files are still being read.
    virtual void BeginTable(const std::string& sKey, const std::string& sTitle, std::vector<Column> tColumns) = 0;
    virtual void Row(const std::vector<Cell>& tCells) = 0;
    virtual void EndTable() = 0;
    // Between tables, and after what it shows. A picture without a single point says so in place of lines.
    virtual void Draw(const Picture&) {}
    // A rule behind a figure, or what cannot be said and why.
    virtual void Note(const std::string& sText) = 0;
    virtual void End() = 0;
};

// Who read the result has gone.
struct NobodyReads : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Where a writer's text goes. Raises std::runtime_error with the system's words when it cannot be written (NobodyReads
// for a broken pipe), unless it is for notes: there is nobody to tell that they cannot be written.
class Sink {
public:
    enum class For { Result, Notes };
    explicit Sink(int iDescriptor, For e = For::Result) : m_iDescriptor(iDescriptor), m_eFor(e) {}
    void Write(std::string_view s);
    void Flush();

private:
    int m_iDescriptor;
    For m_eFor;
    std::string m_sBuffer;
};

// sCommand stands in JSON. CSV's notes go to tNotes, which is no part of the result.
std::unique_ptr<Writer> MakeWriter(Format e, const std::string& sCommand, Sink& tResult, Sink& tNotes);
std::unique_ptr<Writer> MakeJsonWriter(const std::string& sCommand, Sink& tResult);

// A figure as text and CSV show it; nothing is sNothing.
std::string CellText(const Cell& t, const char* sNothing);

}  // namespace report
