// Where the manual is found: beside an installed program, or in the build folder.
#include "app/ManualPath.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

void Write(const QDir& tRoot, const char* sFile) {
    const QString sPath = tRoot.filePath(QLatin1String(sFile));
    QVERIFY(tRoot.mkpath(QFileInfo(sPath).path()));
    QFile tFile(sPath);
    QVERIFY(tFile.open(QIODevice::WriteOnly));
}

}  // namespace

class ManualPathTest : public QObject {
    Q_OBJECT
private slots:
    void manualIsFound_data();
    void manualIsFound();
};

void ManualPathTest::manualIsFound_data() {
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("manual");
    const QString sInstalled = QStringLiteral("usr/share/doc/tidewatch/manual.html");
    const QString sSource = QStringLiteral("src/build/release/packaging/manual/manual.html");
    QTest::newRow("installed") << QStringList{sInstalled, sSource} << QStringLiteral("usr/bin/tidewatch") << sInstalled;
    QTest::newRow("built") << QStringList{sInstalled, sSource} << QStringLiteral("src/build/release/app/tidewatch")
                           << sSource;
    QTest::newRow("neither") << QStringList{} << QStringLiteral("usr/bin/tidewatch") << QString();
    // Somebody else's documents are not ours.
    QTest::newRow("elsewhere") << QStringList{QStringLiteral("docs/manual.html")} << QStringLiteral("bin/tidewatch")
                               << QString();
}

void ManualPathTest::manualIsFound() {
    QFETCH(QStringList, files);
    QFETCH(QString, program);
    QFETCH(QString, manual);
    const QTemporaryDir tTemporary;
    const QDir tRoot(QDir(tTemporary.path()).canonicalPath());
    Write(tRoot, qPrintable(program));
    for (const QString& sFile : files) Write(tRoot, qPrintable(sFile));
    QCOMPARE(app::ManualPath(tRoot.filePath(program)), manual.isEmpty() ? QString() : tRoot.filePath(manual));
}

QTEST_APPLESS_MAIN(ManualPathTest)
#include "ManualPathTest.moc"
