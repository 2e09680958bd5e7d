// How the figures of two recordings of the same time are written: verdict, clocks, tables, pictures and rules.
#pragma once

#include <array>

#include "report/ClockOffset.h"
#include "report/Comparison.h"

namespace report {

// What is known of the two clocks: seconds that the second's shows more than the first's.
struct ClockTrack {
    ClockOffset tFound;
    std::int64_t lLeast = 0, lMost = 0, lAtEnd = 0;
};

class ComparisonTables {
public:
    ComparisonTables(const Options& tOptions, const std::array<Recording*, 2>& tRecordings, const ClockTrack& tClocks,
                     const Comparison& tFigures, Writer& tWriter)
        : m_tOptions(tOptions),
          m_tRecordings(tRecordings),
          m_tClocks(tClocks),
          m_tFigures(tFigures),
          m_tWriter(tWriter),
          m_tScale(tOptions.bRaw) {}

    void Write();

private:
    struct Common {
        runtime::DateTime dtFrom, dtTo;
        std::int64_t lSeconds = 0;
    };
    Common CommonTime() const;
    void WriteVerdict() const;
    void WriteTimes() const;
    void WriteTotals() const;
    void WriteLevels() const;
    using NameOfRow = std::string (*)(int iRow, const Options& tOptions);
    void WriteRows(const std::string& sKey, const std::string& sTitle, const std::string& sOf, NameOfRow Name,
                   const std::map<int, Tally>& tRows) const;
    void WriteOneTable() const;
    void DrawPictures() const;
    void WriteNotes() const;
    void WriteNotesOfTime() const;
    void WriteNotesOfPlaces() const;

    const Options& m_tOptions;
    const std::array<Recording*, 2>& m_tRecordings;
    const ClockTrack& m_tClocks;
    const Comparison& m_tFigures;
    Writer& m_tWriter;
    const LevelScale m_tScale;
};

// "1:00:03", "-0:00:02".
std::string ClockText(std::int64_t lSeconds);

}  // namespace report
