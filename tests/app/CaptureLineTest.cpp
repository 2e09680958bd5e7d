// The lines of a capture: written, read back, and refused where they are none.
#include "app/CaptureLine.h"

#include <QTest>

#include "tests/support/IsoTime.h"
#include "tests/support/PrintString.h"

using app::CaptureLine;
using app::CaptureMoment;
using app::IsCaptureHead;
using app::ReadCaptureLine;
using app::WriteCaptureHead;
using app::WriteCaptureLine;

namespace {

const CaptureMoment Noon{*support::FromIso("2011-05-15T12:00:00"), 7};

std::string Written(runtime::PortIndex i, char cKind, std::string_view sBytes) {
    std::string sLine = "what stood there before";
    WriteCaptureLine(sLine, Noon, i, cKind, sBytes);
    return sLine;
}

}  // namespace

class CaptureLineTest : public QObject {
    Q_OBJECT

private slots:
    void linesAreText();
    void everyByteComesBack();
    void everyKindComesBack();
    void headIsKnown();
    void otherLinesAreRefused_data();
    void otherLinesAreRefused();
};

void CaptureLineTest::linesAreText() {
    QCOMPARE(Written(0, '<', "$GPGLL,1*4F\r\n"), std::string(R"(05/15/2011 12:00:00.007 1 < $GPGLL,1*4F\r\n)"));
    QCOMPARE(Written(1, '!', "1004"), std::string("05/15/2011 12:00:00.007 2 ! 1004"));
    QCOMPARE(Written(0, '>', "a\\b\t\xB0\x7F"), std::string(R"(05/15/2011 12:00:00.007 1 > a\\b\x09\xB0\x7F)"));
}

void CaptureLineTest::everyByteComesBack() {
    std::string sAll;
    for (int i = 0; i < 256; ++i) sAll += static_cast<char>(i);
    sAll += sAll;
    const std::string sLine = Written(1, '<', sAll);
    for (const char c : sLine) QVERIFY(c >= ' ' && c <= '~');
    const auto t = ReadCaptureLine(sLine);
    QVERIFY(t);
    QCOMPARE(t->sBytes, sAll);
    QCOMPARE(int{t->Index}, 1);
    QCOMPARE(t->cKind, '<');
    QCOMPARE(t->tMoment.dt.lSeconds, Noon.dt.lSeconds);
    QCOMPARE(t->tMoment.iMilliseconds, 7);
}

void CaptureLineTest::everyKindComesBack() {
    for (const char c : {'<', '>', '!'}) {
        const auto t = ReadCaptureLine(Written(0, c, "x"));
        QVERIFY(t);
        QCOMPARE(t->cKind, c);
    }
}

void CaptureLineTest::headIsKnown() {
    std::string sHead;
    WriteCaptureHead(sHead, {Noon.dt, 999});
    QCOMPARE(sHead, std::string("05/15/2011 12:00:00.999 Tidewatch capture 1"));
    QVERIFY(IsCaptureHead(sHead));
    QVERIFY(!ReadCaptureLine(sHead));
    QVERIFY(!IsCaptureHead(sHead + "0"));
    QVERIFY(!IsCaptureHead("Tidewatch capture 1"));
    QVERIFY(!IsCaptureHead("05/15/2011 12:00:00 !AIVDM,1"));
    QVERIFY(!IsCaptureHead(""));
}

void CaptureLineTest::otherLinesAreRefused_data() {
    QTest::addColumn<std::string>("line");
    for (const char* sLine : {"",
                              "05/15/2011 12:00:00 $GPGLL,1",
                              "05/15/2011 12:00:00.007",
                              "05/15/2011 12:00:00.007 1 <",
                              "05/15/2011 12:00:00.007 3 < x",
                              "05/15/2011 12:00:00.007 0 < x",
                              "05/15/2011 12:00:00.007 1 ? x",
                              "05/15/2011 12:00:00,007 1 < x",
                              "05/15/2011 12:00:00.0x7 1 < x",
                              "02/30/2011 12:00:00.007 1 < x",
                              "05/15/2011 12:00:00.007 1 <  \\",
                              "05/15/2011 12:00:00.007 1 < \\q",
                              "05/15/2011 12:00:00.007 1 < \\x0",
                              "05/15/2011 12:00:00.007 1 < \\xfg",
                              "05/15/2011 12:00:00.007_1 < x",
                              "05/15/2011 12:00:00.007 1_< x",
                              "05/15/2011 12:00:00.007 1 <_x",
                              "05/15/2011 12:00:00.0/7 1 < x",
                              "05/15/2011 12:00:00.007 1 < \\x0G",
                              "05/15/2011 12:00:00.007 1 < \\x/0",
                              "05/15/2011 12:00:00.007 1 < \\x:0"}) {
        QTest::addRow("%s", sLine) << std::string(sLine);
    }
}

void CaptureLineTest::otherLinesAreRefused() {
    QFETCH(std::string, line);
    QVERIFY(!ReadCaptureLine(line));
}

QTEST_APPLESS_MAIN(CaptureLineTest)
#include "CaptureLineTest.moc"
