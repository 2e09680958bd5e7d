// The scenario program as its users see it: exit codes, the one line about a bad script, which states are dumped.
#include <signal.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class ScenarioRunnerTest : public QObject {
    Q_OBJECT
private slots:
    void aBadScriptEndsWithOneLine_data();
    void aBadScriptEndsWithOneLine();
    void theLastStateIsAlwaysDumped();
    void everyStateIsDumpedWhenAsked();
    void aLabelIsRepeated();
    void severalScriptsMakeAList();
    void aScriptThatDoesNotLoadGetsAnEmptyProfile();
    void aFailedExpectationIsNamed();
    void aCrashNamesTheScript();

private:
    struct Result {
        int iCode;
        QString sComplaints;
        QJsonDocument tOutput;
    };
    QString Write(const QString& sName, const QByteArray& sText) const;
    static Result Run(const QStringList& sArguments);
    static QJsonArray Dumps(const Result& t) { return t.tOutput[QStringLiteral("dumps")].toArray(); }

    QTemporaryDir m_tFolder;
};

QString ScenarioRunnerTest::Write(const QString& sName, const QByteArray& sText) const {
    const QString sPath = m_tFolder.filePath(sName);
    QFile tFile(sPath);
    if (!tFile.open(QIODevice::WriteOnly)) qFatal("cannot write %s", qPrintable(sPath));
    tFile.write(sText);
    return sPath;
}

ScenarioRunnerTest::Result ScenarioRunnerTest::Run(const QStringList& sArguments) {
    QProcess tProgram;
    tProgram.start(QStringLiteral(SCENARIO_PROGRAM), sArguments);
    if (!tProgram.waitForFinished(60000)) qFatal("the program does not end");
    return {tProgram.exitCode(), QString::fromUtf8(tProgram.readAllStandardError()),
            QJsonDocument::fromJson(tProgram.readAllStandardOutput())};
}

void ScenarioRunnerTest::aBadScriptEndsWithOneLine_data() {
    QTest::addColumn<QByteArray>("sScript");
    QTest::addColumn<QStringList>("sNamed");
    const auto tRow = [](const char* sName, const char* sScript, const QStringList& sNamed) {
        QTest::newRow(sName) << QByteArray(sScript) << sNamed;
    };
    const QString sStep1 = QStringLiteral("step 1");
    tRow("no JSON", "{\"steps\":", {QStringLiteral("JSON")});
    tRow("no object", "[]", {QStringLiteral("object")});
    tRow("no steps", "{}", {QStringLiteral("\"steps\"")});
    tRow("bad clock", R"({"clock":"noon","steps":[]})", {QStringLiteral("\"clock\"")});
    tRow("no step", R"({"steps":[{"do":"dump"},7]})", {sStep1});
    tRow("unknown step", R"({"steps":[{"do":"dump"},{"do":"jump"}]})", {sStep1, QStringLiteral("jump")});
    tRow("missing key", R"({"steps":[{"do":"dump"},{"do":"feed","port":0}]})", {sStep1, QStringLiteral("\"data\"")});
    tRow("wrong type", R"({"steps":[{"do":"dump"},{"do":"tab","index":"4"}]})", {sStep1, QStringLiteral("\"index\"")});
    tRow("broken number", R"({"steps":[{"do":"dump"},{"do":"tab","index":4.5}]})",
         {sStep1, QStringLiteral("\"index\"")});
    tRow("no such port", R"({"steps":[{"do":"dump"},{"do":"feed","port":2,"data":""}]})",
         {sStep1, QStringLiteral("\"port\"")});
    tRow("no such control", R"({"steps":[{"do":"dump"},{"do":"focus","control":"x"}]})",
         {sStep1, QStringLiteral("\"control\"")});
    tRow("value of another control", R"({"steps":[{"do":"dump"},{"do":"set","control":"txtOutputPort","value":1}]})",
         {sStep1, QStringLiteral("\"text\"")});
    tRow("character above 255", R"({"steps":[{"do":"dump"},{"do":"feed","port":0,"data":"\u20ac"}]})",
         {sStep1, QStringLiteral("\"data\"")});
}

void ScenarioRunnerTest::aBadScriptEndsWithOneLine() {
    QFETCH(QByteArray, sScript);
    QFETCH(QStringList, sNamed);
    const Result t = Run({Write(QStringLiteral("bad.json"), sScript)});
    QCOMPARE(t.iCode, 2);
    QCOMPARE(t.sComplaints.count(QLatin1Char('\n')), 1);
    for (const QString& s : sNamed) QVERIFY2(t.sComplaints.contains(s), qPrintable(t.sComplaints));
    QVERIFY(t.tOutput.isNull());
}

void ScenarioRunnerTest::theLastStateIsAlwaysDumped() {
    const Result t = Run({Write(QStringLiteral("a.json"), R"({"name":"n","steps":[{"do":"load"},{"do":"unload"}]})")});
    QCOMPARE(t.iCode, 0);
    QCOMPARE(t.tOutput[QStringLiteral("name")].toString(), QStringLiteral("n"));
    QCOMPARE(Dumps(t).size(), 1);
    QCOMPARE(Dumps(t)[0][QStringLiteral("step")].toInt(), 1);
    QVERIFY(Dumps(t)[0][QStringLiteral("label")].isNull());
}

void ScenarioRunnerTest::everyStateIsDumpedWhenAsked() {
    const QString sScript = Write(QStringLiteral("a.json"), R"({"steps":[{"do":"load"},{"do":"load"},{"do":"load"}]})");
    QCOMPARE(Dumps(Run({sScript, QStringLiteral("--every")})).size(), 3);
}

void ScenarioRunnerTest::aLabelIsRepeated() {
    const QJsonArray tDumps = Dumps(Run({Write(
        QStringLiteral("a.json"),
        R"({"steps":[{"do":"load","dump":"one"},{"do":"dump","label":"two"},{"do":"load","dump":true},{"do":"load"}]})")}));
    QCOMPARE(tDumps.size(), 4);
    QCOMPARE(tDumps[0][QStringLiteral("label")].toString(), QStringLiteral("one"));
    QCOMPARE(tDumps[1][QStringLiteral("label")].toString(), QStringLiteral("two"));
    QVERIFY(tDumps[2][QStringLiteral("label")].isNull());
}

void ScenarioRunnerTest::severalScriptsMakeAList() {
    const QString sFirst = Write(QStringLiteral("a.json"),
                                 R"({"name":"a","steps":[{"do":"load","profile":"[Gps Data]\nLatitude=1 0 N"}]})");
    const QString sSecond = Write(QStringLiteral("b.json"), R"({"name":"b","steps":[{"do":"load"}]})");
    const QString sOutput = m_tFolder.filePath(QStringLiteral("out.json"));
    QCOMPARE(Run({sFirst, sSecond, QStringLiteral("-o"), sOutput}).iCode, 0);
    QFile tFile(sOutput);
    QVERIFY(tFile.open(QIODevice::ReadOnly));
    const QJsonArray tOutputs = QJsonDocument::fromJson(tFile.readAll()).array();
    QCOMPARE(tOutputs.size(), 2);
    const auto tLatitude = [&](int i) {
        return tOutputs[i][QStringLiteral("dumps")][0][QStringLiteral("state")][QStringLiteral("members")]
                       [QStringLiteral("m_dLatitude")]
                           .toDouble();
    };
    QCOMPARE(tLatitude(0), 1.0);
    QCOMPARE(tLatitude(1), -999.0);  // nothing is left of the first
}

void ScenarioRunnerTest::aScriptThatDoesNotLoadGetsAnEmptyProfile() {
    const Result t =
        Run({Write(QStringLiteral("a.json"), R"({"steps":[{"do":"clock","set":"2012-01-02T03:04:05"}]})")});
    const QJsonValue tState = Dumps(t)[0][QStringLiteral("state")];
    QCOMPARE(tState[QStringLiteral("clock")].toString(), QStringLiteral("2012-01-02T03:04:05"));
    QCOMPARE(tState[QStringLiteral("status")][0].toString(), QStringLiteral("Stopped"));
}

void ScenarioRunnerTest::aFailedExpectationIsNamed() {
    const Result t =
        Run({Write(QStringLiteral("a.json"),
                   R"({"steps":[{"do":"load","expect":{"caption":"Tidewatch","status":{"0":"Running"}}}]})")});
    QCOMPARE(t.iCode, 1);
    QVERIFY(t.sComplaints.contains(QStringLiteral("step 0 (load): status/0: expected \"Running\", found \"Stopped\"")));
    QVERIFY(!t.sComplaints.contains(QStringLiteral("caption")));
    QCOMPARE(Dumps(t).size(), 1);
}

void ScenarioRunnerTest::aCrashNamesTheScript() {
    // A script that would go on for days, and a signal from outside in place of a fault of its own.
    const QString sScript =
        Write(QStringLiteral("endless.json"), R"({"steps":[{"do":"load"},{"do":"advance","seconds":2000000000}]})");
    QString sComplaints;
    for (const int iMilliseconds : {500, 2000, 8000}) {  // a slow machine may not have begun by the first
        QProcess tProgram;
        tProgram.start(QStringLiteral(SCENARIO_PROGRAM), {sScript});
        QVERIFY(!tProgram.waitForFinished(iMilliseconds));
        ::kill(static_cast<pid_t>(tProgram.processId()), SIGABRT);
        QVERIFY(tProgram.waitForFinished(20000));
        sComplaints = QString::fromUtf8(tProgram.readAllStandardError());
        if (sComplaints.contains(QStringLiteral("crash in %1, step 1").arg(sScript))) return;
    }
    QFAIL(qPrintable(sComplaints));
}

QTEST_GUILESS_MAIN(ScenarioRunnerTest)
#include "ScenarioRunnerTest.moc"
