#pragma once

// What a press on a row selects, and a key. Errors are trapped inside. Interface thread only.

#include <cstdint>

namespace moduleTimeline {

/// A press on a row's picture at `state::ClickX`. An item that is hit becomes the only selected one, or, with
/// `state::ClickShift` or `state::ClickCtrl`, is turned over; one that is selected already leaves all as it is.
void OnPicMediaClick(std::int16_t index, bool isVideo);
void OnPicOverlayClick(std::int16_t index);
void OnPicEffectClick(std::int16_t index);

/// Selects every item of every row that is not locked, and nothing else.
void SelectAll();

} // namespace moduleTimeline
