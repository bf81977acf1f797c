#pragma once

// The position slider and those of the selection: placing, reading back, showing.
//
// A slider is a handle, a line on the scale and a line over the tracks (`slider_places.h`). The selection exists while
// both handles of it are visible. Positions that are read back come from the screen's places, and are as fine as the
// zoom. Errors are trapped inside. Interface thread only.

#include "engine/types.h"

namespace moduleTimeline {

/// Places the main slider at pos (ms) and shows it if that is in view; scroll brings it into view, at the left edge.
/// Events run inside.
void SetSliderPosition(engine::Milliseconds pos, bool scroll);
engine::Milliseconds GetSliderPosition();
/// Places a slider of the selection. The caller keeps the position: `SelStartPosition = GetSelSliderPosition(true)`.
/// Events run inside.
void SetSelSliderPosition(engine::Milliseconds pos, bool isStart);
engine::Milliseconds GetSelSliderPosition(bool isStart);

void ShowStartSelSlider(bool visible);
void ShowEndSelSlider(bool visible);
void ShowSelSliders(bool visible);
/// Hides the selection, or shows a new one of 100 pixels from the main slider on.
void ToggleSelSliders();

} // namespace moduleTimeline
