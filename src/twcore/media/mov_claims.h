#pragma once

// What a QuickTime or MP4 file claims to hold, counted before anything is laid out by it: some of its tables tell
// millions of samples in a few bytes, and each takes its place in memory.

#include "twcore/media/input_file.h"

namespace twcore {

/// Whether the file's tables tell more samples than it has bytes, or take more than 768 MB once they are laid out.
/// Fragments are counted in files of up to 64 MB; larger ones would have to be read all over. Leaves the place of
/// reading alone.
bool claimsTooMuch(int descriptor, std::int64_t byteCount, const Patience& patience);

} // namespace twcore
