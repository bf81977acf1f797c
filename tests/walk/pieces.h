#pragma once

// A row as the oracle sees it: its pieces, and the few things that commands do to them.

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

inline constexpr engine::Handle kAnyMedia = -1; // as the stream of a piece

inline Ms lengthOf(const Range& times) { return Ms{times.stop} - times.start; }
inline Ms lengthOf(const Piece& piece) { return lengthOf(piece.times); }
inline bool isEffect(const Piece& piece) { return piece.stream == 0; }
/// Nothing can be worked out for one without, and no edit over a range touches it but a paste.
inline bool hasRate(const Piece& piece) { return isEffect(piece) || piece.media.stop > piece.media.start; }
inline Ms naturalLength(const Piece& piece)
{
    return isEffect(piece) || !hasRate(piece) ? lengthOf(piece) : lengthOf(piece.media);
}
inline bool isAcross(const Piece& piece, Ms time) { return piece.times.start < time && time < piece.times.stop; }
inline bool meets(const Piece& piece, const Range& range)
{
    return piece.times.stop > range.start && piece.times.start < range.stop;
}

inline Range rangeOf(Ms start, Ms stop) { return {static_cast<std::int32_t>(start), static_cast<std::int32_t>(stop)}; }

/// The same piece seen from start to stop. One without rate shows nothing anywhere.
Piece seen(Piece piece, Ms start, Ms stop);
inline Piece within(const Piece& piece, const Range& range)
{
    return seen(piece, std::max(piece.times.start, range.start), std::min(piece.times.stop, range.stop));
}

inline void lay(Piece& piece, Ms start, Ms length) { piece.times = rangeOf(start, start + length); }
inline void move(Piece& piece, Ms start) { lay(piece, start, lengthOf(piece)); }

inline Ms gapAhead(const Pieces& pieces, std::size_t seq)
{
    return pieces[seq].times.start - (seq > 0 ? pieces[seq - 1].times.stop : 0);
}
/// What lies from there on goes by that much; to the left as far as the gap ahead lets it.
void shift(Pieces& pieces, std::size_t from, Ms by);
/// Whoever overlaps the one ahead moves to its end.
void makeRoom(Pieces& pieces);
inline std::size_t firstSelected(const Pieces& pieces)
{
    return static_cast<std::size_t>(std::ranges::find(pieces, true, &Piece::isSelected) - pieces.begin());
}
inline bool hasSelected(const Pieces& pieces) { return firstSelected(pieces) < pieces.size(); }

/// Two of the one that lies across the time, if any.
void cutAt(Pieces& pieces, Ms time);
/// The same, but which media one at another speed than its own is divided at is left open.
void splitAt(Pieces& pieces, Ms time);

} // namespace walk_test
