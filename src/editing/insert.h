#pragma once

// Media files go into the film where the hand points, instead of behind its end (`adding.h`):
//
//     Video    [ AAA ][ B ]        X at p       [ A ][ X ][ AA ][ B ]
//     Audio 1  [ AAA ]                          [ A ][ X ][ AA ]
//     Audio 2  [ music  ]                       [ mu]     [ sic  ]      linked: it stays level with the picture
//                   p
//
// Interface thread only.

#include "items/items.h"
#include "items/track_rows.h"

#include <string_view>
#include <vector>

namespace moduleTimeline {

/// Puts every selected file of the media list into the film from pos (timeline ms) on, as an adding puts it behind: its
/// picture on Video and its sound on Audio 1, level with each other, one file behind the other; on the overlay row the
/// pictures, each with its key. What follows on these rows and on all linked, unlocked ones moves on, and what pos
/// falls inside is cut there.
///
/// One entry. Says so where the row takes no files, or is locked, or no file is selected. Neither Audio 2 nor the
/// effects take any: nothing happens. True when the entry stands. Traps its own errors.
bool InsertSelectedFiles(const items::TrackRow& row, engine::Milliseconds pos);

/// Why the row takes no files now; nothing to say when it does. Raises what the engine raises.
std::string_view InsertRefusal(const items::TrackRow& row);

/// A stretch of a row (timeline ms).
struct Landing {
    items::TrackRow row;
    items::ItemTimes times;
};
/// Where what it would put in at pos lies then. Raises what the engine raises.
std::vector<Landing> LandingsOfSelectedFiles(const items::TrackRow& row, engine::Milliseconds pos);

} // namespace moduleTimeline
