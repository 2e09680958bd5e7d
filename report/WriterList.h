// Several writers as one: the result on standard output, the page and the folders of pictures.
#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include "report/Writer.h"

namespace report {

class WriterList final : public Writer {
public:
    void Add(std::shared_ptr<Writer> p) { m_pWriters.push_back(std::move(p)); }
    bool Empty() const { return m_pWriters.empty(); }

    bool OneTable() const override { return Any(&Writer::OneTable); }
    bool Draws() const override { return Any(&Writer::Draws); }

    void Section(const std::string& sTitle) override { All(&Writer::Section, sTitle); }
    void Fields(const std::string& sKey, const std::string& sTitle, const std::vector<Field>& t) override {
        All(&Writer::Fields, sKey, sTitle, t);
    }
    void BeginTable(const std::string& sKey, const std::string& sTitle, std::vector<Column> t) override {
        All(&Writer::BeginTable, sKey, sTitle, t);
    }
    void Row(const std::vector<Cell>& t) override { All(&Writer::Row, t); }
    void EndTable() override { All(&Writer::EndTable); }
    void Draw(const Picture& t) override { All(&Writer::Draw, t); }
    void Note(const std::string& sText) override { All(&Writer::Note, sText); }
    void End() override { All(&Writer::End); }

private:
    bool Any(bool (Writer::*Is)() const) const {
        return std::ranges::any_of(m_pWriters, [Is](const auto& p) { return ((*p).*Is)(); });
    }
    template <class Operation, class... Values>
    void All(Operation Do, const Values&... tValues) {
        for (const auto& p : m_pWriters) ((*p).*Do)(tValues...);
    }

    std::vector<std::shared_ptr<Writer>> m_pWriters;
};

}  // namespace report
