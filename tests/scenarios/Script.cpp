// Reading a script: the keys of each step stand in one table, and what does not fit it is refused by name.
#include "tests/scenarios/Script.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>
#include <cmath>
#include <limits>
#include <map>

#include "tests/scenarios/Controls.h"
#include "tests/support/IsoTime.h"

namespace scenarios {

namespace {

enum class Kind { Text, TextOrNull, Whole, WholeOrNull, Count, Flag, Clock, Order, Port, Control, OneOf };

struct KeyRule {
    const char* sKey;
    Kind eKind;
    bool bRequired = true;
    QStringList sChoices{};
};

constexpr bool Optional = false;

// A table of string literals; the step that it names carries these keys.
const std::map<QString, std::vector<KeyRule>>& Rules() {
    static const QStringList sBoxes{QStringLiteral("txtGpsLat"), QStringLiteral("txtGpsLon")};
    static const QStringList sTimers{QStringLiteral("time"), QStringLiteral("comm")};
    static const QStringList sToolbar{QStringLiteral("Start"), QStringLiteral("Stop"), QStringLiteral("Record"),
                                      QStringLiteral("Playback"), QStringLiteral("Playback Burst")};
    static const QStringList sButtons{QStringLiteral("cmdRxNasaChannel"), QStringLiteral("cmdRxNasaInterval"),
                                      QStringLiteral("cmdTimingApply")};
    static const QStringList sStates{QStringLiteral("normal"), QStringLiteral("minimized"),
                                     QStringLiteral("maximized")};
    static const std::vector<KeyRule> tCell = {{"row", Kind::Whole}, {"col", Kind::Whole}};
    static const std::map<QString, std::vector<KeyRule>> tRules = {
        {QStringLiteral("load"), {{"profile", Kind::TextOrNull, Optional}}},
        {QStringLiteral("unload"), {}},
        {QStringLiteral("clock"), {{"set", Kind::Clock}}},
        {QStringLiteral("advance"), {{"seconds", Kind::Count}, {"order", Kind::Order, Optional}}},
        {QStringLiteral("tick"), {{"timer", Kind::OneOf, true, sTimers}}},
        {QStringLiteral("bad_port"), {{"number", Kind::Whole}, {"text", Kind::Text}}},
        {QStringLiteral("file"),
         {{"name", Kind::Text},
          {"content", Kind::TextOrNull, Optional},
          {"unwritable", Kind::Flag, Optional},
          {"unreadable", Kind::Flag, Optional}}},
        {QStringLiteral("focus"), {{"control", Kind::Control}}},
        {QStringLiteral("set"), {{"control", Kind::Text}, {"focus", Kind::Flag, Optional}}},
        {QStringLiteral("click"), {{"key", Kind::OneOf, true, sToolbar}, {"file", Kind::TextOrNull, Optional}}},
        {QStringLiteral("playback"),
         {{"file", Kind::TextOrNull}, {"content", Kind::TextOrNull, Optional}, {"burst", Kind::Flag, Optional}}},
        {QStringLiteral("button"), {{"name", Kind::OneOf, true, sButtons}}},
        {QStringLiteral("feed"), {{"port", Kind::Port}, {"data", Kind::Text}}},
        {QStringLiteral("capture"), {{"content", Kind::Text}}},
        {QStringLiteral("event"), {{"port", Kind::Port}, {"code", Kind::Whole}}},
        {QStringLiteral("output_event"), {{"code", Kind::Whole}}},
        {QStringLiteral("caret"), {{"box", Kind::OneOf, true, sBoxes}, {"pos", Kind::Whole}}},
        {QStringLiteral("key"),
         {{"box", Kind::OneOf, true, sBoxes}, {"code", Kind::Whole}, {"times", Kind::Count, Optional}}},
        {QStringLiteral("type"), {{"box", Kind::OneOf, true, sBoxes}, {"text", Kind::Text}}},
        {QStringLiteral("grid_click"), tCell},
        {QStringLiteral("grid_dblclick"),
         {{"row", Kind::Whole}, {"col", Kind::Whole}, {"click", Kind::Flag, Optional}}},
        {QStringLiteral("mouse"), tCell},
        {QStringLiteral("timing"),
         {{"tx", Kind::TextOrNull, Optional}, {"rc", Kind::TextOrNull, Optional}, {"ts", Kind::TextOrNull, Optional}}},
        {QStringLiteral("tab"), {{"index", Kind::Whole}}},
        {QStringLiteral("resize"),
         {{"width", Kind::WholeOrNull, Optional},
          {"height", Kind::WholeOrNull, Optional},
          {"window_state", Kind::OneOf, Optional, sStates}}},
        {QStringLiteral("dump"), {}},
    };
    return tRules;
}

// What is being looked at, for the line that says what is wrong.
struct Where {
    QString sFile;
    QString sStep;  // "step 3 (set)", empty for the script itself

    [[noreturn]] void Refuse(const QString& sWhat) const {
        QString sLine = sFile + QStringLiteral(": ");
        if (!sStep.isEmpty()) sLine += sStep + QStringLiteral(": ");
        throw ScriptError((sLine + sWhat).toStdString());
    }
    [[noreturn]] void Refuse(const QString& sKey, const QString& sWhat) const {
        Refuse(QStringLiteral("key \"%1\" %2").arg(sKey, sWhat));
    }
};

bool IsLatin1(const QString& sText) {
    for (const QChar c : sText) {
        if (c.unicode() > 255) return false;
    }
    return true;
}

bool IsWhole(const QJsonValue& t) {
    constexpr double Largest = std::numeric_limits<int>::max();
    const double d = t.toDouble(0.5);
    return t.isDouble() && d == std::floor(d) && std::abs(d) <= Largest;
}

bool IsText(const QJsonValue& t) { return t.isString() && IsLatin1(t.toString()); }

bool IsOrder(const QJsonValue& t) {
    if (!t.isArray()) return false;
    const QJsonArray tTimers = t.toArray();
    for (const QJsonValue& tTimer : tTimers) {
        if (tTimer != QStringLiteral("comm") && tTimer != QStringLiteral("time")) return false;
    }
    return true;
}

bool IsClock(const QJsonValue& t) { return t.isString() && support::FromIso(t.toString().toStdString()).has_value(); }

// Empty when the value fits, else what it must be.
QString Mismatch(const KeyRule& tRule, const QJsonValue& t) {
    const auto tWant = [](bool bFits, const QString& sWhat) { return bFits ? QString() : sWhat; };
    switch (tRule.eKind) {
        case Kind::Text:
            return tWant(IsText(t), QStringLiteral("must be a text of characters 0 to 255"));
        case Kind::TextOrNull:
            return tWant(t.isNull() || IsText(t), QStringLiteral("must be a text of characters 0 to 255, or null"));
        case Kind::Whole:
            return tWant(IsWhole(t), QStringLiteral("must be a whole number"));
        case Kind::WholeOrNull:
            return tWant(t.isNull() || IsWhole(t), QStringLiteral("must be a whole number, or null"));
        case Kind::Count:
            return tWant(IsWhole(t) && t.toInt() >= 0, QStringLiteral("must be a whole number from 0 on"));
        case Kind::Flag:
            return tWant(t.isBool(), QStringLiteral("must be true or false"));
        case Kind::Clock:
            return tWant(IsClock(t), QStringLiteral("must be a date and time (2011-05-15T12:00:00)"));
        case Kind::Order:
            return tWant(IsOrder(t), QStringLiteral("must be a list of \"comm\" and \"time\""));
        case Kind::Port:
            return tWant(IsWhole(t) && (t.toInt() == 0 || t.toInt() == 1), QStringLiteral("must be 0 or 1"));
        case Kind::Control:
            return tWant(t.isNull() || IsControl(t.toString()), QStringLiteral("must name a control, or be null"));
        case Kind::OneOf:
            return tWant(t.isString() && tRule.sChoices.contains(t.toString()),
                         QStringLiteral("must be one of: ") + tRule.sChoices.join(QStringLiteral(", ")));
    }
    return {};
}

void CheckKey(const Where& tWhere, const QJsonObject& tStep, const KeyRule& tRule) {
    const QString sKey = QLatin1String(tRule.sKey);
    if (!tStep.contains(sKey)) {
        if (tRule.bRequired) tWhere.Refuse(sKey, QStringLiteral("is missing"));
        return;
    }
    const QString sMismatch = Mismatch(tRule, tStep.value(sKey));
    if (!sMismatch.isEmpty()) tWhere.Refuse(sKey, sMismatch);
}

// The value that a "set" step brings depends on what its control is.
void CheckSet(const Where& tWhere, const QJsonObject& tStep) {
    const QString sControl = tStep.value(QLatin1String("control")).toString();
    switch (KindOfControl(sControl)) {
        case ControlKind::Check: {
            CheckKey(tWhere, tStep, {"value", Kind::Whole});
            const int iValue = tStep.value(QLatin1String("value")).toInt();
            if (iValue != 0 && iValue != 1) tWhere.Refuse(QStringLiteral("value"), QStringLiteral("must be 0 or 1"));
            return;
        }
        case ControlKind::Text:
        case ControlKind::Masked:
            CheckKey(tWhere, tStep, {"text", Kind::Text});
            return;
        case ControlKind::Combo:
            if (!tStep.contains(QLatin1String("text"))) {
                CheckKey(tWhere, tStep, {"index", Kind::Whole});
            } else {
                CheckKey(tWhere, tStep, {"text", Kind::Text});
            }
            return;
        case ControlKind::Other:
            break;
    }
    tWhere.Refuse(QStringLiteral("control"), QStringLiteral("names nothing that can be set: ") + sControl);
}

void CheckStep(const QString& sFile, int iStep, const QJsonValue& tValue) {
    Where tWhere{sFile, QStringLiteral("step %1").arg(iStep)};
    if (!tValue.isObject()) tWhere.Refuse(QStringLiteral("is no object"));
    const QJsonObject tStep = tValue.toObject();
    const QJsonValue tDo = tStep.value(QLatin1String("do"));
    if (!tDo.isString()) tWhere.Refuse(QStringLiteral("do"), QStringLiteral("must name a step"));
    const auto it = Rules().find(tDo.toString());
    if (it == Rules().end()) {
        tWhere.Refuse(QStringLiteral("do"), QStringLiteral("names no step: ") + tDo.toString());
    }
    tWhere.sStep += QStringLiteral(" (%1)").arg(tDo.toString());
    for (const KeyRule& tRule : it->second) CheckKey(tWhere, tStep, tRule);
    if (tDo == QStringLiteral("set")) CheckSet(tWhere, tStep);

    const QJsonValue tDump = tStep.value(QLatin1String("dump"));
    if (!tDump.isUndefined() && !tDump.isBool() && !tDump.isString()) {
        tWhere.Refuse(QStringLiteral("dump"), QStringLiteral("must be true, false or a label"));
    }
    const QJsonValue tExpect = tStep.value(QLatin1String("expect"));
    if (!tExpect.isUndefined() && !tExpect.isObject()) {
        tWhere.Refuse(QStringLiteral("expect"), QStringLiteral("must be an object"));
    }
}

}  // namespace

Script ReadScript(const QString& sFile) {
    const Where tWhere{sFile, {}};
    QFile tFile(sFile);
    if (!tFile.open(QIODevice::ReadOnly)) tWhere.Refuse(tFile.errorString());
    QJsonParseError tError{};
    const QJsonDocument tDocument = QJsonDocument::fromJson(tFile.readAll(), &tError);
    if (tError.error != QJsonParseError::NoError) {
        tWhere.Refuse(QStringLiteral("no JSON: %1 at byte %2").arg(tError.errorString()).arg(tError.offset));
    }
    if (!tDocument.isObject()) tWhere.Refuse(QStringLiteral("no JSON object"));
    const QJsonObject tObject = tDocument.object();

    Script tScript;
    tScript.sFile = sFile;
    tScript.tName = tObject.value(QLatin1String("name"));
    if (tScript.tName.isUndefined()) tScript.tName = QJsonValue::Null;
    CheckKey(tWhere, tObject, {"clock", Kind::Clock, Optional});
    if (tObject.contains(QLatin1String("clock"))) {
        tScript.sClock = tObject.value(QLatin1String("clock")).toString().toStdString();
    }
    const QJsonValue tSteps = tObject.value(QLatin1String("steps"));
    if (!tSteps.isArray()) tWhere.Refuse(QStringLiteral("steps"), QStringLiteral("must be a list of steps"));
    const QJsonArray tList = tSteps.toArray();
    for (qsizetype i = 0; i < tList.size(); ++i) {
        CheckStep(sFile, static_cast<int>(i), tList.at(i));
        tScript.tSteps.push_back(tList.at(i).toObject());
    }
    return tScript;
}

}  // namespace scenarios
