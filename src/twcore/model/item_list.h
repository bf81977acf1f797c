#pragma once

// One ordered list of a track: its sources, its effects or its transitions. The rules of order, overlap and shifting
// are the same for all three and stand here and in `Placement`.
//
// An item is named by its number. The one exception: an appended item that is set to start ahead of its predecessor
// goes to the place of its start, and calls that follow on it still name it by the number under which it was appended:
//
//     append           A 0-10  B 10-20  X 20-25
//     set X to 10-15   A 0-10  X 10-15  B 10-20     still called 2 by the calls that set its media, its mode, ...
//     any other call                                now called 1
//
// Only a window of the list is ever unsettled, so that a walk that changes each item as it reads on stays linear.

#include "twcore/model/placement.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <deque>
#include <limits>
#include <optional>
#include <utility>

namespace twcore {

/// Item is a `Placement` with more to it.
template <class Item>
class ItemList {
public:
    /// What a 16-bit count can tell.
    static constexpr std::size_t kMaxCount = std::numeric_limits<std::int16_t>::max();

    std::size_t count() const noexcept { return items_.size(); }
    bool full() const noexcept { return count() >= kMaxCount; }
    const std::deque<Item>& items() const noexcept { return items_; }

    /// Where the last item stops; 0 without items.
    Ms endMs() const noexcept { return endBefore(count()); }

    /// The item that a call names, for all but its times; null when there is none.
    Item* about(int seq)
    {
        const auto at = resolve(seq);
        return at ? &items_[*at] : nullptr;
    }

    /// To be told of every call on the track that is not about an item of this list.
    void aboutOther()
    {
        place();
        late_.reset();
    }

    /// Into seq from 0 to the count. False when there is no such place, or the list is full.
    bool insert(int seq, Item item)
    {
        aboutOther();
        if (full() || seq < 0 || static_cast<std::size_t>(seq) > count()) {
            return false;
        }
        const auto at = static_cast<std::size_t>(seq);
        items_.insert(items_.begin() + seq, std::move(item));
        if (at < openFrom_) {
            ++openFrom_;
        }
        if (at < openTo_) {
            ++openTo_;
        }
        open(at, at + 1);
        return true;
    }

    bool append(Item item)
    {
        item.appended = true;
        return insert(static_cast<int>(count()), std::move(item));
    }

    bool remove(int seq)
    {
        const auto at = resolve(seq);
        if (!at) {
            return false;
        }
        late_.reset();
        items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(*at));
        if (*at < openFrom_) {
            --openFrom_;
        }
        if (*at < openTo_) {
            --openTo_;
        }
        return true;
    }

    bool setTimes(int seq, TimeRange range)
    {
        const auto at = resolve(seq);
        if (!at) {
            return false;
        }
        items_[*at].setTimes(range);
        open(*at, *at + 1);
        if (items_[*at].appended && items_[*at].timesSet) {
            late_ = Late{seq, *at};
        }
        return true;
    }

    bool setMedia(int seq, TimeRange range)
    {
        const auto at = resolve(seq);
        if (!at) {
            return false;
        }
        items_[*at].setMedia(range);
        open(*at, *at + 1);
        return true;
    }

    /// Moves fromSeq and all behind it: to the left as far as the item ahead or 0 lets the first of them, to the right
    /// as far as times can be told. False when there is no such item.
    bool shift(int fromSeq, Ms deltaMs)
    {
        aboutOther();
        const auto from = resolve(fromSeq);
        if (!from) {
            return false;
        }
        const auto first = items_.begin() + static_cast<std::ptrdiff_t>(*from);
        if (deltaMs < 0) {
            const Ms roomMs = first->time.startMs - endBefore(*from);
            deltaMs = std::max(deltaMs, -std::max(roomMs, Ms{0}));
        } else {
            Ms lastMs = 0;
            std::for_each(first, items_.end(), [&](const Item& item) { lastMs = std::max(lastMs, item.time.stopMs); });
            deltaMs = std::min(deltaMs, std::max(kLastMs - lastMs, Ms{0}));
        }
        std::for_each(first, items_.end(), [&](Item& item) { item.shift(deltaMs); });
        return true;
    }

    /// Puts all items in order and apart, for good. lengthOf(number) gives the length of one that has none.
    template <class LengthOf>
    void settle(LengthOf lengthOf)
    {
        place();
        Ms endMs = endBefore(openFrom_);
        for (std::size_t i = openFrom_; i < count(); ++i) {
            Item& item = items_[i];
            if (i >= openTo_ && item.time.startMs >= endMs) {
                break;
            }
            if (!item.ranged) {
                item.ranged = true;
                item.time.stopMs = item.time.startMs + lengthOf(i);
            }
            item.settle(endMs);
            endMs = item.time.stopMs;
        }
        Ms limitMs = kLastMs;
        for (std::size_t i = count(); i-- > 0 && items_[i].time.stopMs > limitMs;) {
            items_[i].squeeze(limitMs);
            limitMs = items_[i].time.startMs;
        }
        openFrom_ = openTo_ = 0;
    }

    void settle()
    {
        settle([](std::size_t) { return Ms{1}; });
    }

private:
    struct Late {
        int calledSeq;
        std::size_t at;
    };

    std::optional<std::size_t> resolve(int seq)
    {
        if (late_ && late_->calledSeq == seq) {
            return late_->at;
        }
        aboutOther();
        if (seq < 0 || static_cast<std::size_t>(seq) >= count()) {
            return std::nullopt;
        }
        return static_cast<std::size_t>(seq);
    }

    /// Moves the appended item that is spoken of to where its start belongs, ahead of an equal one.
    void place()
    {
        if (!late_ || !items_[late_->at].appended) {
            return;
        }
        const std::size_t from = late_->at;
        std::size_t to = from;
        while (to > 0 && items_[to - 1].time.startMs >= items_[from].time.startMs) {
            --to;
        }
        if (to == from) {
            return;
        }
        const auto begin = items_.begin();
        std::rotate(begin + static_cast<std::ptrdiff_t>(to), begin + static_cast<std::ptrdiff_t>(from),
                    begin + static_cast<std::ptrdiff_t>(from) + 1);
        open(to, from + 1);
        late_->at = to;
    }

    Ms endBefore(std::size_t at) const noexcept { return at == 0 ? Ms{0} : items_[at - 1].time.stopMs; }

    void open(std::size_t from, std::size_t to) noexcept
    {
        const bool settled = openFrom_ == openTo_;
        openFrom_ = settled ? from : std::min(openFrom_, from);
        openTo_ = settled ? to : std::max(openTo_, to);
    }

    std::deque<Item> items_;   // removing item 0 again and again is how callers clear a list
    std::size_t openFrom_ = 0; // the window that may be unsettled, half open
    std::size_t openTo_ = 0;
    std::optional<Late> late_;
};

} // namespace twcore
