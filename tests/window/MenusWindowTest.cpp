// The context menus: what they offer, by mouse and keyboard, and what each entry does.
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMenu>
#include <QTest>
#include <QWindow>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

constexpr int Mmsi = 1, MessageId = 7;

QMenu* OpenMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

// The entries as they are read, "-" for a line between them, "(...)" around one that is greyed, the keys behind.
QStringList Entries() {
    QStringList sEntries;
    if (OpenMenu() == nullptr) return sEntries;
    for (const QAction* pEntry : OpenMenu()->actions()) {
        QString sText = pEntry->text().remove(QLatin1Char('&'));
        if (!pEntry->shortcut().isEmpty()) sText += QLatin1Char(' ') + pEntry->shortcut().toString();
        if (pEntry->isSeparator()) sText = QStringLiteral("-");
        sEntries << (pEntry->isEnabled() ? sText : QLatin1Char('(') + sText + QLatin1Char(')'));
    }
    return sEntries;
}

// As a click of the right button on the screen; the window makes the menu's event of it.
void RightClick(TestWindow& t, QWidget& tWidget, QPoint tPlace) {
    QTest::mouseClick(t.windowHandle(), Qt::RightButton, {}, tWidget.mapTo(&t, tPlace));
}

void Choose(const char* sEntry) {
    QMenu* pMenu = OpenMenu();
    QVERIFY(pMenu != nullptr);
    for (QAction* pEntry : pMenu->actions()) {
        if (pEntry->text().remove(QLatin1Char('&')) != QLatin1String(sEntry)) continue;
        QTest::mouseClick(pMenu, Qt::LeftButton, {}, pMenu->actionGeometry(pEntry).center());
        QCoreApplication::processEvents();
        return;
    }
    QFAIL(sEntry);
}

QString Clipboard() { return QApplication::clipboard()->text(); }

struct Menus : ThreeTargets {
    explicit Menus(ui::Tab eTab) : ThreeTargets(eTab) {
        activateWindow();
        QApplication::clipboard()->setText(QStringLiteral("before"));
    }
    ~Menus() {
        if (OpenMenu() != nullptr) OpenMenu()->close();
    }
    void MenuOn(toolkit::Grid& grd, int iRow) { RightClick(*this, *grd.viewport(), PlaceOf(grd, iRow, Mmsi)); }
    void MenuOn(toolkit::LogList& lst, int iLine) {
        const QPoint tPlace(30, lst.visualRect(lst.model()->index(iLine, 0)).center().y());
        RightClick(*this, *lst.viewport(), tPlace);
    }
};

struct Fields : ShownWindow {
    Fields() : ShownWindow(ui::TabGps) {
        activateWindow();
        txtGpsLat.SetText("12 30.00 N");
        txtGpsLon.SetText("045 15.00 E");
        Synchronize();
    }
    ~Fields() {
        if (OpenMenu() != nullptr) OpenMenu()->close();
    }
    void Paste(toolkit::MaskedBox& txt, const QString& sText) {
        QApplication::clipboard()->setText(sText);
        RightClick(*this, txt, txt.rect().center());
        Choose("Paste");
        Synchronize();
    }
};

}  // namespace

class MenusWindowTest : public QObject {
    Q_OBJECT
private slots:
    void logsOfferTheirs();
    void aLogWithoutLinesGreysWhatItCannotDo();
    void logsCopyByMenu();
    void aLogIsFollowedByMenu();
    void tablesOfferTheirs_data();
    void tablesOfferTheirs();
    void rowsAreCopiedWithTheNamesOfTheirColumns();
    void aShipIsTrackedByMenu();
    void theShipThatWasSeenIsTracked();
    void noShipIsTrackedFromBelowTheRows();
    void columnsAreFittedByMenu();
    void aTableIsSaved();
    void whatIsHiddenIsNotSaved();
    void savedNamesFitTheirTables();
    void aSavedTableIsUtf8();
    void aSaveThatFailsSaysWhy();
    void aCancelledSaveDoesNothing();
    void keysOpenEveryMenu_data();
    void keysOpenEveryMenu();
    void theMenuOpensAtTheCursor();
    void trafficGoesOnBehindAMenu();
    void aPositionIsCopied();
    void aPositionIsPasted_data();
    void aPositionIsPasted();
    void bothCoordinatesArePastedAtOnce();
    void whatIsNoPositionChangesNothing_data();
    void whatIsNoPositionChangesNothing();
    void pastingKeepsTheCharacterSelected();
};

void MenusWindowTest::logsOfferTheirs() {
    Menus t(ui::TabInput);
    t.MenuOn(t.lstCommData(0), 1);  // which the press selects, so that the log is held
    QCOMPARE(Entries(), QStringList({QStringLiteral("Copy Ctrl+C"), QStringLiteral("Select All Ctrl+A"),
                                     QStringLiteral("-"), QStringLiteral("Follow the Newest End")}));
}

void MenusWindowTest::aLogWithoutLinesGreysWhatItCannotDo() {
    Menus t(ui::TabGps);
    RightClick(t, *t.lstGpsData.viewport(), t.lstGpsData.viewport()->rect().center());
    QCOMPARE(Entries(), QStringList({QStringLiteral("(Copy Ctrl+C)"), QStringLiteral("(Select All Ctrl+A)"),
                                     QStringLiteral("-"), QStringLiteral("(Follow the Newest End)")}));
}

void MenusWindowTest::logsCopyByMenu() {
    Menus t(ui::TabInput);
    toolkit::LogList& lst = t.lstCommData(0);
    t.MenuOn(lst, 1);
    Choose("Copy");
    QCOMPARE(Clipboard(), lst.model()->index(1, 0).data().toString() + QLatin1Char('\n'));
    QVERIFY(OpenMenu() == nullptr);
    t.MenuOn(lst, 1);
    Choose("Select All");
    QCOMPARE(lst.SelectedText().count(QLatin1Char('\n')), lst.Lines.Count());
}

void MenusWindowTest::aLogIsFollowedByMenu() {
    Menus t(ui::TabInput);
    toolkit::LogList& lst = t.lstCommData(0);
    for (int i = 0; i < 100; ++i) t.FeedLine(0, "$GPZDA,x");
    t.Synchronize();
    QTest::keyClick(&lst, Qt::Key_PageUp);
    QTest::keyClick(&lst, Qt::Key_PageUp);
    t.FeedLine(0, "$GPZDA,x");
    t.Synchronize();
    QVERIFY(!lst.Follows());
    RightClick(t, *lst.viewport(), lst.viewport()->rect().center());
    Choose("Follow the Newest");
    QVERIFY(lst.Follows());
    QVERIFY(lst.visualRect(lst.model()->index(100, 0)).bottom() < lst.viewport()->height());
}

void MenusWindowTest::tablesOfferTheirs_data() {
    QTest::addColumn<int>("iTab");
    QTest::addColumn<QStringList>("sEntries");
    const QStringList sCommon = {QStringLiteral("Copy Ctrl+C"), QStringLiteral("Copy with Column Names"),
                                 QStringLiteral("Save as CSV..."), QStringLiteral("Select All Ctrl+A")};
    QTest::newRow("Targets") << int{ui::TabTargets}
                             << sCommon + QStringList({QStringLiteral("-"), QStringLiteral("Track This Ship"),
                                                       QStringLiteral("Fit Columns")});
    QTest::newRow("Messages") << int{ui::TabMessages} << sCommon;
    QTest::newRow("Spec") << int{ui::TabSpec} << sCommon;
}

void MenusWindowTest::tablesOfferTheirs() {
    QFETCH(int, iTab);
    QFETCH(QStringList, sEntries);
    Menus t(static_cast<ui::Tab>(iTab));
    toolkit::Grid& grd = iTab == ui::TabTargets    ? t.grdTargetData
                         : iTab == ui::TabMessages ? t.grdMessageData
                                                   : t.grdSpecData;
    t.MenuOn(grd, iTab == ui::TabMessages ? 11 : 1);
    QCOMPARE(Entries(), sEntries);
}

void MenusWindowTest::rowsAreCopiedWithTheNamesOfTheirColumns() {
    Menus t(ui::TabMessages);
    t.MenuOn(t.grdMessageData, 11);
    Choose("Copy with Column Names");
    QCOMPARE(Clipboard(), QStringLiteral("Message Id\tCount\n11=UTC/Date Response\t3\n"));
    t.MenuOn(t.grdMessageData, 11);
    Choose("Copy");
    QCOMPARE(Clipboard(), QStringLiteral("11=UTC/Date Response\t3\n"));
}

void MenusWindowTest::aShipIsTrackedByMenu() {
    Menus t(ui::TabTargets);
    t.MenuOn(t.grdTargetData, 2);
    Choose("Track This Ship");
    QVERIFY(t.chkTargetTrack.isChecked());
    QCOMPARE(t.cmbTargetTarget.Text(), std::string("20"));
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"20"}));
    // Another one, while rows are hidden already.
    t.chkTargetTrack.setChecked(false);
    t.Synchronize();
    t.MenuOn(t.grdTargetData, 3);
    t.chkTargetTrack.setChecked(true);
    Choose("Track This Ship");
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"30"}));
}

void MenusWindowTest::theShipThatWasSeenIsTracked() {
    Menus t(ui::TabTargets);
    t.MenuOn(t.grdTargetData, 2);
    for (const std::uint32_t lMmsi : {15U, 16U}) t.FeedLine(0, AisSentence(AisOther(11, lMmsi)));
    t.Synchronize();
    QCOMPARE(Cell(t, 2, Mmsi), QByteArray("15"));
    Choose("Track This Ship");
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"20"}));
}

void MenusWindowTest::noShipIsTrackedFromBelowTheRows() {
    Menus t(ui::TabTargets);
    RightClick(t, *t.grdTargetData.viewport(), t.grdTargetData.viewport()->rect().bottomLeft() + QPoint(20, -20));
    QVERIFY(Entries().contains(QStringLiteral("(Track This Ship)")));
}

void MenusWindowTest::columnsAreFittedByMenu() {
    Menus t(ui::TabTargets);
    toolkit::Grid& grd = t.grdTargetData;
    const QString sText = QString::fromLatin1(Cell(t, 1, MessageId));
    QVERIFY(grd.columnWidth(MessageId) < grd.fontMetrics().horizontalAdvance(sText));
    t.MenuOn(grd, 1);
    Choose("Fit Columns");
    for (int iCol = 1; iCol < 10; ++iCol) {
        const QString sName = QString::fromLatin1(Cell(t, 0, iCol));
        QVERIFY(grd.columnWidth(iCol) >= grd.fontMetrics().horizontalAdvance(sName));
    }
    QVERIFY(grd.columnWidth(MessageId) > grd.fontMetrics().horizontalAdvance(sText));
    QVERIFY(grd.isColumnHidden(0));
}

void MenusWindowTest::aTableIsSaved() {
    Menus t(ui::TabMessages);
    const QString sFile = t.tWorld.Path(QStringLiteral("counts.csv"));
    t.tWorld.tFileAnswers = {sFile};
    t.MenuOn(t.grdMessageData, 11);
    Choose("Save as CSV...");
    QCOMPARE(t.tWorld.tDialogs.size(), std::size_t{1});
    const toolkit::FileRequest& tAsked = t.tWorld.tDialogs.back();
    QVERIFY(tAsked.bSave);
    QCOMPARE(tAsked.sExtension, QStringLiteral("csv"));
    QVERIFY(tAsked.sFilter.contains(QLatin1String("(*.csv)")));
    QCOMPARE(QByteArray::fromStdString(t.tWorld.ReadFile(sFile)),
             QByteArray("Message Id,Count\r\n11=UTC/Date Response,3\r\n,\r\nTotal,3\r\n"));
}

void MenusWindowTest::whatIsHiddenIsNotSaved() {
    Menus t(ui::TabTargets);
    const QString sFile = t.tWorld.Path(QStringLiteral("targets.csv"));
    t.cmbTargetTarget.SetText("10");
    t.chkTargetTrack.setChecked(true);
    t.Synchronize();
    t.tWorld.tFileAnswers = {sFile};
    t.MenuOn(t.grdTargetData, 1);
    Choose("Save as CSV...");
    QCOMPARE(QByteArray::fromStdString(t.tWorld.ReadFile(sFile)),
             QByteArray("MMSI,Ch,Signal,Thres,Snr,Time,Message Id,Rng,Brg\r\n"
                        "10,A,,,,12:00:00,11=UTC/Date Response,,\r\n"));
}

void MenusWindowTest::savedNamesFitTheirTables() {
    Menus t(ui::TabTargets);
    QStringList sNames;
    for (const auto& [eTab, pGrid] :
         {std::pair{ui::TabTargets, &t.grdTargetData}, std::pair{ui::TabMessages, &t.grdMessageData},
          std::pair{ui::TabSpec, &t.grdSpecData}}) {
        t.tWorld.tFileAnswers = {std::nullopt};
        t.SSTab.SetTab(eTab);
        RightClick(t, *pGrid->viewport(), QPoint(30, 5));
        Choose("Save as CSV...");
        sNames << t.tWorld.tDialogs.back().sFileName;
    }
    QCOMPARE(sNames, QStringList({QStringLiteral("Tidewatch Targets.csv"), QStringLiteral("Tidewatch Messages.csv"),
                                  QStringLiteral("Tidewatch Spec.csv")}));
}

void MenusWindowTest::aSavedTableIsUtf8() {
    Menus t(ui::TabTargets);
    t.cmbTargetDetail.SetText("Lat/Lon");
    t.TargetGridSetup(true);
    t.FeedLine(0, AisSentence(AisClassA(1, {.lMmsi = 99, .lLongitude = -600000, .lLatitude = 600000 * 50})));
    t.Synchronize();
    const QString sFile = t.tWorld.Path(QStringLiteral("targets.csv"));
    t.tWorld.tFileAnswers = {sFile};
    t.MenuOn(t.grdTargetData, 1);
    Choose("Save as CSV...");
    const std::string sSaved = t.tWorld.ReadFile(sFile);
    QVERIFY2(sSaved.find(",50\xC2\xB0"
                         "00.00'N,001\xC2\xB0"
                         "00.00'W\r\n") != std::string::npos,
             sSaved.c_str());
}

void MenusWindowTest::aSaveThatFailsSaysWhy() {
    Menus t(ui::TabMessages);
    t.tWorld.tFileAnswers = {t.tWorld.Path(QStringLiteral("none/counts.csv"))};
    t.MenuOn(t.grdMessageData, 11);
    Choose("Save as CSV...");
    QCOMPARE(Panel(t, 2), QByteArray("Save - No such file or directory"));
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void MenusWindowTest::aCancelledSaveDoesNothing() {
    Menus t(ui::TabMessages);
    const QByteArray sPanel = Panel(t, 2);
    t.tWorld.tFileAnswers = {std::nullopt};
    t.MenuOn(t.grdMessageData, 11);
    Choose("Save as CSV...");
    QCOMPARE(t.tWorld.iUnanswered, 0);
    QCOMPARE(Panel(t, 2), sPanel);
}

void MenusWindowTest::keysOpenEveryMenu_data() {
    QTest::addColumn<int>("iTab");
    QTest::addColumn<QByteArray>("sControl");
    QTest::addColumn<QString>("sFirst");
    const auto Row = [](const char* sControl, ui::Tab eTab, const char* sFirst) {
        QTest::newRow(sControl) << int{eTab} << QByteArray(sControl) << QString::fromLatin1(sFirst);
    };
    Row("lstCommData(0)", ui::TabInput, "(Copy Ctrl+C)");
    Row("lstRxData", ui::TabReceiver, "(Copy Ctrl+C)");
    Row("lstAisData", ui::TabAis, "(Copy Ctrl+C)");
    Row("lstGpsData", ui::TabGps, "(Copy Ctrl+C)");
    Row("txtGpsLat", ui::TabGps, "Copy");
    Row("txtGpsLon", ui::TabGps, "Copy");
    Row("grdTargetData", ui::TabTargets, "(Copy Ctrl+C)");
    Row("grdMessageData", ui::TabMessages, "(Copy Ctrl+C)");
    Row("grdSpecData", ui::TabSpec, "(Copy Ctrl+C)");
    Row("lstOutputData", ui::TabOutput, "(Copy Ctrl+C)");
}

void MenusWindowTest::keysOpenEveryMenu() {
    QFETCH(int, iTab);
    QFETCH(QByteArray, sControl);
    QFETCH(QString, sFirst);
    Menus t(static_cast<ui::Tab>(iTab));
    auto* pControl = t.findChild<QWidget*>(QString::fromLatin1(sControl));
    pControl->setFocus();
    QTest::keyClick(t.windowHandle(), Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(OpenMenu() != nullptr);
    QCOMPARE(OpenMenu()->parentWidget(), pControl);
    QCOMPARE(Entries().value(0), sFirst);
    QTest::keyClick(OpenMenu(), Qt::Key_Escape);
    QVERIFY(OpenMenu() == nullptr);
}

void MenusWindowTest::theMenuOpensAtTheCursor() {
    Menus t(ui::TabTargets);
    toolkit::Grid& grd = t.grdTargetData;
    QTest::mouseClick(grd.viewport(), Qt::LeftButton, {}, PlaceOf(grd, 3, Mmsi));
    QTest::keyClick(t.windowHandle(), Qt::Key_F10, Qt::ShiftModifier);
    const QPoint tMenu = grd.viewport()->mapFromGlobal(OpenMenu()->pos());
    QVERIFY(grd.visualRect(grd.currentIndex()).adjusted(-1, -1, 1, 2).contains(tMenu));
    QTest::keyClick(OpenMenu(), Qt::Key_T);
    QCoreApplication::processEvents();
    QCOMPARE(VisibleColumn(t, Mmsi), Texts({"30"}));
}

void MenusWindowTest::trafficGoesOnBehindAMenu() {
    Menus t(ui::TabTargets);
    t.MenuOn(t.grdTargetData, 1);
    t.FeedLine(0, AisSentence(AisOther(11, 40)));
    QTRY_COMPARE(t.grdTargetData.model()->rowCount(), 4);
    QVERIFY(OpenMenu() != nullptr);
}

void MenusWindowTest::aPositionIsCopied() {
    Fields t;
    RightClick(t, t.txtGpsLon, t.txtGpsLon.rect().center());
    QCOMPARE(Entries(), QStringList({QStringLiteral("Copy"), QStringLiteral("Paste")}));
    Choose("Copy");
    QCOMPARE(Clipboard(), QStringLiteral("045 15.00 E"));
}

void MenusWindowTest::aPositionIsPasted_data() {
    QTest::addColumn<bool>("bLatitude");
    QTest::addColumn<QString>("sPasted");
    QTest::addColumn<QString>("sShown");
    QTest::addColumn<double>("dDegrees");
    const auto Row = [](const char* sName, bool bLatitude, const QString& sPasted, const QString& sShown, double d) {
        QTest::newRow(sName) << bLatitude << sPasted << sShown << d;
    };
    const QString sNorth = QStringLiteral("50\u00B021.40'N");
    const QString sWest = QStringLiteral("004\u00B008.60'W");
    const double dNorth = 50 + 21.4 / 60;
    const double dWest = -(4 + 8.6 / 60);
    Row("blanks", true, QStringLiteral("50 21.4 N"), sNorth, dNorth);
    Row("marks", true, QStringLiteral("50\u00B021.40'N"), sNorth, dNorth);
    Row("decimal degrees", true, QStringLiteral("50.35667"), sNorth, dNorth);
    Row("typographic marks", true, QStringLiteral("50\u00B021\u203224\u2033N"), sNorth, dNorth);
    Row("apostrophe", true, QStringLiteral("50\u00B021.4\u2019 N"), sNorth, dNorth);
    Row("south", true, QStringLiteral("50 21.4 s"), QStringLiteral("50\u00B021.40'S"), -dNorth);
    Row("minus", false, QStringLiteral("-4.1433333"), sWest, dWest);
    Row("typographic minus", false, QStringLiteral("\u22124.1433333"), sWest, dWest);
    Row("west", false, QStringLiteral("004 08.60 W"), sWest, dWest);
    Row("no sixty minutes", true, QStringLiteral("12.999999"), QStringLiteral("13\u00B000.00'N"), 13);
}

void MenusWindowTest::aPositionIsPasted() {
    QFETCH(bool, bLatitude);
    QFETCH(QString, sPasted);
    QFETCH(QString, sShown);
    QFETCH(double, dDegrees);
    Fields t;
    t.Paste(bLatitude ? t.txtGpsLat : t.txtGpsLon, sPasted);
    QCOMPARE((bLatitude ? t.txtGpsLat : t.txtGpsLon).text(), sShown);
    QVERIFY(std::abs((bLatitude ? t.m_dLatitude : t.m_dLongitude) - dDegrees) < 1e-9);
    QCOMPARE(bLatitude ? t.m_dLongitude : t.m_dLatitude, bLatitude ? 45.25 : 12.5);
}

void MenusWindowTest::bothCoordinatesArePastedAtOnce() {
    for (const bool bIntoLatitude : {true, false}) {
        Fields t;
        t.Paste(bIntoLatitude ? t.txtGpsLat : t.txtGpsLon, QStringLiteral("50.35667, -4.1433333\n"));
        QCOMPARE(t.txtGpsLat.text(), QStringLiteral("50\u00B021.40'N"));
        QCOMPARE(t.txtGpsLon.text(), QStringLiteral("004\u00B008.60'W"));
    }
}

void MenusWindowTest::whatIsNoPositionChangesNothing_data() {
    QTest::addColumn<bool>("bLatitude");
    QTest::addColumn<QString>("sPasted");
    QTest::addColumn<QByteArray>("sError");
    QTest::newRow("words") << true << QStringLiteral("here") << QByteArray("Paste - \"here\" is no latitude");
    QTest::newRow("the other axis") << true << QStringLiteral("4 8.6 W")
                                    << QByteArray("Paste - \"4 8.6 W\" is no latitude");
    QTest::newRow("too far") << false << QStringLiteral("181 0.0 E")
                             << QByteArray("Paste - \"181 0.0 E\" is no longitude");
    QTest::newRow("a document that begins well")
        << true << QStringLiteral("50 21.4 N") + QString(200000, QLatin1Char(' ')) + QString(200000, QLatin1Char(','))
        << QByteArray("Paste - \"50 21.4 N ,,,,,,,,,,,,,,,,,,,,\" is no latitude");
    QTest::newRow("long") << false << QStringLiteral("a\nb ").repeated(1000)
                          << QByteArray("Paste - \"a b a b a b a b a b a b a b a \" is no longitude");
}

void MenusWindowTest::whatIsNoPositionChangesNothing() {
    QFETCH(bool, bLatitude);
    QFETCH(QString, sPasted);
    QFETCH(QByteArray, sError);
    Fields t;
    t.Paste(bLatitude ? t.txtGpsLat : t.txtGpsLon, sPasted);
    QCOMPARE(t.txtGpsLat.text(), QStringLiteral("12 30.00 N"));
    QCOMPARE(t.txtGpsLon.text(), QStringLiteral("045 15.00 E"));
    QCOMPARE(t.m_dLatitude, 12.5);
    QCOMPARE(t.m_dLongitude, 45.25);
    QCOMPARE(Panel(t, 2), sError);
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void MenusWindowTest::pastingKeepsTheCharacterSelected() {
    Fields t;
    t.txtGpsLat.setFocus();
    t.txtGpsLat.ClickAt(4);
    t.Paste(t.txtGpsLat, QStringLiteral("50 21.4 N"));
    QCOMPARE(t.txtGpsLat.selectionStart(), 4);
    QCOMPARE(t.txtGpsLat.selectedText(), QStringLiteral("1"));
    QTest::keyClick(&t.txtGpsLat, Qt::Key_9);
    QCOMPARE(t.txtGpsLat.text(), QStringLiteral("50\u00B029.40'N"));
}

QTEST_MAIN(MenusWindowTest)
#include "MenusWindowTest.moc"
