#pragma once

// The items of one kind on one track: its sources, its effects or its transitions, which edits treat alike.
//
// Flags are the engine's: false when there is no such item. All raise what the engine's calls raise. Interface thread
// only.

#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "items/items.h"

#include <optional>

namespace items {

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
};

inline constexpr ItemCalls kSources{&engine::ITWTimeline::GetSourceCount, &engine::ITWTimeline::GetSourceTimes,
                                    &engine::ITWTimeline::SetSourceTimes, &engine::ITWTimeline::ShiftSources,
                                    &engine::ITWTimeline::RemoveSource};
inline constexpr ItemCalls kEffects{&engine::ITWTimeline::GetEffectCount, &engine::ITWTimeline::GetEffectTimes,
                                    &engine::ITWTimeline::SetEffectTimes, &engine::ITWTimeline::ShiftEffects,
                                    &engine::ITWTimeline::RemoveEffect};
inline constexpr ItemCalls kTransitions{&engine::ITWTimeline::GetTransitionCount,
                                        &engine::ITWTimeline::GetTransitionTimes,
                                        &engine::ITWTimeline::SetTransitionTimes,
                                        &engine::ITWTimeline::ShiftTransitions, &engine::ITWTimeline::RemoveTransition};

/// Through a cast of the engine that the caller holds.
class Lane {
public:
    Lane(engine::ITWTimeline& engine, const ItemCalls& calls, engine::Handle track)
        : engine_(engine), calls_(calls), track_(track)
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

    bool setTimes(std::int16_t seq, const ItemTimes& times) const
    {
        engine::Bool16 ok = engine::kFalse;
        engine::check((engine_.*calls_.setTimes)(track_, seq, times.start, times.stop, ok));
        return ok != engine::kFalse;
    }

    /// Of fromSeq and all behind it.
    bool shift(std::int16_t fromSeq, engine::Milliseconds delta) const
    {
        engine::Bool16 ok = engine::kFalse;
        engine::check((engine_.*calls_.shift)(track_, fromSeq, delta, ok));
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

private:
    engine::ITWTimeline& engine_;
    const ItemCalls& calls_;
    engine::Handle track_;
};

} // namespace items
