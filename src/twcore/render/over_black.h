#pragma once

// Transparent pictures, which stand over black.

#include "twcore/media/ff.h"

namespace twcore {

/// Whether pixels of its format may be seen through.
bool isTransparent(const AVFrame& frame);

/// The picture over black; nullptr when the libraries cannot read its transparency.
FramePtr overBlack(const AVFrame& frame);

} // namespace twcore
