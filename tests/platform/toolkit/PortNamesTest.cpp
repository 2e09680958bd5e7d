// What may stand in a port field, and what is offered to stand there; in a temporary folder of devices.
#include "platform/toolkit/PortNames.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using toolkit::CommError;
using toolkit::PortFolders;

namespace {
const QString LongName = QStringLiteral("usb-") + QString(100, QLatin1Char('L'));

void Touch(const QString& sPath) {
    QFile tFile(sPath);
    QVERIFY(tFile.open(QIODevice::WriteOnly));
}
}  // namespace

class PortNamesTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void NumberOfAPortField_data();
    void NumberOfAPortField();
    void TextNamesADevice_data();
    void TextNamesADevice();
    void TextNamesNoDevice_data();
    void TextNamesNoDevice();
    void AmbiguousBeginningNamesItsCandidates();
    void UnpluggedDeviceHasNoName();
    void DefaultFoldersAreTheSystems();
    void OffersLastingNamesAndTheKernelName();
    void BestNamesComeFirst();
    void NameTooLongToKeepIsOfferedByItsBeginning();
    void LongTextIsKeptByItsName_data();
    void LongTextIsKeptByItsName();
    void KeptNameOfALongPathLeadsToItsDevice();
    void DeviceWithoutLinksIsOfferedByItsKernelName();
    void ListingTheSystemsPortsWorks();

private:
    PortFolders Folders() const;
    QString Dev(const QString& sName) const { return m_tFolder.filePath(QStringLiteral("dev/") + sName); }
    QTemporaryDir m_tFolder;
};

PortFolders PortNamesTest::Folders() const {
    return {m_tFolder.filePath(QStringLiteral("dev")),
            {Dev(QStringLiteral("serial/by-id")), Dev(QStringLiteral("serial/by-path"))}};
}

void PortNamesTest::initTestCase() {
    for (const char* pFolder : {"dev/pts", "dev/serial/by-id", "dev/serial/by-path"})
        QVERIFY(QDir(m_tFolder.path()).mkpath(QString::fromLatin1(pFolder)));
    for (const char* pName : {"ttyUSB0", "ttyUSB1", "ttyACM0", "ttyACM1", "pts/3", "ttyS4"})
        Touch(Dev(QString::fromLatin1(pName)));
    const auto Link = [this](const QString& sDevice, const QString& sLink) {
        QVERIFY(QFile::link(Dev(sDevice), Dev(QStringLiteral("serial/") + sLink)));
    };
    Link(QStringLiteral("ttyUSB0"), QStringLiteral("by-id/usb-Acme_Serial_A1-if00-port0"));
    Link(QStringLiteral("ttyUSB1"), QStringLiteral("by-id/usb-Acme_Serial_B2-if00-port0"));
    Link(QStringLiteral("ttyUSB1"), QStringLiteral("by-id/usb-Acme_Serial_B2"));
    Link(QStringLiteral("ttyACM0"), QStringLiteral("by-id/usb-Other_GPS-if00"));
    Link(QStringLiteral("ttyACM0"), QStringLiteral("by-path/pci-0000:00:14.0-usb-0:1:1.0"));
    Link(QStringLiteral("ttyACM0"), QStringLiteral("by-path/pci-0000:00:14.0-usbv2-0:1:1.0"));
    Link(QStringLiteral("ttyUSB0"), QStringLiteral("by-path/pci-0000:00:15.0-usb-0:2:1.0"));
    Link(QStringLiteral("ttyACM1"), QStringLiteral("by-id/") + LongName);
    Link(QStringLiteral("gone"), QStringLiteral("by-id/usb-Gone_Device"));
}

void PortNamesTest::NumberOfAPortField_data() {
    QTest::addColumn<QString>("sText");
    QTest::addColumn<int>("iNumber");  // -999: none
    const auto Row = [](const char* pText, int iNumber) {
        QTest::addRow("'%s'", pText) << QString::fromLatin1(pText) << iNumber;
    };
    Row("6", 6);
    Row(" 6 ", 6);
    Row("006", 6);
    Row("6.0", 6);
    Row("6.5", 6);  // half to even
    Row("7.5", 8);
    Row("COM6", 6);
    Row("com6", 6);
    Row(" Com12 ", 12);
    Row("0", 0);
    Row("-3", -3);
    Row("300", 300);
    Row("", -999);
    Row("COM", -999);
    Row("COM 6", -999);
    Row("COM6.0", -999);
    Row("COM-6", -999);
    Row("COM6x", -999);
    Row("6x", -999);
    Row("ttyUSB0", -999);
    Row("99999999999", -999);
}

void PortNamesTest::NumberOfAPortField() {
    QFETCH(QString, sText);
    QFETCH(int, iNumber);
    QCOMPARE(toolkit::PortNumber(sText).value_or(-999), iNumber);
}

void PortNamesTest::TextNamesADevice_data() {
    QTest::addColumn<QString>("sText");
    QTest::addColumn<QString>("sDevice");  // below the folder of devices
    const auto Row = [](const char* pText, const char* pDevice) {
        QTest::addRow("'%s'", pText) << QString::fromLatin1(pText) << QString::fromLatin1(pDevice);
    };
    Row("1", "ttyS0");
    Row("6", "ttyS5");
    Row("255", "ttyS254");
    Row("6.0", "ttyS5");
    Row("2.5", "ttyS1");
    Row("COM6", "ttyS5");
    Row(" com255 ", "ttyS254");
    Row("ttyUSB0", "ttyUSB0");
    Row(" ttyUSB1 ", "ttyUSB1");
    Row("pts/3", "pts/3");
    Row("serial/by-id/usb-Other_GPS-if00", "serial/by-id/usb-Other_GPS-if00");
    Row("usb-Acme_Serial_A1-if00-port0", "serial/by-id/usb-Acme_Serial_A1-if00-port0");
    Row("usb-Acme_Serial_A", "serial/by-id/usb-Acme_Serial_A1-if00-port0");
    Row("usb-O", "serial/by-id/usb-Other_GPS-if00");
    Row("usb-Acme_Serial_B2", "serial/by-id/usb-Acme_Serial_B2");  // a whole name beats a beginning
    Row("usb-Acme_Serial_B", "serial/by-id/usb-Acme_Serial_B2");   // two names of one device
    Row("pci-0000:00:14", "serial/by-path/pci-0000:00:14.0-usb-0:1:1.0");
}

void PortNamesTest::TextNamesADevice() {
    QFETCH(QString, sText);
    QFETCH(QString, sDevice);
    QCOMPARE(toolkit::PortDevice(sText, Folders()), Dev(sDevice));
}

void PortNamesTest::TextNamesNoDevice_data() {
    QTest::addColumn<QString>("sText");
    QTest::addColumn<QString>("sReason");
    const auto Row = [](const char* pText, const char* pReason) {
        QTest::addRow("'%s'", pText) << QString::fromLatin1(pText) << QString::fromLatin1(pReason);
    };
    Row("", "no port is given");
    Row("   ", "no port is given");
    Row("0", "\"0\" is no port number from 1 to 255");
    Row("256", "\"256\" is no port number from 1 to 255");
    Row("-1", "\"-1\" is no port number from 1 to 255");
    Row("0.5", "\"0.5\" is no port number from 1 to 255");
    Row("COM0", "\"COM0\" is no port number from 1 to 255");
    Row("COM256", "\"COM256\" is no port number from 1 to 255");
    Row("99999999999", "\"99999999999\" is no port number from 1 to 255");
    Row("abc", "\"abc\" names no serial port");
    Row("6x", "\"6x\" names no serial port");
    Row("ttyUSB7", "\"ttyUSB7\" names no serial port");
    Row("COM", "\"COM\" names no serial port");
    Row("pts", "\"pts\" names no serial port");
    Row("USB-other", "\"USB-other\" names no serial port");
    Row("Acme", "\"Acme\" names no serial port");  // within a name, not its beginning
}

void PortNamesTest::TextNamesNoDevice() {
    QFETCH(QString, sText);
    QFETCH(QString, sReason);
    try {
        toolkit::PortDevice(sText, Folders());
        QFAIL("a device was found");
    } catch (const CommError& tError) {
        QCOMPARE(tError.Text(), sReason);
    }
}

void PortNamesTest::AmbiguousBeginningNamesItsCandidates() {
    try {
        toolkit::PortDevice(QStringLiteral("usb-Acme"), Folders());
        QFAIL("a device was found");
    } catch (const CommError& tError) {
        QCOMPARE(tError.Text(),
                 QStringLiteral("\"usb-Acme\" names more than one serial port: usb-Acme_Serial_A1-if00-port0, "
                                "usb-Acme_Serial_B2"));
    }
}

void PortNamesTest::UnpluggedDeviceHasNoName() {
    QVERIFY_EXCEPTION_THROWN(toolkit::PortDevice(QStringLiteral("usb-Gone"), Folders()), CommError);
}

void PortNamesTest::DefaultFoldersAreTheSystems() {
    QCOMPARE(toolkit::PortDevice(QStringLiteral("6")), QStringLiteral("/dev/ttyS5"));
    QCOMPARE(toolkit::PortDevice(QStringLiteral("/dev/anything at all")), QStringLiteral("/dev/anything at all"));
    QCOMPARE(toolkit::PortDevice(QStringLiteral("null")), QStringLiteral("/dev/null"));
}

void PortNamesTest::OffersLastingNamesAndTheKernelName() {
    const auto tOffers =
        toolkit::OfferPorts({{Dev(QStringLiteral("ttyUSB0")), QStringLiteral("Acme USB to Serial")}}, Folders());
    QStringList sNames;
    for (const auto& tOffer : tOffers) {
        sNames << tOffer.sName;
        QCOMPARE(tOffer.tPort.sDescription, QStringLiteral("Acme USB to Serial"));
        QCOMPARE(tOffer.tPort.sDevice, Dev(QStringLiteral("ttyUSB0")));
        // What is offered leads to the device when it is typed.
        QCOMPARE(QFileInfo(toolkit::PortDevice(tOffer.sName, Folders())).canonicalFilePath(),
                 QFileInfo(tOffer.tPort.sDevice).canonicalFilePath());
    }
    QCOMPARE(sNames, (QStringList{QStringLiteral("usb-Acme_Serial_A1-if00-port0"),
                                  QStringLiteral("pci-0000:00:15.0-usb-0:2:1.0"), QStringLiteral("ttyUSB0")}));
}

void PortNamesTest::BestNamesComeFirst() {
    std::vector<toolkit::PluggedPort> tPlugged;
    for (const char* pName : {"ttyS4", "ttyS10", "ttyUSB10", "ttyUSB1", "ttyUSB0", "ttyACM0"})
        tPlugged.push_back({Dev(QString::fromLatin1(pName)), QString::fromLatin1(pName)});
    QStringList sNames;
    for (const auto& tOffer : toolkit::OfferPorts(tPlugged, Folders())) sNames << tOffer.sName;
    QCOMPARE(sNames, (QStringList{QStringLiteral("usb-Acme_Serial_A1-if00-port0"), QStringLiteral("usb-Acme_Serial_B2"),
                                  QStringLiteral("usb-Acme_Serial_B2-if00-port0"), QStringLiteral("usb-Other_GPS-if00"),
                                  QStringLiteral("pci-0000:00:14.0-usb-0:1:1.0"),
                                  QStringLiteral("pci-0000:00:14.0-usbv2-0:1:1.0"),
                                  QStringLiteral("pci-0000:00:15.0-usb-0:2:1.0"), QStringLiteral("ttyACM0"),
                                  QStringLiteral("ttyUSB0"), QStringLiteral("ttyUSB1"), QStringLiteral("ttyUSB10"),
                                  QStringLiteral("ttyS4"), QStringLiteral("ttyS10")}));
}

void PortNamesTest::NameTooLongToKeepIsOfferedByItsBeginning() {
    const auto tOffers = toolkit::OfferPorts({{Dev(QStringLiteral("ttyACM1")), {}}}, Folders());
    QCOMPARE(tOffers.size(), std::size_t{2});
    QCOMPARE(tOffers[0].sName, LongName.left(79));
    QCOMPARE(tOffers[0].sWholeName, LongName);
    QCOMPARE(QFileInfo(toolkit::PortDevice(tOffers[0].sName, Folders())).canonicalFilePath(),
             QFileInfo(Dev(QStringLiteral("ttyACM1"))).canonicalFilePath());
    QCOMPARE(tOffers[1].sName, QStringLiteral("ttyACM1"));
    // Not where another device's name begins the same way.
    const QString sTwin = Dev(QStringLiteral("serial/by-id/")) + LongName.left(79) + QStringLiteral("other");
    QVERIFY(QFile::link(Dev(QStringLiteral("ttyS4")), sTwin));
    const auto tAmbiguous = toolkit::OfferPorts({{Dev(QStringLiteral("ttyACM1")), {}}}, Folders());
    QVERIFY(QFile::remove(sTwin));
    QCOMPARE(tAmbiguous.size(), std::size_t{1});
    QCOMPARE(tAmbiguous[0].sName, QStringLiteral("ttyACM1"));
}

void PortNamesTest::LongTextIsKeptByItsName_data() {
    QTest::addColumn<QString>("sText");  // "@": the folder of lasting names
    QTest::addColumn<QString>("sKept");
    const QString s60(60, QLatin1Char('n'));
    const QString s79(79, QLatin1Char('n'));
    QTest::newRow("short") << QStringLiteral("ttyUSB0") << QStringLiteral("ttyUSB0");
    QTest::newRow("79 characters") << s79 << s79;
    QTest::newRow("80 characters that are no name") << s79 + QLatin1Char('n') << QString();
    QTest::newRow("path") << QStringLiteral("@/") + s60 << s60;
    QTest::newRow("path with blanks around") << QStringLiteral(" @/") + s60 + QLatin1Char(' ') << s60;
    QTest::newRow("path of a long name") << QStringLiteral("@/") + LongName << LongName.left(79);
    QTest::newRow("long name") << LongName << LongName.left(79);
    QTest::newRow("path elsewhere") << QStringLiteral("/elsewhere/") + s79 << QString();
}

void PortNamesTest::LongTextIsKeptByItsName() {
    QFETCH(QString, sText);
    QFETCH(QString, sKept);
    // Long enough that no path fits, wherever temporary files lie.
    sText.replace(QLatin1Char('@'), Dev(QStringLiteral("serial/by-id")));
    QCOMPARE(toolkit::KeptPortName(sText, Folders()).value_or(QString()), sKept);
}

void PortNamesTest::KeptNameOfALongPathLeadsToItsDevice() {
    const QString sPath = Dev(QStringLiteral("serial/by-id/")) + LongName;
    const auto sKept = toolkit::KeptPortName(sPath, Folders());
    QVERIFY(sKept.has_value());
    QCOMPARE(QFileInfo(toolkit::PortDevice(*sKept, Folders())).canonicalFilePath(),
             QFileInfo(sPath).canonicalFilePath());
}

void PortNamesTest::DeviceWithoutLinksIsOfferedByItsKernelName() {
    const auto tOffers = toolkit::OfferPorts(
        {{Dev(QStringLiteral("ttyS4")), {}}, {QStringLiteral("/elsewhere/ttyX"), QStringLiteral("Odd")}}, Folders());
    QCOMPARE(tOffers.size(), std::size_t{2});
    QCOMPARE(tOffers[0].sName, QStringLiteral("/elsewhere/ttyX"));
    QCOMPARE(tOffers[1].sName, QStringLiteral("ttyS4"));
}

void PortNamesTest::ListingTheSystemsPortsWorks() {
    for (const auto& tOffer : toolkit::OfferPorts(toolkit::PluggedPorts())) {
        QVERIFY(tOffer.sName.size() <= 79);
        QVERIFY(tOffer.tPort.sDevice.startsWith(QLatin1String("/dev/")));
    }
}

QTEST_GUILESS_MAIN(PortNamesTest)
#include "PortNamesTest.moc"
