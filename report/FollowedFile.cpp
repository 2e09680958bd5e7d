// Looking whether the name still means the file that is open, as "tail -F" does.
#include "report/FollowedFile.h"

#include <sys/stat.h>

namespace report {

bool FollowedFile::Read(const Taker& Take) {
    // First, what an old file got before another took its name.
    const bool bAnother = m_pReader && IsAnother();
    bool bMore = m_pReader && ReadOn(Take);
    if (bAnother) m_pReader.reset();
    if (m_pReader) return bMore;
    struct stat t {};
    if (::stat(m_sPath.c_str(), &t) != 0) return bMore;  // not there yet, or between two files
    if (!S_ISREG(t.st_mode)) throw InputError("is no plain file and cannot be followed");
    m_pReader.emplace(m_sPath);
    if (m_pReader->Packed()) throw InputError("is packed and cannot be followed");
    m_lTaken = 0;
    return ReadOn(Take) || bMore;
}

bool FollowedFile::ReadOn(const Taker& Take) {
    Record t;
    while (m_pReader->Next(t)) Take(t);
    const std::int64_t lBefore = m_lTaken;
    m_lTaken = m_pReader->BytesTaken();
    return m_lTaken != lBefore;
}

// A file that was cut and has grown beyond what had been read of it cannot be told from one that has grown.
bool FollowedFile::IsAnother() const {
    struct stat tNamed {
    }, tOpen{};
    if (::stat(m_sPath.c_str(), &tNamed) != 0 || ::fstat(m_pReader->Descriptor(), &tOpen) != 0) return false;
    const bool bSame = tNamed.st_dev == tOpen.st_dev && tNamed.st_ino == tOpen.st_ino;
    return !bSame || tNamed.st_size < m_lTaken;
}

}  // namespace report
