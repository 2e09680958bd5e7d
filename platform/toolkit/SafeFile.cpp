// A new file beside the old one, brought to the disk and then put in its place.
#include "platform/toolkit/SafeFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

namespace toolkit {

namespace {

constexpr int MostTries = 20;
constexpr std::chrono::milliseconds BetweenTries(50);

// A file system that knows no such order keeps what is written in its own way.
bool BroughtToTheDisk(int iDescriptor) {
    int iResult;
    do {
        iResult = ::fsync(iDescriptor);
    } while (iResult != 0 && errno == EINTR);
    return iResult == 0 || errno == EINVAL;
}

bool Replace(QSaveFile& tFile, std::string_view sText, QString& sReason) {
    // Unbuffered: QSaveFile::commit takes no notice of what fails when a buffer is written at its end, and would put
    // an empty file in the place of the old one.
    const auto lSize = static_cast<qint64>(sText.size());
    if (tFile.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && tFile.write(sText.data(), lSize) == lSize) {
        if (BroughtToTheDisk(tFile.handle())) {
            if (tFile.commit()) return true;
        } else {
            sReason = QString::fromLocal8Bit(std::strerror(errno));
        }
    }
    if (sReason.isEmpty()) sReason = tFile.errorString();
    tFile.cancelWriting();
    return false;
}

}  // namespace

bool ReplaceFile(const QString& sPath, std::string_view sText, QString* pReason) {
    QSaveFile tFile(sPath);
    QString sReason;
    const bool bReplaced = Replace(tFile, sText, sReason);
    if (!bReplaced && pReason != nullptr) *pReason = sReason;
    return bReplaced;
}

FolderLock::FolderLock(const QString& sFile)
    : m_iFolder(
          ::open(QFile::encodeName(QFileInfo(sFile).absolutePath()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (m_iFolder < 0) return;
    // Somebody who never lets go must not hold up the end of the program.
    for (int i = 0; i < MostTries && ::flock(m_iFolder, LOCK_EX | LOCK_NB) != 0; ++i) {
        std::this_thread::sleep_for(BetweenTries);
    }
}

FolderLock::~FolderLock() {
    if (m_iFolder >= 0) ::close(m_iFolder);
}

}  // namespace toolkit
