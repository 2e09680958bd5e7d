// Errors of the run: which ones a screen reader is told of, and that they alone look like errors.
#include <QTest>

#include "tests/support/PrintString.h"
#include "tests/support/TestWindow.h"

using support::TestWindow;
using support::World;

namespace {

constexpr char Good[] = "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B";
constexpr char Bad[] = "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7C";

// The alerts raised by a status bar.
struct Alerts {
    explicit Alerts(toolkit::PanelBar& t) {
        QObject::connect(&t, &toolkit::PanelBar::Alert, &t, [this](const QString& sText) { sRaised << sText; });
    }
    QStringList sRaised;
};

struct Inputs {
    Inputs() { t.LoadAndShow(); }
    bool LooksLikeError() {
        t.Synchronize();
        return t.StatusBar.Panel(2).Error();
    }
    void Feed(std::initializer_list<const char*> sLines) {
        for (const char* sLine : sLines) {
            t.FeedLine(0, sLine);
            t.Synchronize();
        }
    }
    World tWorld;
    TestWindow t{tWorld};
    Alerts tAlerts{t.StatusBar};
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
    Inputs i;
    i.tWorld.sBadPorts[6] = "busy";
    i.t.Press("Start");
    QVERIFY(i.LooksLikeError());
    QCOMPARE(i.tAlerts.sRaised, QStringList{QStringLiteral("Input Comm - busy")});
    i.t.Press("Start");  // tried again, told again
    QVERIFY(i.LooksLikeError());
    QCOMPARE(i.tAlerts.sRaised.size(), 2);
    i.tWorld.sBadPorts.clear();
    i.t.Press("Start");
    QVERIFY(!i.LooksLikeError());
    QCOMPARE(i.tAlerts.sRaised.size(), 2);
}

void ErrorAlertWindowTest::summaryIsNoError() {
    Inputs i;
    i.t.StartBoth();
    i.Feed({Good, Good});
    QCOMPARE(i.t.Panel(2), std::string("1 Targets, 2 Messages"));
    QVERIFY(!i.LooksLikeError());
    QCOMPARE(i.tAlerts.sRaised, QStringList());
}

void ErrorAlertWindowTest::badLinesAreToldOncePerSeries() {
    Inputs i;
    i.t.StartBoth();
    for (int iSecond = 0; iSecond < 20; ++iSecond) {
        i.Feed({Good, Bad, "x", Good, Bad});
        i.t.Advance(1);
    }
    QCOMPARE(i.tAlerts.sRaised, QStringList{QStringLiteral("Checksum Error")});
    QVERIFY(i.LooksLikeError());
    i.Feed({Good});
    QVERIFY(!i.LooksLikeError());
    i.t.Advance(1);  // the first second without one
    i.Feed({"x"});
    QVERIFY(i.LooksLikeError());
    QCOMPARE(i.tAlerts.sRaised, (QStringList{QStringLiteral("Checksum Error"), QStringLiteral("Size Error")}));
}

void ErrorAlertWindowTest::errorBehindReportsIsTold() {
    Inputs i;
    i.t.StartBoth();
    i.t.Feed(0, std::string(Good) + "\r\n" + Bad + "\r\n");  // in one reception
    QVERIFY(i.LooksLikeError());
    QCOMPARE(i.tAlerts.sRaised, QStringList{QStringLiteral("Checksum Error")});
    i.t.Advance(2);
    i.t.Feed(0, std::string(Bad) + "\r\n" + Good + "\r\n");
    QVERIFY(!i.LooksLikeError());
    QCOMPARE(i.tAlerts.sRaised.size(), 1);
}

void ErrorAlertWindowTest::fileThatCannotBeOpened() {
    Inputs i;
    i.tWorld.tFileAnswers = {i.tWorld.Path(QStringLiteral("missing.txt"))};
    i.t.Press("Playback");
    QVERIFY(i.LooksLikeError());
    QCOMPARE(i.tAlerts.sRaised, QStringList{QStringLiteral("Playback - No such file or directory")});
}

void ErrorAlertWindowTest::refusedCommand() {
    Inputs i;
    i.t.cmdRxNasaChannel.click();
    QVERIFY(i.LooksLikeError());
    i.t.cmdRxNasaChannel.click();
    QVERIFY(i.LooksLikeError());
    const QString sText = QStringLiteral("Receiver - Input #1 is not open");
    QCOMPARE(i.tAlerts.sRaised, (QStringList{sText, sText}));
}

QTEST_MAIN(ErrorAlertWindowTest)
#include "ErrorAlertWindowTest.moc"
