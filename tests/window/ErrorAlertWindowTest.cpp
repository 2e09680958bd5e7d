// Errors of the run: which ones a screen reader is told of, and that they alone look like errors.
#include <QTest>

#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::AnyReport;
using support::ShownWindow;

namespace {

constexpr const char* Good = AnyReport;
constexpr char Bad[] = "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7C";

// The alerts raised by a status bar.
struct Alerts {
    explicit Alerts(toolkit::PanelBar& t) {
        QObject::connect(&t, &toolkit::PanelBar::Alert, &t, [this](const QString& sText) { sRaised << sText; });
    }
    QStringList sRaised;
};

struct Inputs : ShownWindow {
    bool LooksLikeError() {
        Synchronize();
        return StatusBar.Panel(2).Error();
    }
    void Hear(std::initializer_list<const char*> sLines) {
        for (const char* sLine : sLines) {
            FeedLine(0, sLine);
            Synchronize();
        }
    }
    Alerts tAlerts{StatusBar};
};

}  // namespace

class ErrorAlertWindowTest : public QObject {
    Q_OBJECT
private slots:
    void portThatCannotBeOpened();
    void summaryIsNoError();
    void badLinesAreToldOncePerSeries();
    void errorBehindReportsIsTold();
    void fileThatCannotBeOpened();
    void refusedCommand();
};

void ErrorAlertWindowTest::portThatCannotBeOpened() {
    Inputs t;
    t.tWorld.sBadPorts[6] = "busy";
    t.Press("Start");
    QVERIFY(t.LooksLikeError());
    QCOMPARE(t.tAlerts.sRaised, QStringList{QStringLiteral("Input Comm - busy")});
    t.Press("Start");  // tried again, told again
    QVERIFY(t.LooksLikeError());
    QCOMPARE(t.tAlerts.sRaised.size(), 2);
    t.tWorld.sBadPorts.clear();
    t.Press("Start");
    QVERIFY(!t.LooksLikeError());
    QCOMPARE(t.tAlerts.sRaised.size(), 2);
}

void ErrorAlertWindowTest::summaryIsNoError() {
    Inputs t;
    t.StartBoth();
    t.Hear({Good, Good});
    QCOMPARE(t.Panel(2), std::string("1 Targets, 2 Messages"));
    QVERIFY(!t.LooksLikeError());
    QCOMPARE(t.tAlerts.sRaised, QStringList());
}

void ErrorAlertWindowTest::badLinesAreToldOncePerSeries() {
    Inputs t;
    t.StartBoth();
    for (int iSecond = 0; iSecond < 20; ++iSecond) {
        t.Hear({Good, Bad, "x", Good, Bad});
        t.Advance(1);
    }
    QCOMPARE(t.tAlerts.sRaised, QStringList{QStringLiteral("Checksum Error")});
    QVERIFY(t.LooksLikeError());
    t.Hear({Good});
    QVERIFY(!t.LooksLikeError());
    t.Advance(1);  // the first second without one
    t.Hear({"x"});
    QVERIFY(t.LooksLikeError());
    QCOMPARE(t.tAlerts.sRaised, (QStringList{QStringLiteral("Checksum Error"), QStringLiteral("Size Error")}));
}

void ErrorAlertWindowTest::errorBehindReportsIsTold() {
    Inputs t;
    t.StartBoth();
    t.Feed(0, std::string(Good) + "\r\n" + Bad + "\r\n");  // in one reception
    QVERIFY(t.LooksLikeError());
    QCOMPARE(t.tAlerts.sRaised, QStringList{QStringLiteral("Checksum Error")});
    t.Advance(2);
    t.Feed(0, std::string(Bad) + "\r\n" + Good + "\r\n");
    QVERIFY(!t.LooksLikeError());
    QCOMPARE(t.tAlerts.sRaised.size(), 1);
}

void ErrorAlertWindowTest::fileThatCannotBeOpened() {
    Inputs t;
    t.PressWithFile("Playback", t.tWorld.Path(QStringLiteral("missing.txt")));
    QVERIFY(t.LooksLikeError());
    QCOMPARE(t.tAlerts.sRaised, QStringList{QStringLiteral("Playback - No such file or directory")});
}

void ErrorAlertWindowTest::refusedCommand() {
    Inputs t;
    t.cmdRxNasaChannel.click();
    QVERIFY(t.LooksLikeError());
    t.cmdRxNasaChannel.click();
    QVERIFY(t.LooksLikeError());
    const QString sText = QStringLiteral("Receiver - Input #1 is not open");
    QCOMPARE(t.tAlerts.sRaised, (QStringList{sText, sText}));
}

QTEST_MAIN(ErrorAlertWindowTest)
#include "ErrorAlertWindowTest.moc"
