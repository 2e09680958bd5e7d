// The own-position boxes under real keys and mouse: exactly one character stays selected, digits overwrite, arrows move
// and step, and whatever is done to a box, its text still parses.
#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QTest>
#include <cmath>

#include "tests/support/Bytes.h"
#include "tests/support/PrintString.h"
#include "tests/window/Bench.h"

using support::AnyReport;
using support::Bytes;
using support::PlaceOf;
using support::ShownWindow;

namespace {

struct Fields : ShownWindow {
    Fields() : ShownWindow(ui::TabGps) {
        txtGpsLat.setFocus();
        Synchronize();
    }
    toolkit::MaskedBox& Lat() { return txtGpsLat; }
    toolkit::MaskedBox& Lon() { return txtGpsLon; }
};

// What the user sees, the selected characters in brackets; "'" and the degree sign as they are, the latter as "~".
std::string Shown(toolkit::MaskedBox& txt) {
    txt.Synchronize();
    QString sText = txt.text();
    const int iStart = txt.hasSelectedText() ? txt.selectionStart() : txt.cursorPosition();
    const auto iLength = static_cast<int>(txt.selectedText().size());
    sText.insert(iStart + iLength, QLatin1Char(']'));
    sText.insert(iStart, QLatin1Char('['));
    return sText.replace(QChar(0xB0), QLatin1Char('~')).toStdString();
}

// A place in the box where a click puts the caret before character iCharacter.
QPoint PlaceOf(const toolkit::MaskedBox& txt, int iCharacter) {
    for (int iX = 0; iX < txt.width(); ++iX) {
        const QPoint tPlace(iX, txt.height() / 2);
        if (const_cast<toolkit::MaskedBox&>(txt).cursorPositionAt(tPlace) == iCharacter) return tPlace;
    }
    return {-1, -1};
}

void Click(toolkit::MaskedBox& txt, int iCharacter) {
    txt.Synchronize();
    const QPoint tPlace = PlaceOf(txt, iCharacter);
    QVERIFY(tPlace.x() >= 0);
    QTest::mouseClick(&txt, Qt::LeftButton, {}, tPlace);
}

void Keys(toolkit::MaskedBox& txt, Qt::Key eKey, int iTimes = 1) {
    for (int i = 0; i < iTimes; ++i) QTest::keyClick(&txt, eKey);
}

bool Near(double dA, double dB) { return std::abs(dA - dB) < 1e-9; }

}  // namespace

class PositionFieldsWindowTest : public QObject {
    Q_OBJECT

private slots:
    void clickSelectsOneCharacter_data();
    void clickSelectsOneCharacter();
    void clickFarBehindTheTextSelectsTheLetter();
    void rightWalksOverSeparatorsToTheLetter();
    void leftWalksOverSeparatorsToTheFirst();
    void typedDigitsOverwriteAndMoveOn();
    void longitudeIsTypedLikewise();
    void lettersTakeTheHemisphere_data();
    void lettersTakeTheHemisphere();
    void otherCharactersAreDiscarded_data();
    void otherCharactersAreDiscarded();
    void controlKeysAreDiscarded_data();
    void controlKeysAreDiscarded();
    void pasteIsDiscarded();
    void homeAndEndMoveNothing();
    void dragSelectsOneCharacter();
    void doubleClickSelectsOneCharacter();
    void shiftClickSelectsOneCharacter();
    void inputMethodTypesLikeAKey();
    void tabLeavesTheField();
    void tabIntoAFieldSelectsOneCharacter();
    void stepsFollowThePlace_data();
    void stepsFollowThePlace();
    void upAndDownOnTheTensClampAtThePole();
    void letterTogglesTheHemisphere();
    void stepsWorkOnTheMagnitudeInTheSouth();
    void upAtZeroRaises();
    void downAtZeroGoesToTheOtherHemisphere();
    void longitudeClampsAt180();
    void stepKeepsTheSelection();
    void stepOfAnUnreadableTextDoesNothing();
    void stepWithoutASelectionDoesNothing();
    void textsOfBothFormsParse();
    void unreadableTextMakesThePositionUnknown();
    void textNeverGrowsBeyondItsLength_data();
    void textNeverGrowsBeyondItsLength();
    void longTextSetByTheProgramIsKept();
    void gpsSentenceWritesTheBoxes();
    void nextMessageUsesTheNewPosition();
    void sameTextSetAgainIsAChange();
    void assistiveToolMaySetTheText();
    void screenReaderHearsNameAndValue();
    void randomHandlingLeavesOneSelectedAndAReadableText();
};

void PositionFieldsWindowTest::clickSelectsOneCharacter_data() {
    QTest::addColumn<bool>("longitude");
    QTest::addColumn<int>("clicked");
    QTest::addColumn<int>("selected");
    const int iLat[] = {0, 1, 3, 3, 4, 6, 6, 7, 9, 9, 9};        // "00 00.00 N"
    const int iLon[] = {0, 1, 2, 4, 4, 5, 7, 7, 8, 10, 10, 10};  // "000 00.00 W"
    for (int i = 0; i <= 10; ++i) QTest::addRow("latitude %d", i) << false << i << iLat[i];
    for (int i = 0; i <= 11; ++i) QTest::addRow("longitude %d", i) << true << i << iLon[i];
}

void PositionFieldsWindowTest::clickSelectsOneCharacter() {
    QFETCH(bool, longitude);
    QFETCH(int, clicked);
    QFETCH(int, selected);
    Fields t;
    toolkit::MaskedBox& txt = longitude ? t.Lon() : t.Lat();
    Click(txt, clicked);
    QCOMPARE(txt.selectionStart(), selected);
    QCOMPARE(txt.selectedText().size(), qsizetype{1});
    QVERIFY(t.focusWidget() == &txt);
}

void PositionFieldsWindowTest::clickFarBehindTheTextSelectsTheLetter() {
    Fields t;
    QTest::mouseClick(&t.Lat(), Qt::LeftButton, {}, QPoint(t.Lat().width() - 3, t.Lat().height() / 2));
    QCOMPARE(Shown(t.Lat()), std::string("00 00.00 [N]"));
}

void PositionFieldsWindowTest::rightWalksOverSeparatorsToTheLetter() {
    Fields t;
    Click(t.Lat(), 0);
    std::string sWalk;
    for (int i = 0; i < 9; ++i) {
        sWalk += std::to_string(t.Lat().selectionStart());
        Keys(t.Lat(), Qt::Key_Right);
        QCOMPARE(t.Lat().selectedText().size(), qsizetype{1});
    }
    QCOMPARE(sWalk, std::string("013467999"));
    Click(t.Lon(), 0);
    sWalk.clear();
    for (int i = 0; i < 10; ++i) {
        sWalk += std::to_string(t.Lon().selectionStart()) + ' ';
        Keys(t.Lon(), Qt::Key_Right);
    }
    QCOMPARE(sWalk, std::string("0 1 2 4 5 7 8 10 10 10 "));
}

void PositionFieldsWindowTest::leftWalksOverSeparatorsToTheFirst() {
    Fields t;
    Click(t.Lat(), 9);
    std::string sWalk;
    for (int i = 0; i < 9; ++i) {
        sWalk += std::to_string(t.Lat().selectionStart());
        Keys(t.Lat(), Qt::Key_Left);
        QCOMPARE(t.Lat().selectedText().size(), qsizetype{1});
    }
    QCOMPARE(sWalk, std::string("976431000"));
    QCOMPARE(t.Lat().text(), QStringLiteral("00 00.00 N"));
}

void PositionFieldsWindowTest::typedDigitsOverwriteAndMoveOn() {
    Fields t;
    Click(t.Lat(), 0);
    QTest::keyClick(&t.Lat(), '4');
    QCOMPARE(Shown(t.Lat()), std::string("4[0] 00.00 N"));
    QTest::keyClick(&t.Lat(), '5');
    QCOMPARE(Shown(t.Lat()), std::string("45 [0]0.00 N"));
    QTest::keyClick(&t.Lat(), '1');
    QTest::keyClick(&t.Lat(), '2');
    QCOMPARE(Shown(t.Lat()), std::string("45 12.[0]0 N"));
    QTest::keyClick(&t.Lat(), '7');
    QTest::keyClick(&t.Lat(), '5');
    QCOMPARE(Shown(t.Lat()), std::string("45 12.75 [N]"));
    QVERIFY(Near(t.m_dLatitude, 45 + 12.75 / 60));
    QTest::keyClick(&t.Lat(), '9');  // no digit at the letter's place
    QCOMPARE(Shown(t.Lat()), std::string("45 12.75 [N]"));
}

void PositionFieldsWindowTest::longitudeIsTypedLikewise() {
    Fields t;
    Click(t.Lon(), 0);
    QTest::keyClicks(&t.Lon(), QStringLiteral("1233015e"));
    QCOMPARE(Shown(t.Lon()), std::string("123 30.15 [E]"));
    QVERIFY(Near(t.m_dLongitude, 123 + 30.15 / 60));
    QVERIFY(t.m_dLatitude == -999.0);
}

void PositionFieldsWindowTest::lettersTakeTheHemisphere_data() {
    QTest::addColumn<bool>("longitude");
    QTest::addColumn<char>("typed");
    QTest::addColumn<char>("shown");
    for (const char c : {'N', 'S'}) QTest::addRow("latitude %c", c) << false << c << c;
    QTest::newRow("latitude n") << false << 'n' << 'N';
    QTest::newRow("latitude s") << false << 's' << 'S';
    for (const char c : {'E', 'W', '0', ' ', 'x'}) QTest::addRow("latitude %c stays", c) << false << c << 'N';
    for (const char c : {'E', 'W'}) QTest::addRow("longitude %c", c) << true << c << c;
    QTest::newRow("longitude e") << true << 'e' << 'E';
    QTest::newRow("longitude w") << true << 'w' << 'W';
    for (const char c : {'N', 'S', '9', '-', 'x'}) QTest::addRow("longitude %c stays", c) << true << c << 'W';
}

void PositionFieldsWindowTest::lettersTakeTheHemisphere() {
    QFETCH(bool, longitude);
    QFETCH(char, typed);
    QFETCH(char, shown);
    Fields t;
    toolkit::MaskedBox& txt = longitude ? t.Lon() : t.Lat();
    txt.SetText(longitude ? "012 30.00 W" : "12 30.00 N");
    Click(txt, longitude ? 10 : 9);
    QTest::keyClick(&txt, typed);
    const std::string sExpected = std::string(longitude ? "012 30.00 [" : "12 30.00 [") + shown + ']';
    QCOMPARE(Shown(txt), sExpected);
    const double d = longitude ? t.m_dLongitude : t.m_dLatitude;
    QCOMPARE(d, shown == 'N' || shown == 'E' ? 12.5 : -12.5);
}

void PositionFieldsWindowTest::otherCharactersAreDiscarded_data() {
    QTest::addColumn<QString>("typed");
    for (const char* s : {"-", ".", " ", "x", "N", "'", "+", "/", ":", "e"}) QTest::newRow(s) << QString::fromLatin1(s);
    QTest::newRow("degree sign") << QString(QChar(0xB0));
    QTest::newRow("Arabic digit") << QString(QChar(0x0664));
    QTest::newRow("superscript") << QString(QChar(0xB2));
    QTest::newRow("beyond Latin-1") << QString(QChar(0x0130));  // its low byte is a digit's code
}

void PositionFieldsWindowTest::otherCharactersAreDiscarded() {
    QFETCH(QString, typed);
    Fields t;
    t.Lat().SetText("12 30.00 N");
    for (const int i : {0, 1, 3, 4, 6, 7}) {
        Click(t.Lat(), i);
        QTest::sendKeyEvent(QTest::Click, &t.Lat(), Qt::Key_unknown, typed, Qt::NoModifier);
        QCOMPARE(t.Lat().text(), QStringLiteral("12 30.00 N"));
        QCOMPARE(t.Lat().selectionStart(), i);
        QCOMPARE(t.Lat().selectedText().size(), qsizetype{1});
    }
}

void PositionFieldsWindowTest::controlKeysAreDiscarded_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    const int iNone = int{Qt::NoModifier};
    const int iCtrl = static_cast<int>(Qt::ControlModifier);
    const int iShift = static_cast<int>(Qt::ShiftModifier);
    QTest::newRow("Delete") << int{Qt::Key_Delete} << iNone;
    QTest::newRow("Backspace") << int{Qt::Key_Backspace} << iNone;
    QTest::newRow("Ctrl+Delete") << int{Qt::Key_Delete} << iCtrl;
    QTest::newRow("Ctrl+Backspace") << int{Qt::Key_Backspace} << iCtrl;
    QTest::newRow("Shift+Delete") << int{Qt::Key_Delete} << iShift;
    QTest::newRow("Escape") << int{Qt::Key_Escape} << iNone;
    QTest::newRow("Return") << int{Qt::Key_Return} << iNone;
    QTest::newRow("Insert") << int{Qt::Key_Insert} << iNone;
    QTest::newRow("Page up") << int{Qt::Key_PageUp} << iNone;
    QTest::newRow("select all") << int{Qt::Key_A} << iCtrl;
    QTest::newRow("cut") << int{Qt::Key_X} << iCtrl;
    QTest::newRow("undo") << int{Qt::Key_Z} << iCtrl;
    QTest::newRow("delete to the end") << int{Qt::Key_K} << iCtrl;
    QTest::newRow("F1") << int{Qt::Key_F1} << iNone;
}

void PositionFieldsWindowTest::controlKeysAreDiscarded() {
    QFETCH(int, key);
    QFETCH(int, modifiers);
    Fields t;
    t.Lat().SetText("12 30.00 N");
    for (const int i : {0, 4, 9}) {
        Click(t.Lat(), i);
        QTest::keyClick(&t.Lat(), static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(t.Lat().text(), QStringLiteral("12 30.00 N"));
        QCOMPARE(t.Lat().selectionStart(), i);
        QCOMPARE(t.Lat().selectedText().size(), qsizetype{1});
        QCOMPARE(t.m_dLatitude, 12.5);
    }
}

void PositionFieldsWindowTest::pasteIsDiscarded() {
    Fields t;
    t.Lat().SetText("12 30.00 N");
    QGuiApplication::clipboard()->setText(QStringLiteral("99 99.99 S and more"));
    if (QGuiApplication::clipboard()->supportsSelection()) {
        QGuiApplication::clipboard()->setText(QStringLiteral("77"), QClipboard::Selection);
    }
    Click(t.Lat(), 1);
    QTest::keyClick(&t.Lat(), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(&t.Lat(), Qt::Key_Insert, Qt::ShiftModifier);
    QTest::mouseClick(&t.Lat(), Qt::MiddleButton, {}, PlaceOf(t.Lat(), 3));
    QCOMPARE(Shown(t.Lat()), std::string("1[2] 30.00 N"));
    QCOMPARE(t.m_dLatitude, 12.5);
    QVERIFY(!t.Lat().acceptDrops());
}

void PositionFieldsWindowTest::homeAndEndMoveNothing() {
    Fields t;
    Click(t.Lat(), 4);
    for (const Qt::Key eKey : {Qt::Key_Home, Qt::Key_End}) {
        for (const Qt::KeyboardModifier eModifier : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
            QTest::keyClick(&t.Lat(), eKey, eModifier);
            QCOMPARE(t.Lat().selectedText().size(), qsizetype{1});
            QCOMPARE(Shown(t.Lat()), std::string("00 0[0].00 N"));
        }
    }
}

void PositionFieldsWindowTest::dragSelectsOneCharacter() {
    Fields t;
    t.Lat().SetText("12 34.56 N");
    Click(t.Lat(), 0);
    const QPoint tFrom = PlaceOf(t.Lat(), 1);
    const QPoint tTo = PlaceOf(t.Lat(), 7);
    QTest::mousePress(&t.Lat(), Qt::LeftButton, {}, tFrom);
    QTest::mouseMove(&t.Lat(), (tFrom + tTo) / 2);
    QTest::mouseMove(&t.Lat(), tTo);
    QTest::mouseRelease(&t.Lat(), Qt::LeftButton, {}, tTo);
    QCOMPARE(Shown(t.Lat()), std::string("12 34.5[6] N"));
    QTest::mousePress(&t.Lat(), Qt::LeftButton, {}, tTo);
    QTest::mouseMove(&t.Lat(), QPoint(-50, -50));
    QTest::mouseRelease(&t.Lat(), Qt::LeftButton, {}, QPoint(-50, -50));
    QCOMPARE(Shown(t.Lat()), std::string("[1]2 34.56 N"));
}

void PositionFieldsWindowTest::doubleClickSelectsOneCharacter() {
    Fields t;
    t.Lat().SetText("12 34.56 N");
    t.Lat().Synchronize();
    for (int i = 0; i < 3; ++i) {
        QTest::mouseClick(&t.Lat(), Qt::LeftButton, {}, PlaceOf(t.Lat(), 4));
        QTest::mouseDClick(&t.Lat(), Qt::LeftButton, {}, PlaceOf(t.Lat(), 4));
        QCOMPARE(Shown(t.Lat()), std::string("12 3[4].56 N"));
    }
}

void PositionFieldsWindowTest::shiftClickSelectsOneCharacter() {
    Fields t;
    t.Lat().SetText("12 34.56 N");
    Click(t.Lat(), 0);
    QTest::mouseClick(&t.Lat(), Qt::LeftButton, Qt::ShiftModifier, PlaceOf(t.Lat(), 7));
    QCOMPARE(Shown(t.Lat()), std::string("12 34.5[6] N"));
    QTest::keyClick(&t.Lat(), Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(Shown(t.Lat()), std::string("12 34.[5]6 N"));
    QTest::keyClick(&t.Lat(), Qt::Key_Left, Qt::ControlModifier);
    QCOMPARE(Shown(t.Lat()), std::string("12 3[4].56 N"));
}

void PositionFieldsWindowTest::inputMethodTypesLikeAKey() {
    Fields t;
    Click(t.Lat(), 0);
    QInputMethodEvent tDigits;
    tDigits.setCommitString(QStringLiteral("4x5"));
    QCoreApplication::sendEvent(&t.Lat(), &tDigits);
    QCOMPARE(Shown(t.Lat()), std::string("45 [0]0.00 N"));
    QInputMethodEvent tPreedit(QStringLiteral("12345678901234567890"), {});
    QCoreApplication::sendEvent(&t.Lat(), &tPreedit);
    QCOMPARE(Shown(t.Lat()), std::string("45 [0]0.00 N"));
    QInputMethodEvent tReplace;
    tReplace.setCommitString(QString(), -2, 5);  // asks to delete what stands around
    QCoreApplication::sendEvent(&t.Lat(), &tReplace);
    QCOMPARE(Shown(t.Lat()), std::string("45 [0]0.00 N"));
    QCOMPARE(t.m_dLatitude, 45.0);
}

void PositionFieldsWindowTest::tabLeavesTheField() {
    Fields t;
    Click(t.Lat(), 3);
    QTest::keyClick(&t.Lat(), Qt::Key_Tab);
    QVERIFY(t.focusWidget() == &t.Lon());
    QTest::keyClick(&t.Lon(), Qt::Key_Backtab);
    QVERIFY(t.focusWidget() == &t.Lat());
    QTest::keyClick(&t.Lat(), Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(t.Lat().text(), QStringLiteral("00 00.00 N"));
    QCOMPARE(t.Lon().text(), QStringLiteral("000 00.00 W"));
}

void PositionFieldsWindowTest::tabIntoAFieldSelectsOneCharacter() {
    Fields t;
    t.activateWindow();
    Click(t.Lat(), 3);
    QTest::keyClick(&t.Lat(), Qt::Key_Tab);
    QCoreApplication::processEvents();
    QCOMPARE(Shown(t.Lon()), std::string("[0]00 00.00 W"));
    QTest::keyClick(&t.Lon(), '1');
    QCOMPARE(Shown(t.Lon()), std::string("1[0]0 00.00 W"));
    QTest::keyClick(&t.Lon(), Qt::Key_Backtab);
    QCoreApplication::processEvents();
    QCOMPARE(Shown(t.Lat()), std::string("00 [0]0.00 N"));  // where it was
}

void PositionFieldsWindowTest::stepsFollowThePlace_data() {
    QTest::addColumn<bool>("longitude");
    QTest::addColumn<int>("place");
    QTest::addColumn<double>("step");
    const double dLat[] = {10, 1, 0, 10.0 / 60, 1.0 / 60, 0, 0.1 / 60, 0.01 / 60};
    const double dLon[] = {100, 10, 1, 0, 10.0 / 60, 1.0 / 60, 0, 0.1 / 60, 0.01 / 60};
    for (const int i : {0, 1, 3, 4, 6, 7}) QTest::addRow("latitude %d", i) << false << i << dLat[i];
    for (const int i : {0, 1, 2, 4, 5, 7, 8}) QTest::addRow("longitude %d", i) << true << i << dLon[i];
}

void PositionFieldsWindowTest::stepsFollowThePlace() {
    QFETCH(bool, longitude);
    QFETCH(int, place);
    QFETCH(double, step);
    Fields t;
    toolkit::MaskedBox& txt = longitude ? t.Lon() : t.Lat();
    const double& dOwn = longitude ? t.m_dLongitude : t.m_dLatitude;
    txt.SetText(longitude ? "022 22.22 E" : "22 22.22 N");
    const double dFirst = 22 + 22.22 / 60;
    Click(txt, place);
    Keys(txt, Qt::Key_Up);
    QVERIFY(Near(dOwn, dFirst + step));
    QCOMPARE(txt.selectionStart(), place);
    QCOMPARE(txt.selectedText().size(), qsizetype{1});
    Keys(txt, Qt::Key_Down);
    QVERIFY(Near(dOwn, dFirst));
    const std::string sExpected = longitude ? "022\xB0"
                                              "22.22'E"
                                            : "22\xB0"
                                              "22.22'N";
    QCOMPARE(txt.Text(), sExpected);
}

void PositionFieldsWindowTest::upAndDownOnTheTensClampAtThePole() {
    Fields t;
    t.Lat().SetText("47 36.50 N");
    Click(t.Lat(), 0);
    Keys(t.Lat(), Qt::Key_Up);
    QCOMPARE(Shown(t.Lat()), std::string("[5]7~36.50'N"));
    Keys(t.Lat(), Qt::Key_Up);
    QCOMPARE(Shown(t.Lat()), std::string("[6]7~36.50'N"));
    Keys(t.Lat(), Qt::Key_Up, 2);
    QCOMPARE(Shown(t.Lat()), std::string("[8]7~36.50'N"));
    Keys(t.Lat(), Qt::Key_Up);
    QCOMPARE(Shown(t.Lat()), std::string("[9]0~00.00'N"));
    QCOMPARE(t.m_dLatitude, 90.0);
    Keys(t.Lat(), Qt::Key_Up);
    QCOMPARE(Shown(t.Lat()), std::string("[9]0~00.00'N"));
    t.Lat().SetText("87 00.00 S");
    Click(t.Lat(), 0);
    Keys(t.Lat(), Qt::Key_Up);
    QCOMPARE(Shown(t.Lat()), std::string("[9]0~00.00'S"));
    QCOMPARE(t.m_dLatitude, -90.0);
}

void PositionFieldsWindowTest::letterTogglesTheHemisphere() {
    Fields t;
    for (const Qt::Key eKey : {Qt::Key_Up, Qt::Key_Down}) {
        t.Lat().SetText("12 30.00 N");
        Click(t.Lat(), 9);
        Keys(t.Lat(), eKey);
        QCOMPARE(Shown(t.Lat()), std::string("12~30.00'[S]"));
        QCOMPARE(t.m_dLatitude, -12.5);
        Keys(t.Lat(), eKey);
        QCOMPARE(Shown(t.Lat()), std::string("12~30.00'[N]"));
        QCOMPARE(t.m_dLatitude, 12.5);
    }
    t.Lon().SetText("123 15.00 W");
    Click(t.Lon(), 10);
    Keys(t.Lon(), Qt::Key_Down);
    QCOMPARE(Shown(t.Lon()), std::string("123~15.00'[E]"));
    QCOMPARE(t.m_dLongitude, 123.25);
}

void PositionFieldsWindowTest::stepsWorkOnTheMagnitudeInTheSouth() {
    Fields t;
    t.Lat().SetText("12 30.00 S");
    Click(t.Lat(), 1);
    Keys(t.Lat(), Qt::Key_Up);
    QCOMPARE(Shown(t.Lat()), std::string("1[3]~30.00'S"));
    Keys(t.Lat(), Qt::Key_Down, 2);
    QCOMPARE(Shown(t.Lat()), std::string("1[1]~30.00'S"));
    QCOMPARE(t.m_dLatitude, -11.5);
}

void PositionFieldsWindowTest::upAtZeroRaises() {
    Fields t;
    t.Lat().SetText(
        "00\xB0"
        "00.00'N");
    Click(t.Lat(), 4);
    Keys(t.Lat(), Qt::Key_Up);
    QCOMPARE(Shown(t.Lat()), std::string("00~0[1].00'N"));
    t.Lon().SetText("000 00.00 W");  // zero is east, whatever the letter
    Click(t.Lon(), 5);
    Keys(t.Lon(), Qt::Key_Up);
    QCOMPARE(Shown(t.Lon()), std::string("000~0[1].00'E"));
}

void PositionFieldsWindowTest::downAtZeroGoesToTheOtherHemisphere() {
    Fields t;
    Click(t.Lat(), 4);
    Keys(t.Lat(), Qt::Key_Down);
    QCOMPARE(Shown(t.Lat()), std::string("00~0[1].00'S"));
    QVERIFY(Near(t.m_dLatitude, -1.0 / 60));
    Keys(t.Lat(), Qt::Key_Down);  // lowers the magnitude
    QCOMPARE(t.Lat().Text().substr(0, 2), std::string("00"));
    QVERIFY(Near(t.m_dLatitude, 0));
}

void PositionFieldsWindowTest::longitudeClampsAt180() {
    Fields t;
    t.Lon().SetText("099 59.99 E");
    Click(t.Lon(), 0);
    Keys(t.Lon(), Qt::Key_Up);
    QCOMPARE(Shown(t.Lon()), std::string("[1]80~00.00'E"));
    QCOMPARE(t.m_dLongitude, 180.0);
    t.Lon().SetText("175 00.00 W");
    Click(t.Lon(), 1);
    Keys(t.Lon(), Qt::Key_Up);
    QCOMPARE(Shown(t.Lon()), std::string("1[8]0~00.00'W"));
    QCOMPARE(t.m_dLongitude, -180.0);
}

void PositionFieldsWindowTest::stepKeepsTheSelection() {
    Fields t;
    for (const int i : {0, 1, 3, 4, 6, 7, 9}) {
        Click(t.Lat(), i);
        Keys(t.Lat(), Qt::Key_Up, 3);
        Keys(t.Lat(), Qt::Key_Down, 2);
        QCOMPARE(t.Lat().selectionStart(), i);
        QCOMPARE(t.Lat().selectedText().size(), qsizetype{1});
    }
}

void PositionFieldsWindowTest::stepOfAnUnreadableTextDoesNothing() {
    Fields t;
    t.Lat().SetText("nonsense!!");
    Click(t.Lat(), 4);
    Keys(t.Lat(), Qt::Key_Up);
    Keys(t.Lat(), Qt::Key_Down);
    QCOMPARE(Shown(t.Lat()), std::string("nons[e]nse!!"));
    QCOMPARE(t.m_dLatitude, -999.0);
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void PositionFieldsWindowTest::stepWithoutASelectionDoesNothing() {
    Fields t;
    t.Lat().SetText("12 30.00 N");
    t.Lat().SetSelection(0, 0);
    Keys(t.Lat(), Qt::Key_Up);
    QCOMPARE(t.Lat().Text(), std::string("12 30.00 N"));
    t.Lat().SetSelection(0, 2);
    Keys(t.Lat(), Qt::Key_Up);
    QCOMPARE(t.Lat().Text(), std::string("12 30.00 N"));
}

void PositionFieldsWindowTest::textsOfBothFormsParse() {
    Fields t;
    t.Lat().SetText(
        "47\xB0"
        "36.50'N");
    QVERIFY(Near(t.m_dLatitude, 47 + 36.5 / 60));
    t.Lat().SetText("47 36.50 S");
    QVERIFY(Near(t.m_dLatitude, -(47 + 36.5 / 60)));
    // A stepped text is typed over like any other.
    Click(t.Lat(), 1);
    Keys(t.Lat(), Qt::Key_Up);
    QTest::keyClick(&t.Lat(), '2');
    QCOMPARE(Shown(t.Lat()), std::string("42~[3]6.50'S"));
    QVERIFY(Near(t.m_dLatitude, -(42 + 36.5 / 60)));
}

void PositionFieldsWindowTest::unreadableTextMakesThePositionUnknown() {
    Fields t;
    t.Lat().SetText("12 30.00 N");
    t.Lat().SetText("");
    QCOMPARE(t.m_dLatitude, -999.0);
    t.Lon().SetText("012 30.00 E");
    t.Lon().SetText("here");
    QCOMPARE(t.m_dLongitude, -999.0);
    QVERIFY(t.tWorld.sMessages.isEmpty());
}

void PositionFieldsWindowTest::textNeverGrowsBeyondItsLength_data() {
    QTest::addColumn<bool>("longitude");
    QTest::addColumn<int>("longest");
    QTest::newRow("latitude") << false << 10;
    QTest::newRow("longitude") << true << 11;
}

void PositionFieldsWindowTest::textNeverGrowsBeyondItsLength() {
    QFETCH(bool, longitude);
    QFETCH(int, longest);
    Fields t;
    toolkit::MaskedBox& txt = longitude ? t.Lon() : t.Lat();
    txt.SetText("");
    QTest::keyClicks(&txt, QStringLiteral("12345678901234567890NESW12"));
    QVERIFY(static_cast<int>(txt.text().size()) <= longest);
    txt.SetText(longitude ? "012 30.00 W" : "12 30.00 N");
    txt.SetSelection(0, 0);  // nothing is replaced: the digit would be one too many
    QTest::keyClick(&txt, '9');
    QCOMPARE(txt.text(), longitude ? QStringLiteral("012 30.00 W") : QStringLiteral("12 30.00 N"));
}

void PositionFieldsWindowTest::longTextSetByTheProgramIsKept() {
    Fields t;
    t.Lat().SetText("112 30.00 N (antenna)");
    QCOMPARE(t.Lat().Text(), std::string("112 30.00 N (antenna)"));
    t.Lat().Synchronize();
    QCOMPARE(t.Lat().text(), QStringLiteral("112 30.00 N (antenna)"));
}

void PositionFieldsWindowTest::gpsSentenceWritesTheBoxes() {
    Fields t;
    t.StartBoth();
    Click(t.Lat(), 4);
    t.FeedLine(1, "$GPRMC,225446,A,4916.45,N,12311.12,W,000.5,054.7,150511,020.3,E");
    QCOMPARE(Shown(t.Lat()), std::string("[4]9~16.45'N"));
    QCOMPARE(Shown(t.Lon()), std::string("[1]23~11.12'W"));
    QVERIFY(Near(t.m_dLatitude, 49 + 16.45 / 60));
    QVERIFY(Near(t.m_dLongitude, -(123 + 11.12 / 60)));
}

void PositionFieldsWindowTest::nextMessageUsesTheNewPosition() {
    Fields t;
    t.StartBoth();
    const char* sReport = AnyReport;
    t.FeedLine(0, sReport);
    QCOMPARE(t.Cell(t.grdTargetData, 1, 8), std::string());
    t.Lat().SetText("47 36.50 N");
    QTest::keyClick(&t.Lon(), Qt::Key_Up);
    t.Lon().SetText("122 20.20 W");
    t.FeedLine(0, sReport);
    QVERIFY(!t.Cell(t.grdTargetData, 2, 8).empty());
    QVERIFY(!t.Cell(t.grdTargetData, 2, 9).empty());
    t.Lon().SetText("nowhere");
    t.FeedLine(0, sReport);
    QCOMPARE(t.Cell(t.grdTargetData, 3, 8), std::string());
}

void PositionFieldsWindowTest::sameTextSetAgainIsAChange() {
    Fields t;
    QCOMPARE(t.m_dLatitude, -999.0);
    Click(t.Lat(), 7);
    t.Lat().SetText("00 00.00 N");
    QCOMPARE(t.m_dLatitude, 0.0);
    QCOMPARE(Shown(t.Lat()), std::string("[0]0 00.00 N"));
}

void PositionFieldsWindowTest::assistiveToolMaySetTheText() {
    Fields t;
    t.Lat().setText(QStringLiteral("12 30.00 S"));
    QCOMPARE(t.m_dLatitude, -12.5);
    QCOMPARE(Shown(t.Lat()), std::string("[1]2 30.00 S"));
}

void PositionFieldsWindowTest::screenReaderHearsNameAndValue() {
    Fields t;
    QVERIFY(!t.Lat().accessibleName().isEmpty());
    QVERIFY(!t.Lon().accessibleName().isEmpty());
    QVERIFY(t.Lat().accessibleName() != t.Lon().accessibleName());
    t.StartBoth();
    t.FeedLine(0, "$GPGLL,4916.45,N,12311.12,W,225444,A");
    t.Synchronize();
    QCOMPARE(t.Lat().text(), QStringLiteral("49\u00B016.45'N"));
}

void PositionFieldsWindowTest::randomHandlingLeavesOneSelectedAndAReadableText() {
    Fields t;
    t.Lat().SetText("12 34.56 N");
    t.Lon().SetText("012 34.56 E");
    t.Synchronize();
    QGuiApplication::clipboard()->setText(QStringLiteral("9 x"));
    quint32 lState = 20110515;
    const auto tRandom = [&lState](quint32 lBelow) {
        lState = lState * 1664525U + 1013904223U;
        return (lState >> 16) % lBelow;
    };
    constexpr Qt::Key Pressed[] = {Qt::Key_Left, Qt::Key_Right,     Qt::Key_Up,     Qt::Key_Down, Qt::Key_Home,
                                   Qt::Key_End,  Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_V,    Qt::Key_A,
                                   Qt::Key_X,    Qt::Key_0,         Qt::Key_5,      Qt::Key_9,    Qt::Key_N,
                                   Qt::Key_S,    Qt::Key_E,         Qt::Key_W};
    constexpr Qt::KeyboardModifier With[] = {Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
    for (int i = 0; i < 4000; ++i) {
        toolkit::MaskedBox& txt = tRandom(2) == 0 ? t.Lat() : t.Lon();
        if (tRandom(6) == 0 || txt.selectedText().isEmpty()) {
            QTest::mousePress(&txt, Qt::LeftButton, {}, QPoint(static_cast<int>(tRandom(120)), 5));
            QTest::mouseRelease(&txt, Qt::LeftButton, {}, QPoint(static_cast<int>(tRandom(120)), 5));
        } else {
            QTest::keyClick(&txt, Pressed[tRandom(std::size(Pressed))], With[tRandom(std::size(With))]);
        }
        QCOMPARE(txt.selectedText().size(), qsizetype{1});
        QCOMPARE(txt.text().size(), &txt == &t.Lat() ? 10 : 11);
        // Minutes such as 99.99 are typed easily; they parse like any other number.
        QVERIFY((&txt == &t.Lat() ? t.m_dLatitude : t.m_dLongitude) != -999.0);
    }
}

QTEST_MAIN(PositionFieldsWindowTest)
#include "PositionFieldsWindowTest.moc"
