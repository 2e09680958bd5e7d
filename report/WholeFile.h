// A file that is there whole or not at all: what is written takes its name only at the end.
#pragma once

#include <string>
#include <string_view>

namespace report {

class WholeFile {
public:
    // Begins a new file beside sName. What has that name now must begin with sBegin, so that a slip of the pen in the
    // words replaces no recording. All raise std::runtime_error with the name and the system's words.
    WholeFile(std::string sName, std::string_view sBegin);
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    int Descriptor() const { return m_iDescriptor; }
    // Puts it in the place of what has that name.
    void Finish();

private:
    [[noreturn]] void Fail() const;

    std::string m_sName;
    std::string m_sTemporary;  // empty once it has its name
    int m_iDescriptor = -1;
};

// A folder that can be written to, made where it is missing. Raises std::runtime_error.
void PrepareFolder(const std::string& sFolder);

}  // namespace report
