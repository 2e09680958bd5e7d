// The Target box while traffic runs: what the user marks, types or is choosing from stays as it is.
#include <QAbstractItemView>
#include <QLineEdit>
#include <QTest>

#include "tests/support/AisEncoder.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

struct Listening {
    World tWorld;
    TestWindow t{tWorld};
    Listening() {
        t.LoadAndShow();
        t.SSTab.SetTab(ui::TabTargets);
        t.StartBoth();
        t.cmbTargetTarget.setFocus();
    }
    void Hear(std::uint32_t lMmsi) {
        t.FeedLine(0, AisSentence(AisOther(11, lMmsi)));
        t.Synchronize();
    }
    void Key(Qt::Key eKey, Qt::KeyboardModifiers eModifiers = {}) {
        QTest::keyClick(&t.cmbTargetTarget, eKey, eModifiers);
    }
    void Type(const char* sText) { QTest::keyClicks(&t.cmbTargetTarget, QString::fromLatin1(sText)); }
    QByteArray Text() const { return t.cmbTargetTarget.currentText().toLatin1(); }
};

}  // namespace

class TargetBoxWindowTest : public QObject {
    Q_OBJECT
private slots:
    void typingReplacesTheMarkedText();
    void typingGoesOnAtTheCursor();
    void emptiedBoxIsTheUsersToFill();
    void firstTargetIsReplacedByTyping();
    void typedTargetIsTracked();
    void chosenEntryIsTheOnePointedAt();
};

void TargetBoxWindowTest::typingReplacesTheMarkedText() {
    Listening tListening;
    tListening.Hear(206000000);
    QCOMPARE(tListening.Text(), QByteArray("206000000"));
    tListening.Key(Qt::Key_A, Qt::ControlModifier);
    for (const std::uint32_t lMmsi : {205000000U, 207000000U, 100U}) tListening.Hear(lMmsi);
    QCOMPARE(tListening.t.cmbTargetTarget.lineEdit()->selectedText(), QStringLiteral("206000000"));
    tListening.Type("204000000");
    QCOMPARE(tListening.Text(), QByteArray("204000000"));
    QCOMPARE(Bytes(tListening.t.cmbTargetTarget.Text()), QByteArray("204000000"));
    // A part of it.
    for (int i = 0; i < 3; ++i) tListening.Key(Qt::Key_Left, Qt::ShiftModifier);
    tListening.Hear(203000000);
    tListening.Type("111");
    QCOMPARE(tListening.Text(), QByteArray("204000111"));
}

void TargetBoxWindowTest::typingGoesOnAtTheCursor() {
    Listening tListening;
    tListening.Hear(206000000);
    tListening.Key(Qt::Key_Home);
    std::uint32_t lMmsi = 100;
    for (const char c : std::string("2044")) {
        tListening.Type(std::string(1, c).c_str());
        tListening.Hear(++lMmsi);
    }
    QCOMPARE(tListening.Text(), QByteArray("2044206000000"));
}

void TargetBoxWindowTest::emptiedBoxIsTheUsersToFill() {
    Listening tListening;
    tListening.Hear(206000000);
    tListening.Key(Qt::Key_A, Qt::ControlModifier);
    tListening.Key(Qt::Key_Delete);
    tListening.Hear(205000000);
    QCOMPARE(tListening.Text(), QByteArray("205000000"));  // what is tracked, marked: typing replaces it
    tListening.Type("204000000");
    tListening.Hear(203000000);
    QCOMPARE(tListening.Text(), QByteArray("204000000"));
    // Emptied and left: the next one heard stays the selected target.
    tListening.Key(Qt::Key_A, Qt::ControlModifier);
    tListening.Key(Qt::Key_Delete);
    tListening.Hear(202000000);
    tListening.t.grdTargetData.setFocus();
    tListening.Hear(201000000);
    QCOMPARE(tListening.Text(), QByteArray("202000000"));
}

void TargetBoxWindowTest::firstTargetIsReplacedByTyping() {
    Listening tListening;
    tListening.Hear(206000000);
    QCOMPARE(tListening.Text(), QByteArray("206000000"));
    tListening.Type("204");
    tListening.Hear(205000000);
    tListening.Type("000000");
    QCOMPARE(tListening.Text(), QByteArray("204000000"));
}

void TargetBoxWindowTest::typedTargetIsTracked() {
    Listening tListening;
    for (const std::uint32_t lMmsi : {206000000U, 204000000U, 205000000U}) tListening.Hear(lMmsi);
    tListening.t.chkTargetTrack.setChecked(true);
    tListening.t.cmbTargetTarget.setFocus();
    tListening.Key(Qt::Key_A, Qt::ControlModifier);
    tListening.Hear(100);
    tListening.Type("204000000");
    tListening.Hear(101);
    QCOMPARE(VisibleColumn(tListening.t, targets::ColMmsi), Texts({"204000000"}));
}

// The list is open, targets come, and then the user clicks.
void TargetBoxWindowTest::chosenEntryIsTheOnePointedAt() {
    Listening tListening;
    TestWindow& t = tListening.t;
    for (const std::uint32_t lMmsi : {50U, 60U, 70U}) tListening.Hear(lMmsi);
    t.cmbTargetTarget.showPopup();
    QAbstractItemView* pList = t.cmbTargetTarget.view();
    QTRY_VERIFY(pList->isVisible());
    const QPoint tPlace = pList->visualRect(pList->model()->index(1, 0)).center();
    QCOMPARE(pList->indexAt(tPlace).data().toString(), QStringLiteral("60"));
    for (const std::uint32_t lMmsi : {10U, 20U, 55U, 80U}) tListening.Hear(lMmsi);
    QTest::mouseMove(pList->viewport(), tPlace);
    QCOMPARE(pList->indexAt(tPlace).data().toString(), QStringLiteral("60"));
    QTest::keyClick(pList, Qt::Key_Return);
    QCOMPARE(tListening.Text(), QByteArray("60"));
    QTRY_COMPARE(t.cmbTargetTarget.count(), 7);
    QCOMPARE(tListening.Text(), QByteArray("60"));
}

QTEST_MAIN(TargetBoxWindowTest)
#include "TargetBoxWindowTest.moc"
