// What the window looks like, by its pixels: every caption is drawn, the buttons and the window have their pictures, a
// text keeps to its panel and an error looks like one. What should be seen is worked out here; no picture is kept.
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>
#include <algorithm>

#include "tests/window/Look.h"

using namespace support;

namespace {

constexpr int FreeOfLetters = 2;  // pixels that the first and last letter of a text may have at its edge

QColor InkColour(const QWidget& t, QPalette::ColorRole eRole) {
    return t.palette().color(t.isEnabled() ? QPalette::Active : QPalette::Disabled, eRole);
}

struct Caption {
    const QWidget* pWidget;
    QString sText;
    QPalette::ColorRole eInk;
};

// What stands on the window's controls at the moment.
std::vector<Caption> Captions(TestWindow& t) {
    std::vector<Caption> tAll;
    for (const QWidget* pWidget : t.findChildren<QWidget*>()) {
        if (!pWidget->isVisible() || pWidget->window() != &t) continue;
        if (const auto* p = qobject_cast<const QLabel*>(pWidget)) tAll.push_back({p, p->text(), QPalette::WindowText});
        if (const auto* p = qobject_cast<const QAbstractButton*>(pWidget)) {
            const bool bBox = qobject_cast<const QCheckBox*>(p) != nullptr;
            tAll.push_back({p, p->text(), bBox ? QPalette::WindowText : QPalette::ButtonText});
        }
        if (const auto* p = qobject_cast<const QLineEdit*>(pWidget)) tAll.push_back({p, p->text(), QPalette::Text});
        if (const auto* p = qobject_cast<const QGroupBox*>(pWidget)) {
            tAll.push_back({p, p->title(), QPalette::WindowText});
        }
        const auto* pCombo = qobject_cast<const QComboBox*>(pWidget);
        if (pCombo != nullptr && !pCombo->isEditable()) {
            tAll.push_back({pCombo, pCombo->currentText(), QPalette::ButtonText});
        }
    }
    return tAll;
}

// How much of each column of a button's picture is painted, left to right; the picture lies left of the caption.
std::vector<int> PictureColumns(const QImage& tButton, int iCaption, QColor& tMain) {
    const QRect tPlace(3, 3, iCaption - 5, tButton.height() - 6);
    const QImage tPicture = tButton.copy(tPlace);
    std::vector<int> iColumns;
    int iStrongest = 0;
    for (int x = 0; x < tPicture.width(); ++x) {
        int iPainted = 0;
        for (int y = 0; y < tPicture.height(); ++y) {
            const QColor t = tPicture.pixelColor(x, y);
            const QColor tGround = tPicture.pixelColor(0, y);  // shaded from top to bottom
            const int iAway = std::abs(t.red() - tGround.red()) + std::abs(t.green() - tGround.green()) +
                              std::abs(t.blue() - tGround.blue());
            if (iAway > 60) ++iPainted;
            if (iAway > iStrongest) std::tie(iStrongest, tMain) = std::pair(iAway, t);
        }
        iColumns.push_back(iPainted);
    }
    while (!iColumns.empty() && iColumns.front() == 0) iColumns.erase(iColumns.begin());
    while (!iColumns.empty() && iColumns.back() == 0) iColumns.pop_back();
    return iColumns;
}

// A picture's outline in words: "full", "falls", "rises and falls", "gap" between parts.
QString Outline(const std::vector<int>& iColumns) {
    const int iHighest = iColumns.empty() ? 0 : *std::max_element(iColumns.begin(), iColumns.end());
    QStringList sWords;
    const auto Say = [&sWords](const char* s) {
        if (sWords.isEmpty() || sWords.last() != QLatin1String(s)) sWords << QLatin1String(s);
    };
    for (std::size_t i = 1; i < iColumns.size(); ++i) {
        if (iColumns[i] == 0) {
            Say("gap");
        } else if (iColumns[i - 1] == 0) {
            continue;
        } else if (iColumns[i] > iColumns[i - 1]) {
            Say("rises");
        } else if (iColumns[i] < iColumns[i - 1]) {
            Say("falls");
        } else if (iColumns[i] == iHighest) {
            Say("full");
        }
    }
    return sWords.join(QLatin1Char(' '));
}

}  // namespace

class LookWindowTest : public QObject {
    Q_OBJECT
private slots:
    void captionsAreDrawn_data();
    void captionsAreDrawn();
    void tabsAndColumnsAreNamed();
    void buttonsHaveTheirPictures_data();
    void buttonsHaveTheirPictures();
    void windowHasItsIcon();
    void framesAndGroundsAreDrawn();
    void fieldsShowArrowsAndSelection();
    void longTextsStayInTheirPanels();
    void errorsLookLikeErrors();
};

void LookWindowTest::captionsAreDrawn_data() {
    QTest::addColumn<int>("tab");
    Look f;
    for (int i = 0; i < f.t.SSTab.Count(); ++i) QTest::newRow(qPrintable(f.t.SSTab.Bar().tabText(i))) << i;
}

void LookWindowTest::captionsAreDrawn() {
    QFETCH(int, tab);
    Look f;
    f.t.chkCommEnabled(1).setChecked(true);
    f.Show(static_cast<ui::Tab>(tab));
    const QImage tWindow = PictureOf(f.t);
    int iFound = 0;
    for (const Caption& t : Captions(f.t)) {
        for (const QString& sLine : t.sText.split(QLatin1Char('\r'), Qt::SkipEmptyParts)) {
            const QImage tPlace = tWindow.copy(PlaceIn(f.t, *t.pWidget));
            QVERIFY2(FindText(tPlace, sLine, t.pWidget->font(), InkColour(*t.pWidget, t.eInk)),
                     qPrintable(t.pWidget->objectName() + QLatin1Char(' ') + sLine));
            ++iFound;
        }
    }
    QVERIFY(iFound >= 7);  // five buttons, run state and clock at the least
}

void LookWindowTest::tabsAndColumnsAreNamed() {
    Look f;
    f.t.cmbTargetDetail.SetText("All");
    f.t.TargetGridSetup(false);
    const QTabBar& tBar = f.t.SSTab.Bar();
    const QImage tTabs = f.Seen(tBar);
    for (int i = 0; i < tBar.count(); ++i) {
        QVERIFY2(
            FindText(tTabs.copy(tBar.tabRect(i)), tBar.tabText(i), tBar.font(), InkColour(tBar, QPalette::WindowText)),
            qPrintable(tBar.tabText(i)));
    }
    for (const auto& [eTab, pGrid] :
         {std::pair{ui::TabTargets, &f.t.grdTargetData}, std::pair{ui::TabMessages, &f.t.grdMessageData},
          std::pair{ui::TabSpec, &f.t.grdSpecData}}) {
        f.Show(eTab);
        const QHeaderView& tHeader = *pGrid->horizontalHeader();
        const QImage tNames = f.Seen(tHeader);
        for (int i = 0; i < tHeader.count(); ++i) {
            const QString sName = pGrid->model()->headerData(i, Qt::Horizontal).toString();
            const QRect tPlace(tHeader.sectionViewportPosition(i), 0, tHeader.sectionSize(i), tHeader.height());
            if (sName.isEmpty() || sName == QLatin1String("Message Id")) continue;  // the one that is cut
            const auto tText =
                FindText(tNames.copy(tPlace), sName, pGrid->font(), InkColour(tHeader, QPalette::ButtonText));
            QVERIFY2(tText, qPrintable(sName));
            const int iAside = tText->left() - (tPlace.width() - tText->right() - 1);
            QVERIFY2(std::abs(iAside) <= 2 * FreeOfLetters, qPrintable(sName));  // centred
        }
    }
}

void LookWindowTest::buttonsHaveTheirPictures_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("outlines");  // as it may come out of the rounding to pixels
    QTest::addColumn<QString>("colour");
    const auto Row = [](const char* sButton, const QStringList& sOutlines, const char* sColour) {
        QTest::newRow(sButton) << QString::fromLatin1(sButton) << sOutlines << QString::fromLatin1(sColour);
    };
    Row("Start", {QStringLiteral("falls"), QStringLiteral("full falls")}, "green");
    Row("Stop", {QStringLiteral("full")}, "grey");
    Row("Record", {QStringLiteral("rises falls"), QStringLiteral("rises full falls")}, "red");
    Row("Playback", {QStringLiteral("full gap falls"), QStringLiteral("full gap full falls")}, "grey");
    Row("Playback Burst", {QStringLiteral("falls rises falls"), QStringLiteral("full falls rises full falls")}, "grey");
}

void LookWindowTest::buttonsHaveTheirPictures() {
    QFETCH(QString, button);
    QFETCH(QStringList, outlines);
    QFETCH(QString, colour);
    Look f;
    for (const char* sKey : {"Start", "Stop", "Record", "Playback", "Playback Burst"})
        f.t.Toolbar.SetEnabled(QLatin1String(sKey), true);
    f.t.Toolbar.SetPressed(QStringLiteral("Stop"), false);
    f.Settle();
    const auto* pButton = qobject_cast<QToolButton*>(f.t.Toolbar.widgetForAction(&f.t.Toolbar.Action(button)));
    const QImage tButton = f.Seen(*pButton);
    const auto tCaption =
        FindText(tButton, pButton->text(), pButton->font(), InkColour(*pButton, QPalette::ButtonText));
    QVERIFY(tCaption);
    QColor tMain;
    const QString sOutline = Outline(PictureColumns(tButton, tCaption->left(), tMain));
    QVERIFY2(outlines.contains(sOutline), qPrintable(sOutline));
    const bool bRed = tMain.red() > tMain.green() + 60;
    const bool bGreen = tMain.green() > tMain.red() + 60;
    QCOMPARE(bRed ? QStringLiteral("red") : bGreen ? QStringLiteral("green") : QStringLiteral("grey"), colour);
}

// A mast that hears, white on dark blue, above the lighter tide; its corners are round.
void LookWindowTest::windowHasItsIcon() {
    Look f;
    f.Show(ui::TabAbout);
    const QImage tAbout = f.Seen(f.t.picAboutIcon);
    const QImage tIcon = f.t.windowIcon().pixmap(QSize(64, 64)).toImage();
    QCOMPARE(tAbout.size(), QSize(64, 64));
    QCOMPARE(tIcon.size(), QSize(64, 64));
    QCOMPARE(tIcon.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(tAbout.pixelColor(0, 0), GroundOf(f.Seen(f.t.lblAboutTitle)));
    for (const QImage& t : {tIcon, tAbout}) {
        QCOMPARE(t.pixelColor(32, 24), QColor(Qt::white));
        QCOMPARE(t.pixelColor(32, 40), QColor(Qt::white));
        for (const QPoint& tDark : {QPoint(6, 20), QPoint(32, 4), QPoint(58, 20)}) {
            QVERIFY(t.pixelColor(tDark).blue() < 120 && t.pixelColor(tDark).red() < 40);
        }
        for (const QPoint& tTide : {QPoint(12, 56), QPoint(32, 60), QPoint(52, 56)}) {
            QVERIFY(t.pixelColor(tTide).blue() > 180 && t.pixelColor(tTide).red() < 100);
        }
    }
}

void LookWindowTest::framesAndGroundsAreDrawn() {
    Look f;
    QVERIFY(!f.t.Toolbar.isMovable() && !f.t.Toolbar.isFloatable());  // no handle to drag it by
    // A line at the left of each panel and of the pages.
    for (int i = 1; i <= 5; ++i) {
        const QImage tPanel = f.Seen(f.t.StatusBar.Panel(i));
        QVERIFY(tPanel.pixelColor(0, tPanel.height() / 2) != GroundOf(tPanel));
    }
    const QRect tPages = PlaceIn(f.t, f.t.SSTab);
    const QImage tEdge = f.Seen(QRect(tPages.left() - 3, tPages.center().y(), 10, 1));
    QVERIFY(tEdge.pixelColor(3, 0) != tEdge.pixelColor(0, 0) && tEdge.pixelColor(3, 0) != tEdge.pixelColor(6, 0));
    // All that stands on a page has its ground.
    for (const auto& [eTab, pWidget] :
         std::initializer_list<std::pair<ui::Tab, QWidget*>>{{ui::TabDiagram, &f.t.pctDiagram},
                                                             {ui::TabTiming, &f.t.lblTimingSummary},
                                                             {ui::TabAbout, &f.t.lblAboutTitle}}) {
        f.Show(eTab);
        QCOMPARE(GroundOf(f.Seen(*pWidget)), tEdge.pixelColor(6, 0));
    }
    QVERIFY(f.t.lblAboutTitle.font().bold());
    QVERIFY(f.t.lblAboutTitle.fontMetrics().height() > 1.5 * f.t.lblAboutDescription.fontMetrics().height());
}

void LookWindowTest::fieldsShowArrowsAndSelection() {
    Look f;
    const QImage tPort = f.Seen(f.t.txtCommPort(0));
    const QImage tArrow = tPort.copy(tPort.width() - tPort.height(), 3, tPort.height() - 3, tPort.height() - 6);
    const Ink tInk(tArrow, InkColour(f.t.txtCommPort(0), QPalette::ButtonText), GroundOf(tArrow));
    QVERIFY(tInk.tBounds.width() > tInk.tBounds.height() && tInk.tBounds.height() >= 3);
    // A long text ends before it.
    f.t.txtCommPort(0).SetText("");
    const QImage tEmpty = f.Seen(f.t.txtCommPort(0));
    f.t.txtCommPort(0).SetText(std::string(60, 'W'));
    const QRect tText = support::Difference(tEmpty, f.Seen(f.t.txtCommPort(0)));
    QVERIFY(tText.width() > tPort.width() / 2 && tText.right() < tPort.width() - tPort.height() / 2);
    f.Show(ui::TabGps);
    QTest::mouseClick(&f.t.txtGpsLat, Qt::LeftButton, {}, QPoint(8, f.t.txtGpsLat.height() / 2));
    f.Settle();
    const QImage tField = f.Seen(f.t.txtGpsLat);
    const QRgb lSelected = f.t.palette().color(QPalette::Active, QPalette::Highlight).rgb();
    QRect tSelected;
    for (int y = 2; y < tField.height() - 2; ++y) {
        for (int x = 2; x < tField.width() - 2; ++x) {
            if (tField.pixel(x, y) == lSelected) tSelected |= QRect(x, y, 1, 1);
        }
    }
    const int iDigit = f.t.txtGpsLat.fontMetrics().horizontalAdvance(QLatin1Char('0'));
    QVERIFY2(std::abs(tSelected.width() - iDigit) <= 1, qPrintable(QString::number(tSelected.width())));
}

void LookWindowTest::longTextsStayInTheirPanels() {
    Look f;
    const QImage tWithout = PictureOf(f.t);
    f.t.StatusBar.SetPanelText(2, std::string(400, 'W'));
    f.Settle();
    const QRect tChanged = support::Difference(tWithout, PictureOf(f.t));
    QVERIFY(!tChanged.isEmpty());
    QVERIFY(PlaceIn(f.t, f.t.StatusBar.Panel(2)).contains(tChanged));
}

void LookWindowTest::errorsLookLikeErrors() {
    Look f;
    f.t.StartBoth();
    f.t.FeedLine(0, "$G*00");
    f.Settle();
    const toolkit::PanelLabel& tPanel = f.t.StatusBar.Panel(2);
    QCOMPARE(tPanel.text(), QStringLiteral("Size Error"));
    const QImage tShown = f.Seen(tPanel);
    const auto tText = FindText(tShown, tPanel.text(), tPanel.font(), QColor(176, 0, 32));
    QVERIFY(tText);
    int iRed = 0, iAmber = 0;
    for (int y = 0; y < tShown.height(); ++y) {
        for (int x = 0; x < tText->right(); ++x) {
            const QColor t = tShown.pixelColor(x, y);
            if (x < tText->left()) iAmber += t.red() > 220 && t.green() > 130 && t.green() < 190 && t.blue() < 60;
            if (x >= tText->left()) iRed += t.red() > 120 && t.green() < 60;
        }
    }
    QVERIFY2(iAmber > 20, qPrintable(QString::number(iAmber)));
    QVERIFY2(iRed > 40, qPrintable(QString::number(iRed)));
}

QTEST_MAIN(LookWindowTest)
#include "LookWindowTest.moc"
