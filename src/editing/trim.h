#pragma once

// A trim: one end of an item moves, and what it shows there moves with it, so that its speed stays.
//
//     before              [AAAA]    [BBBBBB]    [CC]
//     start of B by 2     [AAAA]      [BBBB]    [CC]     B begins 2 later in its medium; nothing else moves
//
// An end goes as far as its medium and the items beside it let it (`trim_item.h`); a still, which shows the same from
// end to end, as far as the items alone. Locked rows are left alone. Interface thread only.

#include "editing/trim_item.h"
#include "history/command.h"

#include <optional>
#include <vector>

namespace editing {

/// The trim of a hand, from the press to the release or Esc. It draws what it changes. The entry of the history is made
/// with the first change, so that without one history and redo are left alone; a trim there and back is none. What
/// another command does in between ends it: it then changes nothing more, and takes nothing back.
///
/// Selected items on other unlocked rows whose same end lies there too go along, as far as all of them can: a picture
/// and its sound stay level.
class Trim {
    using Milliseconds = engine::Milliseconds;

public:
    /// Nothing for an item on a locked row, or one that is not there. Raises what the engine raises.
    static std::optional<Trim> begin(const items::TrackRow& row, std::int16_t seq, ItemEnd end);

    /// Where the end stood at the press, and where it stands; timeline ms.
    Milliseconds origin() const { return items_.front().place(end_); }
    Milliseconds place() const { return origin() + delta_; }
    /// Where it can go; both count.
    Milliseconds leftmost() const { return origin() + reach_.left; }
    Milliseconds rightmost() const { return origin() + reach_.right; }
    /// Whether an item is one of those that are trimmed.
    bool moves(const items::RowItems& row, std::int16_t seq) const;

    // Each traps its own errors, which leave the trim as it was.

    /// As near to pos (timeline ms) as it can go. True when anything has changed.
    bool moveTo(Milliseconds pos);
    /// All is as it was at the press, the history as well.
    void takeBack();
    /// What has changed so far stands, also when the way goes back later. Traps its errors.
    void keep();
    /// The release. True when the entry stands.
    bool finish();
    /// Whether the items are no longer as this trim has left them, or another step was made or undone. Raises what the
    /// engine raises.
    bool isOver() const;

private:
    Trim(std::vector<TrimItem> items, ItemEnd end, const TrimReach& reach)
        : items_(std::move(items)), end_(end), reach_(reach)
    {}
    TrimItem at(const TrimItem& item, Milliseconds delta) const;
    void put(Milliseconds delta);
    void leaveNoTrace();

    std::vector<TrimItem> items_; // as they were at the press; the first is the pressed one
    ItemEnd end_;
    TrimReach reach_;
    Milliseconds delta_ = 0; // gone so far
    std::optional<history::Command> command_;
};

/// Trims the selected items of unlocked rows to the main slider: on each row the one that the slider stands in, or
/// whose end faces the gap that it stands in, as far as that goes. All or none; raises what the engine raises.
history::Outcome trimToSlider(ItemEnd end);

} // namespace editing
