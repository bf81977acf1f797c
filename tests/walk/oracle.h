#pragma once

// What must be seen and heard behind each command, by what was before it: a rule a command, in as few words as it
// allows. Where a command has a freedom that nobody minds (the gaps that a paste keeps, how far a delete draws out what
// lies behind it, the media at which a stretched piece is divided), the rule takes what it finds, within bounds.

#include "app/edit_dump.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace walk_test {

using Ms = std::int64_t;
using Words = std::vector<std::string>;
using Piece = app::LaidItem;
using Pieces = std::vector<Piece>;
using Range = items::ItemTimes;

/// As `app::kEditTracks`.
enum Row : std::uint8_t { kVideo, kAudio1, kAudio2, kOverlay, kEffects };
inline constexpr std::array kRows{kVideo, kAudio1, kAudio2, kOverlay, kEffects};
inline std::string nameOf(Row row) { return std::string(app::nameOf(app::kEditTracks[row])); }

struct Timeline {
    app::LaidTimeline laid;
    std::array<bool, kRows.size()> isLocked{};
    std::array<bool, kRows.size()> isLinked{};
    Ms slider = 0;
    std::optional<Range> range; // between the selection sliders, when they are shown

    Pieces& on(Row row) { return laid.rows[row]; }
    const Pieces& on(Row row) const { return laid.rows[row]; }
    Ms end(Row row) const { return on(row).empty() ? 0 : on(row).back().times.stop; }
    /// The end of the longest row; effects do not count.
    Ms duration() const { return std::max({end(kVideo), end(kAudio1), end(kAudio2), end(kOverlay)}); }
    std::ptrdiff_t count() const;
};
Timeline readNow(const app::EditSession& session);

/// The pieces of one row that were cut or copied. With gaps between them, the length of the range that they were in.
struct Clip {
    Pieces pieces;
    Ms span = 0;
    bool isOpen = false; // one that nothing can be worked out for was in the range: which gaps stay is left open
};

class Oracle {
public:
    /// What is wrong behind a line; empty when nothing is.
    std::string wrongBehind(const Words& words, const Timeline& before, const Timeline& now);

    /// The overlays on the clipboard have gaps, which their transitions do not keep.
    bool hasClippedGaps() const { return clips_[kOverlay].span > 0; }

private:
    std::array<Clip, kRows.size()> clips_;
};

} // namespace walk_test
