// The port field in the hands of a user: arrow, click, keys, typing, pasting, the list and the tips.
#include "platform/toolkit/PortBox.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QImage>
#include <QProcess>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QToolTip>

#include "platform/toolkit/PortList.h"

using toolkit::PortBox;
using toolkit::PortOffer;

namespace {

const QString LongName = QStringLiteral("usb-") + QString(96, QLatin1Char('L'));

PortOffer Offer(const char* sName, const char* sDevice, const char* sDescription, const char* sHolder = "") {
    return {QLatin1String(sName),
            QLatin1String(sName),
            {QLatin1String(sDevice), QLatin1String(sDescription), QLatin1String(sHolder)}};
}

// A field in a window that has the focus, with a field after it.
struct Form {
    Form() {
        t.setGeometry(10, 10, 130, 26);
        tNext.setGeometry(10, 50, 130, 26);
        t.SetSource([this] {
            ++iLooks;
            return tOffers;
        });
        tWindow.resize(400, 300);
        tWindow.show();
        tWindow.activateWindow();
        t.setFocus();
        if (!QTest::qWaitForWindowActive(&tWindow)) qFatal("the window does not become active");
    }
    QAbstractItemView& List() { return *t.Offers().popup(); }
    bool Open() { return List().isVisible(); }
    QStringList Shown() {
        QStringList sNames;
        for (int i = 0; i < List().model()->rowCount(); ++i) {
            sNames << List().model()->index(i, 0).data(Qt::UserRole).toString();
        }
        return sNames;
    }
    QRect Row(int iRow) { return List().visualRect(List().model()->index(iRow, 0)); }
    QToolButton& Arrow() { return *t.findChild<QToolButton*>(); }
    void Type(Qt::Key eKey, Qt::KeyboardModifiers eModifiers = {}) {
        QTest::keyClick(Open() ? static_cast<QWidget*>(&List()) : &t, eKey, eModifiers);
    }
    void TypeText(const char* sText) {
        for (const char* p = sText; *p != 0; ++p) QTest::keyClick(Open() ? static_cast<QWidget*>(&List()) : &t, *p);
    }

    std::vector<PortOffer> tOffers{
        Offer("usb-Acme_Serial_A1", "/dev/ttyUSB0", "Acme USB to Serial", "gpsd (process 4711)"),
        Offer("ttyUSB0", "/dev/ttyUSB0", "Acme USB to Serial", "gpsd (process 4711)"),
        Offer("ttyS4", "/dev/ttyS4", "")};
    int iLooks = 0;
    QWidget tWindow;
    PortBox t{&tWindow};
    QLineEdit tNext{&tWindow};
};

const QStringList AllNames{QStringLiteral("usb-Acme_Serial_A1"), QStringLiteral("ttyUSB0"), QStringLiteral("ttyS4")};

}  // namespace

class PortBoxTest : public QObject {
    Q_OBJECT
private slots:
    void arrowStandsInTheField();
    void arrowOpensAndClosesTheList();
    void clickOpensTheList();
    void markingWithTheMouseDoesNot();
    void doubleClickMarksAll();
    void keysOpenTheList_data();
    void keysOpenTheList();
    void emptyingOpensTheList();
    void typingNarrowsTheList();
    void programsTextOpensNothing();
    void disabledFieldOpensNothing();
    void entryIsChosenByKeys();
    void entryIsChosenByTheMouse();
    void escapeLeavesTheText();
    void openListStandsOnThePresentText();
    void listIsAsWideAsItsContent();
    void listStaysOnTheScreen();
    void manyOffersScroll();
    void descriptionAndHolderAreDrawnBesideTheName();
    void entriesTipHasTheWholeNameAndTheDevice();
    void nothingPluggedInSaysSo();
    void lookedUpOnceWhileTyping();
    void longPathIsTakenByItsName();
    void otherLongTextIsRefused();
    void tipNamesTheDevice();
};

void PortBoxTest::arrowStandsInTheField() {
    Form f;
    QVERIFY(f.Arrow().isVisible());
    QVERIFY(f.t.rect().contains(f.Arrow().geometry()));
    QVERIFY(f.Arrow().x() > f.t.width() / 2);
    QCOMPARE(f.Arrow().focusPolicy(), Qt::NoFocus);
    QVERIFY(!f.Arrow().accessibleName().isEmpty());
    // Text keeps clear of it: with nothing but blocks typed the arrow is drawn as without.
    const QImage tBefore = f.Arrow().grab().toImage();
    const QRect tRoom = f.Arrow().geometry().adjusted(2, 4, -2, -4);
    const QImage tEmpty = f.t.grab(tRoom).toImage();
    f.t.setText(QString(79, QChar(0x2588)));
    f.t.home(false);
    QVERIFY(f.t.grab(tRoom).toImage() == tEmpty);
    QVERIFY(f.t.grab(f.t.rect().adjusted(4, 4, -f.Arrow().width() - 4, -4)).toImage().pixelColor(4, 8).lightness() <
            128);
    QVERIFY(f.Arrow().grab().toImage() == tBefore);
    // The arrow itself is there to be seen.
    bool bDark = false;
    for (int y = 0; y < tEmpty.height(); ++y)
        for (int x = 0; x < tEmpty.width(); ++x) bDark = bDark || tEmpty.pixelColor(x, y).lightness() < 128;
    QVERIFY(bDark);
    const int iRoomFor = f.t.sizeHint().width() - f.Arrow().width();
    QVERIFY(iRoomFor >= 17 * f.t.fontMetrics().horizontalAdvance(QLatin1Char('x')));
}

void PortBoxTest::arrowOpensAndClosesTheList() {
    Form f;
    f.tNext.setFocus();
    QTest::mouseClick(&f.Arrow(), Qt::LeftButton);
    QVERIFY(f.Open());
    QCOMPARE(f.Shown(), AllNames);
    QVERIFY(f.tWindow.focusWidget() == &f.t);
    QVERIFY(f.List().geometry().top() > f.t.mapToGlobal(f.t.rect().center()).y());
    // A press outside an open list reaches the list alone.
    QTest::mouseClick(&f.List(), Qt::LeftButton, {}, f.List().mapFromGlobal(f.Arrow().mapToGlobal(QPoint(5, 5))));
    QVERIFY(!f.Open());
}

void PortBoxTest::clickOpensTheList() {
    Form f;
    f.t.setText(QStringLiteral("ttyUSB0"));
    QTest::mouseClick(&f.t, Qt::LeftButton, {}, QPoint(60, 13));
    QVERIFY(f.Open());
    QCOMPARE(f.Shown(), AllNames);  // all, not only what fits the text
    QCOMPARE(f.t.text(), QStringLiteral("ttyUSB0"));
    QVERIFY(f.t.cursorPosition() > 3);
}

void PortBoxTest::markingWithTheMouseDoesNot() {
    Form f;
    f.t.setText(QStringLiteral("ttyUSB0"));
    QTest::mousePress(&f.t, Qt::LeftButton, {}, QPoint(8, 13));
    QMouseEvent tMove(QEvent::MouseMove, QPointF(60, 13), f.t.mapToGlobal(QPointF(60, 13)), Qt::NoButton,
                      Qt::LeftButton, {});
    QCoreApplication::sendEvent(&f.t, &tMove);
    QTest::mouseRelease(&f.t, Qt::LeftButton, {}, QPoint(60, 13));
    QVERIFY(f.t.hasSelectedText());
    QVERIFY(!f.Open());
    QTest::mouseClick(&f.t, Qt::MiddleButton, {}, QPoint(60, 13));
    QVERIFY(!f.Open());
}

void PortBoxTest::doubleClickMarksAll() {
    Form f;
    f.t.setText(QStringLiteral("usb-Acme Serial"));
    // The first click has opened the list, so the second one reaches that.
    QTest::mouseClick(&f.t, Qt::LeftButton, {}, QPoint(20, 13));
    QVERIFY(f.Open());
    QTest::mouseDClick(&f.List(), Qt::LeftButton, {}, f.List().mapFromGlobal(f.t.mapToGlobal(QPoint(20, 13))));
    QVERIFY(!f.Open());
    QCOMPARE(f.t.selectedText(), QStringLiteral("usb-Acme Serial"));
    f.t.deselect();
    QTest::mouseDClick(&f.t, Qt::LeftButton, {}, QPoint(20, 13));
    QCOMPARE(f.t.selectedText(), QStringLiteral("usb-Acme Serial"));
}

void PortBoxTest::keysOpenTheList_data() {
    QTest::addColumn<int>("iKey");
    QTest::addColumn<int>("iModifiers");
    QTest::newRow("Down") << int(Qt::Key_Down) << int(Qt::NoModifier);
    QTest::newRow("Alt+Down") << int(Qt::Key_Down) << int(Qt::AltModifier);
    QTest::newRow("F4") << int(Qt::Key_F4) << int(Qt::NoModifier);
}

void PortBoxTest::keysOpenTheList() {
    QFETCH(int, iKey);
    QFETCH(int, iModifiers);
    Form f;
    f.t.setText(QStringLiteral("6"));
    f.Type(static_cast<Qt::Key>(iKey), Qt::KeyboardModifiers(iModifiers));
    QVERIFY(f.Open());
    QCOMPARE(f.Shown(), AllNames);
    QCOMPARE(f.t.text(), QStringLiteral("6"));
}

void PortBoxTest::emptyingOpensTheList() {
    Form f;
    f.t.setText(QStringLiteral("6"));
    f.Type(Qt::Key_Backspace);
    QCOMPARE(f.t.text(), QString());
    QVERIFY(f.Open());
    QCOMPARE(f.Shown(), AllNames);
    f.List().hide();
    f.t.setText(QStringLiteral("nothing like it"));
    f.t.selectAll();
    f.t.cut();
    QTest::keyClick(&f.t, Qt::Key_Delete);
    QVERIFY(f.t.text().isEmpty());
}

void PortBoxTest::typingNarrowsTheList() {
    Form f;
    f.TypeText("tty");
    QVERIFY(f.Open());
    QCOMPARE(f.Shown(), (QStringList{QStringLiteral("ttyUSB0"), QStringLiteral("ttyS4")}));
    f.TypeText("S4");
    QCOMPARE(f.Shown(), QStringList{QStringLiteral("ttyS4")});
    f.TypeText("9");
    QVERIFY(!f.Open());
    QCOMPARE(f.t.text(), QStringLiteral("ttyS49"));
    for (int i = 0; i < 6; ++i) f.Type(Qt::Key_Backspace);
    QVERIFY(f.Open());
    QCOMPARE(f.Shown(), AllNames);
}

void PortBoxTest::programsTextOpensNothing() {
    Form f;
    f.t.SetText("");
    f.t.SetText("tty");
    f.t.clear();
    QVERIFY(!f.Open());
    QCOMPARE(f.iLooks, 0);
}

void PortBoxTest::disabledFieldOpensNothing() {
    Form f;
    f.t.setEnabled(false);
    QTest::mouseClick(&f.t, Qt::LeftButton, {}, QPoint(20, 13));
    QTest::mouseClick(&f.Arrow(), Qt::LeftButton);
    QVERIFY(!f.Open());
}

void PortBoxTest::entryIsChosenByKeys() {
    Form f;
    f.t.setText(QStringLiteral("6"));
    f.Type(Qt::Key_Down);
    f.Type(Qt::Key_Down);
    f.Type(Qt::Key_Down);
    QCOMPARE(f.t.text(), QStringLiteral("6"));  // nothing is chosen by walking through
    f.Type(Qt::Key_Return);
    QVERIFY(!f.Open());
    QCOMPARE(f.t.text(), QStringLiteral("ttyUSB0"));
}

void PortBoxTest::entryIsChosenByTheMouse() {
    Form f;
    QTest::mouseClick(&f.Arrow(), Qt::LeftButton);
    QTest::mouseClick(f.List().viewport(), Qt::LeftButton, {}, f.Row(0).center());
    QVERIFY(!f.Open());
    QCOMPARE(f.t.text(), QStringLiteral("usb-Acme_Serial_A1"));  // the name alone
}

void PortBoxTest::escapeLeavesTheText() {
    Form f;
    f.t.setText(QStringLiteral("ttyS4"));
    f.Type(Qt::Key_Down);
    f.Type(Qt::Key_Up);
    f.Type(Qt::Key_Escape);
    QVERIFY(!f.Open());
    QCOMPARE(f.t.text(), QStringLiteral("ttyS4"));
    QVERIFY(f.tWindow.focusWidget() == &f.t);
}

void PortBoxTest::openListStandsOnThePresentText() {
    Form f;
    f.t.setText(QStringLiteral("ttyUSB0"));
    f.Type(Qt::Key_Down);
    QCOMPARE(f.List().currentIndex().row(), 1);
    f.Type(Qt::Key_Down);
    f.Type(Qt::Key_Return);
    QCOMPARE(f.t.text(), QStringLiteral("ttyS4"));
}

void PortBoxTest::listIsAsWideAsItsContent() {
    Form f;
    f.Type(Qt::Key_Down);
    const QFontMetrics tMetrics = f.List().fontMetrics();
    const int iName = tMetrics.horizontalAdvance(QStringLiteral("usb-Acme_Serial_A1"));
    const int iDetail = tMetrics.horizontalAdvance(QStringLiteral("Acme USB to Serial, in use by gpsd (process 4711)"));
    QVERIFY(f.List().viewport()->width() >= iName + iDetail);
    QVERIFY(f.List().viewport()->width() <= iName + iDetail + 60);
    // Also while typing narrows it, and never less than the field.
    f.TypeText("S4");
    QVERIFY(f.List().width() >= f.t.width());
    QVERIFY(f.List().width() < iName + iDetail);
}

void PortBoxTest::listStaysOnTheScreen() {
    Form f;
    const QRect tScreen = f.tWindow.screen()->availableGeometry();
    f.tWindow.move(tScreen.right() - 160, 20);
    f.Type(Qt::Key_Down);
    QVERIFY(tScreen.contains(f.List().geometry()));
    f.List().hide();
    f.tOffers = {Offer("ttyUSB0", "/dev/ttyUSB0", std::string(1000, 'M').c_str())};
    f.Type(Qt::Key_Down);
    QVERIFY(f.List().width() <= tScreen.width());
    QVERIFY(f.List().geometry().left() <= tScreen.left());
}

void PortBoxTest::manyOffersScroll() {
    Form f;
    f.tOffers.clear();
    for (int i = 0; i < 40; ++i) {
        f.tOffers.push_back(
            Offer(qPrintable(QStringLiteral("ttyUSB%1").arg(i)), "/dev/x", "Acme USB to Serial 1234567"));
    }
    f.Type(Qt::Key_Down);
    QVERIFY(f.List().verticalScrollBar()->isVisible());
    QVERIFY(f.List().viewport()->width() >= f.List().sizeHintForColumn(0));
    QVERIFY(f.List().height() < 400);
}

void PortBoxTest::descriptionAndHolderAreDrawnBesideTheName() {
    Form f;
    f.Type(Qt::Key_Down);
    const QImage tImage = f.List().viewport()->grab().toImage();
    const int iSecond = f.List().fontMetrics().horizontalAdvance(QStringLiteral("usb-Acme_Serial_A1")) + 14;
    const auto Ink = [&](int iRow, int iFrom, int iTo) {
        const QRect tRow = f.Row(iRow);
        int iCount = 0;
        for (int y = tRow.top(); y <= tRow.bottom(); ++y)
            for (int x = iFrom; x < iTo; ++x) iCount += tImage.pixelColor(x, y).lightness() < 160;
        return iCount;
    };
    QVERIFY(Ink(0, 0, iSecond) > 20);
    QVERIFY(Ink(0, iSecond, tImage.width()) > 20);
    QVERIFY(Ink(1, iSecond, tImage.width()) > 20);
    QVERIFY(Ink(2, 0, iSecond) > 10);
    QCOMPARE(Ink(2, iSecond, tImage.width()), 0);  // nothing is known of it
    QCOMPARE(f.List().model()->index(0, 0).data().toString(),
             QStringLiteral("usb-Acme_Serial_A1, Acme USB to Serial, in use by gpsd (process 4711)"));
}

void PortBoxTest::entriesTipHasTheWholeNameAndTheDevice() {
    Form f;
    f.tOffers.push_back({LongName.left(79), LongName, {QStringLiteral("/dev/ttyACM1"), {}, {}}});
    f.Type(Qt::Key_Down);
    QCOMPARE(f.List().model()->index(3, 0).data(Qt::ToolTipRole).toString(),
             LongName + QStringLiteral("\n/dev/ttyACM1"));
    f.Type(Qt::Key_End);
    QTest::mouseClick(f.List().viewport(), Qt::LeftButton, {}, f.Row(3).center());
    QCOMPARE(f.t.text(), LongName.left(79));
}

void PortBoxTest::nothingPluggedInSaysSo() {
    Form f;
    f.tOffers.clear();
    f.Type(Qt::Key_Down);
    QVERIFY(f.Open());
    QCOMPARE(f.List().model()->rowCount(), 1);
    QCOMPARE(f.List().model()->index(0, 0).data().toString(), QStringLiteral("No serial port is plugged in"));
    QTest::mouseClick(f.List().viewport(), Qt::LeftButton, {}, f.Row(0).center());
    f.Type(Qt::Key_Return);
    QCOMPARE(f.t.text(), QString());
}

void PortBoxTest::lookedUpOnceWhileTyping() {
    Form f;
    f.TypeText("nothing of that name");
    QCOMPARE(f.iLooks, 1);
    f.tNext.setFocus();
    f.t.setFocus();
    f.TypeText("x");
    QCOMPARE(f.iLooks, 2);
}

void PortBoxTest::longPathIsTakenByItsName() {
    Form f;
    const QString sName = QStringLiteral("usb-") + QString(70, QLatin1Char('n'));
    QGuiApplication::clipboard()->setText(QStringLiteral("/dev/serial/by-id/") + sName);
    f.t.paste();
    QCOMPARE(f.t.text(), sName);
    QCOMPARE(f.t.cursorPosition(), 74);
    f.t.clear();
    QGuiApplication::clipboard()->setText(QStringLiteral("/dev/serial/by-path/") + LongName + QLatin1Char('\n'));
    QTest::keyClick(&f.t, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(f.t.text(), LongName.left(79));
    // By hand, letter by letter.
    f.t.clear();
    f.TypeText(qPrintable(QStringLiteral("/dev/serial/by-id/") + sName));
    QCOMPARE(f.t.text(), sName);
}

void PortBoxTest::otherLongTextIsRefused() {
    Form f;
    f.t.setText(QStringLiteral("6"));
    QGuiApplication::clipboard()->setText(QString(80, QLatin1Char('x')));
    f.t.selectAll();
    f.t.paste();
    QVERIFY(f.t.text().size() <= 79);
    f.t.SetText(std::string(90, 'y'));  // the program's is kept whole
    QCOMPARE(f.t.text().size(), 90);
}

void PortBoxTest::tipNamesTheDevice() {
    Form f;
    f.t.SetTip(QStringLiteral("Serial port"));
    f.t.SetNote(QStringLiteral("A note."));
    const auto Ask = [&f] {
        QHelpEvent tHelp(QEvent::ToolTip, QPoint(5, 5), f.t.mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(&f.t, &tHelp);
        return f.t.toolTip();
    };
    QTemporaryDir tFolder;
    const QString sDevice = QFileInfo(tFolder.path()).canonicalFilePath() + QStringLiteral("/device");
    QVERIFY(QFile(sDevice).open(QIODevice::WriteOnly));
    QVERIFY(QFile::link(sDevice, sDevice + QStringLiteral(" by its whole name")));
    f.t.setText(sDevice);
    QCOMPARE(Ask(), QStringLiteral("Serial port\nDevice: %1\nA note.").arg(sDevice));
    f.t.setText(sDevice + QStringLiteral(" by its whole name"));
    QCOMPARE(Ask(), QStringLiteral("Serial port\ndevice by its whole name\nDevice: %1\nA note.").arg(sDevice));
    QProcess tHolder;
    tHolder.setStandardInputFile(sDevice);
    tHolder.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    QVERIFY(tHolder.waitForStarted());
    QTRY_VERIFY(Ask().contains(QStringLiteral("\nIn use by sleep (process %1)\n").arg(tHolder.processId())));
    tHolder.kill();
    QVERIFY(tHolder.waitForFinished());
    f.t.setText(QStringLiteral("/dev/stdin/no such thing"));
    QCOMPARE(Ask(), QStringLiteral("Serial port\n/dev/stdin/no such thing is not there\nA note."));
    f.t.setText(QStringLiteral("no port"));
    QCOMPARE(Ask(), QStringLiteral("Serial port\n\"no port\" names no serial port\nA note."));
}

QTEST_MAIN(PortBoxTest)
#include "PortBoxTest.moc"
