// A file that can be read more than once, where what is named may be a pipe.
#pragma once

#include <string>

namespace report {

class SpooledFile {
public:
    // A pipe or standard input is copied, to its end, into the folder for temporary files; the copy goes with the
    // program, however it ends. Raises InputError.
    explicit SpooledFile(const std::string& sFile);
    ~SpooledFile();
    SpooledFile(const SpooledFile&) = delete;
    SpooledFile& operator=(const SpooledFile&) = delete;

    // What is to be opened.
    const std::string& Path() const { return m_sPath; }

private:
    void Copy(const std::string& sFile);

    std::string m_sPath;
    int m_iCopy = -1;
};

}  // namespace report
