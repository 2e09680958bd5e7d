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

QByteArray Value(std::string_view sText, const char* sSection, const char* sKey) {
    return QByteArray::fromStdString(Profile(sText).Read(sSection, sKey));
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
    void lineEndInAValueEndsIt();
    void writingTwiceIsWritingOnce();
    void whatIsWrittenIsReadBack();
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
    QCOMPARE(Value(sLineFeeds.toStdString(), sSection.constData(), sKey.constData()), sValue);
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
    QCOMPARE(Value(sText.toStdString(), "A", "x"), sValue.left(iRead));
}

void ProfileTest::longValueIsWrittenWhole() {
    Profile tProfile;
    tProfile.Write("A", "x", std::string(200, 'v'));
    QCOMPARE(tProfile.Text(), "[A]\r\nx=" + std::string(200, 'v') + "\r\n");
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
    QCOMPARE(QByteArray::fromStdString(Profile(sText.toStdString()).Text()), sText);
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
    Profile tProfile(sBefore.toStdString());
    tProfile.Write("A", "x", "new");
    QCOMPARE(QByteArray::fromStdString(tProfile.Text()), sAfter);
    QCOMPARE(tProfile.Read("A", "x"), std::string("new"));
}

void ProfileTest::degreeSignSurvives() {
    Profile tProfile;
    tProfile.Write("Gps Data", "Latitude",
                   "47\xB0"
                   "36.50'N");
    const std::string sText = tProfile.Text();
    QCOMPARE(sText, std::string("[Gps Data]\r\nLatitude=47\xB0"
                                "36.50'N\r\n"));
    QCOMPARE(Profile(sText).Read("Gps Data", "Latitude"), std::string("47\xB0"
                                                                      "36.50'N"));
}

void ProfileTest::lineEndInAValueEndsIt() {
    Profile tProfile;
    tProfile.Write("A", "x", "1\r\n[B]\r\nx=2");
    tProfile.Write("A", "y", "3\n4");
    QCOMPARE(tProfile.Text(), std::string("[A]\r\nx=1\r\ny=3\r\n"));
}

void ProfileTest::writingTwiceIsWritingOnce() {
    Profile tProfile{std::string_view(Text)};
    tProfile.Write("Nmea Data", "Enabled #1", "0");
    tProfile.Write("Output Data", "Enabled", "1");
    const std::string sOnce = tProfile.Text();
    tProfile.Write("Nmea Data", "Enabled #1", "0");
    tProfile.Write("Output Data", "Enabled", "1");
    QCOMPARE(tProfile.Text(), sOnce);
}

void ProfileTest::whatIsWrittenIsReadBack() {
    Profile tProfile{std::string_view(Text)};
    for (int i = 0; i < 50; ++i) {
        const std::string sSection = "Section " + std::to_string(i % 7);
        tProfile.Write(sSection, "Key " + std::to_string(i), "Value " + std::to_string(i));
    }
    const Profile tRead(tProfile.Text());
    for (int i = 0; i < 50; ++i) {
        const std::string sSection = "SECTION " + std::to_string(i % 7);
        QCOMPARE(tRead.Read(sSection, "key " + std::to_string(i)), "Value " + std::to_string(i));
    }
    QVERIFY(QByteArray::fromStdString(tProfile.Text()).startsWith(Text));
}

QTEST_GUILESS_MAIN(ProfileTest)
#include "ProfileTest.moc"
