#pragma once

// What a hand does on the timeline: drags with the pointer, direction keys, drops in the timeline list, clicks in the
// history. Whoever calls has an `EditSession` that stands. An item that does not exist: nothing happens. Interface
// thread only.

#include "app/edit_tracks.h"
#include "editing/trim_item.h"
#include "engine/types.h"

namespace app {

/// Takes an item in its middle, moves it by that much and lets go.
void drag(EditTrack track, std::int16_t seq, engine::Milliseconds by);
/// The same at its right end, which the pointer takes at the top of the row.
void resize(EditTrack track, std::int16_t seq, engine::Milliseconds by);
/// Trims an end of an item by that much, as a press on it and a drag do.
void trim(EditTrack track, std::int16_t seq, editing::ItemEnd end, engine::Milliseconds by);
/// One press of a direction key: 5 pixels, or 1 with Shift; negative to the left.
void nudge(std::int32_t pixels);

/// Drops an item of a row on another one of it. Places count from 1.
void shuffle(EditTrack track, std::int32_t from, std::int32_t onto);
/// Drops an item of a row on an item of another one; a place behind the last item is the row's end. Places count from
/// 1.
void changeTrack(EditTrack fromTrack, std::int32_t from, EditTrack toTrack, std::int32_t place);

/// Clicks on a row of the history, from 1.
void clickHistory(std::int32_t row);

} // namespace app
