#pragma once

// Where the three sliders stand. In view pixels:
//
//     handle's left = x - 5      line on the scale = x      line over the tracks = lblHighlight.Left + x
//
// Only `letEventsSeeMainSlider` lets events run. Conversions raise error 6 on overflow. Interface thread only.

#include "core/controls.h"
#include "engine/types.h"

#include <cstdint>

namespace timeline {

inline constexpr std::int32_t kHandleHalf = 5; // pixels from a handle's left to the time it marks

/// The three controls of a slider, which stay in step.
struct SliderControls {
    ImageBox& handle;
    Marker& scaleLine;
    Marker& trackLine;
};

SliderControls mainSlider();
SliderControls startSlider();
SliderControls endSlider();

/// Both handles of the selection are visible: that alone makes a selection.
bool isSelectionShown();
/// Neither is.
bool isSelectionHidden();

/// The left edge of the view in timeline pixels.
std::int32_t viewLeft();

/// Puts all three controls to a time.
void place(const SliderControls& slider, engine::Milliseconds pos);
/// Puts both lines to the handle, which has moved.
void placeLines(const SliderControls& slider);
/// Lets events run behind a new place of the main slider, which is not the player's yet: its tick takes it no other.
void letEventsSeeMainSlider();
/// Shows the main slider if it stands in the view, hides it otherwise; true when it is shown.
bool showMainInView();
/// Shows the line over the tracks if the slider stands in the view. A hidden slider stays hidden.
void showTrackLineInView(const SliderControls& slider);
/// Puts every slider that is not being dragged to the time that is kept for it.
void placeAllAgain();

} // namespace timeline
