// The queue of those who want to send, against the plain way of doing it: everybody who waits is asked anew in every
// slot. Both must let the same ones go in the same slots, and the queue must not ask a crowd again and again.
#include "tools/SlotQueue.h"

#include <QTest>
#include <algorithm>

#include "tools/Random.h"

using namespace simulator;

namespace {

// The plain way: one list in order of time, and who cannot go is put in again for the next slot.
class PlainQueue {
public:
    void Add(std::int64_t lSlot, const Event& t) { Put(std::max(lSlot, m_lSlot), 0, t); }
    bool Empty() const { return m_tAll.empty(); }
    std::int64_t Slot() const { return m_tAll.begin()->first.first; }
    template <class TTellTurn>
    std::optional<SlotQueue::Taken> Next(TTellTurn&& TellTurn) {
        m_lSlot = Slot();
        while (!m_tAll.empty() && Slot() == m_lSlot) {
            const Entry t = m_tAll.begin()->second;
            m_tAll.erase(m_tAll.begin());
            const bool bLate = t.iWaited == SlotQueue::LongestWait;
            if (bLate || TellTurn(t.tEvent) == Turn::Go) return SlotQueue::Taken{t.tEvent, bLate};
            Put(m_lSlot + 1, t.iWaited + 1, t.tEvent);
        }
        return std::nullopt;
    }

private:
    struct Entry {
        Event tEvent;
        int iWaited;
    };
    void Put(std::int64_t lSlot, int iWaited, const Event& t) { m_tAll[{lSlot, m_lOrder++}] = {t, iWaited}; }

    std::map<std::pair<std::int64_t, int>, Entry> m_tAll;
    std::int64_t m_lSlot = 0;
    int m_lOrder = 0;
};

struct Load {
    int iStations;
    int iPause;        // slots between two messages of a station, at the most
    int iShortest;     // and at the least: below two, a message comes up while others of its slot are being asked
    int iLongPercent;  // messages of two slots
};

struct Course {
    std::vector<std::array<std::int64_t, 3>> lTaken;  // slot, station, whether too late
    std::int64_t lAdded = 0;
    std::int64_t lAsked = 0;
};

// Stations that send on two channels, each on its own one until it has sent, then on the other.
template <class TQueue>
Course Run(const Load& tLoad, std::uint64_t lSeed, std::int64_t lSlots) {
    Course tCourse;
    TQueue tQueue;
    Random tChance(lSeed);
    std::vector<std::size_t> iChannels;
    std::array<std::int64_t, 2> lBusy{-1, -1};
    const auto Plan = [&](std::int64_t lSlot, int iStation) {
        ++tCourse.lAdded;
        tQueue.Add(lSlot, {iStation, Say::Position, 0});
    };
    for (int i = 0; i < tLoad.iStations; ++i) {
        iChannels.push_back(tChance.Next() % 2);
        Plan(tChance.Whole(0, tLoad.iPause), i);
    }
    while (!tQueue.Empty() && tQueue.Slot() < lSlots) {
        const std::int64_t lSlot = tQueue.Slot();
        const auto tTaken = tQueue.Next([&](const Event& t) {
            ++tCourse.lAsked;
            const std::size_t iChannel = iChannels[static_cast<std::size_t>(t.iTarget)];
            if (lBusy[iChannel] < lSlot) return Turn::Go;
            return lBusy[1 - iChannel] < lSlot ? Turn::Wait : Turn::Full;
        });
        if (!tTaken) continue;
        const auto iStation = static_cast<std::size_t>(tTaken->t.iTarget);
        tCourse.lTaken.push_back({lSlot, tTaken->t.iTarget, tTaken->bLate ? 1 : 0});
        if (!tTaken->bLate) {
            lBusy[iChannels[iStation]] = lSlot + (tChance.Percent(tLoad.iLongPercent) ? 1 : 0);
            iChannels[iStation] = 1 - iChannels[iStation];
        }
        Plan(lSlot + tChance.Whole(tLoad.iShortest, tLoad.iPause), tTaken->t.iTarget);
        // Now and then a second one, so that a station can wait twice at a time.
        if (tChance.Percent(1)) Plan(lSlot + tChance.Whole(0, 2), tTaken->t.iTarget);
    }
    return tCourse;
}

}  // namespace

class SlotQueueTest : public QObject {
    Q_OBJECT

private slots:
    void sameOrderAsThePlainWay_data();
    void sameOrderAsThePlainWay();
    void aCrowdIsNotAskedAgainAndAgain();
};

void SlotQueueTest::sameOrderAsThePlainWay_data() {
    QTest::addColumn<Load>("tLoad");
    QTest::newRow("one station") << Load{1, 40, 2, 0};
    QTest::newRow("few") << Load{30, 200, 2, 10};
    QTest::newRow("just full") << Load{200, 200, 2, 20};
    QTest::newRow("crowd") << Load{1500, 400, 2, 20};
    QTest::newRow("crowd in a hurry") << Load{700, 90, 0, 20};
    QTest::newRow("long messages alone") << Load{300, 120, 1, 100};
    QTest::newRow("at once") << Load{40, 2, 0, 10};
}

void SlotQueueTest::sameOrderAsThePlainWay() {
    QFETCH(Load, tLoad);
    for (std::uint64_t lSeed = 1; lSeed <= 5; ++lSeed) {
        const Course tCourse = Run<SlotQueue>(tLoad, lSeed, 600);
        QVERIFY(tCourse.lTaken.size() > 20);
        QVERIFY(tCourse.lTaken == Run<PlainQueue>(tLoad, lSeed, 600).lTaken);
    }
}

// Twenty thousand stations that want a turn every ten seconds or so: nearly all give up. Who waits is asked when it
// comes, and some of the newest again; the plain way asks everybody seventy-five times.
void SlotQueueTest::aCrowdIsNotAskedAgainAndAgain() {
    const Course tCourse = Run<SlotQueue>({20000, 750, 75, 20}, 1, 1500);
    const auto lLate = std::ranges::count_if(tCourse.lTaken, [](const auto& l) { return l[2] == 1; });
    QVERIFY(tCourse.lAdded > 60000);
    QVERIFY(lLate > tCourse.lAdded / 2);
    QVERIFY2(tCourse.lAsked < 2 * tCourse.lAdded, std::to_string(tCourse.lAsked).c_str());
}

QTEST_GUILESS_MAIN(SlotQueueTest)
#include "SlotQueueTest.moc"
