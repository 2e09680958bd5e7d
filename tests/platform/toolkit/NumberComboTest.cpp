// The box with a list of numbers: the list fills itself, the text stays the user's.
#include "platform/toolkit/NumberCombo.h"

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QLineEdit>
#include <QTest>
#include <random>

#include "platform/toolkit/Latin1.h"

using toolkit::NumberCombo;

namespace {

void Show(NumberCombo& t) {
    t.show();
    t.setFocus();
    t.Synchronize();
    QCoreApplication::processEvents();
}

QStringList Items(NumberCombo& t) {
    t.Synchronize();
    QStringList sItems;
    for (int i = 0; i < t.count(); ++i) sItems << t.itemText(i);
    return sItems;
}

QStringList Texts(std::initializer_list<int> iNumbers) {
    QStringList sTexts;
    for (const int i : iNumbers) sTexts << QString::number(i);
    return sTexts;
}

}  // namespace

class NumberComboTest : public QObject {
    Q_OBJECT
private slots:
    void whatCameOutOfSightShowsOnceItIsSeen();
    void itemsAreShownInOrder();
    void firstItemLeavesTheTextAlone_data();
    void firstItemLeavesTheTextAlone();
    void clearLeavesTheTextAlone();
    void textOfTheProgramIsShown();
    void typedTextIsTheText();
    void typingSurvivesNewItems();
    void markedTextSurvivesNewItems_data();
    void markedTextSurvivesNewItems();
    void undoSurvivesNewItems();
    void textOfTheProgramInAnEmptiedBoxIsReplacedByTyping();
    void textOfTheProgramIsMarkedForTyping();
    void choosingAnItemSetsTheText();
    void openListKeepsItsPlace();
    void openListDoesNotSlide();
    void openListKeepsTheText();
    void arrowKeysStartAtTheText();
    void dataGoesWithTheItem();
    void manyNewItemsComeAtOnce();
    void modelKeepsItsPromises();
};

void NumberComboTest::itemsAreShownInOrder() {
    NumberCombo t;
    Show(t);
    for (const int i : {30, 9, 100}) t.Items.FindOrInsert(i, 0);
    QCOMPARE(t.count(), 0);  // on the beat
    QCOMPARE(Items(t), Texts({9, 30, 100}));
    t.Items.FindOrInsert(50, 0);
    QCOMPARE(Items(t), Texts({9, 30, 50, 100}));
    t.Items.Clear();
    t.Items.FindOrInsert(40, 0);
    QCOMPARE(Items(t), Texts({40}));
    t.Items.Clear();
    QCOMPARE(Items(t), QStringList());
}

void NumberComboTest::firstItemLeavesTheTextAlone_data() {
    QTest::addColumn<QString>("sText");
    QTest::newRow("empty") << QString();
    QTest::newRow("no item") << QStringLiteral("something");
    QTest::newRow("an item to come") << QStringLiteral("20");
}

void NumberComboTest::firstItemLeavesTheTextAlone() {
    QFETCH(QString, sText);
    NumberCombo t;
    Show(t);
    t.SetText(toolkit::ToLatin1(sText));
    for (const int i : {10, 20, 5}) {
        t.Items.FindOrInsert(i, 0);
        t.Synchronize();
        QCOMPARE(t.currentText(), sText);
        QCOMPARE(toolkit::FromLatin1(t.Text()), sText);
    }
}

void NumberComboTest::clearLeavesTheTextAlone() {
    NumberCombo t;
    Show(t);
    t.Items.FindOrInsert(10, 0);
    t.SetText("10");
    t.Synchronize();
    t.Items.Clear();
    t.Synchronize();
    QCOMPARE(t.currentText(), QStringLiteral("10"));
    QCOMPARE(t.Text(), std::string("10"));
}

void NumberComboTest::textOfTheProgramIsShown() {
    NumberCombo t;
    Show(t);
    t.SetText("123");
    QCOMPARE(t.Text(), std::string("123"));
    t.Synchronize();
    QCOMPARE(t.currentText(), QStringLiteral("123"));
    t.SetText("");
    t.Synchronize();
    QCOMPARE(t.currentText(), QString());
    t.SetText("7");
    QTRY_COMPARE(t.currentText(), QStringLiteral("7"));  // by itself
}

void NumberComboTest::typedTextIsTheText() {
    NumberCombo t;
    t.Items.FindOrInsert(2441, 0);
    Show(t);
    QTest::keyClicks(&t, QStringLiteral("244"));
    QCOMPARE(t.Text(), std::string("244"));  // nothing is completed
    QTest::keyClick(&t, Qt::Key_Return);
    QCOMPARE(t.Text(), std::string("244"));
    QCOMPARE(Items(t), Texts({2441}));  // nor added
    QTest::keyClick(&t, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&t, Qt::Key_Delete);
    QCOMPARE(t.Text(), std::string());
}

void NumberComboTest::typingSurvivesNewItems() {
    NumberCombo t;
    Show(t);
    QTest::keyClicks(&t, QStringLiteral("1234"));
    t.lineEdit()->setCursorPosition(2);
    t.Items.FindOrInsert(9, 0);
    t.Synchronize();
    QTest::keyClicks(&t, QStringLiteral("x"));
    QCOMPARE(t.Text(), std::string("12x34"));
}

void NumberComboTest::markedTextSurvivesNewItems_data() {
    QTest::addColumn<QString>("sText");
    for (const char* s : {"206000000", "20", "no item", ""}) QTest::newRow(s) << QString::fromLatin1(s);
}

// Whether the text is an item, becomes one or never is: first item, one before it, one behind it, all gone, many.
void NumberComboTest::markedTextSurvivesNewItems() {
    QFETCH(QString, sText);
    NumberCombo t;
    Show(t);
    t.SetText(toolkit::ToLatin1(sText));
    t.Synchronize();
    const auto tNewItems = [&t](int iStep) {
        if (iStep == 4) t.Items.Clear();
        for (int i = 0; iStep == 5 && i < 200; ++i) t.Items.FindOrInsert(1000 + i, 0);
        const int iItems[] = {206000000, 20, 300000000, 5, 206000000, 2};
        t.Items.FindOrInsert(iItems[iStep], 0);
        t.Synchronize();
    };
    for (int i = 0; i < 6; ++i) {
        t.lineEdit()->selectAll();
        tNewItems(i);
        QCOMPARE(t.lineEdit()->selectedText(), sText);
        QCOMPARE(t.currentText(), sText);
    }
    if (sText.isEmpty()) return;
    // Marked backwards, the cursor stands at the beginning of the selection and goes on from there.
    t.lineEdit()->setSelection(2, -1);
    t.Items.FindOrInsert(3, 0);
    t.Synchronize();
    QCOMPARE(t.lineEdit()->selectedText(), sText.mid(1, 1));
    QTest::keyClick(&t, Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(t.lineEdit()->selectedText(), sText.left(2));
    t.Items.FindOrInsert(4, 0);
    t.Synchronize();
    QTest::keyClicks(&t, QStringLiteral("7"));
    QCOMPARE(t.Text(), toolkit::ToLatin1(QLatin1Char('7') + sText.mid(2)));
}

void NumberComboTest::undoSurvivesNewItems() {
    NumberCombo t;
    for (const int i : {10, 20}) t.Items.FindOrInsert(i, 0);
    Show(t);
    QTest::keyClicks(&t, QStringLiteral("12"));
    QTest::keyClick(&t, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&t, QStringLiteral("x"));
    t.Items.FindOrInsert(5, 0);
    t.Synchronize();
    QTest::keyClick(&t, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(t.Text(), std::string("12"));
}

// The text becomes the first target's when it is empty, also when the user has just emptied it to type another.
void NumberComboTest::textOfTheProgramInAnEmptiedBoxIsReplacedByTyping() {
    NumberCombo t;
    t.Items.FindOrInsert(10, 0);
    Show(t);
    QTest::keyClicks(&t, QStringLiteral("123"));
    QTest::keyClick(&t, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&t, Qt::Key_Delete);
    t.SetText("206000000");
    t.Items.FindOrInsert(206000000, 0);
    t.Synchronize();
    QCOMPARE(t.Text(), std::string("206000000"));
    QCOMPARE(t.currentText(), QStringLiteral("206000000"));
    QTest::keyClicks(&t, QStringLiteral("24"));
    QCOMPARE(t.Text(), std::string("24"));
    t.Synchronize();
    QCOMPARE(t.currentText(), QStringLiteral("24"));
}

// In an empty box that has the focus.
void NumberComboTest::textOfTheProgramIsMarkedForTyping() {
    NumberCombo t;
    Show(t);
    t.SetText("206000000");
    t.Items.FindOrInsert(206000000, 0);
    t.Synchronize();
    QCOMPARE(t.currentText(), QStringLiteral("206000000"));
    QTest::keyClicks(&t, QStringLiteral("24"));
    QCOMPARE(t.Text(), std::string("24"));
}

void NumberComboTest::choosingAnItemSetsTheText() {
    NumberCombo t;
    for (const int i : {10, 20, 30}) t.Items.FindOrInsert(i, 0);
    Show(t);
    t.showPopup();
    QTRY_VERIFY(t.view()->isVisible());
    t.view()->setCurrentIndex(t.model()->index(1, 0));
    QTest::keyClick(t.view(), Qt::Key_Return);
    QCOMPARE(t.Text(), std::string("20"));
    QCOMPARE(t.currentText(), QStringLiteral("20"));
    t.Items.FindOrInsert(15, 0);
    t.Synchronize();
    QCOMPARE(t.currentText(), QStringLiteral("20"));
}

// New targets are heard while the user has the list open.
void NumberComboTest::openListKeepsItsPlace() {
    NumberCombo t;
    for (const int i : {10, 20, 30}) t.Items.FindOrInsert(i, 0);
    Show(t);
    t.showPopup();
    QTRY_VERIFY(t.view()->isVisible());
    t.view()->setCurrentIndex(t.model()->index(1, 0));
    for (const int i : {5, 15, 25, 35}) {
        t.Items.FindOrInsert(i, 0);
        if (i != 25) t.Synchronize();
    }
    QVERIFY(t.view()->isVisible());
    QCOMPARE(t.view()->currentIndex().data().toString(), QStringLiteral("20"));
    t.Items.FindOrInsert(1, 0);  // not yet in the list that is seen
    QTest::keyClick(t.view(), Qt::Key_Return);
    QCOMPARE(t.Text(), std::string("20"));
}

void NumberComboTest::openListDoesNotSlide() {
    NumberCombo t;
    for (int i = 0; i < 40; ++i) t.Items.FindOrInsert(1000 + 10 * i, 0);
    t.SetText("1200");
    Show(t);
    t.showPopup();
    QTRY_VERIFY(t.view()->isVisible());
    const auto tSeen = [&t] {
        QStringList sSeen;
        for (int y = 2; y < t.view()->viewport()->height(); y += 5) {
            sSeen << t.view()->indexAt(QPoint(5, y)).data().toString();
        }
        return sSeen;
    };
    const QStringList sBefore = tSeen();
    QVERIFY(sBefore.contains(QStringLiteral("1200")));
    for (int i = 0; i < 40; ++i) {
        t.Items.FindOrInsert(1005 + 10 * i, 0);
        t.Synchronize();
        QCOMPARE(tSeen(), sBefore);
    }
    t.Items.Clear();  // Stop and Start by the keyboard
    for (int i = 0; i < 200; ++i) t.Items.FindOrInsert(i, 0);
    t.Synchronize();
    QCOMPARE(tSeen(), sBefore);
    QTest::keyClick(t.view(), Qt::Key_Escape);
    QTRY_COMPARE(t.count(), 200);
    QCOMPARE(t.Text(), std::string("1200"));
}

void NumberComboTest::openListKeepsTheText() {
    NumberCombo t;
    for (const int i : {10, 20}) t.Items.FindOrInsert(i, 0);
    t.SetText("20");
    Show(t);
    t.showPopup();
    QTRY_VERIFY(t.view()->isVisible());
    t.SetText("10");
    t.Synchronize();
    QCOMPARE(t.currentText(), QStringLiteral("20"));
    QTest::keyClick(t.view(), Qt::Key_Escape);
    QTRY_COMPARE(t.currentText(), QStringLiteral("10"));
}

void NumberComboTest::arrowKeysStartAtTheText() {
    NumberCombo t;
    for (const int i : {10, 20, 30}) t.Items.FindOrInsert(i, 0);
    t.SetText("20");
    Show(t);
    QTest::keyClick(&t, Qt::Key_Down);
    QCOMPARE(t.Text(), std::string("30"));
    t.Items.FindOrInsert(29, 0);
    t.Synchronize();
    QTest::keyClick(&t, Qt::Key_Up);
    QCOMPARE(t.Text(), std::string("29"));
}

void NumberComboTest::dataGoesWithTheItem() {
    NumberCombo t;
    t.Items.FindOrInsert(10, 111);
    t.Items.FindOrInsert(20, 222);
    Show(t);
    t.Items.FindOrInsert(5, 55);
    QCOMPARE(t.itemData(0).toInt(), 111);  // not yet taken over
    t.Items.FindOrInsert(10, 0) = 112;
    t.Synchronize();
    QCOMPARE(t.itemData(0).toInt(), 55);
    QCOMPARE(t.itemData(1).toInt(), 112);
    QCOMPARE(t.itemData(2).toInt(), 222);
}

void NumberComboTest::manyNewItemsComeAtOnce() {
    NumberCombo t;
    t.SetText("777");
    Show(t);
    for (int i = 0; i < 5000; ++i) t.Items.FindOrInsert(i * 3, i);
    t.Synchronize();
    QCOMPARE(t.count(), 5000);
    QCOMPARE(t.itemText(4999), QString::number(4999 * 3));
    QCOMPARE(t.currentText(), QStringLiteral("777"));
}

void NumberComboTest::modelKeepsItsPromises() {
    NumberCombo t;
    const QAbstractItemModelTester tTester(t.model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    Show(t);
    t.SetText("none");
    std::mt19937 tRandom(9);
    for (int i = 0; i < 1500; ++i) {
        const int iNew = i % 200 == 0 ? 150 : 1;
        for (int j = 0; j < iNew; ++j) t.Items.FindOrInsert(static_cast<int>(tRandom() % 2000), 0);
        if (tRandom() % 150 == 0) t.Items.Clear();
        if (tRandom() % 3 == 0) t.Synchronize();
        QCOMPARE(t.Text(), std::string("none"));
    }
    t.Synchronize();
    QCOMPARE(t.count(), t.Items.Count());
    for (int i = 0; i < t.count(); ++i) QCOMPARE(t.itemText(i).toInt(), t.Items.At(i).lNumber);
}

void NumberComboTest::whatCameOutOfSightShowsOnceItIsSeen() {
    toolkit::NumberCombo cmb;
    cmb.Items.FindOrInsert(366053209, 0);
    cmb.SetText("366053209");
    cmb.show();
    QCOMPARE(cmb.currentText(), QStringLiteral("366053209"));
    QCOMPARE(cmb.count(), 1);
}

QTEST_MAIN(NumberComboTest)
#include "NumberComboTest.moc"
