#pragma once

// Interlaced pictures made whole before they are scaled.

#include "twcore/media/ff.h"

namespace twcore {

/// A copy in which the lines of the second field are kept where nothing moves, and drawn from their neighbours where
/// they would comb. nullptr for formats that are not 8-bit planar.
FramePtr deinterlaced(const AVFrame& frame);

} // namespace twcore
