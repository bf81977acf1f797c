#pragma once

// Interlaced pictures made whole before they are scaled.

#include "twcore/media/ff.h"

namespace twcore {

/// The moment of the first field: a copy in which the lines of the second one are kept where nothing moves, and drawn
/// along the edges of their neighbours where they would comb. nullptr for formats that are not 8-bit planar.
FramePtr deinterlaced(const AVFrame& frame);

} // namespace twcore
