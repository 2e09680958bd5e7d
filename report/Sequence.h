// Several files as one sequence in order of time. Each keeps the order of its own lines, and its own road: parts of a
// message and levels belong together within a file. The next line is always that of the file whose line at hand is the
// earliest, the one being read first where several are of the same second. A line that stands in two files counts
// twice.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "report/Event.h"
#include "report/OwnPosition.h"
#include "report/Ships.h"

namespace report {

// How a file ended.
struct FileEnd {
    std::string sFile;
    std::string sFault;        // why it was not read (to its end), empty where it was
    bool bUnfinished = false;  // a last line without line end was left
    std::int64_t lLines = 0;
    std::int64_t lStamped = 0;  // of them with a date and time
};

class Sequence {
public:
    // Gets the share of all bytes that has been read, 0 to 1, or less than 0 where that is not known.
    using Progress = std::function<void(double)>;

    Sequence(const std::vector<std::string>& sFiles, const OwnPosition& tOwn);
    ~Sequence();

    void Play(Collector& tCollector, const Progress& ShowProgress);
    // In the order of the files, after Play.
    std::vector<FileEnd> Ends() const;

private:
    class Source;
    Source* Earliest(runtime::DateTime& dtOther);

    std::vector<std::string> m_sFiles;
    OwnPosition m_tOwn;
    Ships m_tShips;
    std::vector<std::unique_ptr<Source>> m_tSources;
};

}  // namespace report
