#pragma once

// The timeline and the history as `dump` prints them. Interface thread only.

#include "app/edit_session.h"

#include <array>
#include <string>
#include <vector>

namespace app {

struct LaidItem {
    items::ItemTimes times;
    items::ItemTimes media;    // of sources
    std::string name;          // of the media file, or of the effect
    engine::Handle stream = 0; // of sources
    bool isSelected = false;
    std::int16_t mode = 0;             // of sources: how they are fitted to the movie
    std::array<std::int16_t, 3> key{}; // of overlays: red, green, blue

    bool operator==(const LaidItem&) const = default;
};

/// Read from the engine.
struct LaidTimeline {
    std::array<std::vector<LaidItem>, kEditTracks.size()> rows; // as in `kEditTracks`
    std::vector<LaidItem> transitions;                          // of the overlay track

    const std::vector<LaidItem>& row(EditTrack track) const { return rows[static_cast<std::size_t>(track)]; }
    std::vector<LaidItem>& row(EditTrack track) { return rows[static_cast<std::size_t>(track)]; }
};
LaidTimeline readTimeline(const EditSession& session);

/// A line each: "video 0 0 1000 0 1000 clip" (track, number, start, stop, media start, media stop, name), with
/// " stretch 2" and " key 0 255 0" where these are not 0 and black; then effects and transitions without media times.
std::string asText(const LaidTimeline& timeline);
/// "history 3 3 2": the index, the entries, the rows.
std::string historyText();

} // namespace app
