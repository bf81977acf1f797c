#pragma once

// The bars: how sources, effects and overlays look on their row.
//
//     start                       stop - 12    stop
//       +------------------------------\---------+ 0      outline
//       |  ____________________________ \______  |        highlight: left and top inner edge
//       | |                               \    : |
//       | |  clip.avi                       \  : |        shadow: right and bottom inner edge
//       |......................................: |
//       +----------------------------------------+ H - 1
//
// A row is painted into its picture's draw list, anew from the engine each time. Errors are trapped inside. Interface
// thread only.

#include "core/controls.h"
#include "engine/types.h"

#include <cstdint>

namespace moduleScaleRenderer {

/// Paints all sources of a track that reach the view. Colours as `core/colours.h` says.
void RenderBar(PictureBox& pic, engine::Handle track, std::int32_t fill, std::int32_t shadow, bool locked);
/// The same for all its effects.
void RenderEffectBar(PictureBox& pic, engine::Handle track, std::int32_t fill, std::int32_t shadow, bool locked);
/// All effect lanes.
void RenderEffectBars();
/// All rows.
void RenderAllBars();

} // namespace moduleScaleRenderer
