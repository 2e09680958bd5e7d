// Counts what the report tells of a file, and holds each event to what it promises.
#pragma once

#include <string>

#include "report/Sequence.h"
#include "tests/fuzz/Harness.h"

namespace fuzz {

// Every line is told of once, and every message comes out of a line.
class ReportCounter : public report::Collector {
public:
    void Line(const report::LineEvent& t) override {
        ++lLines;
        if (t.eKind == report::LineKind::Message) ++lVdm;
    }
    void Message(const report::Report& t) override {
        ++lMessages;
        Promise(t.iShip >= 0 && t.lData.size() >= report::Report::ValuesKept);
        Promise(!t.bRange || (t.bPosition && t.bOwnPosition && t.tFromUs.Range() >= 0));
    }
    bool Finish() override { return true; }

    // The end of the file.
    report::FileEnd Count(const std::string& sPath) {
        report::Sequence tSequence({sPath}, report::OwnPosition());
        tSequence.Play(*this, [](double) {});
        Promise(lMessages <= lVdm);
        const report::FileEnd tEnd = tSequence.Ends().front();
        Promise(tEnd.lLines == lLines && tEnd.lStamped <= tEnd.lLines);
        return tEnd;
    }

    std::int64_t lLines = 0, lVdm = 0, lMessages = 0;
};

}  // namespace fuzz
