#pragma once

// The items of one kind on one track: its sources, its effects or its transitions, which edits treat alike.
//
// This room is the ground that the other rooms of the timeline stand on: the rows (`track_rows.h`), what lies on them
// (`row_items.h`), a whole item as a value (`whole_item.h`) and the change of one item that is made whole or not at all
// (`item_edit.h`). It owns nothing: items are the engine's and are read anew at each call, locks are the check boxes'.
// It never draws, never makes a step of the history and never tells the player.
//
// Sequence numbers count from 0. All raise what the engine's calls raise. Interface thread only.

#include "engine/ITWTimeline.h"
#include "engine/check.h"

#include <array>
#include <optional>

namespace items {

enum class ItemKind : std::uint8_t { kSource, kEffect, kTransition };

/// Timeline times in ms. Both ends count as inside: the joint of two items belongs to the earlier one.
struct ItemTimes {
    engine::Milliseconds start = 0;
    engine::Milliseconds stop = 0;

    bool holds(engine::Milliseconds pos) const { return start <= pos && pos <= stop; }
    bool operator==(const ItemTimes&) const = default;
};

/// The engine's calls for one kind of items.
struct ItemCalls {
    using Timeline = engine::ITWTimeline;
    using Ms = engine::Milliseconds;
    using Flag = engine::Bool16&;

    engine::Status (Timeline::*getCount)(engine::Handle, std::int16_t&);
    engine::Status (Timeline::*getTimes)(engine::Handle, std::int16_t, Ms&, Ms&, Flag);
    engine::Status (Timeline::*setTimes)(engine::Handle, std::int16_t, Ms, Ms, Flag);
    engine::Status (Timeline::*shift)(engine::Handle, std::int16_t, Ms, Flag);
    engine::Status (Timeline::*remove)(engine::Handle, std::int16_t, Flag);
    engine::Status (Timeline::*select)(engine::Handle, std::int16_t, engine::Bool16);
    engine::Status (Timeline::*isSelected)(engine::Handle, std::int16_t, Flag); // nobody can ask a transition
};

inline constexpr std::array<ItemCalls, 3> kItemCalls{{
    {&engine::ITWTimeline::GetSourceCount, &engine::ITWTimeline::GetSourceTimes, &engine::ITWTimeline::SetSourceTimes,
     &engine::ITWTimeline::ShiftSources, &engine::ITWTimeline::RemoveSource, &engine::ITWTimeline::SetSourceSelected,
     &engine::ITWTimeline::IsSourceSelected},
    {&engine::ITWTimeline::GetEffectCount, &engine::ITWTimeline::GetEffectTimes, &engine::ITWTimeline::SetEffectTimes,
     &engine::ITWTimeline::ShiftEffects, &engine::ITWTimeline::RemoveEffect, &engine::ITWTimeline::SetEffectSelected,
     &engine::ITWTimeline::IsEffectItemSelected},
    {&engine::ITWTimeline::GetTransitionCount, &engine::ITWTimeline::GetTransitionTimes,
     &engine::ITWTimeline::SetTransitionTimes, &engine::ITWTimeline::ShiftTransitions,
     &engine::ITWTimeline::RemoveTransition, &engine::ITWTimeline::SetTransitionSelected, nullptr},
}};

/// Through a cast of the engine that the caller holds.
class Items {
public:
    Items(engine::ITWTimeline& engine, ItemKind kind, engine::Handle track)
        : engine_(engine), calls_(kItemCalls[static_cast<std::size_t>(kind)]), track_(track)
    {}

    std::int16_t count() const
    {
        std::int16_t count = 0;
        engine::check((engine_.*calls_.getCount)(track_, count));
        return count;
    }

    /// Nothing when there is no such item.
    std::optional<ItemTimes> times(std::int16_t seq) const
    {
        ItemTimes times;
        engine::Bool16 ok = engine::kFalse;
        engine::check((engine_.*calls_.getTimes)(track_, seq, times.start, times.stop, ok));
        return ok != engine::kFalse ? std::optional(times) : std::nullopt;
    }

    /// The first item that holds pos (ms), -1 if none.
    std::int16_t at(engine::Milliseconds pos) const
    {
        for (std::int16_t seq = 0;; ++seq) {
            const auto found = times(seq);
            if (!found) {
                return -1;
            }
            if (found->holds(pos)) {
                return seq;
            }
        }
    }

    /// Not of transitions.
    bool isSelected(std::int16_t seq) const
    {
        engine::Bool16 selected = engine::kFalse;
        engine::check((engine_.*calls_.isSelected)(track_, seq, selected));
        return selected != engine::kFalse;
    }

    void select(std::int16_t seq, bool selected) const
    {
        engine::check((engine_.*calls_.select)(track_, seq, engine::toBool16(selected)));
    }

    /// The first selected one from seq on, -1 if none. Not of transitions.
    std::int16_t firstSelected(std::int16_t seq = 0) const
    {
        const std::int16_t count = this->count();
        while (seq < count && !isSelected(seq)) {
            ++seq;
        }
        return seq < count ? seq : std::int16_t{-1};
    }

    /// False when there is no such item. So do the two below.
    bool setTimes(std::int16_t seq, ItemTimes times) const
    {
        engine::Bool16 ok = engine::kFalse;
        engine::check((engine_.*calls_.setTimes)(track_, seq, times.start, times.stop, ok));
        return ok != engine::kFalse;
    }

    /// Moves item fromSeq and all behind it by delta (ms).
    bool shift(int fromSeq, engine::Milliseconds delta) const
    {
        engine::Bool16 ok = engine::kFalse;
        engine::check((engine_.*calls_.shift)(track_, static_cast<std::int16_t>(fromSeq), delta, ok));
        return ok != engine::kFalse;
    }

    /// For a way back: a failure is left.
    void tryShift(std::int16_t fromSeq, engine::Milliseconds delta) const
    {
        engine::Bool16 ok = engine::kFalse;
        (void)(engine_.*calls_.shift)(track_, fromSeq, delta, ok);
    }

    bool remove(std::int16_t seq) const
    {
        engine::Bool16 ok = engine::kFalse;
        engine::check((engine_.*calls_.remove)(track_, seq, ok));
        return ok != engine::kFalse;
    }

    void removeAll() const
    {
        while (remove(0)) {
        }
    }

private:
    engine::ITWTimeline& engine_;
    const ItemCalls& calls_;
    engine::Handle track_;
};

} // namespace items
