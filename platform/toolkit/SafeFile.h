// Saving a small text file so that a failure costs nothing: the old content stays until the new one is on the disk.
#pragma once

#include <QString>
#include <string_view>

namespace toolkit {

// Replaces the content of a file, or makes the file; a link is followed, permissions are kept. False when that failed
// (no room, no such folder, a folder that takes no new file): then the file is as it was and nothing is left beside it,
// and pReason, if given, has the system's words.
bool ReplaceFile(const QString& sPath, std::string_view sText, QString* pReason = nullptr);

// While it lives, nobody else who asks for it too is between reading a file of that folder and replacing it. Waits for
// the others, who take as long as a save takes, a second at the most; does nothing where the folder cannot be opened.
class FolderLock {
public:
    explicit FolderLock(const QString& sFile);  // any file of the folder
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    int m_iFolder;
};

}  // namespace toolkit
