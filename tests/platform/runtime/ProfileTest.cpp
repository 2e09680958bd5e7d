// The settings profile: what is found in its text, and what a save leaves as it was.
#include "platform/runtime/Profile.h"

#include <QByteArray>
#include <QTest>
#include <string>

using namespace runtime;

namespace {

constexpr const char* Text =
    "; made by hand\r\n"
    "stray=outside\r\n"
    "\r\n"
    "[Nmea Data]\r\n"
    "Enabled #0=1\r\n"
    "  Comm Port #0  =  6  \r\n"
    "Settings #0=38400,n,8,1\r\n"
    "Settings #0=second\r\n"
    "#Settings #1=comment\r\n"
    ";Comm Port #1=comment\r\n"
    "no equal sign\r\n"
    "Empty=\r\n"
    "Formula=a=b\r\n"
    "\r\n"
    "[ window data ]\r\n"
    "Top=120\r\n"
    "[Nmea Data]\r\n"
    "Comm Port #1=5\r\n"
    "Enabled #0=0\r\n";

// The tests' texts are Latin-1.
std::u16string Wide(const QByteArray& sText) { return QString::fromLatin1(sText).toStdU16String(); }

QByteArray Bytes(std::u16string_view sText) { return QStringView(sText).toLatin1(); }

QByteArray Value(const QByteArray& sText, const char* sSection, const char* sKey) {
    return Bytes(Profile(Wide(sText)).Read(sSection, sKey));
}

}  // namespace

class ProfileTest : public QObject {
    Q_OBJECT

private slots:
    void valuesAreFound_data();
    void valuesAreFound();
    void lineFeedsAloneEndLinesToo();
    void lastLineNeedsNoEnd();
    void valuesAreCutToSeventyNineCharacters_data();
    void valuesAreCutToSeventyNineCharacters();
    void longValueIsWrittenWhole();
    void textComesBackUntouched_data();
    void textComesBackUntouched();
    void savingChangesOnlyItsLine_data();
    void savingChangesOnlyItsLine();
    void degreeSignSurvives();
    void cutCountsCharactersNotPlaces();
    void onePairOfQuotesIsDropped_data();
    void onePairOfQuotesIsDropped();
    void quotesDoNotCountForTheLongestValue();
    void lineEndInAValueEndsIt();
    void writingTwiceIsWritingOnce();
    void whatIsWrittenIsReadBack();
    void quotesAndBlanksAreReadBack_data();
    void quotesAndBlanksAreReadBack();
    void carriageReturnEndsAValue();
};

void ProfileTest::valuesAreFound_data() {
    QTest::addColumn<QByteArray>("sSection");
    QTest::addColumn<QByteArray>("sKey");
    QTest::addColumn<QByteArray>("sValue");
    const auto Row = [](const char* sName, const char* sSection, const char* sKey, const char* sValue) {
        QTest::newRow(sName) << QByteArray(sSection) << QByteArray(sKey) << QByteArray(sValue);
    };
    Row("key with a number sign", "Nmea Data", "Enabled #0", "1");
    Row("blanks dropped", "Nmea Data", "Comm Port #0", "6");
    Row("first match wins", "Nmea Data", "Settings #0", "38400,n,8,1");
    Row("case of the section", "NMEA data", "Enabled #0", "1");
    Row("case of the key", "Nmea Data", "ENABLED #0", "1");
    Row("blanks in the brackets", "Window Data", "Top", "120");
    Row("second section of the name", "Nmea Data", "Comm Port #1", "5");
    Row("number sign makes a comment", "Nmea Data", "#Settings #1", "");
    Row("commented key", "Nmea Data", "Settings #1", "");
    Row("semicolon makes a comment", "Nmea Data", ";Comm Port #1", "");
    Row("line without equal sign", "Nmea Data", "no equal sign", "");
    Row("empty value", "Nmea Data", "Empty", "");
    Row("value with an equal sign", "Nmea Data", "Formula", "a=b");
    Row("key of another section", "Nmea Data", "Top", "");
    Row("key outside every section", "Nmea Data", "stray", "");
    Row("missing section", "Gps Data", "Latitude", "");
    Row("missing key", "Window Data", "Left", "");
    Row("part of a key", "Nmea Data", "Enabled", "");
}

void ProfileTest::valuesAreFound() {
    QFETCH(QByteArray, sSection);
    QFETCH(QByteArray, sKey);
    QFETCH(QByteArray, sValue);
    QCOMPARE(Value(Text, sSection.constData(), sKey.constData()), sValue);
    QByteArray sLineFeeds(Text);
    sLineFeeds.replace("\r\n", "\n");
    QCOMPARE(Value(sLineFeeds, sSection.constData(), sKey.constData()), sValue);
}

void ProfileTest::lineFeedsAloneEndLinesToo() {
    constexpr const char* Mixed = "[A]\nx=1\r\ny=2\nz=3";
    QCOMPARE(Value(Mixed, "A", "x"), QByteArray("1"));
    QCOMPARE(Value(Mixed, "A", "y"), QByteArray("2"));
}

void ProfileTest::lastLineNeedsNoEnd() { QCOMPARE(Value("[A]\r\nx=1", "A", "x"), QByteArray("1")); }

void ProfileTest::valuesAreCutToSeventyNineCharacters_data() {
    QTest::addColumn<int>("iWritten");
    QTest::addColumn<int>("iRead");
    QTest::newRow("78") << 78 << 78;
    QTest::newRow("79 come back whole") << 79 << 79;
    QTest::newRow("80") << 80 << 79;
    QTest::newRow("5000") << 5000 << 79;
}

void ProfileTest::valuesAreCutToSeventyNineCharacters() {
    QFETCH(int, iWritten);
    QFETCH(int, iRead);
    QByteArray sValue;
    for (int i = 0; i < iWritten; ++i) sValue += static_cast<char>('a' + i % 26);
    const QByteArray sText = "[A]\r\nx=  " + sValue + "  \r\n";
    QCOMPARE(Value(sText, "A", "x"), sValue.left(iRead));
}

void ProfileTest::longValueIsWrittenWhole() {
    Profile tProfile;
    tProfile.Write("A", "x", std::u16string(200, u'v'));
    QCOMPARE(Bytes(tProfile.Text()), "[A]\r\nx=" + QByteArray(200, 'v') + "\r\n");
}

void ProfileTest::textComesBackUntouched_data() {
    QTest::addColumn<QByteArray>("sText");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("made by hand") << QByteArray(Text);
    QTest::newRow("mixed line ends") << QByteArray("[A]\n\r\nx=1\r\n\n\n");
    QTest::newRow("no end of the last line") << QByteArray("[A]\r\nx=1");
    QTest::newRow("blanks") << QByteArray("  [A]  \r\n\t x = 1 \t\r\n   ");
    QTest::newRow("carriage returns alone") << QByteArray("[A]\rx=1\r");
    QByteArray sBytes;
    for (int i = 0; i < 256; ++i) sBytes += static_cast<char>(i);
    QTest::newRow("every byte") << sBytes;
}

void ProfileTest::textComesBackUntouched() {
    QFETCH(QByteArray, sText);
    QCOMPARE(Bytes(Profile(Wide(sText)).Text()), sText);
}

void ProfileTest::savingChangesOnlyItsLine_data() {
    QTest::addColumn<QByteArray>("sBefore");
    QTest::addColumn<QByteArray>("sAfter");  // [A] x=new is written
    const auto Row = [](const char* sName, const char* sBefore, const char* sAfter) {
        QTest::newRow(sName) << QByteArray(sBefore) << QByteArray(sAfter);
    };
    Row("missing file", "", "[A]\r\nx=new\r\n");
    Row("value replaced", "[A]\r\nx=old\r\ny=1\r\n", "[A]\r\nx=new\r\ny=1\r\n");
    Row("line feed kept", "[A]\nx=old\ny=1\n", "[A]\nx=new\ny=1\n");
    Row("missing line end kept", "[A]\r\nx=old", "[A]\r\nx=new");
    Row("empty value filled", "[A]\r\nx=\r\n", "[A]\r\nx=new\r\n");
    Row("empty value at the end of the file", "[A]\r\nx=", "[A]\r\nx=new");
    Row("blank value", "[A]\r\nx=  \r\n", "[A]\r\nx=  new\r\n");
    Row("spelling and blanks of the key kept", "[a]\r\n X = old \r\n", "[a]\r\n X = new\r\n");
    Row("only the first of the name", "[A]\r\nx=1\r\nx=2\r\n", "[A]\r\nx=new\r\nx=2\r\n");
    Row("the one that is read", "[A]\r\ny=1\r\n[A]\r\nx=2\r\n", "[A]\r\ny=1\r\n[A]\r\nx=new\r\n");
    Row("not in another section", "[B]\r\nx=1\r\n", "[B]\r\nx=1\r\n[A]\r\nx=new\r\n");
    Row("not the comments", "[A]\r\n;x=1\r\n#x=2\r\n", "[A]\r\n;x=1\r\n#x=2\r\nx=new\r\n");
    Row("end of its section", "[A]\r\ny=1\r\n[B]\r\nz=1\r\n", "[A]\r\ny=1\r\nx=new\r\n[B]\r\nz=1\r\n");
    Row("in front of the blank lines", "[A]\r\ny=1\r\n\r\n \r\n[B]\r\n", "[A]\r\ny=1\r\nx=new\r\n\r\n \r\n[B]\r\n");
    Row("empty section", "[A]\r\n\r\n[B]\r\n", "[A]\r\nx=new\r\n\r\n[B]\r\n");
    Row("first section of the name", "[A]\r\ny=1\r\n[B]\r\n[A]\r\nz=1\r\n",
        "[A]\r\ny=1\r\nx=new\r\n[B]\r\n[A]\r\nz=1\r\n");
    Row("behind a line without end", "[A]\r\ny=1", "[A]\r\ny=1\r\nx=new\r\n");
    Row("section behind a line without end", "[B]\r\ny=1", "[B]\r\ny=1\r\n[A]\r\nx=new\r\n");
    Row("section without text behind it", "[B]\r\n\r\n", "[B]\r\n\r\n[A]\r\nx=new\r\n");
    Row("comments and unknown lines", "; c\r\njunk\r\n[A]\r\n# d\r\nother=1\r\n",
        "; c\r\njunk\r\n[A]\r\n# d\r\nother=1\r\nx=new\r\n");
    Row("bracket never closed", "[A\r\ny=1\r\n", "[A\r\ny=1\r\nx=new\r\n");
}

void ProfileTest::savingChangesOnlyItsLine() {
    QFETCH(QByteArray, sBefore);
    QFETCH(QByteArray, sAfter);
    Profile tProfile(Wide(sBefore));
    tProfile.Write("A", "x", u"new");
    QCOMPARE(Bytes(tProfile.Text()), sAfter);
    QCOMPARE(Bytes(tProfile.Read("A", "x")), QByteArray("new"));
}

void ProfileTest::degreeSignSurvives() {
    Profile tProfile;
    tProfile.Write("Gps Data", "Latitude", u"47\u00B036.50'N");
    QVERIFY(tProfile.Text() == u"[Gps Data]\r\nLatitude=47\u00B036.50'N\r\n");
    QVERIFY(Profile(tProfile.Text()).Read("Gps Data", "Latitude") == u"47\u00B036.50'N");
}

void ProfileTest::cutCountsCharactersNotPlaces() {
    std::u16string sText = u"[A]\r\nx=";
    for (int i = 0; i < 80; ++i) sText += u"\U0001F6A2";
    QCOMPARE(Profile(sText).Read("A", "x").size(), std::size_t{2 * 79});
    // Characters beyond the places of the pairs take one; half a pair, which no text should have, takes one, too.
    const std::u16string sWide(100, u'\uFF21');
    QCOMPARE(Profile(u"[A]\r\nx=" + sWide).Read("A", "x"), sWide.substr(0, 79));
    const std::u16string sHalf = std::u16string(78, u'a') + char16_t{0xD800};
    QCOMPARE(Profile(u"[A]\r\nx=" + sHalf).Read("A", "x"), sHalf);
}

void ProfileTest::onePairOfQuotesIsDropped_data() {
    QTest::addColumn<QByteArray>("sWritten");
    QTest::addColumn<QByteArray>("sRead");
    const auto Row = [](const char* sName, const char* sWritten, const char* sRead) {
        QTest::newRow(sName) << QByteArray(sWritten) << QByteArray(sRead);
    };
    Row("double", "\"a b\"", "a b");
    Row("single", "'a b'", "a b");
    Row("blanks inside stay", " \" a \" ", " a ");
    Row("one pair only", "\"\"a\"\"", "\"a\"");
    Row("double around single", "\"'a'\"", "'a'");
    Row("single around double", "'\"a\"'", "\"a\"");
    Row("nothing inside", "\"\"", "");
    Row("not matching", "\"a'", "\"a'");
    Row("only in front", "\"a", "\"a");
    Row("only behind", "a\"", "a\"");
    Row("in the middle", "a\"b\"c", "a\"b\"c");
    Row("one quote alone", "\"", "\"");
    Row("minute sign of a position", "47 36.50'N", "47 36.50'N");
}

void ProfileTest::onePairOfQuotesIsDropped() {
    QFETCH(QByteArray, sWritten);
    QFETCH(QByteArray, sRead);
    QCOMPARE(Value("[A]\r\nx=" + sWritten + "\r\n", "A", "x"), sRead);
}

void ProfileTest::quotesDoNotCountForTheLongestValue() {
    const QByteArray sValue(79, 'v');
    QCOMPARE(Value("[A]\r\nx=\"" + sValue + "\"\r\n", "A", "x"), sValue);
    QCOMPARE(Value("[A]\r\nx=\"" + sValue + "v\"\r\n", "A", "x"), sValue);
}

void ProfileTest::lineEndInAValueEndsIt() {
    Profile tProfile;
    tProfile.Write("A", "x", u"1\r\n[B]\r\nx=2");
    tProfile.Write("A", "y", u"3\n4");
    QCOMPARE(Bytes(tProfile.Text()), QByteArray("[A]\r\nx=1\r\ny=3\r\n"));
}

void ProfileTest::writingTwiceIsWritingOnce() {
    Profile tProfile{Wide(Text)};
    tProfile.Write("Nmea Data", "Enabled #1", u"0");
    tProfile.Write("Output Data", "Enabled", u"1");
    const std::u16string sOnce = tProfile.Text();
    tProfile.Write("Nmea Data", "Enabled #1", u"0");
    tProfile.Write("Output Data", "Enabled", u"1");
    QVERIFY(tProfile.Text() == sOnce);
}

void ProfileTest::whatIsWrittenIsReadBack() {
    Profile tProfile{Wide(Text)};
    for (int i = 0; i < 50; ++i) {
        const std::string sSection = "Section " + std::to_string(i % 7);
        tProfile.Write(sSection, "Key " + std::to_string(i), Wide("Value " + QByteArray::number(i)));
    }
    const Profile tRead(tProfile.Text());
    for (int i = 0; i < 50; ++i) {
        const std::string sSection = "SECTION " + std::to_string(i % 7);
        QCOMPARE(Bytes(tRead.Read(sSection, "key " + std::to_string(i))), "Value " + QByteArray::number(i));
    }
    QVERIFY(Bytes(tProfile.Text()).startsWith(Text));
}

void ProfileTest::quotesAndBlanksAreReadBack_data() {
    QTest::addColumn<QByteArray>("sValue");
    for (const char* s :
         {"\"a\"", "'a'", "\"'a'\"", "\"\"", "''", "\"", " a", "a ", "\ta", " ", "' a", "a\"b\"", "\"a\"b"}) {
        QTest::newRow(s) << QByteArray(s);
    }
}

void ProfileTest::quotesAndBlanksAreReadBack() {
    QFETCH(QByteArray, sValue);
    Profile tProfile{u"[A]\r\nx = 1\r\n"};
    tProfile.Write("A", "x", Wide(sValue));
    tProfile.Write("A", "new", Wide(sValue));
    const Profile tRead(tProfile.Text());
    QCOMPARE(Bytes(tRead.Read("A", "x")), sValue);
    QCOMPARE(Bytes(tRead.Read("A", "new")), sValue);
}

void ProfileTest::carriageReturnEndsAValue() { QCOMPARE(Value("[A]\nx=1 \r2\ny=3\r\n", "A", "x"), QByteArray("1")); }

QTEST_GUILESS_MAIN(ProfileTest)
#include "ProfileTest.moc"
