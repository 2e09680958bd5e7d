// Streams that unpack what another stream gives.
#pragma once

#include <memory>

#include "report/InputFile.h"

namespace report {

// Both take several packed pieces one behind the other as one, and raise InputError for damaged data and for data that
// ends in the middle, after they have handed out what stood before. tPacked must outlive them.
std::unique_ptr<ByteStream> UnpackGzip(ByteStream& tPacked);
std::unique_ptr<ByteStream> UnpackZstd(ByteStream& tPacked);

}  // namespace report
