// When views take over what their stores hold: all that wait at one beat, together, and only those that can be seen.
#include <QTest>
#include <QTimer>
#include <memory>

#include "platform/toolkit/RepaintBeat.h"

using toolkit::RepaintBeat;

namespace {

// A view that counts what it takes over.
struct View {
    QWidget w;
    int iTaken = 0;
    std::function<void()> tAlso;
    RepaintBeat* pBeat = new RepaintBeat(w, [this] {
        ++iTaken;
        if (tAlso) tAlso();
    });
};

}  // namespace

class RepaintBeatTest : public QObject {
    Q_OBJECT
private slots:
    void viewsThatWaitTakeOverTogether();
    void aMarkWhileTakingOverWaitsForTheNextBeat();
    void hiddenViewWaitsUntilItIsShown();
    void synchronizedViewIsNotTakenOverAgain();
    void viewMayGoWhileItWaits();
};

void RepaintBeatTest::viewsThatWaitTakeOverTogether() {
    View tFirst, tLater;
    tFirst.w.show();
    tLater.w.show();
    int iLaterInTheSamePass = -1;
    tFirst.tAlso = [&] { QTimer::singleShot(0, &tFirst.w, [&] { iLaterInTheSamePass = tLater.iTaken; }); };
    tFirst.pBeat->Mark();
    QTimer::singleShot(RepaintBeat::BeatMilliseconds / 2, &tFirst.w, [&] { tLater.pBeat->Mark(); });
    QTRY_COMPARE(tFirst.iTaken, 1);
    QTRY_VERIFY(iLaterInTheSamePass >= 0);
    QCOMPARE(iLaterInTheSamePass, 1);
}

void RepaintBeatTest::aMarkWhileTakingOverWaitsForTheNextBeat() {
    View t;
    t.w.show();
    t.tAlso = [&t] {
        if (t.iTaken == 1) t.pBeat->Mark();
    };
    t.pBeat->Mark();
    QTRY_COMPARE(t.iTaken, 1);
    QTRY_COMPARE(t.iTaken, 2);
}

void RepaintBeatTest::hiddenViewWaitsUntilItIsShown() {
    View tHidden, tSeen;
    tSeen.w.show();
    tHidden.pBeat->Mark();
    tSeen.pBeat->Mark();
    QTRY_COMPARE(tSeen.iTaken, 1);
    tSeen.pBeat->Mark();
    QTRY_COMPARE(tSeen.iTaken, 2);
    QCOMPARE(tHidden.iTaken, 0);
    tHidden.pBeat->Shown();
    QCOMPARE(tHidden.iTaken, 1);
}

void RepaintBeatTest::synchronizedViewIsNotTakenOverAgain() {
    View tEarly, tSeen;
    tEarly.w.show();
    tSeen.w.show();
    tEarly.pBeat->Mark();
    tEarly.pBeat->Synchronize();
    QCOMPARE(tEarly.iTaken, 1);
    tSeen.pBeat->Mark();
    QTRY_COMPARE(tSeen.iTaken, 1);
    QCOMPARE(tEarly.iTaken, 1);
}

void RepaintBeatTest::viewMayGoWhileItWaits() {
    View tSeen;
    tSeen.w.show();
    auto pGoing = std::make_unique<View>();
    pGoing->w.show();
    pGoing->pBeat->Mark();
    tSeen.pBeat->Mark();
    pGoing.reset();
    QTRY_COMPARE(tSeen.iTaken, 1);
}

QTEST_MAIN(RepaintBeatTest)
#include "RepaintBeatTest.moc"
