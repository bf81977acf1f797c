#pragma once

// Where an edge in the hand is drawn to: a cut, a marker, or what else marks a time on the timeline, within a few
// pixels of it.
//
// Cuts are the ends of the items of all rows, locked ones too: nothing of theirs changes. Interface thread only.

#include "timeline/cuts.h"

#include <optional>
#include <vector>

namespace hand {

/// The times to snap to, as they stand when this is made: whoever moves items makes it ahead of the first step.
class SnapPlaces {
public:
    enum What : std::uint8_t {
        kCutsAndMarkers,
        kAll // the main slider, the ends of the range and the beginning of the film too
    };

    /// skips: what moves. Raises what the engine raises.
    explicit SnapPlaces(What what, const timeline::SkipsItem& skips = {});

    /// The one that is nearest to pos (ms), of two alike the earlier; nothing when none is within 6 pixels.
    std::optional<engine::Milliseconds> near(engine::Milliseconds pos) const;

private:
    std::vector<engine::Milliseconds> places_;
};

/// The switch of the menu is on, and Shift (1 of the sum of keys) is not held.
bool isSnapping(int shift);

/// The line over the scale and the rows that says to what time an edge has been drawn; nothing: it goes.
void showSnapLine(std::optional<engine::Milliseconds> pos);

} // namespace hand
