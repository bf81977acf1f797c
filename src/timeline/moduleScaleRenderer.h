#pragma once

// How time maps to pixels, the ruler over the tracks, zoom, the horizontal scroll bar; and the bars on the rows, whose
// header it includes.
//
// Timeline pixels count from time 0; the view's left edge is `hsb.Value` x `TickSpacing` of them, and a view x is what
// lies right of that edge. `state::ZoomFactor` is milliseconds a pixel. An emptied project leaves it at 0, which counts
// as 10 here. Everything is painted into the pictures' draw lists, anew from the engine each time. Interface thread
// only.

#include "engine/types.h"
#include "timeline/bars.h"

#include <cstdint>

namespace moduleScaleRenderer {

/// Puts zoom, tick spacing and the band's colour to their start values.
void InitScale();

// --- Conversions ---------------------------------------------------------------------------------------------------
// They raise error 6 on overflow, for the caller's trap.

engine::Milliseconds PixelsToMs(std::int32_t px);
/// Rounded to the nearest pixel, ties to the even one.
std::int32_t MsToPixels(engine::Milliseconds ms);
std::int32_t TicksToPixels(std::int32_t ticks);
/// Not rounded to a whole tick.
double MsToTicks(engine::Milliseconds ms);

/// Milliseconds a pixel; nothing that a person can choose is further out.
inline constexpr std::int16_t kFurthestZoom = 20480;
std::int16_t GetZoomFactor();
void SetZoomFactor(std::int16_t msPerPixel);
/// Pixels between two ticks.
std::int16_t GetTickSpacing();

// --- Scale ---------------------------------------------------------------------------------------------------------
// From here on every routine traps its own errors and raises nothing.

void RenderScale();
/// One step; the times of the sliders stay, and the main one is brought into view. Where it stands behind the film, the
/// bar reaches as far as it does, until `AdjustScroll` fits it to the film again. Both mark the project modified, also
/// at the end of the range (1 to 20480).
///
///     in 10, 5, 2, 1     out 1, 2, 4, 8, 16, ...     so that in and out again does not lead back to 10
///
/// Kept: projects hold zooms of both rows of numbers. A factor between them steps on in the same way.
void ZoomIn();
void ZoomOut();
/// The view shows all from start to stop (ms), at the smallest factor at which it has the room, which may be any from 1
/// to 20480. Times behind the film are reached as those of the sliders are. Marks the project modified.
void ZoomTo(engine::Milliseconds start, engine::Milliseconds stop);
/// Fits the scroll bar to the length of the timeline, whatever that is.
void AdjustScroll();
/// Moves the view's left edge to that tick, as far as the bar goes. A bar that is disabled stays: nobody could bring
/// the view back.
void ScrollTo(std::int32_t ticks);
/// Moves the thin marker on the scale to x, a view pixel, and shows it.
void DrawScaleLine(float x);
void ClearScaleLine();

} // namespace moduleScaleRenderer
