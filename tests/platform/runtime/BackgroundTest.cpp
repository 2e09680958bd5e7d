// A job beside the caller: one at a time, its result once, and none where the system gives no thread.
#include "platform/runtime/Background.h"

#include <pthread.h>

#include <QTest>
#include <future>

using runtime::Background;

class BackgroundTest : public QObject {
    Q_OBJECT

private slots:
    void resultIsTakenOnce();
    void oneJobAtATime();
    void withoutAThreadNothingIsDone();
};

void BackgroundTest::resultIsTakenOnce() {
    Background<int> t;
    QVERIFY(!t.Take());
    QVERIFY(t.Start([] { return 7; }));
    t.Wait();
    QCOMPARE(t.Take(), std::optional(7));
    QVERIFY(!t.Take());
}

void BackgroundTest::oneJobAtATime() {
    Background<int> t;
    std::promise<void> tGo;
    QVERIFY(t.Start([tGoing = tGo.get_future().share()] {
        tGoing.wait();
        return 1;
    }));
    QVERIFY(!t.Start([] { return 2; }));
    QVERIFY(!t.Take());
    tGo.set_value();
    t.Wait();
    QCOMPARE(t.Take(), std::optional(1));
}

// A stack larger than all addresses: no thread gets one.
void BackgroundTest::withoutAThreadNothingIsDone() {
    pthread_attr_t tBefore, tHuge;
    QCOMPARE(::pthread_getattr_default_np(&tBefore), 0);
    ::pthread_attr_init(&tHuge);
    QCOMPARE(::pthread_attr_setstacksize(&tHuge, std::size_t{1} << 50), 0);
    Background<int> t;
    QCOMPARE(::pthread_setattr_default_np(&tHuge), 0);
    const bool bStarted = t.Start([] { return 1; });
    ::pthread_setattr_default_np(&tBefore);
    ::pthread_attr_destroy(&tHuge);
    QVERIFY(!bStarted);
    t.Wait();  // nothing is under way
    QVERIFY(!t.Take());
    QVERIFY(t.Start([] { return 2; }));
    t.Wait();
    QCOMPARE(t.Take(), std::optional(2));
}

QTEST_GUILESS_MAIN(BackgroundTest)
#include "BackgroundTest.moc"
