// A new file beside the old one, brought to the disk and then put in its place.
#include "platform/toolkit/SafeFile.h"

#include <unistd.h>

#include <QSaveFile>
#include <cerrno>

namespace toolkit {

namespace {

// A file system that knows no such order keeps what is written in its own way.
bool BroughtToTheDisk(int iDescriptor) { return ::fsync(iDescriptor) == 0 || errno == EINVAL; }

}  // namespace

bool ReplaceFile(const QString& sPath, std::string_view sText) {
    QSaveFile tFile(sPath);
    // Unbuffered: QSaveFile::commit takes no notice of what fails when a buffer is written at its end, and would put
    // an empty file in the place of the old one.
    if (!tFile.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return false;
    const auto lSize = static_cast<qint64>(sText.size());
    if (tFile.write(sText.data(), lSize) == lSize && BroughtToTheDisk(tFile.handle())) return tFile.commit();
    tFile.cancelWriting();
    return false;
}

}  // namespace toolkit
