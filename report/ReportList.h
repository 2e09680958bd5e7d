// Every message as a row, written while the files are read.
#pragma once

#include "report/LevelFigures.h"
#include "report/Options.h"

namespace report {

class ReportList final : public Collector {
public:
    ReportList(const Options& tOptions, Writer& tWriter);

    void Message(const Report& t) override;
    bool Finish() override;

private:
    const LevelScale m_tScale;
    Writer& m_tWriter;
    std::int64_t m_lReports = 0;
};

}  // namespace report
