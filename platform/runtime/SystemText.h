// What the system says of a failure, in the one form that texts have inside.
#pragma once

#include <string>

namespace runtime {

// The words for an error number, in the user's language ("Auf dem Ger\xE4t ist kein Speicherplatz mehr verf\xFCgbar"),
// or in English where Latin-1 has not all the letters for that. Latin-1.
std::string SystemText(int iError);

}  // namespace runtime
