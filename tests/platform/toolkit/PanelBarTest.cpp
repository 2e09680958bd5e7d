// The status bar's panels: texts kept at once, shown on the beat, long ones whole in the tool tip.
#include "platform/toolkit/PanelBar.h"

#include <QTest>

using toolkit::PanelBar;

namespace {

void AddPanels(PanelBar& t) {
    t.AddPanel(QStringLiteral("State"), QStringLiteral("Recording"), false);
    t.AddPanel(QStringLiteral("Summary"), {}, true);
    t.AddPanel(QStringLiteral("Clock"), QStringLiteral("00:00:00"), false);
}

}  // namespace

class PanelBarTest : public QObject {
    Q_OBJECT
private slots:
    void panelsCountFromOne();
    void textIsKeptAtOnceAndShownOnTheBeat();
    void beatComesByItself();
    void unseenBarWaitsUntilItIsShown();
    void textsArePlain();
    void latinLettersAreShown();
    void otherLettersAreShownUntilTheNextText();
    void longTextDoesNotWidenTheBar();
    void tipTellsTheMeaningOrTheWholeText();
    void panelsAreWideEnoughForTheirTemplates();
    void statusTipLeavesThePanelsInSight();
    void textIsMarkedWithTheMouse();
    void sameTextIsNotPaintedAgain();
};

void PanelBarTest::panelsCountFromOne() {
    PanelBar t;
    AddPanels(t);
    for (int i = 1; i <= 3; ++i) t.SetPanelText(i, std::to_string(i));
    t.Synchronize();
    for (int i = 1; i <= 3; ++i) {
        QCOMPARE(t.PanelText(i), std::to_string(i));
        QCOMPARE(t.Panel(i).text(), QString::number(i));
        QCOMPARE(t.Panel(i).text(), QString::number(i));
    }
}

void PanelBarTest::textIsKeptAtOnceAndShownOnTheBeat() {
    PanelBar t;
    AddPanels(t);
    t.show();
    t.SetPanelText(2, "first");
    t.SetPanelText(2, "second");
    QCOMPARE(t.PanelText(2), std::string("second"));
    QCOMPARE(t.Panel(2).text(), QString());
    t.Synchronize();
    QCOMPARE(t.Panel(2).text(), QStringLiteral("second"));
    t.SetPanelText(2, "");
    t.Synchronize();
    QCOMPARE(t.Panel(2).text(), QString());
}

void PanelBarTest::beatComesByItself() {
    PanelBar t;
    AddPanels(t);
    t.show();
    t.SetPanelText(1, "Running");
    QTRY_COMPARE(t.Panel(1).text(), QStringLiteral("Running"));
}

void PanelBarTest::unseenBarWaitsUntilItIsShown() {
    PanelBar t;
    AddPanels(t);
    t.SetPanelText(1, "Running");
    QTest::qWait(150);
    QCOMPARE(t.Panel(1).text(), QString());
    t.show();
    QCOMPARE(t.Panel(1).text(), QStringLiteral("Running"));
}

void PanelBarTest::textsArePlain() {
    PanelBar t;
    AddPanels(t);
    t.SetPanelText(2, "<b>bold</b> & more");
    t.Synchronize();
    QCOMPARE(t.Panel(2).textFormat(), Qt::PlainText);
    QCOMPARE(t.Panel(2).text(), QStringLiteral("<b>bold</b> & more"));
}

void PanelBarTest::latinLettersAreShown() {
    PanelBar t;
    AddPanels(t);
    t.SetPanelText(2, "\xe9\xb0");
    t.Synchronize();
    QCOMPARE(t.Panel(2).text(), QStringLiteral("\u00e9\u00b0"));
}

void PanelBarTest::otherLettersAreShownUntilTheNextText() {
    PanelBar t;
    AddPanels(t);
    t.SetPanelWholeText(2, QString::fromUtf8("приём"));
    t.Synchronize();
    QCOMPARE(t.Panel(2).text(), QString::fromUtf8("приём"));
    QCOMPARE(t.PanelText(2), std::string("?????"));
    t.SetPanelText(2, "plain");
    t.Synchronize();
    QCOMPARE(t.Panel(2).text(), QStringLiteral("plain"));
}

void PanelBarTest::longTextDoesNotWidenTheBar() {
    PanelBar t;
    AddPanels(t);
    t.resize(500, 30);
    t.show();
    QCoreApplication::processEvents();
    const int iBefore = t.minimumSizeHint().width();
    t.SetPanelText(2, std::string(5000, 'x'));
    t.Synchronize();
    QCoreApplication::processEvents();
    QCOMPARE(t.minimumSizeHint().width(), iBefore);
    QCOMPARE(t.width(), 500);
}

void PanelBarTest::tipTellsTheMeaningOrTheWholeText() {
    PanelBar t;
    AddPanels(t);
    t.resize(500, 30);
    t.show();
    QCoreApplication::processEvents();
    QCOMPARE(t.Panel(2).toolTip(), QStringLiteral("Summary"));
    const std::string sLong(500, 'x');
    t.SetPanelText(2, sLong);
    t.Synchronize();
    QCOMPARE(t.Panel(2).toolTip(), QString::fromStdString(sLong));
    t.SetPanelText(2, "short");
    t.Synchronize();
    QCOMPARE(t.Panel(2).toolTip(), QStringLiteral("Summary"));
}

void PanelBarTest::panelsAreWideEnoughForTheirTemplates() {
    PanelBar t;
    AddPanels(t);
    t.resize(600, 30);
    t.show();
    QCoreApplication::processEvents();
    const auto tWidth = [&t](int iPanel, const char* sText) {
        return t.Panel(iPanel).fontMetrics().horizontalAdvance(QString::fromLatin1(sText));
    };
    QVERIFY(t.Panel(1).width() >= tWidth(1, "Recording"));
    QVERIFY(t.Panel(3).width() >= tWidth(3, "00:00:00"));
    QVERIFY(t.Panel(2).width() > t.Panel(1).width());
}

void PanelBarTest::statusTipLeavesThePanelsInSight() {
    PanelBar t;
    AddPanels(t);
    t.resize(500, 30);
    t.show();
    for (int i = 1; i <= 3; ++i) t.SetPanelText(i, std::to_string(i));
    t.Synchronize();
    QCoreApplication::processEvents();
    const int iLeast = t.minimumSizeHint().width();
    QVERIFY(!t.Tip().isVisible());
    t.ShowTip(QStringLiteral("<b>R>720"));
    QCoreApplication::processEvents();
    QVERIFY(t.Tip().isVisible());
    QCOMPARE(t.Tip().text(), QStringLiteral("<b>R>720"));
    QVERIFY(t.Tip().width() >= t.fontMetrics().horizontalAdvance(t.Tip().text()));
    for (int i = 1; i <= 3; ++i) {
        QVERIFY(t.Panel(i).isVisible());
        QVERIFY(!t.Panel(i).geometry().intersects(t.Tip().geometry()));
        QVERIFY(t.Panel(i).width() >= t.fontMetrics().horizontalAdvance(t.Panel(i).text()));
    }
    t.ShowTip(QString(5000, QLatin1Char('x')));
    QCoreApplication::processEvents();
    QVERIFY(t.minimumSizeHint().width() <= iLeast + 20);
    QCOMPARE(t.width(), 500);
    t.ShowTip({});
    QVERIFY(!t.Tip().isVisible());
}

void PanelBarTest::textIsMarkedWithTheMouse() {
    PanelBar t;
    AddPanels(t);
    t.resize(500, 30);
    t.show();
    t.SetPanelText(2, "Input Comm - No such device");
    t.Synchronize();
    QCoreApplication::processEvents();
    QLabel& tPanel = t.Panel(2);
    const int iMiddle = tPanel.height() / 2;
    QTest::mouseMove(&tPanel, QPoint(2, iMiddle));
    QTest::mousePress(&tPanel, Qt::LeftButton, {}, QPoint(2, iMiddle));
    QTest::mouseMove(&tPanel, QPoint(tPanel.width() - 10, iMiddle));
    QTest::mouseRelease(&tPanel, Qt::LeftButton, {}, QPoint(tPanel.width() - 10, iMiddle));
    QCOMPARE(tPanel.selectedText(), QStringLiteral("Input Comm - No such device"));
    QTest::mouseMove(&t.Panel(1), QPoint(2, iMiddle));
    QCOMPARE(tPanel.selectedText(), QStringLiteral("Input Comm - No such device"));
}

void PanelBarTest::sameTextIsNotPaintedAgain() {
    PanelBar t;
    AddPanels(t);
    t.show();
    t.SetPanelText(2, "7 Targets");
    t.Synchronize();
    t.Panel(2).setText({});  // whoever takes over puts it back
    t.SetPanelText(2, "7 Targets");
    t.Synchronize();
    QCOMPARE(t.Panel(2).text(), QString());
    t.SetPanelText(2, "8 Targets");
    t.Synchronize();
    QCOMPARE(t.Panel(2).text(), QStringLiteral("8 Targets"));
}

QTEST_MAIN(PanelBarTest)
#include "PanelBarTest.moc"
