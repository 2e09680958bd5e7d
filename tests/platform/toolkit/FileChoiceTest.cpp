// What a chosen file name stands for, and when a question is left to ask; the patterns of the filter.
#include "platform/toolkit/FileChoice.h"

#include <QRegularExpression>
#include <QStringList>
#include <QTest>

class FileChoiceTest : public QObject {
    Q_OBJECT

private slots:
    void chosenNames_data();
    void chosenNames();
    void patternsOfTheFilterMatchEveryCase_data();
    void patternsOfTheFilterMatchEveryCase();
    void filterStaysAsItIsBeforeThePatterns();
};

void FileChoiceTest::chosenNames_data() {
    QTest::addColumn<bool>("save");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("existing");
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("ask");
    const auto tRow = [](const char* sName, bool bSave, const char* sChosen, const char* sExisting, const char* sFile,
                         bool bAsk) {
        QTest::newRow(sName) << bSave << QString::fromUtf8(sChosen) << QString::fromUtf8(sExisting)
                             << QString::fromUtf8(sFile) << bAsk;
    };
    tRow("save a new name", true, "/d/new", "", "/d/new.txt", false);
    tRow("save a new name with suffix", true, "/d/new.txt", "", "/d/new.txt", false);
    tRow("save over a file: the dialog has asked", true, "/d/keep.txt", "/d/keep.txt", "/d/keep.txt", false);
    tRow("save, the suffix leads to a file", true, "/d/keep", "/d/keep.txt", "/d/keep.txt", true);
    tRow("save, the dialog has asked about another", true, "/d/keep", "/d/keep /d/keep.txt", "/d/keep.txt", true);
    tRow("save, the dialog has asked about a name we do not use", true, "/d/keep", "/d/keep", "/d/keep.txt", false);
    tRow("save with another suffix", true, "/d/keep.log", "/d/keep.log.txt", "/d/keep.log", false);
    tRow("save with the suffix in capitals", true, "/d/A.TXT", "/d/A.txt", "/d/A.TXT", false);
    tRow("save, a point ends the name", true, "/d/keep.", "/d/keep.txt", "/d/keep.", false);
    tRow("save, a point in the folder only", true, "/d.d/keep", "/d.d/keep.txt", "/d.d/keep.txt", true);
    tRow("open a file", false, "/d/aaa.txt", "/d/aaa.txt", "/d/aaa.txt", false);
    tRow("open a file without suffix", false, "/d/aaa", "/d/aaa", "/d/aaa", false);
    tRow("open the chosen one of two", false, "/d/aaa", "/d/aaa /d/aaa.txt", "/d/aaa", false);
    tRow("open a name that lacks the suffix", false, "/d/aaa", "/d/aaa.txt", "/d/aaa.txt", false);
    tRow("open a name that is nowhere", false, "/d/aaa", "", "/d/aaa", false);
    tRow("open, another suffix", false, "/d/aaa.log", "/d/aaa.log.txt", "/d/aaa.log", false);
}

void FileChoiceTest::chosenNames() {
    QFETCH(bool, save);
    QFETCH(QString, chosen);
    QFETCH(QString, existing);
    toolkit::FileRequest tRequest{};
    tRequest.bSave = save;
    tRequest.sExtension = QStringLiteral("txt");
    const QStringList sExisting = existing.split(QLatin1Char(' '));
    const auto tChoice = toolkit::ChooseFile(tRequest, chosen, [&](const QString& s) { return sExisting.contains(s); });
    QTEST(tChoice.sFile, "file");
    QTEST(tChoice.bAsk, "ask");
}

void FileChoiceTest::patternsOfTheFilterMatchEveryCase_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("match");
    for (const char* sName : {"Tidewatch.Txt", "TIDEWATCH.TXT", "a.txt", "b.tXt"}) {
        QTest::newRow(sName) << QString::fromLatin1(sName) << true;
    }
    for (const char* sName : {"Tidewatch", "a.txt.log", "a.text", "atxt"}) {
        QTest::newRow(sName) << QString::fromLatin1(sName) << false;
    }
}

void FileChoiceTest::patternsOfTheFilterMatchEveryCase() {
    QFETCH(QString, name);
    const QString sFilter = toolkit::AnyCaseFilter(QStringLiteral("Text (*.txt)"));
    const QString sPattern = sFilter.section(QLatin1Char('('), -1).chopped(1);
    const auto tPattern = QRegularExpression::fromWildcard(sPattern, Qt::CaseSensitive);
    QTEST(tPattern.match(name).hasMatch(), "match");
}

void FileChoiceTest::filterStaysAsItIsBeforeThePatterns() {
    QVERIFY(toolkit::AnyCaseFilter(QStringLiteral("Text (*.txt)")).startsWith(QLatin1String("Text (*.txt) (")));
    QVERIFY(toolkit::AnyCaseFilter(QStringLiteral("Text (*.txt)")).endsWith(QLatin1Char(')')));
}

QTEST_APPLESS_MAIN(FileChoiceTest)
#include "FileChoiceTest.moc"
