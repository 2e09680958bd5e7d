// What an empty view says: drawn in grey in its own middle, gone with the first line or row, and in no store or model.
#include <QApplication>
#include <QClipboard>
#include <QTest>

#include "platform/toolkit/LogList.h"
#include "tests/platform/toolkit/NamedGrid.h"

using namespace support;
using toolkit::LogList;

namespace {

// Everything that a view has drawn on its plain ground; nothing when that is all there is.
QRect Drawn(QWidget& tViewport) {
    const QImage tImage = tViewport.grab().toImage();
    const QRgb lGround = tViewport.palette().color(QPalette::Base).rgb();
    QRect tDrawn;
    for (int y = 0; y < tImage.height(); ++y) {
        for (int x = 0; x < tImage.width(); ++x) {
            if (tImage.pixel(x, y) != lGround) tDrawn |= QRect(x, y, 1, 1);
        }
    }
    return tDrawn;
}

// Half a line of slack: ascenders and descenders are not alike.
bool IsInTheMiddle(const QRect& tDrawn, const QWidget& tViewport) {
    const QPoint tOff = tDrawn.center() - tViewport.rect().center();
    return tDrawn.isValid() && std::abs(tOff.x()) <= 4 && std::abs(tOff.y()) <= tViewport.fontMetrics().height() / 2;
}

// The darkest pixel: a text in grey has none as dark as the text of a line.
int Darkest(const QWidget& tViewport) {
    const QImage tImage = const_cast<QWidget&>(tViewport).grab().toImage();
    int iDarkest = 255;
    for (int y = 0; y < tImage.height(); ++y) {
        for (int x = 0; x < tImage.width(); ++x) iDarkest = std::min(iDarkest, qGray(tImage.pixel(x, y)));
    }
    return iDarkest;
}

void ShowLog(LogList& t) {
    t.resize(400, 200);
    t.show();
    t.Synchronize();
    QCoreApplication::processEvents();
}

const QString Hint = QStringLiteral("Press Start");

}  // namespace

class EmptyHintTest : public QObject {
    Q_OBJECT
private slots:
    void anEmptyLogSaysWhatToDo();
    void theFirstLineTakesItsPlace();
    void aClearedLogSaysItAgain();
    void anotherHintIsDrawnAtOnce();
    void aHintIsNoLine();
    void aLongHintIsBrokenIntoLines();
    void anEmptyTableSaysWhatToDo();
    void hiddenRowsHaveTheirOwnHint();
    void rowsThatAlwaysStandDoNotCount();
};

void EmptyHintTest::anEmptyLogSaysWhatToDo() {
    LogList t;
    ShowLog(t);
    QVERIFY(!Drawn(*t.viewport()).isValid());
    t.SetEmptyHint(Hint);
    QVERIFY(IsInTheMiddle(Drawn(*t.viewport()), *t.viewport()));
    const int iGrey = Darkest(*t.viewport());
    t.Lines.Add("Press Start");
    t.Synchronize();
    QVERIFY(iGrey > Darkest(*t.viewport()) + 40);
    QVERIFY(iGrey < 220);  // it can be read
}

void EmptyHintTest::theFirstLineTakesItsPlace() {
    LogList t;
    t.SetEmptyHint(Hint);
    ShowLog(t);
    t.Lines.Add("x");
    t.Synchronize();
    QCoreApplication::processEvents();
    QVERIFY(Drawn(*t.viewport()).bottom() < t.viewport()->height() / 3);
}

void EmptyHintTest::aClearedLogSaysItAgain() {
    LogList t;
    t.SetEmptyHint(Hint);
    ShowLog(t);
    const QRect tBefore = Drawn(*t.viewport());
    t.Lines.Add("x");
    t.Synchronize();
    t.Lines.Clear();
    t.Synchronize();
    QCOMPARE(Drawn(*t.viewport()), tBefore);
}

// On the screen itself: a grab paints anew whether the view has asked for it or not.
void EmptyHintTest::anotherHintIsDrawnAtOnce() {
    class Counting : public LogList {
    public:
        int iPaints = 0;

    protected:
        void paintEvent(QPaintEvent* pEvent) override {
            ++iPaints;
            LogList::paintEvent(pEvent);
        }
    };
    Counting t;
    ShowLog(t);
    const int iBefore = t.iPaints;
    t.SetEmptyHint(Hint);
    QCoreApplication::processEvents();
    QVERIFY(t.iPaints > iBefore);
}

void EmptyHintTest::aHintIsNoLine() {
    LogList t;
    t.SetEmptyHint(Hint);
    ShowLog(t);
    QCOMPARE(t.Lines.Count(), 0);
    QCOMPARE(t.model()->rowCount(), 0);
    QCOMPARE(t.CurrentLine(), -1);
    QApplication::clipboard()->setText(QStringLiteral("before"));
    QTest::keyClick(&t, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&t, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("before"));
}

void EmptyHintTest::aLongHintIsBrokenIntoLines() {
    LogList t;
    t.SetEmptyHint(QStringLiteral("word ").repeated(40));
    ShowLog(t);
    const QRect tDrawn = Drawn(*t.viewport());
    QVERIFY(tDrawn.height() > 3 * t.fontMetrics().height());
    QVERIFY(t.viewport()->rect().adjusted(8, 8, -8, -8).contains(tDrawn));
}

void EmptyHintTest::anEmptyTableSaysWhatToDo() {
    const auto p = MakeGrid(0);
    Show(*p);
    QVERIFY(!Drawn(*p->viewport()).isValid());
    p->SetEmptyHints(Hint, {});
    QVERIFY(IsInTheMiddle(Drawn(*p->viewport()), *p->viewport()));
    QCOMPARE(p->Cells.Rows(), 1);
    QCOMPARE(p->model()->rowCount(), 0);
    p->Cells.SetRows(2);
    p->Synchronize();
    QCoreApplication::processEvents();
    QVERIFY(Drawn(*p->viewport()).bottom() < p->viewport()->height() / 3);
}

void EmptyHintTest::hiddenRowsHaveTheirOwnHint() {
    const auto p = MakeGrid(2);
    p->SetEmptyHints({}, Hint);
    Show(*p);
    for (const int iRow : {1, 2}) p->Cells.SetHidden(iRow, true);
    p->Synchronize();
    QVERIFY(IsInTheMiddle(Drawn(*p->viewport()), *p->viewport()));
    p->Cells.SetHidden(2, false);
    p->Synchronize();
    QVERIFY(Drawn(*p->viewport()).bottom() < p->viewport()->height() / 3);
}

void EmptyHintTest::rowsThatAlwaysStandDoNotCount() {
    const auto p = MakeGrid(3);
    p->SetEmptyHints({}, Hint, 1);
    p->Cells.SetHidden(1, true);
    p->Cells.SetHidden(2, true);
    Show(*p);
    QVERIFY(Drawn(*p->viewport()).bottom() > p->viewport()->height() / 3);
    p->Cells.SetHidden(2, false);
    p->Synchronize();
    QVERIFY(Drawn(*p->viewport()).bottom() < p->viewport()->height() / 3);
}

QTEST_MAIN(EmptyHintTest)
#include "EmptyHintTest.moc"
