// The log list: takes over its lines on a beat, newest in view, with the user's own selection beside the marks.
#include "platform/toolkit/LogList.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <random>

#include "platform/toolkit/LogModel.h"

using toolkit::LogList;
using toolkit::LogModel;

namespace {

void Show(LogList& t) {
    t.resize(400, 200);
    t.show();
    t.Synchronize();
    QCoreApplication::processEvents();
}

void AddLines(LogList& t, int iFirst, int iLast) {
    for (int i = iFirst; i <= iLast; ++i) t.Lines.Add(std::to_string(i), i % 2 == 0);
}

QStringList Shown(const LogList& t) {
    QStringList sLines;
    for (int i = 0; i < t.model()->rowCount(); ++i) sLines << t.model()->index(i, 0).data().toString();
    return sLines;
}

QStringList Selected(const LogList& t) {
    QModelIndexList tRows = t.selectionModel()->selectedIndexes();
    std::ranges::sort(tRows, {}, [](const QModelIndex& i) { return i.row(); });
    QStringList sLines;
    for (const QModelIndex& tRow : tRows) sLines << tRow.data().toString();
    return sLines;
}

QStringList Numbers(int iFirst, int iLast) {
    QStringList sNumbers;
    for (int i = iFirst; i <= iLast; ++i) sNumbers << QString::number(i);
    return sNumbers;
}

}  // namespace

class LogListTest : public QObject {
    Q_OBJECT
private slots:
    void linesAreTakenOverAtOnce();
    void beatComesByItself();
    void unseenListWaitsUntilItIsShown();
    void newestLineIsCurrentAndInView();
    void marksAreShownWhereTheyMeanSomething();
    void marksAreNoSelection();
    void shownLinesStayInPlaceBetweenBeats();
    void selectionStaysOnTheUsersLines();
    void selectionEndsWithItsLine();
    void clearEmptiesTheView();
    void copyTakesTheSelectedLines();
    void copyAfterATrafficRushTakesTheUsersLines();
    void lineThatLosesItsMarkIsDrawnAnew();
    void longAndOddLinesArePainted();
    void nameStandsBesideTheLines();
    void modelKeepsItsPromises();
};

void LogListTest::linesAreTakenOverAtOnce() {
    LogList t;
    Show(t);
    QSignalSpy tInserted(t.model(), &QAbstractItemModel::rowsInserted);
    AddLines(t, 1, 5000);
    QCOMPARE(Shown(t), QStringList());
    t.Synchronize();
    QCOMPARE(Shown(t), Numbers(4900, 5000));
    QCOMPARE(tInserted.count(), 1);
}

void LogListTest::beatComesByItself() {
    LogList t;
    Show(t);
    AddLines(t, 1, 3);
    QTRY_COMPARE(Shown(t), Numbers(1, 3));
}

void LogListTest::unseenListWaitsUntilItIsShown() {
    LogList t;
    AddLines(t, 1, 3);
    QTest::qWait(150);
    QCOMPARE(Shown(t), QStringList());
    t.show();
    QCOMPARE(Shown(t), Numbers(1, 3));
}

void LogListTest::newestLineIsCurrentAndInView() {
    LogList t;
    Show(t);
    QCOMPARE(t.currentIndex().row(), -1);
    AddLines(t, 1, 1);
    t.Synchronize();
    QCOMPARE(t.currentIndex().row(), 0);
    AddLines(t, 2, 300);
    t.Synchronize();
    QCoreApplication::processEvents();
    QCOMPARE(t.currentIndex().row(), 100);
    QVERIFY(t.viewport()->rect().contains(t.visualRect(t.model()->index(100, 0)).center()));
}

void LogListTest::marksAreShownWhereTheyMeanSomething() {
    LogList t;
    AddLines(t, 1, 2);
    t.Synchronize();
    const auto tMark = [&t](int i) { return t.model()->index(i, 0).data(LogModel::MarkRole).toBool(); };
    QVERIFY(!tMark(0) && !tMark(1));
    QVERIFY(!t.model()->index(1, 0).data(Qt::AccessibleDescriptionRole).isValid());
    t.SetShowsMarks(true);
    QVERIFY(!tMark(0) && tMark(1));
    QVERIFY(t.model()->index(0, 0).data(Qt::AccessibleDescriptionRole) !=
            t.model()->index(1, 0).data(Qt::AccessibleDescriptionRole));
}

void LogListTest::marksAreNoSelection() {
    LogList t;
    t.SetShowsMarks(true);
    Show(t);
    AddLines(t, 1, 50);
    t.Synchronize();
    QCOMPARE(Selected(t), QStringList());
}

void LogListTest::shownLinesStayInPlaceBetweenBeats() {
    LogList t;
    t.SetShowsMarks(true);
    AddLines(t, 1, 101);
    t.Synchronize();
    AddLines(t, 102, 103);
    QStringList sExpected = Numbers(1, 101);
    sExpected[0].clear();  // gone from the store already
    sExpected[1].clear();
    QCOMPARE(Shown(t), sExpected);
    QVERIFY(t.model()->index(99, 0).data(LogModel::MarkRole).toBool());
    t.Lines.Clear();
    AddLines(t, 1, 10);
    QCOMPARE(Shown(t).count(QString()), 101);
    t.Synchronize();
    QCOMPARE(Shown(t), Numbers(1, 10));
}

void LogListTest::selectionStaysOnTheUsersLines() {
    LogList t;
    Show(t);
    AddLines(t, 1, 101);
    t.Synchronize();
    t.selectionModel()->select(t.model()->index(49, 0), QItemSelectionModel::ClearAndSelect);
    t.selectionModel()->select(t.model()->index(79, 0), QItemSelectionModel::Select);
    QCOMPARE(Selected(t), QStringList({QStringLiteral("50"), QStringLiteral("80")}));
    AddLines(t, 102, 120);
    t.Synchronize();
    QCOMPARE(Selected(t), QStringList({QStringLiteral("50"), QStringLiteral("80")}));
}

void LogListTest::selectionEndsWithItsLine() {
    LogList t;
    Show(t);
    AddLines(t, 1, 101);
    t.Synchronize();
    t.selectAll();
    AddLines(t, 102, 110);
    t.Synchronize();
    QCOMPARE(Selected(t), Numbers(10, 101));
    AddLines(t, 111, 400);
    t.Synchronize();
    QCOMPARE(Selected(t), QStringList());
}

void LogListTest::clearEmptiesTheView() {
    LogList t;
    Show(t);
    AddLines(t, 1, 101);
    t.Synchronize();
    t.Lines.Clear();
    t.Synchronize();
    QCOMPARE(Shown(t), QStringList());
    QCOMPARE(t.currentIndex().row(), -1);
    AddLines(t, 1, 2);
    t.Synchronize();
    QCOMPARE(t.currentIndex().row(), 1);
}

void LogListTest::copyTakesTheSelectedLines() {
    LogList t;
    Show(t);
    t.Lines.Add("47\xb0 north");
    t.Lines.Add("second");
    t.Lines.Add("third");
    t.Synchronize();
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    QTest::keyClick(&t, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
    QTest::mouseClick(t.viewport(), Qt::LeftButton, {}, t.visualRect(t.model()->index(2, 0)).center());
    QTest::mouseClick(t.viewport(), Qt::LeftButton, Qt::ControlModifier, t.visualRect(t.model()->index(0, 0)).center());
    QTest::keyClick(&t, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("47\u00b0 north\nthird\n"));
}

void LogListTest::copyAfterATrafficRushTakesTheUsersLines() {
    LogList t;
    Show(t);
    AddLines(t, 1, 101);
    t.Synchronize();
    t.selectionModel()->select(t.model()->index(1, 0), QItemSelectionModel::ClearAndSelect);
    t.selectionModel()->select(t.model()->index(60, 0), QItemSelectionModel::Select);
    AddLines(t, 102, 110);
    QTest::keyClick(&t, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("61\n"));
}

void LogListTest::lineThatLosesItsMarkIsDrawnAnew() {
    struct Paintings : QObject {
        bool eventFilter(QObject*, QEvent* pEvent) override {
            iCount += pEvent->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
        int iCount = 0;
    } tPaintings;
    LogList t;
    t.SetShowsMarks(true);
    AddLines(t, 1, 4);
    Show(t);
    t.viewport()->installEventFilter(&tPaintings);
    const auto PaintingsOf = [&](std::uint64_t lLine) {
        tPaintings.iCount = 0;
        t.Lines.Unmark(lLine);
        t.Synchronize();
        QCoreApplication::processEvents();
        return tPaintings.iCount;
    };
    QCOMPARE(PaintingsOf(9), 0);  // no such line
    const QImage tBefore = t.viewport()->grab().toImage();
    QCOMPARE(PaintingsOf(4), 1);
    QVERIFY(t.viewport()->grab().toImage() != tBefore);
    QCOMPARE(PaintingsOf(9), 0);
}

void LogListTest::longAndOddLinesArePainted() {
    LogList t;
    t.SetShowsMarks(true);
    Show(t);
    t.Lines.Add(std::string(1000000, 'x'), true);
    t.Lines.Add(std::string("\0\x01\t\xff", 4));
    t.Lines.Add("<<Size Error>>");
    t.Lines.Add("");
    t.Synchronize();
    t.selectAll();
    QVERIFY(!t.grab().isNull());
    QVERIFY(t.horizontalScrollBar()->maximum() < 100000);
}

void LogListTest::nameStandsBesideTheLines() {
    LogList t;
    t.SetName(QStringLiteral("#1"));
    AddLines(t, 1, 50);
    t.Lines.Add(std::string(300, 'W'), false);
    Show(t);
    const auto* pName = t.findChild<QLabel*>();
    QVERIFY(pName != nullptr);
    QCOMPARE(pName->text(), QStringLiteral("#1"));
    const QRect tName = pName->geometry();
    const QRect tLines = t.viewport()->geometry();
    QVERIFY(tName.right() < tLines.left() && tName.left() >= t.frameWidth());
    QCOMPARE(tName.top(), tLines.top());
    QCOMPARE(tName.bottom(), tLines.bottom());
    QVERIFY(tName.width() >= pName->fontMetrics().horizontalAdvance(pName->text()));
    QVERIFY(tLines.right() >= t.width() - 25);  // the rest is the lines' and the scroll bar's
    // It is drawn, at the top.
    const QImage tImage = t.grab(QRect(tName.topLeft(), QSize(tName.width(), pName->fontMetrics().height()))).toImage();
    int iInk = 0;
    for (int y = 0; y < tImage.height(); ++y)
        for (int x = 0; x < tImage.width(); ++x) iInk += tImage.pixelColor(x, y).lightness() < 100;
    QVERIFY(iInk > 10);
    t.resize(300, 120);
    QCoreApplication::processEvents();
    QCOMPARE(pName->geometry().height(), t.viewport()->height());
    QFont tLarge = t.font();
    tLarge.setPointSizeF(2 * tLarge.pointSizeF());
    t.setFont(tLarge);
    QCoreApplication::processEvents();
    QVERIFY(pName->width() >= pName->fontMetrics().horizontalAdvance(pName->text()));
    QVERIFY(pName->geometry().right() < t.viewport()->geometry().left());
}

void LogListTest::modelKeepsItsPromises() {
    LogList t;
    const QAbstractItemModelTester tTester(t.model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    Show(t);
    std::mt19937 tRandom(3);
    int iNext = 1;
    for (int i = 0; i < 1500; ++i) {
        const int iCount = static_cast<int>(tRandom() % (i % 10 == 0 ? 300 : 8));
        AddLines(t, iNext, iNext + iCount - 1);
        iNext += iCount;
        if (tRandom() % 100 == 0) t.Lines.Clear();
        if (tRandom() % 5 == 0) t.selectAll();
        if (tRandom() % 2 == 0) t.Synchronize();
    }
    t.Synchronize();
    QCOMPARE(t.model()->rowCount(), t.Lines.Count());
}

QTEST_MAIN(LogListTest)
#include "LogListTest.moc"
