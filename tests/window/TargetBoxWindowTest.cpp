// The Target box while traffic runs: what the user marks, types or is choosing from stays as it is.
#include <QAbstractItemView>
#include <QLineEdit>
#include <QTest>

#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

struct TargetBox : Listening {
    TargetBox() : Listening(ui::TabTargets) { cmbTargetTarget.setFocus(); }
    void Key(Qt::Key eKey, Qt::KeyboardModifiers eModifiers = {}) {
        QTest::keyClick(&cmbTargetTarget, eKey, eModifiers);
    }
    void Type(const char* sText) { QTest::keyClicks(&cmbTargetTarget, QString::fromLatin1(sText)); }
    QByteArray Text() const { return cmbTargetTarget.currentText().toLatin1(); }
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
    TargetBox t;
    t.Show({206000000});
    QCOMPARE(t.Text(), QByteArray("206000000"));
    t.Key(Qt::Key_A, Qt::ControlModifier);
    t.Show({205000000, 207000000, 100});
    QCOMPARE(t.cmbTargetTarget.lineEdit()->selectedText(), QStringLiteral("206000000"));
    t.Type("204000000");
    QCOMPARE(t.Text(), QByteArray("204000000"));
    QCOMPARE(Bytes(t.cmbTargetTarget.Text()), QByteArray("204000000"));
    // A part of it.
    for (int i = 0; i < 3; ++i) t.Key(Qt::Key_Left, Qt::ShiftModifier);
    t.Show({203000000});
    t.Type("111");
    QCOMPARE(t.Text(), QByteArray("204000111"));
}

void TargetBoxWindowTest::typingGoesOnAtTheCursor() {
    TargetBox t;
    t.Show({206000000});
    t.Key(Qt::Key_Home);
    std::uint32_t lMmsi = 100;
    for (const char c : std::string("2044")) {
        t.Type(std::string(1, c).c_str());
        t.Show({++lMmsi});
    }
    QCOMPARE(t.Text(), QByteArray("2044206000000"));
}

void TargetBoxWindowTest::emptiedBoxIsTheUsersToFill() {
    TargetBox t;
    t.Show({206000000});
    t.Key(Qt::Key_A, Qt::ControlModifier);
    t.Key(Qt::Key_Delete);
    t.Show({205000000});
    QCOMPARE(t.Text(), QByteArray("205000000"));  // what is tracked, marked: typing replaces it
    t.Type("204000000");
    t.Show({203000000});
    QCOMPARE(t.Text(), QByteArray("204000000"));
    // Emptied and left: the next one heard stays the selected target.
    t.Key(Qt::Key_A, Qt::ControlModifier);
    t.Key(Qt::Key_Delete);
    t.Show({202000000});
    t.grdTargetData.setFocus();
    t.Show({201000000});
    QCOMPARE(t.Text(), QByteArray("202000000"));
}

void TargetBoxWindowTest::firstTargetIsReplacedByTyping() {
    TargetBox t;
    t.Show({206000000});
    QCOMPARE(t.Text(), QByteArray("206000000"));
    t.Type("204");
    t.Show({205000000});
    t.Type("000000");
    QCOMPARE(t.Text(), QByteArray("204000000"));
}

void TargetBoxWindowTest::typedTargetIsTracked() {
    TargetBox t;
    t.Show({206000000, 204000000, 205000000});
    t.chkTargetTrack.setChecked(true);
    t.cmbTargetTarget.setFocus();
    t.Key(Qt::Key_A, Qt::ControlModifier);
    t.Show({100});
    t.Type("204000000");
    t.Show({101});
    QCOMPARE(VisibleColumn(t, targets::ColMmsi), Texts({"204000000"}));
}

// The list is open, targets come, and then the user clicks.
void TargetBoxWindowTest::chosenEntryIsTheOnePointedAt() {
    TargetBox t;
    t.Show({50, 60, 70});
    t.cmbTargetTarget.showPopup();
    QAbstractItemView* pList = t.cmbTargetTarget.view();
    QTRY_VERIFY(pList->isVisible());
    const QPoint tPlace = pList->visualRect(pList->model()->index(1, 0)).center();
    QCOMPARE(pList->indexAt(tPlace).data().toString(), QStringLiteral("60"));
    t.Show({10, 20, 55, 80});
    QTest::mouseMove(pList->viewport(), tPlace);
    QCOMPARE(pList->indexAt(tPlace).data().toString(), QStringLiteral("60"));
    QTest::keyClick(pList, Qt::Key_Return);
    QCOMPARE(t.Text(), QByteArray("60"));
    QTRY_COMPARE(t.cmbTargetTarget.count(), 7);
    QCOMPARE(t.Text(), QByteArray("60"));
}

QTEST_MAIN(TargetBoxWindowTest)
#include "TargetBoxWindowTest.moc"
