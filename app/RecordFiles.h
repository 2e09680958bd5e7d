// The files that an unattended recording makes: what they are called, when the next one begins, which are ours, and
// when their disk is nearly full.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/UnattendedKeys.h"
#include "platform/runtime/DateTime.h"
#include "platform/runtime/DiskRoom.h"

namespace app {

// What a file's name tells: the stamp of its first line, and which file of that name it is, counted from 1.
struct RecordFileAge {
    runtime::DateTime dtFirst;
    int iSame = 1;
    // NOLINTNEXTLINE(modernize-use-nullptr): the 0 is the language's own
    friend auto operator<=>(const RecordFileAge&, const RecordFileAge&) = default;
};

// "tidewatch-20110515-120000.txt", the second of that second "tidewatch-20110515-120000-2.txt". sProgram is the name
// that the program was started by, so that two windows with profiles of their own do not mix their files.
inline constexpr std::string_view RecordSuffix = ".txt";
std::string RecordFileName(std::string_view sProgram, const RecordFileAge& t, std::string_view sSuffix = RecordSuffix);
// Nothing where the name is none of that program's.
std::optional<RecordFileAge> RecordFileAgeOf(std::string_view sProgram, std::string_view sName,
                                             std::string_view sSuffix = RecordSuffix);
// The beginning of a file is a record line of that time.
bool BeginsWithLineOf(std::string_view sBeginning, runtime::DateTime dtFirst);

// A line of that time goes into another file than the one that began at dtFirst: a later day or hour has begun, or the
// clock was set back by more than one. Set back by less, the file goes on, so that it is not cut at every small step.
bool IsNextFileDue(Rotation eRotation, runtime::DateTime dtFirst, runtime::DateTime dt);

// Less than 5 % or 200 MB are free, whichever is less.
bool IsNearlyFull(const runtime::DiskRoom& t);

}  // namespace app
