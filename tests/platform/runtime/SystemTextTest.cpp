// The system's words for an error: in the user's language as far as a byte a character holds it, in English otherwise.
#include "platform/runtime/SystemText.h"

#include <QTest>
#include <cerrno>

#include "tests/support/PrintString.h"
#include "tests/support/SystemLanguage.h"

using runtime::SystemText;
using support::SystemLanguage;

class SystemTextTest : public QObject {
    Q_OBJECT

private slots:
    void wordsAreEnglish();
    void wordsInLatinLetters();
    void otherWordsAreEnglish_data();
    void otherWordsAreEnglish();
    void unknownErrorHasItsNumber();
};

void SystemTextTest::wordsAreEnglish() { QCOMPARE(SystemText(ENOENT), std::string("No such file or directory")); }

void SystemTextTest::wordsInLatinLetters() {
    const SystemLanguage tGerman("de", {{"No such file or directory", "\xC2\xBB\xC3\x84\xC3\xBF\xC2\xAB fehlt"}});
    QCOMPARE(SystemText(ENOENT), std::string("\xBB\xC4\xFF\xAB fehlt"));
}

void SystemTextTest::otherWordsAreEnglish_data() {
    QTest::addColumn<QByteArray>("words");
    QTest::newRow("first letter beyond Latin-1") << QByteArray("\xC4\x80 x");
    QTest::newRow("two bytes for one character of ASCII") << QByteArray("\xC1\x81 x");
    QTest::newRow("three bytes") << QByteArray("\xE2\x82\xAC x");
    QTest::newRow("cut") << QByteArray("x \xC3");
    QTest::newRow("first bytes alone") << QByteArray("\xC3\xC3 x");
    QTest::newRow("ASCII behind a first byte") << QByteArray("\xC3x");
    QTest::newRow("a second byte alone") << QByteArray("\x84 x");
}

void SystemTextTest::otherWordsAreEnglish() {
    QFETCH(QByteArray, words);
    const SystemLanguage tOther("xx", {{"No such file or directory", words}});
    QCOMPARE(SystemText(ENOENT), std::string("No such file or directory"));
}

void SystemTextTest::unknownErrorHasItsNumber() {
    QCOMPARE(SystemText(4711), std::string("Unknown error 4711"));
    const SystemLanguage tRussian("ru", {{"Unknown error ", QString::fromUtf8("Неизвестная ошибка ").toUtf8()}});
    QCOMPARE(SystemText(4711), std::string("Unknown error 4711"));
}

QTEST_GUILESS_MAIN(SystemTextTest)
#include "SystemTextTest.moc"
