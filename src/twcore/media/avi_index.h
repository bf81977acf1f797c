#pragma once

// The list of chunks that an AVI file brings itself: idx1, and the ix## lists of files over 1 GB.
//
// It is only believed when it accounts for every byte of the file's media: between the chunks that it lists lie nothing
// but empty chunks, padding and lists. That is seen from the heads of the gaps, so that hardly anything is read.

#include "twcore/media/picture_index.h"

#include <optional>
#include <vector>

namespace twcore {

/// The picture packets of a stream in stored order, as reading them all would tell them. nullopt when the file is no
/// AVI, brings no list, or brings one that does not fit it. `file` has only just been opened.
std::optional<std::vector<PictureIndex::Packet>> listedByAvi(const InputFile& file, int streamIndex);

} // namespace twcore
