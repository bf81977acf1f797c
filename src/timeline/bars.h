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

namespace moduleScaleRenderer {

/// All effect lanes.
void RenderEffectBars();
/// All rows.
void RenderAllBars();

} // namespace moduleScaleRenderer
