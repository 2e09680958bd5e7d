// Lines out of a file that is read in large blocks. A line is a view into the block; nothing is copied but the
// beginning of the line that the block's end cuts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "report/InputFile.h"

namespace report {

class LineReader {
public:
    static constexpr std::size_t LongestLine = 1 << 20;  // as a playback has it

    enum class Found { Line, TooLong, End };

    explicit LineReader(const std::string& sPath);  // raises InputError

    // The next line without its line end (CR LF, LF or CR). It holds until the next call. A line that is too long is
    // told of when its end has come, its text is lost. What stands behind the last line end is no line: its rest may
    // still be to come. Raises InputError.
    Found Next(std::string_view& sLine);
    // After the end: something stands behind the last line end.
    bool Unfinished() const { return m_bSkipping || m_p < m_pStop; }
    const InputFile& File() const { return m_tFile; }

private:
    const char* FindEnd();
    bool Fill();

    InputFile m_tFile;
    std::vector<char> m_sBlock;
    const char* m_p = nullptr;      // what has been read and not handed out begins here
    const char* m_pStop = nullptr;  // and ends here
    const char* m_pFeed = nullptr;  // the first line feed from m_p on, or m_pStop; not known where it lies before m_p
    bool m_bSkipFeed = false;       // the line before ended with a CR at the end of the block
    bool m_bSkipping = false;       // within a line that is too long
};

}  // namespace report
