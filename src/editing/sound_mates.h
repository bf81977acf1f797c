#pragma once

// A picture and its sound together: the sources of other rows that come from the same file and show the same of it at
// the same time, so that the commands over what is selected take them along.
//
//     Video      [ A media 0-3 ][ A media 3-8 *]                     A's second piece is selected
//     Audio 1    [ A media 0-3 ][ A media 3-8 *]     [ A media 0-3 ]     and this one with it
//
// Selecting makes no step of the history, and asks for no lock. Interface thread only.

#include "items/row_items.h"
#include "items/source_times.h"

#include <vector>

namespace editing {

/// Through a cast of the engine that the caller holds.
struct PlacedSource {
    items::RowItems row;
    std::int16_t seq;
    engine::Handle file; // 0 for none
    items::SourceTimes times;
};

/// Of all rows. Raises what the engine raises.
std::vector<PlacedSource> placedSources(engine::ITWTimeline& engine);
/// Whether both lie at the same times, or show the same at the first moment that they share; a shift that nobody hears
/// does not part them.
bool belongTogether(const PlacedSource& one, const PlacedSource& other);

} // namespace editing

namespace moduleEdit {

// Each traps its own errors and draws what it has selected.

/// Adds to what is selected. True when it has added any.
bool SelectWithSound();
/// That source, or effect, and what belongs to it alone.
void SelectAloneWithSound(const items::TrackRow& row, std::int16_t seq);

} // namespace moduleEdit
