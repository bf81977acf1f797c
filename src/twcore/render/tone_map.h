#pragma once

// Pictures of high dynamic range brought to the standard one: what phones and cameras write as HLG and PQ.
//
// Light is worked out in nits, wide primaries become those of BT.709, and what is brighter than diffuse white is
// compressed smoothly instead of being cut off, all three colours by one factor, so that hues stay. The whole way is
// tabulated once for each kind of source and looked up with interpolation between its points.

#include "twcore/media/orientation.h"

namespace twcore {

/// Whether a frame says that it is HLG or PQ.
bool isHighDynamicRange(const AVFrame& frame);

/// The frame in standard dynamic range, scaled to `size`: 8-bit 4:4:4, BT.709, limited range. nullptr when the
/// libraries cannot convert it.
FramePtr toneMapped(const AVFrame& frame, PictureSize size);

} // namespace twcore
