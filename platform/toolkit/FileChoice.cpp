// Suffixes and patterns of file names.
#include "platform/toolkit/FileChoice.h"

#include <QFileInfo>

namespace toolkit {

FileChoice ChooseFile(const FileRequest& tRequest, const QString& sChosen,
                      const std::function<bool(const QString&)>& tIsFile) {
    const bool bHasSuffix = QFileInfo(sChosen).fileName().contains(QLatin1Char('.'));
    const QString sFull = bHasSuffix ? sChosen : sChosen + QLatin1Char('.') + tRequest.sExtension;
    if (tRequest.bSave) return {sFull, !bHasSuffix && tIsFile(sFull)};
    return {!tIsFile(sChosen) && tIsFile(sFull) ? sFull : sChosen, false};
}

QString AnyCaseFilter(const QString& sFilter) {
    QString sPatterns;
    for (const QChar c : sFilter.sliced(sFilter.lastIndexOf(QLatin1Char('(')))) {
        if (c.isLetter()) {
            sPatterns += QLatin1Char('[') + c.toLower() + c.toUpper() + QLatin1Char(']');
        } else {
            sPatterns += c;
        }
    }
    return sFilter + QLatin1Char(' ') + sPatterns;
}

}  // namespace toolkit
