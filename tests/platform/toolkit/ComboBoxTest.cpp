// The choice among fixed texts: by hand, by the program, and a text that is none of them.
#include "platform/toolkit/ComboBox.h"

#include <QSignalSpy>
#include <QTest>
#include <array>

using toolkit::ComboBox;

namespace {

constexpr std::array<std::string_view, 3> Entries = {"None", "Lat/Lon", "All"};

}  // namespace

class ComboBoxTest : public QObject {
    Q_OBJECT
private slots:
    void nothingIsChosenAtFirst();
    void programChooses();
    void keysChoose();
    void choosingTheSameAgainIsAClick();
    void indexOutOfRangeIsIgnored_data();
    void indexOutOfRangeIsIgnored();
    void textChoosesItsEntry();
    void otherTextIsKeptAndShown();
    void otherTextGivesWayToAnEntry();
    void newEntriesChooseNothing();
};

void ComboBoxTest::nothingIsChosenAtFirst() {
    ComboBox t;
    QSignalSpy tClicks(&t, &ComboBox::Click);
    t.SetItems(Entries);
    QCOMPARE(t.count(), 3);
    QCOMPARE(t.ListIndex(), -1);
    QCOMPARE(t.Text(), std::string());
    QCOMPARE(tClicks.count(), 0);
}

void ComboBoxTest::programChooses() {
    ComboBox t;
    t.SetItems(Entries);
    QSignalSpy tClicks(&t, &ComboBox::Click);
    std::string sTextAtClick;
    connect(&t, &ComboBox::Click, this, [&] { sTextAtClick = t.Text(); });
    t.SetListIndex(1);
    QCOMPARE(t.ListIndex(), 1);
    QCOMPARE(t.Text(), std::string("Lat/Lon"));
    QCOMPARE(t.currentText(), QStringLiteral("Lat/Lon"));
    QCOMPARE(tClicks.count(), 1);
    QCOMPARE(sTextAtClick, std::string("Lat/Lon"));
}

void ComboBoxTest::keysChoose() {
    ComboBox t;
    t.SetItems(Entries);
    t.SetListIndex(0);
    t.show();
    t.setFocus();
    QSignalSpy tClicks(&t, &ComboBox::Click);
    QTest::keyClick(&t, Qt::Key_Down);
    QCOMPARE(t.ListIndex(), 1);
    QTest::keyClick(&t, Qt::Key_A);  // by its first letter
    QCOMPARE(t.ListIndex(), 2);
    QCOMPARE(t.Text(), std::string("All"));
    QTest::keyClick(&t, Qt::Key_Home);
    QCOMPARE(t.Text(), std::string("None"));
    QCOMPARE(tClicks.count(), 3);
}

void ComboBoxTest::choosingTheSameAgainIsAClick() {
    ComboBox t;
    t.SetItems(Entries);
    t.SetListIndex(1);
    QSignalSpy tClicks(&t, &ComboBox::Click);
    t.SetListIndex(1);
    t.SetText("Lat/Lon");
    QCOMPARE(tClicks.count(), 2);
}

void ComboBoxTest::indexOutOfRangeIsIgnored_data() {
    QTest::addColumn<int>("iIndex");
    for (const int i : {-2, -1, 3, 1000}) QTest::addRow("%d", i) << i;
}

void ComboBoxTest::indexOutOfRangeIsIgnored() {
    QFETCH(int, iIndex);
    ComboBox t;
    t.SetItems(Entries);
    t.SetListIndex(1);
    QSignalSpy tClicks(&t, &ComboBox::Click);
    t.SetListIndex(iIndex);
    QCOMPARE(t.ListIndex(), 1);
    QCOMPARE(t.Text(), std::string("Lat/Lon"));
    QCOMPARE(tClicks.count(), 0);
}

void ComboBoxTest::textChoosesItsEntry() {
    ComboBox t;
    t.SetItems(Entries);
    QSignalSpy tClicks(&t, &ComboBox::Click);
    t.SetText("All");
    QCOMPARE(t.ListIndex(), 2);
    QCOMPARE(tClicks.count(), 1);
}

void ComboBoxTest::otherTextIsKeptAndShown() {
    ComboBox t;
    t.SetItems(Entries);
    t.SetListIndex(0);
    QSignalSpy tClicks(&t, &ComboBox::Click);
    for (const char* sText : {"all", "Everything", "\xb0", "None "}) {
        t.SetText(sText);
        QCOMPARE(t.Text(), std::string(sText));
        QCOMPARE(t.ListIndex(), -1);
        QCOMPARE(t.currentIndex(), -1);
        QCOMPARE(t.placeholderText(), QString::fromLatin1(sText));
    }
    QCOMPARE(tClicks.count(), 0);
    QCOMPARE(t.count(), 3);
}

void ComboBoxTest::otherTextGivesWayToAnEntry() {
    ComboBox t;
    t.SetItems(Entries);
    t.SetText("Everything");
    t.SetListIndex(1);
    QCOMPARE(t.Text(), std::string("Lat/Lon"));
    t.SetText("Everything");
    t.show();
    t.setFocus();
    QTest::keyClick(&t, Qt::Key_Down);
    QCOMPARE(t.ListIndex(), 0);
    QCOMPARE(t.Text(), std::string("None"));
}

void ComboBoxTest::newEntriesChooseNothing() {
    ComboBox t;
    t.SetItems(Entries);
    t.SetListIndex(2);
    QSignalSpy tClicks(&t, &ComboBox::Click);
    t.SetItems(Entries);
    QCOMPARE(t.count(), 3);
    QCOMPARE(t.ListIndex(), -1);
    QCOMPARE(tClicks.count(), 0);
}

QTEST_MAIN(ComboBoxTest)
#include "ComboBoxTest.moc"
