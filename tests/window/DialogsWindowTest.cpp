// The real file dialogs and the real message box, as the window has them shown: what they ask, and what they answer.
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "tests/support/PrintString.h"
#include "tests/support/TestWindow.h"

using support::TestWindow;
using support::World;

namespace {

// A window whose dialogs are the real ones.
struct Native {
    Native() {
        tWorld.tAdjust = [](toolkit::Platform& t) {
            const toolkit::Platform tNative = toolkit::Platform::Native();
            t.AskFile = tNative.AskFile;
            t.ShowMessage = tNative.ShowMessage;
        };
        pWindow = std::make_unique<TestWindow>(tWorld);
        pWindow->LoadAndShow();
    }

    World tWorld;
    std::unique_ptr<TestWindow> pWindow;
};

// Presses a button while tLook is shown the dialog that it opens.
template <class Dialog, class Look>
bool PressAndLook(TestWindow& t, const char* sKey, const Look& tLook) {
    bool bSeen = false;
    QTimer tTimer;
    QObject::connect(&tTimer, &QTimer::timeout, &t, [&] {
        auto* pDialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (pDialog == nullptr) return;
        tTimer.stop();
        bSeen = true;
        tLook(*pDialog);
        if (pDialog->isVisible()) pDialog->reject();
    });
    tTimer.start(10);
    t.Press(sKey);
    return bSeen;
}

}  // namespace

class DialogsWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void recordAsksBeforeAFileIsReplaced();
    void playbackTakesExistingFilesOnly_data();
    void playbackTakesExistingFilesOnly();
    void rejectedDialogsChangeNothing();
    void chosenFileIsPlayed();
    void refusalOfABurstHasAnOkButtonOnly();
};

void DialogsWindowTest::initTestCase() { QApplication::setApplicationName(QStringLiteral("Tidewatch")); }

void DialogsWindowTest::recordAsksBeforeAFileIsReplaced() {
    Native n;
    n.pWindow->StartBoth();
    QVERIFY(PressAndLook<QFileDialog>(*n.pWindow, "Record", [](QFileDialog& t) {
        QCOMPARE(t.acceptMode(), QFileDialog::AcceptSave);
        QVERIFY(!t.testOption(QFileDialog::DontConfirmOverwrite));
        QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - Save As"));
        QCOMPARE(t.nameFilters(), QStringList{QStringLiteral("Text (*.txt)")});
        QCOMPARE(t.defaultSuffix(), QStringLiteral("txt"));
        QCOMPARE(QFileInfo(t.selectedFiles().value(0)).fileName(), QStringLiteral("Tidewatch.Txt"));
    }));
}

void DialogsWindowTest::playbackTakesExistingFilesOnly_data() {
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("real time") << QByteArray("Playback");
    QTest::newRow("burst") << QByteArray("Playback Burst");
}

void DialogsWindowTest::playbackTakesExistingFilesOnly() {
    QFETCH(QByteArray, key);
    Native n;
    QVERIFY(PressAndLook<QFileDialog>(*n.pWindow, key.constData(), [&n](QFileDialog& t) {
        QCOMPARE(t.acceptMode(), QFileDialog::AcceptOpen);
        QCOMPARE(t.fileMode(), QFileDialog::ExistingFile);
        QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - Open"));
        QCOMPARE(t.nameFilters(), QStringList{QStringLiteral("Text (*.txt)")});
        QCOMPARE(t.directory().absolutePath(), n.tWorld.Folder());
    }));
}

void DialogsWindowTest::rejectedDialogsChangeNothing() {
    Native n;
    TestWindow& t = *n.pWindow;
    QVERIFY(PressAndLook<QFileDialog>(t, "Playback", [](QFileDialog&) {}));
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
    QCOMPARE(t.Panel(1), std::string("Stopped"));
    t.StartBoth();
    QVERIFY(PressAndLook<QFileDialog>(t, "Record", [](QFileDialog&) {}));
    QCOMPARE(t.Panel(1), std::string("Running"));
    QVERIFY(!t.m_bRecording);
}

void DialogsWindowTest::chosenFileIsPlayed() {
    Native n;
    const QString sFile = n.tWorld.Path(QStringLiteral("chosen.txt"));
    n.tWorld.WriteFile(sFile, "05/15/2011 12:00:00 $GPZDA,1\r\n");
    QVERIFY(PressAndLook<QFileDialog>(*n.pWindow, "Playback Burst", [&sFile](QFileDialog& t) {
        auto* pName = t.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        QVERIFY(pName != nullptr);
        pName->setText(sFile);
        QTest::keyClick(pName, Qt::Key_Return);
    }));
    QCOMPARE(n.pWindow->windowTitle(), QStringLiteral("Tidewatch - chosen.txt"));
    QCOMPARE(n.pWindow->LastLine(n.pWindow->lstCommData(0)), std::string("$GPZDA,1"));
}

void DialogsWindowTest::refusalOfABurstHasAnOkButtonOnly() {
    Native n;
    n.pWindow->chkOutputEnabled.setChecked(true);
    QVERIFY(PressAndLook<QMessageBox>(*n.pWindow, "Playback Burst", [](QMessageBox& t) {
        QCOMPARE(t.text(), QStringLiteral("Comm Output is not available with Burst Playback"));
        QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
        QVERIFY(t.standardButtons() == QMessageBox::Ok);
    }));
    QCOMPARE(n.pWindow->Panel(1), std::string("Stopped"));
}

QTEST_MAIN(DialogsWindowTest)
#include "DialogsWindowTest.moc"
