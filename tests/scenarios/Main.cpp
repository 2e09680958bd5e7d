// Plays scenario scripts on the real window and prints the dumps. See docs/scenarios.md.
#include <QApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>
#include <cstdio>
#include <optional>

#include "tests/scenarios/Dump.h"
#include "tests/scenarios/Expect.h"
#include "tests/scenarios/Script.h"
#include "tests/scenarios/Steps.h"
#include "tests/scenarios/Watchdog.h"

namespace {

using namespace scenarios;

enum ExitCode { Passed = 0, ExpectationFailed = 1, Malformed = 2, Broken = 3 };

struct Options {
    QStringList sScripts;
    QString sOutput;
    bool bEvery = false;
    bool bPty = false;
};

void Complain(const QString& sLine) { std::fprintf(stderr, "scenario: %s\n", qPrintable(sLine)); }

std::optional<Options> ReadOptions(const QStringList& sArguments) {
    Options tOptions;
    for (qsizetype i = 1; i < sArguments.size(); ++i) {
        const QString& sArgument = sArguments[i];
        if (sArgument == QLatin1String("--every")) {
            tOptions.bEvery = true;
        } else if (sArgument == QLatin1String("--pty")) {
            tOptions.bPty = true;
        } else if (sArgument == QLatin1String("-o") && i + 1 < sArguments.size()) {
            tOptions.sOutput = sArguments[++i];
        } else if (sArgument.startsWith(QLatin1Char('-'))) {
            return std::nullopt;
        } else {
            tOptions.sScripts << sArgument;
        }
    }
    if (tOptions.sScripts.isEmpty()) return std::nullopt;
    return tOptions;
}

class Player {
public:
    Player(const Script& tScript, const Options& tOptions)
        : m_tScript(tScript), m_tOptions(tOptions), m_tStage(tScript.sClock, tOptions.bPty) {}

    QJsonObject Play() {
        const int iSteps = static_cast<int>(m_tScript.tSteps.size());
        for (int i = 0; i < iSteps; ++i) {
            Watch(m_tScript.sFile, i);
            const QJsonObject& tStep = m_tScript.tSteps[static_cast<std::size_t>(i)];
            RunStep(m_tStage, tStep);
            Look(i, tStep, i == iSteps - 1);
        }
        return {{QStringLiteral("name"), m_tScript.tName}, {QStringLiteral("dumps"), m_tDumps}};
    }

    bool Expected() const { return m_bExpected; }

private:
    void Look(int iStep, const QJsonObject& tStep, bool bLast) {
        const QJsonValue tExpect = tStep.value(QLatin1String("expect"));
        const bool bDump = m_tOptions.bEvery || bLast || Wanted(tStep);
        if (!bDump && tExpect.isUndefined()) return;
        const QJsonObject tState = DumpState(m_tStage);
        if (bDump) {
            m_tDumps.append(QJsonObject{{QStringLiteral("step"), iStep},
                                        {QStringLiteral("label"), Label(tStep)},
                                        {QStringLiteral("state"), tState}});
        }
        if (!tExpect.isUndefined()) Compare(iStep, tStep, tState);
    }

    static bool Wanted(const QJsonObject& tStep) {
        const QJsonValue tDump = tStep.value(QLatin1String("dump"));
        return tStep.value(QLatin1String("do")) == QStringLiteral("dump") || tDump.isString() || tDump.toBool();
    }

    static QJsonValue Label(const QJsonObject& tStep) {
        const QJsonValue tDump = tStep.value(QLatin1String("dump"));
        if (tDump.isString()) return tDump;
        const QJsonValue tLabel = tStep.value(QLatin1String("label"));
        if (tStep.value(QLatin1String("do")) == QStringLiteral("dump") && !tLabel.isUndefined()) return tLabel;
        return QJsonValue::Null;
    }

    void Compare(int iStep, const QJsonObject& tStep, const QJsonObject& tState) {
        for (const QString& sDifference : Differences(tStep.value(QLatin1String("expect")), tState)) {
            m_bExpected = false;
            Complain(QStringLiteral("%1: step %2 (%3): %4")
                         .arg(m_tScript.sFile)
                         .arg(iStep)
                         .arg(tStep.value(QLatin1String("do")).toString(), sDifference));
        }
    }

    const Script& m_tScript;
    const Options& m_tOptions;
    Stage m_tStage;
    QJsonArray m_tDumps;
    bool m_bExpected = true;
};

bool Write(const Options& tOptions, const QJsonArray& tOutputs) {
    const bool bSingle = tOptions.sScripts.size() == 1;
    const QJsonDocument tDocument = bSingle ? QJsonDocument(tOutputs.first().toObject()) : QJsonDocument(tOutputs);
    const QByteArray sText = tDocument.toJson(QJsonDocument::Indented);
    QFile tFile(tOptions.sOutput);
    const bool bOpen = tOptions.sOutput.isEmpty() ? tFile.open(stdout, QIODevice::WriteOnly)
                                                  : tFile.open(QIODevice::WriteOnly | QIODevice::Truncate);
    if (bOpen && tFile.write(sText) == sText.size() && tFile.flush()) return true;
    Complain(QStringLiteral("cannot write the output: %1").arg(tFile.errorString()));
    return false;
}

int PlayAll(const std::vector<Script>& tScripts, const Options& tOptions) {
    QJsonArray tOutputs;
    bool bExpected = true;
    for (const Script& tScript : tScripts) {
        try {
            Player tPlayer(tScript, tOptions);
            tOutputs.append(tPlayer.Play());
            bExpected = bExpected && tPlayer.Expected();
        } catch (const std::exception& tError) {
            Complain(tScript.sFile + QStringLiteral(": ") + QString::fromUtf8(tError.what()));
            return Broken;
        }
    }
    if (!Write(tOptions, tOutputs)) return Broken;
    return bExpected ? Passed : ExpectationFailed;
}

// The offscreen screen cannot do a few things that do not matter here, and a bare environment is as good as any.
void TellWhatMatters(QtMsgType eType, const QMessageLogContext&, const QString& sMessage) {
    if (sMessage.startsWith(QLatin1String("This plugin does not support"))) return;
    if (sMessage.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR"))) return;
    std::fprintf(stderr, "%s\n", qPrintable(sMessage));
    if (eType == QtFatalMsg) std::abort();
}

}  // namespace

int main(int argc, char* argv[]) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(TellWhatMatters);
    InstallWatchdog();
    QStringList sArguments;
    for (int i = 0; i < argc; ++i) sArguments << QString::fromLocal8Bit(argv[i]);
    const auto tOptions = ReadOptions(sArguments);
    if (!tOptions) {
        Complain(QStringLiteral("usage: scenario SCRIPT.json... [-o OUT.json] [--every] [--pty]"));
        return Malformed;
    }
    std::vector<Script> tScripts;
    try {
        for (const QString& sScript : tOptions->sScripts) tScripts.push_back(ReadScript(sScript));
    } catch (const ScriptError& tError) {
        Complain(QString::fromStdString(tError.what()));
        return Malformed;
    }
    QApplication tApplication(argc, argv);
    return PlayAll(tScripts, *tOptions);
}
