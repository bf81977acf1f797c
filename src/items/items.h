#pragma once

// Reading and choosing items of a track, sources and effects alike. All raise what the engine's calls raise.
// Interface thread only.

#include "engine/ITWTimeline.h"
#include "engine/check.h"

#include <optional>

namespace items {

enum class ItemKind : std::uint8_t { kSource, kEffect };

/// Timeline times in ms. Both ends count as inside: the joint of two items belongs to the earlier one.
struct ItemTimes {
    engine::Milliseconds start = 0;
    engine::Milliseconds stop = 0;

    bool holds(engine::Milliseconds pos) const { return start <= pos && pos <= stop; }
    bool operator==(const ItemTimes&) const = default;
};

/// One kind of items of one track, through a cast of the engine that the caller holds.
class Items {
public:
    Items(engine::ITWTimeline& engine, ItemKind kind, engine::Handle track)
        : engine_(engine), kind_(kind), track_(track)
    {}

    /// Nothing when there is no such item.
    std::optional<ItemTimes> times(std::int16_t seq) const
    {
        ItemTimes times;
        engine::Bool16 ok = engine::kFalse;
        engine::check(isSource() ? engine_.GetSourceTimes(track_, seq, times.start, times.stop, ok)
                                 : engine_.GetEffectTimes(track_, seq, times.start, times.stop, ok));
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

    std::int16_t count() const
    {
        std::int16_t count = 0;
        engine::check(isSource() ? engine_.GetSourceCount(track_, count) : engine_.GetEffectCount(track_, count));
        return count;
    }

    bool isSelected(std::int16_t seq) const
    {
        engine::Bool16 selected = engine::kFalse;
        engine::check(isSource() ? engine_.IsSourceSelected(track_, seq, selected)
                                 : engine_.IsEffectItemSelected(track_, seq, selected));
        return selected != engine::kFalse;
    }

    void select(std::int16_t seq, bool selected) const
    {
        const engine::Bool16 flag = engine::toBool16(selected);
        engine::check(isSource() ? engine_.SetSourceSelected(track_, seq, flag)
                                 : engine_.SetEffectSelected(track_, seq, flag));
    }

    /// The first selected one from seq on, -1 if none.
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
        engine::check(isSource() ? engine_.SetSourceTimes(track_, seq, times.start, times.stop, ok)
                                 : engine_.SetEffectTimes(track_, seq, times.start, times.stop, ok));
        return ok != engine::kFalse;
    }

    /// Moves item fromSeq and all behind it by delta (ms).
    bool shift(int fromSeq, engine::Milliseconds delta) const
    {
        const auto seq = static_cast<std::int16_t>(fromSeq);
        engine::Bool16 ok = engine::kFalse;
        engine::check(isSource() ? engine_.ShiftSources(track_, seq, delta, ok)
                                 : engine_.ShiftEffects(track_, seq, delta, ok));
        return ok != engine::kFalse;
    }

    bool remove(std::int16_t seq) const
    {
        engine::Bool16 ok = engine::kFalse;
        engine::check(isSource() ? engine_.RemoveSource(track_, seq, ok) : engine_.RemoveEffect(track_, seq, ok));
        return ok != engine::kFalse;
    }

private:
    bool isSource() const { return kind_ == ItemKind::kSource; }

    engine::ITWTimeline& engine_;
    ItemKind kind_;
    engine::Handle track_;
};

} // namespace items
