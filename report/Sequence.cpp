// The files' turns.
#include "report/Sequence.h"

#include <limits>
#include <optional>

#include "report/RecordReader.h"
#include "report/SentenceRoad.h"

namespace report {

namespace {

constexpr std::int64_t LinesPerProgress = 1 << 16;
constexpr runtime::DateTime Never{std::numeric_limits<std::int64_t>::max()};

}  // namespace

// One file. Those that are not due yet are not kept open: there may be one for each day of years.
class Sequence::Source {
public:
    Source(std::string sFile, const SentenceRoad& tRoad, Collector& tCollector)
        : m_tRoad(tRoad), m_tCollector(tCollector), m_lBytes(RegularFileSize(sFile)) {
        tEnd.sFile = std::move(sFile);
    }

    // Where it stands in time; its first line for now.
    void Prepare(bool bAlone) {
        if (bAlone || m_lBytes == 0) return Advance();  // a pipe cannot be read twice
        try {
            RecordReader tReader(tEnd.sFile);
            Record t;
            while (tReader.Next(t)) {
                if (t.tLine.eKind != LineKind::Other) continue;
                m_dtHead = t.tLine.dt;
                return;
            }
        } catch (const InputError&) {
        }
        Advance();  // it will say what the matter is
    }

    runtime::DateTime Head() const { return m_dtHead; }

    // Its lines up to that time, in their order.
    template <class Function>
    void Play(runtime::DateTime dtUpTo, const Function& Pause) {
        if (!m_pReader && !m_bDone) Advance();
        while (!m_bDone && m_dtHead <= dtUpTo) {
            m_tRoad.Take(m_tRecord.tLine, m_tRecord.sSentence);
            Advance();
            if ((tEnd.lLines & (LinesPerProgress - 1)) == 0) Pause();
        }
    }

    std::int64_t Bytes() const { return m_lBytes; }
    std::int64_t BytesTaken() const { return m_bDone ? m_lBytes : m_pReader ? m_pReader->BytesTaken() : 0; }

    FileEnd tEnd;

private:
    // To the next line that has a time; those without are told of at once.
    void Advance() {
        try {
            if (!m_pReader) m_pReader.emplace(tEnd.sFile);
            while (m_pReader->Next(m_tRecord)) {
                ++tEnd.lLines;
                if (m_tRecord.tLine.eKind == LineKind::Other) {
                    ++tEnd.lStamped;
                    m_dtHead = m_tRecord.tLine.dt;
                    return;
                }
                m_tCollector.Line(m_tRecord.tLine);
            }
            tEnd.bUnfinished = m_pReader->Unfinished();
        } catch (const InputError& tError) {
            tEnd.sFault = tError.what();
        }
        m_tRoad.Finish();
        m_pReader.reset();
        m_bDone = true;
        m_dtHead = Never;
    }

    SentenceRoad m_tRoad;
    Collector& m_tCollector;
    std::int64_t m_lBytes;
    std::optional<RecordReader> m_pReader;
    Record m_tRecord;  // the line at hand
    runtime::DateTime m_dtHead;
    bool m_bDone = false;
};

Sequence::Sequence(const std::vector<std::string>& sFiles, const OwnPosition& tOwn) : m_sFiles(sFiles), m_tOwn(tOwn) {}

Sequence::~Sequence() = default;

// The file that is next, and the time of the one after it.
Sequence::Source* Sequence::Earliest(runtime::DateTime& dtOther) {
    Source* pEarliest = nullptr;
    runtime::DateTime dtEarliest = Never;
    dtOther = {Never.lSeconds - 1};
    for (const auto& p : m_tSources) {
        if (p->Head() < dtEarliest) {
            if (pEarliest) dtOther = dtEarliest;
            dtEarliest = p->Head();
            pEarliest = p.get();
        } else if (p->Head() < dtOther) {
            dtOther = p->Head();
        }
    }
    return pEarliest;
}

void Sequence::Play(Collector& tCollector, const Progress& ShowProgress) {
    std::int64_t lBytes = 0;
    for (const std::string& sFile : m_sFiles) {
        const SentenceRoad tRoad(m_tSources.size(), m_tOwn, m_tShips, tCollector);
        m_tSources.push_back(std::make_unique<Source>(sFile, tRoad, tCollector));
        lBytes += m_tSources.back()->Bytes();
    }
    const auto Pause = [&] {
        std::int64_t lTaken = 0;
        for (const auto& p : m_tSources) lTaken += p->BytesTaken();
        ShowProgress(lBytes > 0 ? static_cast<double>(lTaken) / static_cast<double>(lBytes) : -1);
    };
    for (const auto& p : m_tSources) p->Prepare(m_tSources.size() == 1);
    runtime::DateTime dtOther;
    while (Source* p = Earliest(dtOther)) p->Play(dtOther, Pause);
}

std::vector<FileEnd> Sequence::Ends() const {
    std::vector<FileEnd> t;
    for (const auto& p : m_tSources) t.push_back(p->tEnd);
    return t;
}

}  // namespace report
