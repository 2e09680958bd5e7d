// The real file dialogs and the real message box, as the window has them shown: what they ask, and what they answer.
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
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

// Answers what is asked while a button is pressed: file dialogs by a name that is typed, boxes by a button's text, in
// the order of the answers; when these have run out, by Escape.
class User {
public:
    explicit User(QStringList sAnswers) : m_sAnswers(std::move(sAnswers)) {}

    // What was asked, in its order: "name?" for a file dialog, else the text of a box.
    QStringList Press(TestWindow& t, const char* sKey) {
        Look();
        t.Press(sKey);
        return m_sAsked;
    }

private:
    // Looks again before it answers, because an answer may lead to another question before it returns.
    void Look() {
        QTimer::singleShot(5, &m_tContext, [this] {
            QWidget* pDialog = QApplication::activeModalWidget();
            Look();
            if (pDialog != nullptr && pDialog->isVisible()) Answer(*pDialog);
        });
    }

    void Answer(QWidget& tDialog) {
        const QString sAnswer = m_sAnswers.isEmpty() ? QString() : m_sAnswers.takeFirst();
        auto* pName = tDialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        const auto* pBox = qobject_cast<QMessageBox*>(&tDialog);
        m_sAsked << (pBox != nullptr ? pBox->text() : QStringLiteral("name?"));
        if (pName != nullptr && !sAnswer.isEmpty()) {
            pName->setText(sAnswer);
            QTest::keyClick(pName, Qt::Key_Return);
            return;
        }
        for (QPushButton* pButton : tDialog.findChildren<QPushButton*>()) {
            if (pBox != nullptr && pButton->text().remove(QLatin1Char('&')) == sAnswer) return pButton->click();
        }
        QTest::keyClick(&tDialog, Qt::Key_Escape);
    }

    QObject m_tContext;
    QStringList m_sAnswers;
    QStringList m_sAsked;
};

// The filter as the dialog shows it.
QString ShownFilter(const QFileDialog& t) {
    const auto* pBox = t.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    return pBox == nullptr ? QString() : pBox->currentText();
}

// The names that the dialog's list offers.
QStringList OfferedNames(const QFileDialog& t) {
    const auto* pList = t.findChild<QListView*>(QStringLiteral("listView"));
    QStringList sNames;
    for (int i = 0; i < pList->model()->rowCount(pList->rootIndex()); ++i) {
        sNames << pList->model()->index(i, 0, pList->rootIndex()).data().toString();
    }
    sNames.sort();
    return sNames;
}

constexpr const char* Recorded = "05/15/2011 12:00:00 $GPZDA,";

}  // namespace

class DialogsWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void recordProposesAName();
    void playbackTakesExistingFilesOnly_data();
    void playbackTakesExistingFilesOnly();
    void textFilesOfEveryCaseAreOffered();
    void nameToRecordGetsItsSuffix_data();
    void nameToRecordGetsItsSuffix();
    void refusedReplacementAsksForAnotherName_data();
    void refusedReplacementAsksForAnotherName();
    void nameToPlayIsTakenAsItIsIfItExists_data();
    void nameToPlayIsTakenAsItIsIfItExists();
    void rejectedDialogsChangeNothing();
    void chosenFileIsPlayed();
    void refusalOfABurstHasAnOkButtonOnly();
};

void DialogsWindowTest::initTestCase() { QApplication::setApplicationName(QStringLiteral("Tidewatch")); }

void DialogsWindowTest::recordProposesAName() {
    Native n;
    n.pWindow->StartBoth();
    QVERIFY(PressAndLook<QFileDialog>(*n.pWindow, "Record", [](QFileDialog& t) {
        QCOMPARE(t.acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - Save As"));
        QCOMPARE(ShownFilter(t), QStringLiteral("Text (*.txt)"));
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
        QCOMPARE(ShownFilter(t), QStringLiteral("Text (*.txt)"));
        QCOMPARE(t.directory().absolutePath(), n.tWorld.Folder());
    }));
}

void DialogsWindowTest::textFilesOfEveryCaseAreOffered() {
    Native n;
    for (const char* sName : {"Tidewatch.Txt", "TIDES.TXT", "night.txt", "night.log", "night"}) {
        n.tWorld.WriteFile(n.tWorld.Path(QLatin1String(sName)), "");
    }
    QVERIFY(PressAndLook<QFileDialog>(*n.pWindow, "Playback", [](QFileDialog& t) {
        QTRY_COMPARE(OfferedNames(t).join(QLatin1Char(' ')), QStringLiteral("TIDES.TXT Tidewatch.Txt night.txt"));
    }));
}

void DialogsWindowTest::nameToRecordGetsItsSuffix_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("existing");
    QTest::addColumn<QString>("question");  // the name that it is about
    QTest::addColumn<QString>("recorded");
    const auto tRow = [](const char* sRow, const char* sName, const char* sExisting, const char* sQuestion,
                         const char* sRecorded) {
        QTest::newRow(sRow) << QString::fromLatin1(sName) << QString::fromLatin1(sExisting)
                            << QString::fromLatin1(sQuestion) << QString::fromLatin1(sRecorded);
    };
    tRow("new", "fresh", "", "", "fresh.txt");
    tRow("new with suffix", "fresh.txt", "", "", "fresh.txt");
    tRow("the suffix leads to a file", "keep", "keep.txt", "keep.txt", "keep.txt");
    tRow("a file", "keep.txt", "keep.txt", "keep.txt", "keep.txt");
    tRow("another suffix", "keep.log", "keep.log", "keep.log", "keep.log");
    tRow("not the file of that name", "keep", "keep", "keep", "keep.txt");
}

void DialogsWindowTest::nameToRecordGetsItsSuffix() {
    QFETCH(QString, name);
    QFETCH(QString, existing);
    QFETCH(QString, question);
    QFETCH(QString, recorded);
    Native n;
    if (!existing.isEmpty()) n.tWorld.WriteFile(n.tWorld.Path(existing), "old");
    n.pWindow->StartBoth();
    QStringList sAsked{QStringLiteral("name?")};
    if (!question.isEmpty()) sAsked << question + QStringLiteral(" already exists.\nDo you want to replace it?");
    User tUser({n.tWorld.Path(name), QStringLiteral("Yes")});
    QCOMPARE(tUser.Press(*n.pWindow, "Record"), sAsked);
    QCOMPARE(n.pWindow->Panel(1), std::string("Record"));
    QCOMPARE(n.tWorld.ReadFile(n.tWorld.Path(recorded)), std::string());
    if (existing != recorded && !existing.isEmpty()) {
        QCOMPARE(n.tWorld.ReadFile(n.tWorld.Path(existing)), std::string("old"));
    }
}

void DialogsWindowTest::refusedReplacementAsksForAnotherName_data() {
    QTest::addColumn<QString>("then");
    QTest::addColumn<QByteArray>("state");
    QTest::newRow("given up") << QString() << QByteArray("Running");
    QTest::newRow("another, in the same folder") << QStringLiteral("other") << QByteArray("Record");
}

void DialogsWindowTest::refusedReplacementAsksForAnotherName() {
    QFETCH(QString, then);
    QFETCH(QByteArray, state);
    Native n;
    n.tWorld.WriteFile(n.tWorld.Path(QStringLiteral("keep.txt")), "old");
    n.pWindow->StartBoth();
    User tUser({n.tWorld.Path(QStringLiteral("keep")), QStringLiteral("No"), then});
    const QString sQuestion = QStringLiteral("keep.txt already exists.\nDo you want to replace it?");
    const QString sName = QStringLiteral("name?");
    QCOMPARE(tUser.Press(*n.pWindow, "Record"), (QStringList{sName, sQuestion, sName}));
    QCOMPARE(n.pWindow->Panel(1), state.toStdString());
    QCOMPARE(n.tWorld.ReadFile(n.tWorld.Path(QStringLiteral("keep.txt"))), std::string("old"));
    QCOMPARE(QFile::exists(n.tWorld.Path(QStringLiteral("other.txt"))), !then.isEmpty());
}

void DialogsWindowTest::nameToPlayIsTakenAsItIsIfItExists_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("existing");
    QTest::addColumn<QString>("played");
    const auto tRow = [](const char* sRow, const char* sName, const char* sExisting, const char* sPlayed) {
        QTest::newRow(sRow) << QString::fromLatin1(sName) << QString::fromLatin1(sExisting)
                            << QString::fromLatin1(sPlayed);
    };
    tRow("with suffix", "aaa.txt", "aaa aaa.txt", "aaa.txt");
    tRow("without suffix", "aaa", "aaa aaa.txt", "aaa");
    tRow("without suffix, alone", "recording", "recording", "recording");
    tRow("the suffix is missing", "night", "night.txt", "night.txt");
    tRow("not there", "nowhere", "night.txt", "");
}

void DialogsWindowTest::nameToPlayIsTakenAsItIsIfItExists() {
    QFETCH(QString, name);
    QFETCH(QString, existing);
    QFETCH(QString, played);
    Native n;
    for (const QString& sFile : existing.split(QLatin1Char(' '))) {
        n.tWorld.WriteFile(n.tWorld.Path(sFile), Recorded + sFile.toStdString() + "\r\n");
    }
    User tUser({name});
    const QStringList sAsked = tUser.Press(*n.pWindow, "Playback Burst");
    if (played.isEmpty()) {
        QCOMPARE(sAsked.size(), 3);  // a box says that it is not there, the dialog is back, and given up
        QVERIFY(sAsked[1].contains(QLatin1String("File not found")));
        QCOMPARE(n.pWindow->windowTitle(), QStringLiteral("Tidewatch"));
        return;
    }
    QCOMPARE(sAsked, QStringList{QStringLiteral("name?")});
    QCOMPARE(n.pWindow->windowTitle(), QStringLiteral("Tidewatch - ") + played);
    QCOMPARE(n.pWindow->LastLine(n.pWindow->lstCommData(0)), "$GPZDA," + played.toStdString());
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
