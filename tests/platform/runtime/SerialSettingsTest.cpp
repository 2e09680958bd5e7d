// The settings string of a port: what is taken, and what the user is told of what is not.
#include "platform/runtime/SerialSettings.h"

#include <QByteArray>
#include <QTest>
#include <string>

using namespace runtime;

class SerialSettingsTest : public QObject {
    Q_OBJECT

private slots:
    void goodSettingsAreRead_data();
    void goodSettingsAreRead();
    void badSettingsNameTheirField_data();
    void badSettingsNameTheirField();
    void charactersPerSecondCountEveryBit_data();
    void charactersPerSecondCountEveryBit();
};

void SerialSettingsTest::goodSettingsAreRead_data() {
    QTest::addColumn<QByteArray>("sSettings");
    QTest::addColumn<int>("iBaud");
    QTest::addColumn<char>("cParity");
    QTest::addColumn<int>("iDataBits");
    QTest::addColumn<int>("iStopBits");
    const auto Row = [](const char* sSettings, int iBaud, char cParity, int iDataBits, StopBits eStopBits) {
        QTest::addRow("\"%s\"", sSettings)
            << QByteArray(sSettings) << iBaud << cParity << iDataBits << static_cast<int>(eStopBits);
    };
    Row("38400,n,8,1", 38400, 'n', 8, StopBits::One);
    Row("4800,n,8,1", 4800, 'n', 8, StopBits::One);
    Row("9600,e,7,2", 9600, 'e', 7, StopBits::Two);
    Row("9600,o,6,1", 9600, 'o', 6, StopBits::One);
    Row("9600,m,5,1.5", 9600, 'm', 5, StopBits::OneAndHalf);
    Row("9600,s,8,1", 9600, 's', 8, StopBits::One);
    Row("38400,N,8,1", 38400, 'n', 8, StopBits::One);
    Row("38400,E,8,1", 38400, 'e', 8, StopBits::One);
    Row(" 38400 , n , 8 , 1 ", 38400, 'n', 8, StopBits::One);
    Row("1,n,8,1", 1, 'n', 8, StopBits::One);
    Row("2147483647,n,8,1", 2147483647, 'n', 8, StopBits::One);
}

void SerialSettingsTest::goodSettingsAreRead() {
    QFETCH(QByteArray, sSettings);
    QFETCH(int, iBaud);
    QFETCH(char, cParity);
    QFETCH(int, iDataBits);
    QFETCH(int, iStopBits);
    const SerialSettings tSettings = ParseSerialSettings(sSettings.toStdString());
    QCOMPARE(tSettings.lBaud, iBaud);
    QCOMPARE(tSettings.cParity, cParity);
    QCOMPARE(tSettings.iDataBits, iDataBits);
    QCOMPARE(static_cast<int>(tSettings.eStopBits), iStopBits);
}

void SerialSettingsTest::badSettingsNameTheirField_data() {
    QTest::addColumn<QByteArray>("sSettings");
    QTest::addColumn<QByteArray>("sReason");
    const auto Row = [](const char* sSettings, const char* sReason) {
        QTest::addRow("\"%s\"", sSettings) << QByteArray(sSettings) << QByteArray(sReason);
    };
    constexpr const char* NoBaud = " is not a whole number above 0";
    Row("x,n,8,1", "baud rate \"x\" is not a whole number above 0");
    for (const char* sBaud : {"0", "-9600", "+9600", "9600.5", "9600x", "96 00", "1e4", "2147483648"}) {
        const QByteArray sSettings = QByteArray(sBaud) + ",n,8,1";
        QTest::newRow(sSettings.constData()) << sSettings << QByteArray("baud rate \"") + sBaud + '"' + NoBaud;
    }
    Row("38400,x,8,1", "parity \"x\" is not one of n, e, o, m, s");
    Row("38400,1,8,1", "parity \"1\" is not one of n, e, o, m, s");
    Row("38400,none,8,1", "parity \"none\" is not one of n, e, o, m, s");
    Row("38400,n,4,1", "data bits \"4\" is not one of 5, 6, 7, 8");
    Row("38400,n,9,1", "data bits \"9\" is not one of 5, 6, 7, 8");
    Row("38400,n,08,1", "data bits \"08\" is not one of 5, 6, 7, 8");
    Row("38400,n,8,0", "stop bits \"0\" is not one of 1, 1.5, 2");
    Row("38400,n,8,3", "stop bits \"3\" is not one of 1, 1.5, 2");
    Row("38400,n,8,1.0", "stop bits \"1.0\" is not one of 1, 1.5, 2");
    Row("38400,n,8,1.5", "stop bits \"1.5\" goes with 5 data bits only");
    Row("38400,n,7,1.5", "stop bits \"1.5\" goes with 5 data bits only");
    Row("38400,n,6,1.5", "stop bits \"1.5\" goes with 5 data bits only");
    Row("", "baud rate missing");
    Row("  ", "baud rate missing");
    Row("38400", "parity missing");
    Row("38400,", "parity missing");
    Row("38400,n", "data bits missing");
    Row("38400,n,8", "stop bits missing");
    Row("38400,n,8,", "stop bits missing");
    Row(",n,8,1", "baud rate missing");
    Row("38400,,8,1", "parity missing");
    Row("38400,n, ,1", "data bits missing");
    Row("38400;n;8;1", "parity missing");
    Row("38400,n,8,1,", "more than four fields, \"\" follows the stop bits");
    Row("38400,n,8,1,x,5", "more than four fields, \"x,5\" follows the stop bits");
}

void SerialSettingsTest::badSettingsNameTheirField() {
    QFETCH(QByteArray, sSettings);
    QFETCH(QByteArray, sReason);
    try {
        ParseSerialSettings(sSettings.toStdString());
        QFAIL("the settings were taken");
    } catch (const SettingsError& tError) {
        QCOMPARE(QByteArray(tError.what()), "Settings \"" + sSettings + "\": " + sReason);
    }
}

void SerialSettingsTest::charactersPerSecondCountEveryBit_data() {
    QTest::addColumn<QByteArray>("sSettings");
    QTest::addColumn<double>("dRate");
    QTest::newRow("start, 8, stop: ten bits") << QByteArray("38400,n,8,1") << 3840.0;
    QTest::newRow("slow line") << QByteArray("4800,n,8,1") << 480.0;
    QTest::newRow("start, 7, parity, 2: eleven bits") << QByteArray("1100,e,7,2") << 100.0;
    QTest::newRow("mark counts as parity") << QByteArray("1100,m,8,1") << 100.0;
    QTest::newRow("start, 5, one and a half: seven and a half bits") << QByteArray("750,n,5,1.5") << 100.0;
}

void SerialSettingsTest::charactersPerSecondCountEveryBit() {
    QFETCH(QByteArray, sSettings);
    QFETCH(double, dRate);
    QCOMPARE(CharactersPerSecond(ParseSerialSettings(sSettings.toStdString())), dRate);
}

QTEST_GUILESS_MAIN(SerialSettingsTest)
#include "SerialSettingsTest.moc"
