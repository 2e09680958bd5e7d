// Names to paths and back.
#include "tests/scenarios/ScriptFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace scenarios {

QString ScriptFiles::PathOf(const QString& sName) {
    const QString sPath = m_tFolder.path() + QDir::cleanPath(QLatin1Char('/') + sName);
    m_sNames[sPath] = sName;
    return sPath;
}

void ScriptFiles::Put(const QString& sName, std::string_view sContent) {
    const QString sPath = PathOf(sName);
    QDir().mkpath(QFileInfo(sPath).path());
    QFile tFile(sPath);
    if (!tFile.open(QIODevice::WriteOnly)) qFatal("cannot write %s", qPrintable(sPath));
    tFile.write(sContent.data(), static_cast<qint64>(sContent.size()));
}

void ScriptFiles::Mark(const QString& sName, bool bUnwritable, bool bUnreadable) {
    m_tMarks[PathOf(sName)] = {bUnwritable, bUnreadable};
}

QString ScriptFiles::DialogAnswer(const QString& sName, bool bSave) {
    const QString sPath = PathOf(sName);
    const Marks tMarks = m_tMarks[sPath];
    if (bSave ? tMarks.bUnwritable : tMarks.bUnreadable) {
        return m_tFolder.filePath(QStringLiteral("no such folder/")) + QFileInfo(sPath).fileName();
    }
    QDir().mkpath(QFileInfo(sPath).path());
    return sPath;
}

std::map<QString, std::string> ScriptFiles::Contents() const {
    std::map<QString, std::string> sContents;
    QDirIterator tIterator(m_tFolder.path(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (tIterator.hasNext()) {
        const QString sPath = tIterator.next();
        const auto it = m_sNames.find(sPath);
        QFile tFile(sPath);
        if (!tFile.open(QIODevice::ReadOnly)) continue;
        const QString sName = it != m_sNames.end() ? it->second : sPath.mid(m_tFolder.path().size());
        sContents[sName] = tFile.readAll().toStdString();
    }
    return sContents;
}

}  // namespace scenarios
