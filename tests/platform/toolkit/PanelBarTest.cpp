// The status bar's panels: texts kept at once, shown on the beat, long ones whole in the tool tip.
#include "platform/toolkit/PanelBar.h"

#include <QEnterEvent>
#include <QImage>
#include <QTest>
#include <cmath>

using toolkit::PanelBar;

namespace {

void AddPanels(PanelBar& t) {
    t.AddPanel(QStringLiteral("State"), QStringLiteral("Recording"), false);
    t.AddPanel(QStringLiteral("Summary"), {}, true);
    t.AddPanel(QStringLiteral("Clock"), QStringLiteral("00:00:00"), false);
}

// The alerts raised by a status bar.
struct Alerts {
    explicit Alerts(PanelBar& t) {
        QObject::connect(&t, &PanelBar::Alert, &t, [this](const QString& sText) { sRaised << sText; });
    }
    QStringList sRaised;
};

QPalette Palette(bool bDark) {
    if (!bDark) return QPalette(QColor(239, 239, 239));
    QPalette t(QColor(53, 53, 53), QColor(42, 42, 42));
    t.setColor(QPalette::WindowText, Qt::white);
    return t;
}

// Contrast of two colours by the usual formula: 1 to 21.
double Contrast(const QColor& t1, const QColor& t2) {
    const auto Linear = [](double d) { return d <= 0.03928 ? d / 12.92 : std::pow((d + 0.055) / 1.055, 2.4); };
    const auto Light = [&](const QColor& t) {
        return 0.2126 * Linear(t.redF()) + 0.7152 * Linear(t.greenF()) + 0.0722 * Linear(t.blueF());
    };
    const double d1 = Light(t1), d2 = Light(t2);
    return (std::max(d1, d2) + 0.05) / (std::min(d1, d2) + 0.05);
}

int Saturated(const QImage& t, bool bAmber) {
    int iCount = 0;
    for (int y = 2; y < t.height() - 2; ++y)
        for (int x = 2; x < t.width() - 2; ++x) {
            const QColor c = t.pixelColor(x, y);
            const bool bIs = bAmber ? c.hslSaturation() > 150 && std::abs(c.hue() - 40) < 15
                                    : c.hslSaturation() > 100 && (c.hue() < 15 || c.hue() > 340);
            iCount += bIs;
        }
    return iCount;
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
    void tipIsRightAfterAResize();
    void cutTextEndsInAnEllipsis();
    void markedTextIsDrawnMarked();
    void noteStandsBelowThePanelsTip();
    void errorLooksLikeOne_data();
    void errorLooksLikeOne();
    void errorIsToldOnceItShows();
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

void PanelBarTest::tipIsRightAfterAResize() {
    PanelBar t;
    AddPanels(t);
    t.resize(900, 30);
    t.show();
    t.SetPanelText(2, "a text of some length, for which there is room in a wide window only");
    t.Synchronize();
    QCoreApplication::processEvents();
    QCOMPARE(t.Panel(2).toolTip(), QStringLiteral("Summary"));
    t.resize(400, 30);
    QCoreApplication::processEvents();
    QCOMPARE(t.Panel(2).toolTip(), t.Panel(2).text());
    t.resize(900, 30);
    QCoreApplication::processEvents();
    QCOMPARE(t.Panel(2).toolTip(), QStringLiteral("Summary"));
}

void PanelBarTest::cutTextEndsInAnEllipsis() {
    PanelBar t;
    AddPanels(t);
    t.resize(400, 30);
    t.show();
    t.SetPanelText(2, "short");
    t.Synchronize();
    QCOMPARE(t.Panel(2).Drawn(), QStringLiteral("short"));
    const std::string sLong = "beginning " + std::string(200, 'M') + " end";
    t.SetPanelText(2, sLong);
    t.Synchronize();
    QCoreApplication::processEvents();
    QVERIFY(t.Panel(2).Drawn().startsWith(QStringLiteral("beginning M")));
    QVERIFY(t.Panel(2).Drawn().endsWith(QChar(0x2026)));
    QCOMPARE(t.Panel(2).text(), QString::fromStdString(sLong));  // for a screen reader
    // On the glass: behind the last whole letter stand the three dots, low and apart.
    const QImage tImage = t.Panel(2).grab().toImage();
    t.Panel(2).SetText(t.Panel(2).Drawn());
    QVERIFY(t.Panel(2).grab().toImage() == tImage);
    t.Panel(2).SetText(t.Panel(2).text().chopped(1));
    QVERIFY(t.Panel(2).grab().toImage() != tImage);
}

void PanelBarTest::markedTextIsDrawnMarked() {
    PanelBar t;
    AddPanels(t);
    t.resize(400, 30);
    t.show();
    t.SetPanelText(2, "an error to be copied");
    t.Synchronize();
    QCoreApplication::processEvents();
    const QImage tBefore = t.Panel(2).grab().toImage();
    QEnterEvent tEnter({5, 5}, {5, 5}, {5, 5});  // a text can be marked while the mouse is over it
    QCoreApplication::sendEvent(&t.Panel(2), &tEnter);
    t.Panel(2).setSelection(3, 5);
    QEvent tLeave(QEvent::Leave);  // and stays marked
    QCoreApplication::sendEvent(&t.Panel(2), &tLeave);
    QCOMPARE(t.Panel(2).selectedText(), QStringLiteral("error"));
    const QImage tMarked = t.Panel(2).grab().toImage();
    const QColor tGround = t.palette().color(QPalette::Highlight);
    int iMarked = 0;
    for (int x = 0; x < tMarked.width(); ++x) iMarked += tMarked.pixelColor(x, tMarked.height() / 2) == tGround;
    QVERIFY(iMarked > 5);
    // No letter moves while it is marked: the first one is drawn where it was.
    const QRect tFirst(0, 0, 12, tMarked.height());
    QVERIFY(tMarked.copy(tFirst) == tBefore.copy(tFirst));
}

void PanelBarTest::noteStandsBelowThePanelsTip() {
    PanelBar t;
    AddPanels(t);
    t.resize(400, 30);
    t.show();
    t.SetPanelNote(1, QStringLiteral("Recording to a file"));
    QCOMPARE(t.Panel(1).toolTip(), QStringLiteral("State\nRecording to a file"));
    t.SetPanelText(1, "Record");
    t.Synchronize();
    QCOMPARE(t.Panel(1).toolTip(), QStringLiteral("State\nRecording to a file"));
    t.SetPanelNote(1, {});
    QCOMPARE(t.Panel(1).toolTip(), QStringLiteral("State"));
}

void PanelBarTest::errorLooksLikeOne_data() {
    QTest::addColumn<bool>("bDark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void PanelBarTest::errorLooksLikeOne() {
    QFETCH(bool, bDark);
    PanelBar t;
    t.setPalette(Palette(bDark));
    AddPanels(t);
    t.resize(500, 30);
    t.show();
    t.SetPanelText(2, "Targets=12, Messages=345");
    t.Synchronize();
    QCoreApplication::processEvents();
    QVERIFY(!t.Panel(2).Error());
    const QImage tSummary = t.Panel(2).grab().toImage();
    QCOMPARE(Saturated(tSummary, true) + Saturated(tSummary, false), 0);
    t.SetPanelText(2, "Input Comm - no such device");
    t.SetPanelError(2, false);
    t.Synchronize();
    QVERIFY(t.Panel(2).Error());
    const QImage tError = t.Panel(2).grab().toImage();
    QVERIFY(Saturated(tError, true) > 20);   // the icon
    QVERIFY(Saturated(tError, false) > 20);  // the text
    const QColor tGround = tError.pixelColor(tError.width() - 6, tError.height() / 2);
    double dBest = 0;
    for (int y = 2; y < tError.height() - 2; ++y)
        for (int x = 25; x < tError.width() - 4; ++x) {
            dBest = std::max(dBest, Contrast(tError.pixelColor(x, y), tGround));
        }
    QVERIFY2(dBest >= 4.5, qPrintable(QString::number(dBest)));
    // The palette may change meanwhile.
    t.setPalette(Palette(!bDark));
    QVERIFY(Saturated(t.Panel(2).grab().toImage(), false) > 20);
    t.setPalette(Palette(bDark));
    t.SetPanelText(2, "Targets=12, Messages=345");
    t.Synchronize();
    QCOMPARE(t.Panel(2).grab().toImage(), tSummary);
}

void PanelBarTest::errorIsToldOnceItShows() {
    PanelBar t;
    AddPanels(t);
    t.resize(500, 30);
    t.show();
    Alerts tAlerts(t);
    t.SetPanelText(2, "Targets=1, Messages=1");
    t.Synchronize();
    QCOMPARE(tAlerts.sRaised, QStringList());
    t.SetPanelText(2, "Record - No space left on device");
    t.SetPanelError(2, true);
    QCOMPARE(tAlerts.sRaised, QStringList());
    t.Synchronize();
    QCOMPARE(tAlerts.sRaised, QStringList{QStringLiteral("Record - No space left on device")});
    t.SetPanelText(1, "Running");
    t.Synchronize();
    QCOMPARE(tAlerts.sRaised.size(), 1);
    // The same once more is another one; without an alert, or gone before it shows, it is not told.
    t.SetPanelText(2, "Record - No space left on device");
    t.SetPanelError(2, true);
    t.Synchronize();
    QCOMPARE(tAlerts.sRaised.size(), 2);
    t.SetPanelText(2, "Checksum Error");
    t.SetPanelError(2, false);
    t.Synchronize();
    t.SetPanelText(2, "Size Error");
    t.SetPanelError(2, true);
    t.SetPanelText(2, "Targets=1, Messages=2");
    t.Synchronize();
    t.SetPanelText(2, "Size Error");
    t.SetPanelError(2, false);
    t.Synchronize();
    QCOMPARE(tAlerts.sRaised.size(), 2);
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
