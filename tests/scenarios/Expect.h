// Expectations beside a step: a part of the dump that must be as written, the rest is free.
#pragma once

#include <QJsonValue>
#include <QStringList>

namespace scenarios {

// A line for each difference, each beginning with the place in the dump. Objects are compared by the keys that the
// expectation names. Lists are compared whole; or, where the expectation has an object in place of the list, by the
// elements that its keys name: "0", "-1" (the last) and "length".
QStringList Differences(const QJsonValue& tExpected, const QJsonValue& tFound, const QString& sPlace = {});

}  // namespace scenarios
