// Comparing an expectation with a dump.
#include "tests/scenarios/Expect.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace scenarios {

namespace {

// Any value as compact JSON.
QString Shown(const QJsonValue& t) {
    if (t.isUndefined()) return QStringLiteral("nothing");
    const QByteArray sList = QJsonDocument(QJsonArray{t}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(sList.mid(1, sList.size() - 2));
}

QJsonValue Element(const QJsonArray& tList, const QString& sKey) {
    if (sKey == QLatin1String("length")) return static_cast<int>(tList.size());
    bool bNumber = false;
    qsizetype i = sKey.toInt(&bNumber);
    if (!bNumber) return QJsonValue::Undefined;
    if (i < 0) i += tList.size();
    return i >= 0 && i < tList.size() ? tList.at(i) : QJsonValue(QJsonValue::Undefined);
}

}  // namespace

QStringList Differences(const QJsonValue& tExpected, const QJsonValue& tFound, const QString& sPlace) {
    if (tExpected.isObject() && (tFound.isObject() || tFound.isArray())) {
        QStringList sDifferences;
        const QJsonObject tKeys = tExpected.toObject();
        for (auto it = tKeys.begin(); it != tKeys.end(); ++it) {
            const QJsonValue tPart =
                tFound.isObject() ? tFound.toObject().value(it.key()) : Element(tFound.toArray(), it.key());
            const QString sPart = sPlace.isEmpty() ? it.key() : sPlace + QLatin1Char('/') + it.key();
            sDifferences += Differences(it.value(), tPart, sPart);
        }
        return sDifferences;
    }
    if (tExpected == tFound) return {};
    return {QStringLiteral("%1: expected %2, found %3").arg(sPlace, Shown(tExpected), Shown(tFound))};
}

}  // namespace scenarios
