// Where the file dialogs start, and recordings that are dragged onto the window: what is taken, what is refused, and
// that a dropped file is played like a chosen one.
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"
#include "tests/window/Shown.h"

using namespace support;

namespace {

constexpr std::string_view Recorded =
    "03/07/2005 10:00:00 !AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B\r\n"
    "03/07/2005 11:00:00 $GPZDA,1\r\n";

// Files dragged over the window's surface, as the window system reports it.
class Drag {
public:
    Drag(TestWindow& t, const QList<QUrl>& tUrls) : m_t(t) {
        if (!tUrls.isEmpty()) m_tData.setUrls(tUrls);
        m_tData.setText(tUrls.isEmpty() ? QStringLiteral("text") : tUrls.constFirst().toString());
    }
    Drag(TestWindow& t, const QString& sFile) : Drag(t, QList<QUrl>{QUrl::fromLocalFile(sFile)}) {}

    Drag& Over(QWidget& t) {
        m_tPoint = t.mapTo(&m_t, t.rect().center());
        return *this;
    }
    Drag& With(Qt::KeyboardModifiers eKeys, Qt::DropActions eActions = Qt::CopyAction | Qt::MoveAction) {
        m_eKeys = eKeys;
        m_eActions = eActions;
        return *this;
    }
    // The pointer comes and moves on: would a drop be taken?
    bool Enter() {
        QDragEnterEvent tEnter(m_tPoint, m_eActions, &m_tData, Qt::LeftButton, m_eKeys);
        tEnter.ignore();
        QCoreApplication::sendEvent(m_t.windowHandle(), &tEnter);
        QDragMoveEvent tMove(m_tPoint, m_eActions, &m_tData, Qt::LeftButton, m_eKeys);
        tMove.setAccepted(tEnter.isAccepted());
        QCoreApplication::sendEvent(m_t.windowHandle(), &tMove);
        return tEnter.isAccepted() && tMove.isAccepted();
    }
    // What the source is told to have happened; Qt::IgnoreAction for a drop that is not taken.
    Qt::DropAction Drop() {
        if (!Enter()) return Qt::IgnoreAction;
        QDropEvent tDrop(m_tPoint, m_eActions, &m_tData, Qt::LeftButton, m_eKeys);
        QCoreApplication::sendEvent(m_t.windowHandle(), &tDrop);
        const Qt::DropAction eAction = tDrop.isAccepted() ? tDrop.dropAction() : Qt::IgnoreAction;
        QCoreApplication::processEvents();
        return eAction;
    }

private:
    TestWindow& m_t;
    QMimeData m_tData;
    QPoint m_tPoint{10, 10};
    Qt::KeyboardModifiers m_eKeys = Qt::NoModifier;
    Qt::DropActions m_eActions = Qt::CopyAction | Qt::MoveAction;
};

struct Window : ShownWindow {
    Window() { tWorld.WriteFile(sFile, Recorded); }
    int Rows() { return grdTargetData.Cells.Rows() - 1; }

    QString sFile = tWorld.Path(QStringLiteral("night.txt"));
};

QString Folder(const World& tWorld, const char* sName) {
    QDir(tWorld.Folder()).mkpath(QLatin1String(sName));
    return tWorld.Path(QLatin1String(sName));
}

}  // namespace

class FilesWindowTest : public QObject {
    Q_OBJECT

private slots:
    void dialogsStartWhereTheLastFileWas();
    void cancelledDialogLeavesTheFolder();
    void droppedFileIsPlayedAtItsPace();
    void droppedFileWithShiftIsABurst();
    void dropIsTakenOverEveryTab();
    void dropOverAFieldIsNoText();
    void textDraggedOverAFieldIsTheFields();
    void droppedFileIsNeverMoved_data();
    void droppedFileIsNeverMoved();
    void otherThingsAreRefused_data();
    void otherThingsAreRefused();
    void nothingIsTakenWhileRunningOrPlaying();
    void droppedFileThatCannotBeOpenedSaysWhy();
    void burstWithOutputIsRefusedForADroppedFileToo();
    void nextDialogStartsInTheDroppedFilesFolder();
    void captionNamesTheWholeFile_data();
    void captionNamesTheWholeFile();
};

void FilesWindowTest::dialogsStartWhereTheLastFileWas() {
    Window t;
    const QString sOne = Folder(t.tWorld, "one");
    const QString sTwo = Folder(t.tWorld, "two");
    t.tWorld.WriteFile(sTwo + QLatin1String("/played.txt"), Recorded);
    t.StartBoth();
    t.PressWithFile("Record", sOne + QLatin1String("/record.txt"));
    t.Press("Stop");
    t.PressWithFile("Playback", sTwo + QLatin1String("/played.txt"));
    t.Press("Stop");
    t.StartBoth();
    t.Press("Record");
    QStringList sFolders;
    for (const toolkit::FileRequest& tRequest : t.tWorld.tDialogs) sFolders << tRequest.sFolder;
    QCOMPARE(sFolders, (QStringList{QString(), sOne, sTwo}));
}

void FilesWindowTest::cancelledDialogLeavesTheFolder() {
    Window t;
    for (int i = 0; i < 2; ++i) {
        t.tWorld.tFileAnswers = {std::nullopt};
        t.Press("Playback");
        QCOMPARE(t.tWorld.tDialogs.back().sFolder, t.tWorld.Folder());
    }
}

void FilesWindowTest::droppedFileIsPlayedAtItsPace() {
    Window t;
    QCOMPARE(Drag(t, t.sFile).Drop(), Qt::CopyAction);
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - night.txt"));
    QCOMPARE(Panel(t, 1), QByteArray("Playback"));
    QVERIFY(t.m_bPlayback);
    QCOMPARE(t.Rows(), 0);
    t.Advance(1);
    QCOMPARE(t.Rows(), 1);
    QCOMPARE(Panel(t, 1), QByteArray("Playback"));
    QVERIFY(t.tWorld.tDialogs.empty());
}

void FilesWindowTest::droppedFileWithShiftIsABurst() {
    Window t;
    QCOMPARE(Drag(t, t.sFile).With(Qt::ShiftModifier).Drop(), Qt::CopyAction);
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch - night.txt"));
    QVERIFY(!t.m_bPlayback);
    QCOMPARE(Log(t, t.lstCommData(0)).size(), qsizetype{2});
    QCOMPARE(t.Rows(), 1);
}

void FilesWindowTest::dropIsTakenOverEveryTab() {
    Window t;
    for (int i = 0; i < t.SSTab.Bar().count(); ++i) {
        t.SSTab.SetTab(i);
        QCoreApplication::processEvents();
        for (int iX = 5; iX < t.width(); iX += 40) {
            for (int iY = 5; iY < t.height(); iY += 20) {
                QWidget* pUnder = t.childAt(iX, iY);
                if (pUnder == nullptr) continue;
                QVERIFY2(Drag(t, t.sFile).Over(*pUnder).Enter(), qPrintable(pUnder->objectName()));
            }
        }
    }
}

void FilesWindowTest::dropOverAFieldIsNoText() {
    Window t;
    QCOMPARE(Drag(t, t.sFile).Over(t.txtCommPort(0)).Drop(), Qt::CopyAction);
    QCOMPARE(t.txtCommPort(0).text(), QStringLiteral("6"));
    QVERIFY(t.m_bPlayback);
}

void FilesWindowTest::textDraggedOverAFieldIsTheFields() {
    Window t;
    QVERIFY(Drag(t, QList<QUrl>()).Over(t.txtCommPort(0)).Drop() != Qt::IgnoreAction);
    QVERIFY(t.txtCommPort(0).text().contains(QStringLiteral("text")));
    QVERIFY(!Drag(t, QList<QUrl>()).Over(t.lstCommData(0)).Enter());
}

// A source that is told of a move may remove its file.
void FilesWindowTest::droppedFileIsNeverMoved_data() {
    QTest::addColumn<int>("keys");
    QTest::addColumn<int>("actions");
    QTest::addColumn<int>("action");
    const int iAll = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
    QTest::newRow("no key") << int{Qt::NoModifier} << iAll << int{Qt::CopyAction};
    QTest::newRow("Shift") << int{Qt::ShiftModifier} << iAll << int{Qt::CopyAction};
    QTest::newRow("Shift and Ctrl") << int{Qt::ShiftModifier | Qt::ControlModifier} << iAll << int{Qt::CopyAction};
    QTest::newRow("link only") << int{Qt::NoModifier} << int{Qt::LinkAction} << int{Qt::LinkAction};
}

void FilesWindowTest::droppedFileIsNeverMoved() {
    QFETCH(int, keys);
    QFETCH(int, actions);
    QFETCH(int, action);
    Window t;
    const auto eDone = Drag(t, t.sFile).With(Qt::KeyboardModifiers(keys), Qt::DropActions(actions)).Drop();
    QCOMPARE(int{eDone}, action);
}

void FilesWindowTest::otherThingsAreRefused_data() {
    QTest::addColumn<QStringList>("urls");
    QTest::newRow("text") << QStringList();
    QTest::newRow("two files") << QStringList{QStringLiteral("file:///a.txt"), QStringLiteral("file:///b.txt")};
    QTest::newRow("a page of the net") << QStringList{QStringLiteral("http://example.org/a.txt")};
}

void FilesWindowTest::otherThingsAreRefused() {
    QFETCH(QStringList, urls);
    Window t;
    QList<QUrl> tUrls;
    for (const QString& sUrl : urls) tUrls << QUrl(sUrl);
    QVERIFY(!Drag(t, tUrls).Over(t.lstCommData(0)).Enter());
    QVERIFY(!Drag(t, tUrls).Enter());
}

void FilesWindowTest::nothingIsTakenWhileRunningOrPlaying() {
    Window t;
    t.StartBoth();
    QVERIFY(!Drag(t, t.sFile).Enter());
    t.Press("Stop");
    Drag tFirst(t, t.sFile);
    QVERIFY(tFirst.Enter());
    QCOMPARE(tFirst.Drop(), Qt::CopyAction);
    t.Advance(1);
    QVERIFY(!Drag(t, t.sFile).Enter());
    QCOMPARE(t.Rows(), 1);
}

void FilesWindowTest::droppedFileThatCannotBeOpenedSaysWhy() {
    Window t;
    Drag(t, t.tWorld.Folder()).Drop();
    QCOMPARE(Panel(t, 2), QByteArray("Playback - Is a directory"));
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
    QCOMPARE(Panel(t, 1), QByteArray("Stopped"));
}

void FilesWindowTest::burstWithOutputIsRefusedForADroppedFileToo() {
    Window t;
    t.chkOutputEnabled.setChecked(true);
    Drag(t, t.sFile).With(Qt::ShiftModifier).Drop();
    QCOMPARE(t.tWorld.sMessages, QStringList{QStringLiteral("Comm Output is not available with Burst Playback")});
    QCOMPARE(t.windowTitle(), QStringLiteral("Tidewatch"));
    QCOMPARE(t.Rows(), 0);
}

void FilesWindowTest::nextDialogStartsInTheDroppedFilesFolder() {
    Window t;
    const QString sFolder = Folder(t.tWorld, "elsewhere");
    t.tWorld.WriteFile(sFolder + QLatin1String("/a.txt"), Recorded);
    Drag(t, sFolder + QLatin1String("/a.txt")).Drop();
    t.Press("Stop");
    t.tWorld.tFileAnswers = {std::nullopt};
    t.Press("Playback");
    QCOMPARE(t.tWorld.tDialogs.back().sFolder, sFolder);
}

void FilesWindowTest::captionNamesTheWholeFile_data() {
    QTest::addColumn<QString>("name");
    for (const char* sName : {"a[*]b.txt", "[*]", "[*][*].txt", "x[*] y[*].txt", "[[*]].txt", "plain.txt"}) {
        QTest::newRow(sName) << QString::fromLatin1(sName);
    }
}

// What the window's frame shows is what the window system was told.
void FilesWindowTest::captionNamesTheWholeFile() {
    QFETCH(QString, name);
    Window t;
    t.tWorld.WriteFile(t.tWorld.Path(name), Recorded);
    t.tWorld.tFileAnswers = {t.tWorld.Path(name), std::nullopt};
    t.Press("Playback");
    QCOMPARE(t.windowHandle()->title(), QStringLiteral("Tidewatch - ") + name);
    t.m_bPlayback = false;
    t.CommStop();
    t.Press("Playback");
    QCOMPARE(t.tWorld.tDialogs.back().sTitle, QStringLiteral("Tidewatch - %1 - Open").arg(name));
}

QTEST_MAIN(FilesWindowTest)
#include "FilesWindowTest.moc"
