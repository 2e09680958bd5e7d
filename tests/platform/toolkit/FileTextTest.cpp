// The letters that a file's bytes mean, and that a text becomes the bytes that it was.
#include "platform/toolkit/FileText.h"

#include <QTest>

#include "tests/support/Bytes.h"

using support::Bytes;
using support::View;
using toolkit::FileText;

class FileTextTest : public QObject {
    Q_OBJECT

private slots:
    void bytesAreRead_data();
    void bytesAreRead();
    void textsAreWritten_data();
    void textsAreWritten();
    void everyByteComesBack_data();
    void everyByteComesBack();
};

void FileTextTest::bytesAreRead_data() {
    QTest::addColumn<QByteArray>("sBytes");
    QTest::addColumn<QString>("sText");
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("plain") << QByteArray("x=1\r\n") << QStringLiteral("x=1\r\n");
    QTest::newRow("Latin-1") << QByteArray("48\xB0 \xE4") << QString::fromUtf8("48° ä");
    QTest::newRow("UTF-8") << QByteArray("48° ä приёмник") << QString::fromUtf8("48° ä приёмник");
    QTest::newRow("UTF-8 with a mark") << QByteArray("\xEF\xBB\xBF[A] ä") << QString::fromUtf8("[A] ä");
    QTest::newRow("plain with a mark") << QByteArray("\xEF\xBB\xBF[A]") << QStringLiteral("[A]");
    QTest::newRow("UTF-16, low byte first") << QByteArray("\xFF\xFE[\0A\0]\0\x3F\x04", 10) << QString::fromUtf8("[A]п");
    QTest::newRow("UTF-16, high byte first")
        << QByteArray("\xFE\xFF\0[\0A\0]\x04\x3F", 10) << QString::fromUtf8("[A]п");
    QTest::newRow("UTF-8 cut in a letter") << QByteArray("\xC3\xA4\xC3") << QString::fromLatin1("\xC3\xA4\xC3");
}

void FileTextTest::bytesAreRead() {
    QFETCH(QByteArray, sBytes);
    QTEST(toolkit::FromFileBytes(View(sBytes)).sText, "sText");
}

void FileTextTest::textsAreWritten_data() {
    QTest::addColumn<QByteArray>("sBefore");
    QTest::addColumn<QString>("sText");
    QTest::addColumn<QByteArray>("sAfter");
    QTest::newRow("new file") << QByteArray() << QString::fromUtf8("48°") << QByteArray("48\xB0");
    QTest::newRow("plain file") << QByteArray("x") << QString::fromUtf8("48°") << QByteArray("48\xB0");
    QTest::newRow("Latin-1 file") << QByteArray("\xE4") << QString::fromUtf8("48°") << QByteArray("48\xB0");
    QTest::newRow("Latin-1 file, other letters") << QByteArray("\xE4") << QString::fromUtf8("ä п") << QByteArray("ä п");
    QTest::newRow("Latin-1 file that would pass for UTF-16")
        << QByteArray("\xFF\xFEx") << QString::fromUtf8("ÿþxy") << QByteArray("ÿþxy");
    QTest::newRow("Latin-1 file that would pass for UTF-8")
        << QByteArray("\xE4") << QString::fromUtf8("Ã©") << QByteArray("Ã©");
    QTest::newRow("UTF-8 file") << QByteArray("ä") << QString::fromUtf8("48°") << QByteArray("48°");
    QTest::newRow("file with a mark") << QByteArray("\xEF\xBB\xBFx") << QString::fromUtf8("48°")
                                      << QByteArray(
                                             "\xEF\xBB\xBF"
                                             "48°");
    QTest::newRow("UTF-16 file") << QByteArray("\xFF\xFEx\0", 4) << QString::fromUtf8("°п")
                                 << QByteArray("\xFF\xFE\xB0\0\x3F\x04", 6);
}

void FileTextTest::textsAreWritten() {
    QFETCH(QByteArray, sBefore);
    QFETCH(QString, sText);
    FileText t = toolkit::FromFileBytes(View(sBefore));
    t.sText = sText;
    const std::string sWritten = toolkit::ToFileBytes(t);
    QTEST(Bytes(sWritten), "sAfter");
    QCOMPARE(toolkit::FromFileBytes(sWritten).sText, sText);
}

void FileTextTest::everyByteComesBack_data() {
    QTest::addColumn<QByteArray>("sBytes");
    QByteArray sAll;
    for (int i = 0; i < 256; ++i) sAll += static_cast<char>(i);
    QTest::newRow("every byte") << sAll;
    QTest::newRow("mark, then what is no UTF-8") << QByteArray("\xEF\xBB\xBF[A]\r\nx=48\xB0\r\n");
    QTest::newRow("mark alone") << QByteArray("\xEF\xBB\xBF");
    QTest::newRow("two marks") << QByteArray("\xEF\xBB\xBF\xEF\xBB\xBFx");
    QTest::newRow("odd number of bytes of UTF-16") << QByteArray("\xFF\xFEx\0y", 5);
    QTest::newRow("half a pair in UTF-16") << QByteArray("\xFF\xFE\x00\xD8x\0", 6);
    QTest::newRow("overlong UTF-8") << QByteArray("\xC0\xAF");
    QTest::newRow("zeros") << QByteArray(5, '\0');
}

void FileTextTest::everyByteComesBack() {
    QFETCH(QByteArray, sBytes);
    QCOMPARE(Bytes(toolkit::ToFileBytes(toolkit::FromFileBytes(View(sBytes)))), sBytes);
}

QTEST_GUILESS_MAIN(FileTextTest)
#include "FileTextTest.moc"
