// Holding a name: seen by others, in this process and in another, and free again however a holder ends.
#include "platform/runtime/NameHold.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTest>
#include <csignal>
#include <string>

using runtime::NameHold;

namespace {

// A name of this test alone.
std::string Name(const char* sPart) { return "NameHoldTest/" + std::to_string(::getpid()) + '/' + sPart; }

// Another process that holds a name until it is killed.
class Holder {
public:
    explicit Holder(const std::string& sName) {
        int iPipe[2];
        if (::pipe(iPipe) != 0) qFatal("pipe");
        m_iProcess = ::fork();
        if (m_iProcess == 0) {
            NameHold tHold;
            const char c = tHold.Take(sName) ? '1' : '0';
            if (::write(iPipe[1], &c, 1) != 1) ::_exit(1);
            while (true) ::pause();
        }
        ::close(iPipe[1]);
        if (::read(iPipe[0], &m_cOthers, 1) != 1) qFatal("no answer");
        ::close(iPipe[0]);
    }
    ~Holder() { Kill(); }
    bool HasSeenOthers() const { return m_cOthers == '1'; }
    void Kill() {
        if (m_iProcess <= 0) return;
        ::kill(m_iProcess, SIGKILL);
        ::waitpid(m_iProcess, nullptr, 0);
        m_iProcess = 0;
    }

private:
    pid_t m_iProcess = 0;
    char m_cOthers = '?';
};

}  // namespace

class NameHoldTest : public QObject {
    Q_OBJECT

private slots:
    void firstHolderSeesNobody();
    void secondHolderSeesTheFirst();
    void namesAreApart();
    void holderThatIsKilledLeavesNothing();
    void holderThatCameSecondIsSeenWhenTheFirstHasGone();
    void takingAnewIsNoOther();
    void withoutDescriptorsNobodyIsSeen();
};

void NameHoldTest::firstHolderSeesNobody() {
    NameHold t;
    QVERIFY(!t.Take(Name("alone")));
}

void NameHoldTest::secondHolderSeesTheFirst() {
    NameHold tFirst, tSecond;
    QVERIFY(!tFirst.Take(Name("shared")));
    QVERIFY(tSecond.Take(Name("shared")));
    tFirst.Release();
    tSecond.Release();
    QVERIFY(!tFirst.Take(Name("shared")));
}

// Also such as begin alike and are longer than the system's own names may be.
void NameHoldTest::namesAreApart() {
    const std::string sLong(4000, 'x');
    NameHold tFirst, tSecond, tThird;
    QVERIFY(!tFirst.Take(sLong + Name("1")));
    QVERIFY(!tSecond.Take(sLong + Name("2")));
    QVERIFY(tThird.Take(sLong + Name("2")));
}

void NameHoldTest::holderThatIsKilledLeavesNothing() {
    Holder tOther(Name("killed"));
    QVERIFY(!tOther.HasSeenOthers());
    NameHold t;
    QVERIFY(t.Take(Name("killed")));
    t.Release();
    tOther.Kill();
    QVERIFY(!t.Take(Name("killed")));
}

void NameHoldTest::holderThatCameSecondIsSeenWhenTheFirstHasGone() {
    const std::string sName = Name("second");
    NameHold tFirst;
    QVERIFY(!tFirst.Take(sName));
    const Holder tOther(sName);
    QVERIFY(tOther.HasSeenOthers());
    tFirst.Release();
    NameHold tThird;
    QVERIFY(tThird.Take(sName));
}

void NameHoldTest::takingAnewIsNoOther() {
    NameHold t;
    QVERIFY(!t.Take(Name("again")));
    QVERIFY(!t.Take(Name("again")));
}

// Whoever can hold nothing is not taken for one who was late.
void NameHoldTest::withoutDescriptorsNobodyIsSeen() {
    rlimit tBefore{};
    QCOMPARE(::getrlimit(RLIMIT_NOFILE, &tBefore), 0);
    const rlimit tNone{0, tBefore.rlim_max};
    NameHold t;
    ::setrlimit(RLIMIT_NOFILE, &tNone);
    const bool bOthers = t.Take(Name("poor"));
    ::setrlimit(RLIMIT_NOFILE, &tBefore);
    QVERIFY(!bOthers);
    NameHold tSecond;
    QVERIFY(!tSecond.Take(Name("poor")));  // nothing is held
}

QTEST_GUILESS_MAIN(NameHoldTest)
#include "NameHoldTest.moc"
