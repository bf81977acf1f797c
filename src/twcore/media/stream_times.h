#pragma once

// When the streams of a file begin and end.

#include "twcore/media/media_file.h"

namespace twcore {

/// A time stamp of a stream in seconds of the file's own time.
double timeOf(const AVStream& stream, std::int64_t stamp);

/// The last moment that the container's own length allows, in seconds of the file's time; 0: unknown.
double ownEndOf(const MediaFile& media, const InputFile& file);

/// Sets media time 0, which is the earlier start of the two streams, and how long each lasts from there. A header that
/// does not tell, or may not be believed, is checked by reading the packets, which also finds where the clock of the
/// stamps begins anew.
void setLengths(MediaFile& media, const InputFile& file, const Patience& patience);

} // namespace twcore
