#pragma once

// Where a file's pictures can be decoded from.

#include "twcore/media/media_file.h"

#include <vector>

namespace twcore {

/// Media times in seconds from which decoding may begin with little or no run-up, rising; empty when the file does not
/// tell without being read through. A time may be a little ahead of its key frame.
std::vector<double> keyFrameTimes(const MediaFilePtr& media, const Patience& patience);

} // namespace twcore
