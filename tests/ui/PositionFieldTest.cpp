// The mask of the own-position fields, driven as the box drives it: clicks, arrow keys and typed characters.
#include "ui/PositionField.h"

#include <QTest>

#include "nav/PositionText.h"

namespace {
constexpr int Left = 37, Up = 38, Right = 39, Down = 40;

// "47*36.50'N" with the degree sign for the star.
std::string Degrees(std::string sText) {
    const std::size_t i = sText.find('*');
    if (i != std::string::npos) sText[i] = nav::DegreeSign;
    return sText;
}

// A box without a widget: what the four handlers do.
struct Box {
    const ui::PositionMask& tMask;
    ui::PositionFieldState t{};

    Box(const ui::PositionMask& tAnyMask, const std::string& sText) : tMask(tAnyMask) { SetText(sText); }
    void SetText(const std::string& sText) {
        t.sText = sText;
        t.iStart = 0;
        Changed();
    }
    void Changed() { ui::PositionFieldCaret(t, +1, tMask); }
    void Click(int iPlace) {
        t.iStart = std::min(iPlace, static_cast<int>(t.sText.size()));
        t.iLength = 0;
        ui::PositionFieldCaret(t, +1, tMask);
    }
    void Key(int iCode) {
        if (iCode == Left || iCode == Right) return ui::PositionFieldMove(t, iCode, tMask);
        const auto sNew = ui::PositionFieldStep(t, iCode == Up ? +1 : -1, tMask);
        if (!sNew) return;
        const int iStart = t.iStart;
        SetText(*sNew);
        t.iStart = iStart;
        t.iLength = 1;
    }
    void Type(const std::string& sTyped) {
        for (const char c : sTyped) {
            const auto cAccepted = ui::PositionFieldFilter(t, c, tMask);
            if (cAccepted && ui::PositionFieldType(t, *cAccepted, tMask)) Changed();
        }
    }
    double Value() const {
        const auto dValue = tMask.bLatitude ? nav::ParseLatitude(t.sText) : nav::ParseLongitude(t.sText);
        return dValue.value_or(nav::PositionUnknown);
    }
};

const ui::PositionMask& Mask(bool bLatitude) { return bLatitude ? ui::LatitudeMask : ui::LongitudeMask; }
const char* const LatitudeText = "12 34.56 N";
const char* const LongitudeText = "123 45.67 W";
}  // namespace

class PositionFieldTest : public QObject {
    Q_OBJECT
private slots:
    void MaximumLengths();
    void ClickSelectsOneCharacter_data();
    void ClickSelectsOneCharacter();
    void RightMovesOverSeparatorsAndStopsAtTheLetter_data();
    void RightMovesOverSeparatorsAndStopsAtTheLetter();
    void LeftMovesOverSeparatorsAndStopsAtTheStart_data();
    void LeftMovesOverSeparatorsAndStopsAtTheStart();
    void OtherKeysMoveNothing();
    void UpStepsByThePlace_data();
    void UpStepsByThePlace();
    void StepsInBothHemispheres_data();
    void StepsInBothHemispheres();
    void StepKeepsTheSelection();
    void UpAgainAndAgainStopsAtTheLimit();
    void NoStepUnlessOneCharacterIsSelected();
    void NoStepOfATextThatDoesNotParse();
    void StepOfAPlaceWithoutOneOnlyRewritesTheText();
    void DigitsOverwriteAndMoveOn();
    void OnlyDigitsAtDigitPlaces();
    void OnlyLettersAtTheLetterPlace_data();
    void OnlyLettersAtTheLetterPlace();
    void TypingAtTheLetterKeepsItSelected();
    void TextNeverGrowsBeyondItsMaximum();
    void TypedAndSteppedTextsParse();
    void LongTextSetByTheProgramIsKeptWhole();
    void EmptyTextIsHarmless();
};

void PositionFieldTest::MaximumLengths() {
    QCOMPARE(ui::LatitudeMask.iMaxLength, 10);
    QCOMPARE(ui::LongitudeMask.iMaxLength, 11);
}

void PositionFieldTest::ClickSelectsOneCharacter_data() {
    QTest::addColumn<bool>("bLatitude");
    QTest::addColumn<int>("iClicked");
    QTest::addColumn<int>("iSelected");
    const std::vector<int> iLatitude{0, 1, 3, 3, 4, 6, 6, 7, 9, 9, 9};
    const std::vector<int> iLongitude{0, 1, 2, 4, 4, 5, 7, 7, 8, 10, 10, 10};
    for (std::size_t i = 0; i < iLatitude.size(); ++i)
        QTest::addRow("latitude %d", static_cast<int>(i)) << true << static_cast<int>(i) << iLatitude[i];
    for (std::size_t i = 0; i < iLongitude.size(); ++i)
        QTest::addRow("longitude %d", static_cast<int>(i)) << false << static_cast<int>(i) << iLongitude[i];
}

void PositionFieldTest::ClickSelectsOneCharacter() {
    QFETCH(bool, bLatitude);
    QFETCH(int, iClicked);
    Box tBox(Mask(bLatitude), bLatitude ? LatitudeText : LongitudeText);
    tBox.Click(iClicked);
    QTEST(tBox.t.iStart, "iSelected");
    QCOMPARE(tBox.t.iLength, 1);
}

void PositionFieldTest::RightMovesOverSeparatorsAndStopsAtTheLetter_data() {
    QTest::addColumn<bool>("bLatitude");
    QTest::addColumn<std::vector<int>>("iPlaces");
    QTest::newRow("latitude") << true << std::vector<int>{1, 3, 4, 6, 7, 9, 9, 9};
    QTest::newRow("longitude") << false << std::vector<int>{1, 2, 4, 5, 7, 8, 10, 10};
}

void PositionFieldTest::RightMovesOverSeparatorsAndStopsAtTheLetter() {
    QFETCH(bool, bLatitude);
    QFETCH(std::vector<int>, iPlaces);
    Box tBox(Mask(bLatitude), bLatitude ? LatitudeText : LongitudeText);
    tBox.Click(0);
    for (const int iPlace : iPlaces) {
        tBox.Key(Right);
        QCOMPARE(tBox.t.iStart, iPlace);
        QCOMPARE(tBox.t.iLength, 1);
    }
}

void PositionFieldTest::LeftMovesOverSeparatorsAndStopsAtTheStart_data() {
    QTest::addColumn<bool>("bLatitude");
    QTest::addColumn<std::vector<int>>("iPlaces");
    QTest::newRow("latitude") << true << std::vector<int>{7, 6, 4, 3, 1, 0, 0};
    QTest::newRow("longitude") << false << std::vector<int>{8, 7, 5, 4, 2, 1, 0, 0};
}

void PositionFieldTest::LeftMovesOverSeparatorsAndStopsAtTheStart() {
    QFETCH(bool, bLatitude);
    QFETCH(std::vector<int>, iPlaces);
    Box tBox(Mask(bLatitude), bLatitude ? LatitudeText : LongitudeText);
    tBox.Click(99);
    for (const int iPlace : iPlaces) {
        tBox.Key(Left);
        QCOMPARE(tBox.t.iStart, iPlace);
        QCOMPARE(tBox.t.iLength, 1);
    }
}

void PositionFieldTest::OtherKeysMoveNothing() {
    Box tBox(ui::LatitudeMask, LatitudeText);
    tBox.Click(4);
    for (const int iCode : {0, 8, 9, 13, 35, 36, 38, 40, 46}) {
        ui::PositionFieldMove(tBox.t, iCode, ui::LatitudeMask);
        QCOMPARE(tBox.t.iStart, 4);
        QCOMPARE(tBox.t.iLength, 1);
    }
}

void PositionFieldTest::UpStepsByThePlace_data() {
    QTest::addColumn<bool>("bLatitude");
    QTest::addColumn<int>("iPlace");
    QTest::addColumn<std::string>("sExpected");
    // From 12 34.56 N.
    QTest::newRow("latitude, ten degrees") << true << 0 << Degrees("22*34.56'N");
    QTest::newRow("latitude, one degree") << true << 1 << Degrees("13*34.56'N");
    QTest::newRow("latitude, ten minutes") << true << 3 << Degrees("12*44.56'N");
    QTest::newRow("latitude, one minute") << true << 4 << Degrees("12*35.56'N");
    QTest::newRow("latitude, a tenth") << true << 6 << Degrees("12*34.66'N");
    QTest::newRow("latitude, a hundredth") << true << 7 << Degrees("12*34.57'N");
    QTest::newRow("latitude, letter") << true << 9 << Degrees("12*34.56'S");
    // From 123 45.67 W.
    QTest::newRow("longitude, a hundred degrees stops at the limit") << false << 0 << Degrees("180*00.00'W");
    QTest::newRow("longitude, ten degrees") << false << 1 << Degrees("133*45.67'W");
    QTest::newRow("longitude, one degree") << false << 2 << Degrees("124*45.67'W");
    QTest::newRow("longitude, ten minutes") << false << 4 << Degrees("123*55.67'W");
    QTest::newRow("longitude, one minute") << false << 5 << Degrees("123*46.67'W");
    QTest::newRow("longitude, a tenth") << false << 7 << Degrees("123*45.77'W");
    QTest::newRow("longitude, a hundredth") << false << 8 << Degrees("123*45.68'W");
    QTest::newRow("longitude, letter") << false << 10 << Degrees("123*45.67'E");
}

void PositionFieldTest::UpStepsByThePlace() {
    QFETCH(bool, bLatitude);
    QFETCH(int, iPlace);
    Box tBox(Mask(bLatitude), bLatitude ? LatitudeText : LongitudeText);
    tBox.Click(iPlace);
    tBox.Key(Up);
    QTEST(tBox.t.sText, "sExpected");
}

void PositionFieldTest::StepsInBothHemispheres_data() {
    QTest::addColumn<bool>("bLatitude");
    QTest::addColumn<std::string>("sText");
    QTest::addColumn<int>("iPlace");
    QTest::addColumn<int>("iKey");
    QTest::addColumn<std::string>("sExpected");
    const int iUp = Up, iDown = Down;

    QTest::newRow("up raises the north") << true << std::string("47 36.50 N") << 0 << iUp << Degrees("57*36.50'N");
    QTest::newRow("up stops at the pole") << true << Degrees("87*36.50'N") << 0 << iUp << Degrees("90*00.00'N");
    QTest::newRow("up raises the south") << true << std::string("12 30.00 S") << 1 << iUp << Degrees("13*30.00'S");
    QTest::newRow("down lowers the south") << true << std::string("12 30.00 S") << 1 << iDown << Degrees("11*30.00'S");
    QTest::newRow("up stops at the south pole")
        << true << std::string("87 36.50 S") << 0 << iUp << Degrees("90*00.00'S");
    QTest::newRow("zero counts as north") << true << Degrees("00*00.00'N") << 4 << iUp << Degrees("00*01.00'N");
    QTest::newRow("zero south counts as north")
        << true << std::string("00 00.00 S") << 4 << iUp << Degrees("00*01.00'N");
    QTest::newRow("down from zero goes south")
        << true << std::string("00 00.00 N") << 4 << iDown << Degrees("00*01.00'S");
    QTest::newRow("down across zero") << true << std::string("05 00.00 N") << 0 << iDown << Degrees("05*00.00'S");
    QTest::newRow("letter by up") << true << std::string("12 30.00 N") << 9 << iUp << Degrees("12*30.00'S");
    QTest::newRow("letter by down") << true << std::string("12 30.00 N") << 9 << iDown << Degrees("12*30.00'S");
    QTest::newRow("letter back") << true << std::string("12 30.00 S") << 9 << iDown << Degrees("12*30.00'N");
    QTest::newRow("zero has no south") << true << std::string("00 00.00 N") << 9 << iUp << Degrees("00*00.00'N");
    QTest::newRow("up raises the east") << false << std::string("010 00.00 E") << 2 << iUp << Degrees("011*00.00'E");
    QTest::newRow("up raises the west") << false << std::string("010 00.00 W") << 2 << iUp << Degrees("011*00.00'W");
    QTest::newRow("up stops at the date line")
        << false << std::string("179 59.99 E") << 2 << iUp << Degrees("180*00.00'E");
    QTest::newRow("zero counts as east") << false << std::string("000 00.00 W") << 5 << iUp << Degrees("000*01.00'E");
    QTest::newRow("down from zero goes west")
        << false << std::string("000 00.00 E") << 8 << iDown << Degrees("000*00.01'W");
    QTest::newRow("longitude letter") << false << std::string("012 30.00 W") << 10 << iUp << Degrees("012*30.00'E");
    QTest::newRow("beyond the pole comes back to it")
        << true << std::string("99 00.00 N") << 1 << iUp << Degrees("90*00.00'N");
}

void PositionFieldTest::StepsInBothHemispheres() {
    QFETCH(bool, bLatitude);
    QFETCH(std::string, sText);
    QFETCH(int, iPlace);
    QFETCH(int, iKey);
    Box tBox(Mask(bLatitude), sText);
    tBox.Click(iPlace);
    tBox.Key(iKey);
    QTEST(tBox.t.sText, "sExpected");
}

void PositionFieldTest::StepKeepsTheSelection() {
    for (const int iPlace : {0, 1, 3, 4, 6, 7, 9}) {
        Box tBox(ui::LatitudeMask, LatitudeText);
        tBox.Click(iPlace);
        tBox.Key(Down);
        QCOMPARE(tBox.t.iStart, iPlace);
        QCOMPARE(tBox.t.iLength, 1);
    }
}

void PositionFieldTest::UpAgainAndAgainStopsAtTheLimit() {
    Box tBox(ui::LatitudeMask, "47 36.50 N");
    tBox.Click(0);
    const std::vector<std::string> sTexts{"57*36.50'N", "67*36.50'N", "77*36.50'N",
                                          "87*36.50'N", "90*00.00'N", "90*00.00'N"};
    for (const std::string& sText : sTexts) {
        tBox.Key(Up);
        QCOMPARE(tBox.t.sText, Degrees(sText));
    }
    QCOMPARE(tBox.Value(), 90.0);
}

void PositionFieldTest::NoStepUnlessOneCharacterIsSelected() {
    for (const int iLength : {0, 2, 10})
        QVERIFY(!ui::PositionFieldStep({LatitudeText, 0, iLength}, +1, ui::LatitudeMask));
}

void PositionFieldTest::NoStepOfATextThatDoesNotParse() {
    for (const char* pText : {"", "abc", "12x34.56 N", "1234.56N"})
        QVERIFY(!ui::PositionFieldStep({pText, 0, 1}, +1, ui::LatitudeMask));
}

void PositionFieldTest::StepOfAPlaceWithoutOneOnlyRewritesTheText() {
    for (const int iPlace : {2, 5, 8})
        QCOMPARE(*ui::PositionFieldStep({LatitudeText, iPlace, 1}, +1, ui::LatitudeMask), Degrees("12*34.56'N"));
    for (const int iPlace : {3, 6, 9})
        QCOMPARE(*ui::PositionFieldStep({LongitudeText, iPlace, 1}, +1, ui::LongitudeMask), Degrees("123*45.67'W"));
}

void PositionFieldTest::DigitsOverwriteAndMoveOn() {
    Box tBox(ui::LatitudeMask, "00 00.00 N");
    tBox.Click(0);
    tBox.Type("4");
    QCOMPARE(tBox.t.sText, std::string("40 00.00 N"));
    QCOMPARE(tBox.t.iStart, 1);
    tBox.Type("5");
    QCOMPARE(tBox.t.sText, std::string("45 00.00 N"));
    QCOMPARE(tBox.t.iStart, 3);
    tBox.Type("1234s");
    QCOMPARE(tBox.t.sText, std::string("45 12.34 S"));
    QCOMPARE(tBox.t.iStart, 9);
    QCOMPARE(tBox.t.iLength, 1);
}

void PositionFieldTest::OnlyDigitsAtDigitPlaces() {
    for (const int iPlace : {0, 1, 2, 4, 5, 7, 8})
        for (int iCode = 0; iCode < 256; ++iCode) {
            const char c = static_cast<char>(iCode);
            const auto cAccepted = ui::PositionFieldFilter({LongitudeText, iPlace, 1}, c, ui::LongitudeMask);
            if (iCode >= 48 && iCode <= 57)
                QCOMPARE(cAccepted.value(), c);
            else
                QVERIFY2(!cAccepted, qPrintable(QString::number(iCode)));
        }
}

void PositionFieldTest::OnlyLettersAtTheLetterPlace_data() {
    QTest::addColumn<bool>("bLatitude");
    QTest::addColumn<std::string>("sLower");
    QTest::addColumn<std::string>("sUpper");
    QTest::newRow("latitude") << true << std::string("ns") << std::string("NS");
    QTest::newRow("longitude") << false << std::string("ew") << std::string("EW");
}

void PositionFieldTest::OnlyLettersAtTheLetterPlace() {
    QFETCH(bool, bLatitude);
    QFETCH(std::string, sLower);
    QFETCH(std::string, sUpper);
    const ui::PositionMask& tMask = Mask(bLatitude);
    const ui::PositionFieldState tState{bLatitude ? LatitudeText : LongitudeText, tMask.iMaxLength - 1, 1};
    for (int iCode = 0; iCode < 256; ++iCode) {
        const char c = static_cast<char>(iCode);
        const auto cAccepted = ui::PositionFieldFilter(tState, c, tMask);
        if (const std::size_t i = sLower.find(c); i != std::string::npos)
            QCOMPARE(cAccepted.value(), sUpper[i]);
        else if (sUpper.find(c) != std::string::npos)
            QCOMPARE(cAccepted.value(), c);
        else
            QVERIFY2(!cAccepted, qPrintable(QString::number(iCode)));
    }
}

void PositionFieldTest::TypingAtTheLetterKeepsItSelected() {
    Box tBox(ui::LongitudeMask, "123 45.67 E");
    tBox.Click(10);
    tBox.Type("w");
    QCOMPARE(tBox.t.sText, std::string("123 45.67 W"));
    QCOMPARE(tBox.t.iStart, 10);
    QCOMPARE(tBox.t.iLength, 1);
    tBox.Type("5x e");
    QCOMPARE(tBox.t.sText, std::string("123 45.67 E"));
}

void PositionFieldTest::TextNeverGrowsBeyondItsMaximum() {
    ui::PositionFieldState t{LatitudeText, 4, 0};  // nothing selected: the character would be inserted
    QVERIFY(!ui::PositionFieldType(t, '7', ui::LatitudeMask));
    QCOMPARE(t.sText, std::string(LatitudeText));
    QCOMPARE(t.iStart, 4);

    ui::PositionFieldState tShort{"12 34.5 N", 4, 0};
    QVERIFY(ui::PositionFieldType(tShort, '7', ui::LatitudeMask));
    QCOMPARE(tShort.sText, std::string("12 374.5 N"));

    ui::PositionFieldState tWhole{LatitudeText, 0, 10};
    QVERIFY(ui::PositionFieldType(tWhole, '7', ui::LatitudeMask));
    QCOMPARE(tWhole.sText, std::string("7"));
    QCOMPARE(tWhole.iStart, 1);
}

void PositionFieldTest::TypedAndSteppedTextsParse() {
    Box tBox(ui::LatitudeMask, "12 30.00 N");
    QCOMPARE(tBox.Value(), 12.5);
    tBox.Click(9);
    tBox.Key(Up);
    QCOMPARE(tBox.t.sText, Degrees("12*30.00'S"));
    QCOMPARE(tBox.Value(), -12.5);
    tBox.Click(0);
    tBox.Type("4745");
    QCOMPARE(tBox.t.sText, Degrees("47*45.00'S"));
    QCOMPARE(tBox.Value(), -47.75);
}

void PositionFieldTest::LongTextSetByTheProgramIsKeptWhole() {
    const std::string sText = Degrees("101*00.00'N");
    Box tBox(ui::LatitudeMask, sText);
    QCOMPARE(tBox.t.sText, sText);
    tBox.Click(99);  // behind the eleventh character
    QCOMPARE(tBox.t.iStart, 11);
    tBox.Click(10);
    QCOMPARE(tBox.t.iStart, 9);
    QVERIFY(!ui::PositionFieldType(tBox.t, '1', ui::LatitudeMask));
    QCOMPARE(tBox.t.sText, sText);
}

void PositionFieldTest::EmptyTextIsHarmless() {
    Box tBox(ui::LatitudeMask, "");
    tBox.Key(Right);
    tBox.Key(Left);
    tBox.Key(Up);
    tBox.Click(5);
    QCOMPARE(tBox.t.iStart, 0);
    QCOMPARE(tBox.t.iLength, 0);
    tBox.Type("1");
    QCOMPARE(tBox.t.sText, std::string("1"));
    QCOMPARE(tBox.Value(), nav::PositionUnknown);
}

QTEST_GUILESS_MAIN(PositionFieldTest)
#include "PositionFieldTest.moc"
