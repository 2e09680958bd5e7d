// The keys of the profile's section "Unattended": what each value means, and which mean nothing.
#include "app/UnattendedKeys.h"

#include <QTest>

#include "tests/support/PrintString.h"

using app::ReadUnattendedKeys;
using app::Rotation;
using app::UnattendedKeys;
using app::WrongValue;

namespace {

UnattendedKeys Read(std::u16string_view sLines, std::vector<WrongValue>& tWrong) {
    return ReadUnattendedKeys(runtime::Profile(std::u16string(u"[Unattended]\r\n").append(sLines)), tWrong);
}

}  // namespace

class UnattendedKeysTest : public QObject {
    Q_OBJECT

private slots:
    void everyKeyIsRead();
    void withoutTheSectionNothingIsAskedFor();
    void keysElsewhereDoNotCount();
    void longFolderIsReadWhole();
    void folderOfTheUserIsOne();
    void rotations_data();
    void rotations();
    void wrongValues_data();
    void wrongValues();
};

void UnattendedKeysTest::everyKeyIsRead() {
    std::vector<WrongValue> tWrong;
    const UnattendedKeys t = Read(
        u"Keep MB=500\r\n; a comment\r\nStart=1\r\nRecord=\"/srv/a b/\u00e6\u03b1\"\r\nrotate=hourly\r\nKeep "
        u"days=30\r\n",
        tWrong);
    QVERIFY(t.bStart);
    QCOMPARE(t.sFolder, std::u16string(u"/srv/a b/\u00e6\u03b1"));
    QVERIFY(t.eRotation == Rotation::Hourly);
    QCOMPARE(t.lKeepDays, std::optional<std::int64_t>(30));
    QCOMPARE(t.lKeepBytes, std::optional<std::int64_t>(500'000'000));
    QVERIFY(tWrong.empty());
}

void UnattendedKeysTest::withoutTheSectionNothingIsAskedFor() {
    std::vector<WrongValue> tWrong;
    const UnattendedKeys t = ReadUnattendedKeys(runtime::Profile(u"[Nmea Data]\r\nEnabled #0=1\r\n"), tWrong);
    QVERIFY(!t.bStart && t.sFolder.empty() && !t.lKeepDays && !t.lKeepBytes);
    QVERIFY(t.eRotation == Rotation::Daily);
    QVERIFY(tWrong.empty());
}

void UnattendedKeysTest::keysElsewhereDoNotCount() {
    std::vector<WrongValue> tWrong;
    QVERIFY(!Read(u"[Other]\r\nStart=1\r\n", tWrong).bStart);
    QVERIFY(!Read(u";Start=1\r\n", tWrong).bStart);
    QVERIFY(!Read(u"Start=0\r\n", tWrong).bStart);
    QVERIFY(!Read(u"Start=\r\n", tWrong).bStart);
    QVERIFY(tWrong.empty());
}

void UnattendedKeysTest::longFolderIsReadWhole() {
    std::vector<WrongValue> tWrong;
    const std::u16string sFolder = u"/" + std::u16string(200, u'a') + u"/" + std::u16string(200, u'b');
    QCOMPARE(Read(u"Record=" + sFolder, tWrong).sFolder, sFolder);
}

void UnattendedKeysTest::folderOfTheUserIsOne() {
    std::vector<WrongValue> tWrong;
    QCOMPARE(Read(u"Record=~/recordings\r\n", tWrong).sFolder, std::u16string(u"~/recordings"));
    QVERIFY(tWrong.empty());
}

void UnattendedKeysTest::rotations_data() {
    QTest::addColumn<std::u16string>("value");
    QTest::addColumn<int>("rotation");
    QTest::newRow("daily") << std::u16string(u"daily") << static_cast<int>(Rotation::Daily);
    QTest::newRow("hourly") << std::u16string(u"Hourly") << static_cast<int>(Rotation::Hourly);
    QTest::newRow("never") << std::u16string(u"NEVER") << static_cast<int>(Rotation::Never);
    QTest::newRow("missing") << std::u16string() << static_cast<int>(Rotation::Daily);
}

void UnattendedKeysTest::rotations() {
    QFETCH(std::u16string, value);
    QFETCH(int, rotation);
    std::vector<WrongValue> tWrong;
    QCOMPARE(static_cast<int>(Read(u"Rotate=" + value, tWrong).eRotation), rotation);
    QVERIFY(tWrong.empty());
}

void UnattendedKeysTest::wrongValues_data() {
    QTest::addColumn<std::string>("key");
    QTest::addColumn<std::u16string>("value");
    const auto Row = [](const char* sKey, const char16_t* sValue) {
        QTest::addRow("%s %s", sKey, qPrintable(QString::fromUtf16(sValue)))
            << std::string(sKey) << std::u16string(sValue);
    };
    for (const char16_t* sValue : {u"yes", u"2", u"-1", u"1 ;on"}) Row("Start", sValue);
    for (const char16_t* sValue : {u"recordings", u"~", u"~ships/x", u"C:\\ais", u"./x"}) Row("Record", sValue);
    for (const char16_t* sValue : {u"weekly", u"1", u"dail", u"daily,", u"\u0164aily"}) Row("Rotate", sValue);
    for (const char* sKey : {"Keep days", "Keep MB"}) {
        for (const char16_t* sValue : {u"0", u"-5", u"1.5", u"7 days", u"x", u"1000000000", u"0000000000007"}) {
            Row(sKey, sValue);
        }
    }
}

void UnattendedKeysTest::wrongValues() {
    QFETCH(std::string, key);
    QFETCH(std::u16string, value);
    std::vector<WrongValue> tWrong;
    const std::u16string sLine = std::u16string(key.begin(), key.end()) + u"=" + value + u"\r\n";
    // The others are read all the same.
    const bool bStartIsWrong = key == "Start";
    const UnattendedKeys t =
        Read(sLine + u"Start=1\r\nRecord=/d\r\nRotate=never\r\nKeep days=1\r\nKeep MB=2\r\n", tWrong);
    QCOMPARE(tWrong.size(), std::size_t{1});
    QCOMPARE(std::string(tWrong[0].sKey), key);
    QCOMPARE(tWrong[0].sValue, value);
    QCOMPARE(t.bStart, !bStartIsWrong);
    QCOMPARE(t.sFolder, key == "Record" ? std::u16string() : std::u16string(u"/d"));
    QVERIFY(t.eRotation == (key == "Rotate" ? Rotation::Daily : Rotation::Never));
    QCOMPARE(t.lKeepDays.value_or(-1), std::int64_t{key == "Keep days" ? -1 : 1});
    QCOMPARE(t.lKeepBytes.value_or(-1), std::int64_t{key == "Keep MB" ? -1 : 2'000'000});
}

QTEST_APPLESS_MAIN(UnattendedKeysTest)
#include "UnattendedKeysTest.moc"
