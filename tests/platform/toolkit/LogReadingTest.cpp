// Reading a log while it runs: the newest line stays in view until somebody scrolls back or selects, and then the lines
// that he reads stay, moving up as old ones roll out, until he leads the view back to its end.
#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>
#include <cstdlib>
#include <functional>

#include "platform/toolkit/LogList.h"

using toolkit::LogList;

namespace {

// A log with as many lines as it keeps, numbered from 1 on and shown.
class RunningLog : public LogList {
public:
    RunningLog() {
        resize(400, 200);
        AddBeat(Lines.Capacity);
        show();
        QCoreApplication::processEvents();
    }

    // That many lines come, and the beat that shows them.
    void AddBeat(int iLines) {
        for (int i = 0; i < iLines; ++i) Lines.Add("line " + std::to_string(++m_iNewest));
        Synchronize();
        QCoreApplication::processEvents();
    }

    int Newest() const { return m_iNewest; }
    // The number of the line at the top, and of the last one that is in view whole.
    int Top() const { return Number(indexAt(QPoint(1, 1))); }
    int Bottom() const {
        for (int iRow = model()->rowCount() - 1; iRow >= 0; --iRow) {
            const QModelIndex tIndex = model()->index(iRow, 0);
            const QRect tLine = visualRect(tIndex);
            if (tLine.top() >= 0 && tLine.bottom() < viewport()->height()) return Number(tIndex);
        }
        return 0;
    }
    QRect PlaceOf(int iNumber) const {
        return visualRect(model()->index(iNumber - (m_iNewest - model()->rowCount()) - 1, 0));
    }
    // Up is positive, in notches.
    void Wheel(int iNotches) {
        const QPointF tPlace = viewport()->rect().center();
        for (int i = 0; i < std::abs(iNotches); ++i) {
            QWheelEvent tEvent(tPlace, viewport()->mapToGlobal(tPlace), {}, {0, iNotches < 0 ? -120 : 120}, {}, {},
                               Qt::NoScrollPhase, false);
            QApplication::sendEvent(viewport(), &tEvent);
        }
        QCoreApplication::processEvents();
    }
    void Key(Qt::Key eKey, Qt::KeyboardModifiers eModifiers = {}) {
        QTest::keyClick(this, eKey, eModifiers);
        QCoreApplication::processEvents();
    }
    // What is at the lower right corner over the lines, a button or nothing.
    QToolButton* Mark() const {
        const QPoint tCorner = viewport()->geometry().bottomRight() - QPoint(8, 8);
        return qobject_cast<QToolButton*>(childAt(tCorner));
    }
    QImage Corner() {
        const QRect tLines = viewport()->geometry();
        return grab(QRect(tLines.center(), tLines.bottomRight())).toImage();
    }

private:
    static int Number(const QModelIndex& tIndex) {
        return tIndex.data().toString().section(QLatin1Char(' '), 1).toInt();
    }

    int m_iNewest = 0;
};

QStringList LineTexts(int iFirst, int iLast) {
    QStringList sLines;
    for (int i = iFirst; i <= iLast; ++i) sLines << QStringLiteral("line %1").arg(i);
    return sLines;
}

}  // namespace

class LogReadingTest : public QObject {
    Q_OBJECT
private slots:
    void theNewestLineStaysInView();
    void linesReadStayWhereTheyAre_data();
    void linesReadStayWhereTheyAre();
    void linesReadMoveUpAsOldOnesRollOut();
    void theStoresCurrentLineStaysTheNewest();
    void fiveShiftUpCopySixLines();
    void shiftUpAfterEndBeginsAtTheNewestLine();
    void aCursorMovedAloneStays();
    void selectingByDraggingIsNotDisturbed();
    void theMarkTellsOfNewerLinesAndLeadsBack();
    void theMarkStaysInItsCorner();
    void endFollowsAgain();
    void theWheelToTheEndFollowsAgain();
    void theScrollBarDraggedToItsEndFollows();
    void aSelectionAtTheEndHolds();
    void aClearedLogFollows();
    void resizingKeepsTheEnd();
    void resizingKeepsTheLinesRead();
    void scrollingSidewaysStays();
    void aLogComingIntoSightStandsWhereItWasLeft();
};

void LogReadingTest::theNewestLineStaysInView() {
    RunningLog t;
    QCOMPARE(t.Bottom(), 101);
    for (int i = 0; i < 5; ++i) {
        t.AddBeat(7);
        QCOMPARE(t.Bottom(), t.Newest());
        QVERIFY(t.Mark() == nullptr);
    }
}

void LogReadingTest::linesReadStayWhereTheyAre_data() {
    QTest::addColumn<std::function<void(RunningLog&)>>("tScroll");
    const auto Row = [](const char* sName, const std::function<void(RunningLog&)>& t) { QTest::newRow(sName) << t; };
    Row("wheel", [](RunningLog& t) { t.Wheel(3); });
    Row("page up", [](RunningLog& t) {
        t.Key(Qt::Key_PageUp);
        t.Key(Qt::Key_PageUp);
    });
    Row("cursor up", [](RunningLog& t) {
        for (int i = 0; i < 30; ++i) t.Key(Qt::Key_Up);
    });
    Row("scroll bar", [](RunningLog& t) {
        QScrollBar* pBar = t.verticalScrollBar();
        QTest::mouseClick(pBar, Qt::LeftButton, {}, QPoint(pBar->width() / 2, pBar->height() / 2));
    });
}

void LogReadingTest::linesReadStayWhereTheyAre() {
    QFETCH(std::function<void(RunningLog&)>, tScroll);
    RunningLog t;
    tScroll(t);
    const int iTop = t.Top();
    QVERIFY(iTop > 50 && t.Bottom() < 101);
    for (int i = 0; i < 10; ++i) {
        t.AddBeat(3);
        QCOMPARE(t.Top(), iTop);
        QVERIFY(t.Mark() != nullptr);
    }
}

void LogReadingTest::linesReadMoveUpAsOldOnesRollOut() {
    RunningLog t;
    t.Wheel(5);
    const int iTop = t.Top();
    while (t.Newest() - 100 < iTop) t.AddBeat(9);
    QCOMPARE(t.Top(), t.Newest() - 100);
    t.AddBeat(500);
    QCOMPARE(t.Top(), t.Newest() - 100);
    QVERIFY(t.Bottom() < t.Newest());
}

void LogReadingTest::theStoresCurrentLineStaysTheNewest() {
    RunningLog t;
    QCOMPARE(t.CurrentLine(), 100);
    t.Wheel(3);
    t.Key(Qt::Key_Up);
    t.AddBeat(5);
    QCOMPARE(t.CurrentLine(), 100);
}

void LogReadingTest::fiveShiftUpCopySixLines() {
    RunningLog t;
    for (int i = 0; i < 5; ++i) {
        t.Key(Qt::Key_Up, Qt::ShiftModifier);
        t.AddBeat(5);
    }
    t.Key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), LineTexts(96, 101).join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

void LogReadingTest::shiftUpAfterEndBeginsAtTheNewestLine() {
    RunningLog t;
    QTest::mouseClick(t.viewport(), Qt::LeftButton, {}, t.PlaceOf(95).center());
    t.AddBeat(5);
    t.Key(Qt::Key_End);
    t.AddBeat(5);
    t.AddBeat(5);
    t.Key(Qt::Key_Up, Qt::ShiftModifier);
    t.AddBeat(5);
    t.Key(Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(t.SelectedText(), LineTexts(114, 116).join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

void LogReadingTest::aCursorMovedAloneStays() {
    RunningLog t;
    for (int i = 0; i < 3; ++i) {
        t.Key(Qt::Key_Up, Qt::ControlModifier);
        t.AddBeat(2);
    }
    QCOMPARE(t.currentIndex().data().toString(), QStringLiteral("line 98"));
    t.Key(Qt::Key_Space, Qt::ControlModifier);
    QCOMPARE(t.SelectedText(), QStringLiteral("line 98\n"));
}

void LogReadingTest::selectingByDraggingIsNotDisturbed() {
    RunningLog t;
    QTest::mousePress(t.viewport(), Qt::LeftButton, {}, t.PlaceOf(98).center());
    t.AddBeat(6);
    QVERIFY(t.PlaceOf(98).isValid());
    QTest::mouseMove(t.viewport(), t.PlaceOf(96).center());
    t.AddBeat(6);
    QTest::mouseRelease(t.viewport(), Qt::LeftButton, {}, t.PlaceOf(96).center());
    QCOMPARE(t.SelectedText(), LineTexts(96, 98).join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

void LogReadingTest::theMarkTellsOfNewerLinesAndLeadsBack() {
    RunningLog t;
    t.Wheel(3);
    t.AddBeat(1);
    QToolButton* pMark = t.Mark();
    QVERIFY(pMark != nullptr);
    QVERIFY(!pMark->accessibleName().isEmpty());
    t.setFocus();
    t.Key(Qt::Key_Tab);  // the keyboard has End for it
    QVERIFY(t.focusWidget() != pMark);
    const QImage tWith = t.Corner();
    QTest::mouseClick(pMark, Qt::LeftButton);
    QCoreApplication::processEvents();
    QCOMPARE(t.Bottom(), t.Newest());
    QVERIFY(t.Mark() == nullptr);
    t.AddBeat(4);
    QCOMPARE(t.Bottom(), t.Newest());
    QVERIFY(t.Corner() != tWith);
}

void LogReadingTest::theMarkStaysInItsCorner() {
    RunningLog t;
    t.Wheel(3);
    t.AddBeat(1);
    const QSize tSize = t.Mark()->size();
    t.resize(600, 300);
    t.Wheel(4);
    QVERIFY(t.Mark() != nullptr);
    QVERIFY(t.viewport()->geometry().contains(t.Mark()->geometry()));
    QCOMPARE(t.Mark()->size(), tSize);
    t.Lines.Add(std::string(200, 'x'));  // brings the scroll bar below
    t.Synchronize();
    QCoreApplication::processEvents();
    QVERIFY(t.horizontalScrollBar()->isVisible());
    QVERIFY(t.Mark() != nullptr);
    QVERIFY(t.viewport()->geometry().contains(t.Mark()->geometry()));
}

void LogReadingTest::endFollowsAgain() {
    RunningLog t;
    t.Key(Qt::Key_PageUp);
    t.Key(Qt::Key_PageUp);
    t.AddBeat(3);
    t.Key(Qt::Key_End);
    QCOMPARE(t.Bottom(), t.Newest());
    t.AddBeat(3);
    t.AddBeat(3);
    QCOMPARE(t.Bottom(), t.Newest());
    QCOMPARE(t.SelectedText(), QString());
    QVERIFY(t.Mark() == nullptr);
}

void LogReadingTest::theWheelToTheEndFollowsAgain() {
    RunningLog t;
    t.Wheel(3);
    t.AddBeat(3);
    QVERIFY(t.Bottom() < t.Newest());
    t.Wheel(-40);
    QVERIFY(t.Mark() == nullptr);
    t.AddBeat(3);
    QCOMPARE(t.Bottom(), t.Newest());
}

// Also when lines come while it is held there.
void LogReadingTest::theScrollBarDraggedToItsEndFollows() {
    RunningLog t;
    QScrollBar* pBar = t.verticalScrollBar();
    const auto Handle = [pBar] {
        QStyleOptionSlider tOption;
        tOption.initFrom(pBar);
        tOption.orientation = Qt::Vertical;
        tOption.maximum = pBar->maximum();
        tOption.pageStep = pBar->pageStep();
        tOption.sliderPosition = tOption.sliderValue = pBar->value();
        return pBar->style()->subControlRect(QStyle::CC_ScrollBar, &tOption, QStyle::SC_ScrollBarSlider, pBar).center();
    };
    QTest::mousePress(pBar, Qt::LeftButton, {}, Handle());
    QTest::mouseMove(pBar, Handle() - QPoint(0, 60));
    const int iTop = t.Top();
    QVERIFY(t.Bottom() < t.Newest());
    t.AddBeat(3);
    QCOMPARE(t.Top(), iTop);
    QTest::mouseMove(pBar, QPoint(5, pBar->height()));
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(t.Bottom(), t.Newest());
        t.AddBeat(5);
    }
    QTest::mouseRelease(pBar, Qt::LeftButton, {}, QPoint(5, pBar->height()));
    t.AddBeat(5);
    QCOMPARE(t.Bottom(), t.Newest());
}

void LogReadingTest::aSelectionAtTheEndHolds() {
    RunningLog t;
    QTest::mouseClick(t.viewport(), Qt::LeftButton, {}, t.PlaceOf(100).center());
    const int iTop = t.Top();
    QVERIFY(t.Mark() == nullptr);  // nothing newer yet
    t.AddBeat(1);
    QCOMPARE(t.Top(), iTop);
    QVERIFY(t.Mark() != nullptr);
    QCOMPARE(t.SelectedText(), QStringLiteral("line 100\n"));
}

void LogReadingTest::aClearedLogFollows() {
    RunningLog t;
    t.Key(Qt::Key_PageUp);
    t.Wheel(3);
    t.Lines.Clear();
    t.AddBeat(60);
    QCOMPARE(t.Bottom(), t.Newest());
    QVERIFY(t.Mark() == nullptr);
    t.AddBeat(60);
    QCOMPARE(t.Bottom(), t.Newest());
}

void LogReadingTest::resizingKeepsTheEnd() {
    RunningLog t;
    for (const int iHeight : {100, 300, 60, 220}) {
        t.resize(400, iHeight);
        QCoreApplication::processEvents();
        QCOMPARE(t.Bottom(), t.Newest());
        t.AddBeat(2);
        QCOMPARE(t.Bottom(), t.Newest());
    }
}

void LogReadingTest::resizingKeepsTheLinesRead() {
    RunningLog t;
    t.Wheel(12);
    const int iTop = t.Top();
    for (const int iHeight : {100, 300, 60}) {
        t.resize(400, iHeight);
        t.AddBeat(2);
        QCOMPARE(t.Top(), iTop);
    }
}

void LogReadingTest::scrollingSidewaysStays() {
    RunningLog t;
    t.Lines.Add(std::string(200, 'x'));
    t.AddBeat(1);
    t.horizontalScrollBar()->setValue(77);
    t.AddBeat(1);
    QCOMPARE(t.horizontalScrollBar()->value(), 77);
    QCOMPARE(t.Bottom(), t.Newest());
    t.Wheel(3);
    t.AddBeat(1);
    QCOMPARE(t.horizontalScrollBar()->value(), 77);
}

void LogReadingTest::aLogComingIntoSightStandsWhereItWasLeft() {
    RunningLog t;
    t.Wheel(3);
    const int iTop = t.Top();
    t.hide();
    t.Lines.Add("line 102");
    t.show();
    QCoreApplication::processEvents();
    QCOMPARE(t.Top(), iTop);
}

QTEST_MAIN(LogReadingTest)
#include "LogReadingTest.moc"
