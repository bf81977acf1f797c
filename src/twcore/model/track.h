#pragma once

// A track: an ordered list of sources, one of effects and one of transitions, and its own flags.
//
// Calls take what they are told at once and answer false only when the item does not exist, or an addition has no
// room. The first reading of times settles all three lists, for good: before that, a command that comes in several
// calls may pass through states that make no sense, and nobody sees them.
//
// A place may change without its number: a call that is about one item of the track ends what an earlier call left
// pending about another (see `ItemList`), which is why every operation below goes through the track.

#include "twcore/model/item_list.h"
#include "twcore/model/items.h"
#include "twcore/model/timeline_snapshot.h"

#include <string_view>
#include <type_traits>

namespace twcore {

class Track {
public:
    explicit Track(bool isVideo) noexcept : isVideo_(isVideo) {}

    bool isVideo() noexcept { return aboutTrack().isVideo_; }
    bool linked() noexcept { return aboutTrack().linked_; }
    void setLinked(bool linked) noexcept { aboutTrack().linked_ = linked; }
    void setDisabled(bool disabled) noexcept { aboutTrack().disabled_ = disabled; }

    // Of any kind of item: Item is Source, Effect or Transition.

    template <class Item>
    std::size_t count() noexcept
    {
        return aboutTrack().template list<Item>().count();
    }

    /// For reading and changing all but times; null when there is none. Good until the next call.
    template <class Item>
    Item* item(int seq)
    {
        return listFor<Item>().about(seq);
    }

    /// Settles the track. Null when there is none. Good until the next call.
    template <class Item>
    const Item* settledItem(int seq)
    {
        settle();
        return item<Item>(seq);
    }

    template <class Item>
    bool setTimes(int seq, TimeRange range)
    {
        return listFor<Item>().setTimes(seq, range);
    }

    template <class Item>
    bool shift(int fromSeq, Ms deltaMs)
    {
        return listFor<Item>().shift(fromSeq, deltaMs);
    }

    template <class Item>
    bool remove(int seq)
    {
        return listFor<Item>().remove(seq);
    }

    // Sources.

    bool setMediaTimes(int seq, TimeRange range) { return listFor<Source>().setMedia(seq, range); }

    /// Adds the whole stream, directly behind the last source when startMs is -1.
    bool appendSource(engine::Handle stream, Ms streamMs, Ms startMs);
    /// A range whose stop is not behind its start stands for the length of the stream.
    bool insertSource(engine::Handle stream, Ms streamMs, int seq, TimeRange range);
    /// The stop of the last source. Settles the track.
    Ms durationMs();

    // Effects and transitions.

    /// False where it would meet an effect. stopMs -1 is the default length, shortened to the next effect and to the
    /// last source's stop; then false also where no source is left to lie over.
    bool addEffectAt(std::string_view name, Ms startMs, Ms stopMs);
    bool insertEffect(std::string_view name, int seq, TimeRange range);
    bool appendTransition(std::string_view name, TimeRange range);
    bool insertTransition(std::string_view name, int seq, TimeRange range);

    /// Puts all items in order and apart, for good.
    void settle();
    /// What lies on the track, settled.
    TrackSnapshot snapshot(engine::Handle handle);
    /// Replaces what lies on the track. Items are taken as given and settled like any others when they are read.
    void restore(const TrackContents& contents);

private:
    template <class Item>
    ItemList<Item>& list() noexcept
    {
        if constexpr (std::is_same_v<Item, Source>) {
            return sources_;
        } else if constexpr (std::is_same_v<Item, Effect>) {
            return effects_;
        } else {
            return transitions_;
        }
    }

    /// The list for a call about one of its items.
    template <class Item>
    ItemList<Item>& listFor()
    {
        if constexpr (!std::is_same_v<Item, Source>) {
            sources_.aboutOther();
        }
        if constexpr (!std::is_same_v<Item, Effect>) {
            effects_.aboutOther();
        }
        if constexpr (!std::is_same_v<Item, Transition>) {
            transitions_.aboutOther();
        }
        return list<Item>();
    }

    /// For a call about no item.
    Track& aboutTrack()
    {
        listFor<Source>().aboutOther();
        return *this;
    }

    bool isVideo_;
    bool linked_ = false;
    bool disabled_ = false;
    ItemList<Source> sources_;
    ItemList<Effect> effects_;
    ItemList<Transition> transitions_;
};

} // namespace twcore
