#include "editing/shuffle_hand.h"

#include "core/shared_state.h"
#include "editing/shuffle.h"
#include "engine/ITWKeyTransition.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"

namespace ModuleTreeView {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;

namespace {

std::string trimmed(std::string text)
{
    text.erase(text.find_last_not_of(std::string_view(" \0", 2)) + 1);
    return text;
}

void readTransition(ITWTimeline& engine, Handle track, std::int16_t seq)
{
    constexpr std::size_t kNameBytes = 20;
    const auto keys = EngineAs<engine::ITWKeyTransition>();
    std::string name(kNameBytes, ' ');
    check(engine.GetTransitionName(track, seq, name));
    check(keys->GetKeyRed(track, seq, ShuffleKeyRed));
    check(keys->GetKeyGreen(track, seq, ShuffleKeyGreen));
    check(keys->GetKeyBlue(track, seq, ShuffleKeyBlue));
    ShuffleName = trimmed(std::move(name));
}

} // namespace

bool readSource(ITWTimeline& engine, Handle track, std::int16_t seq)
{
    Bool16 ok = kFalse;
    check(engine.GetSourceMediaTimes(track, seq, ShuffleMediaStart, ShuffleMediaStop, ok));
    check(engine.GetSourceTimes(track, seq, ShuffleStart, ShuffleStop, ok));
    check(engine.GetSourceStream(track, seq, ShuffleStream));
    check(engine.GetSourceStretchMode(track, seq, ShuffleStretch));
    return ok != kFalse;
}

bool EditCutSource(Handle track, std::int16_t seq)
{
    const auto engine = EngineAs<ITWTimeline>();
    Bool16 ok = kFalse;
    if (readSource(*engine, track, seq)) {
        check(engine->RemoveSource(track, seq, ok));
    }
    return ok != kFalse;
}

bool EditCutEffect(Handle track, std::int16_t seq)
{
    constexpr std::size_t kNameBytes = 10;
    const auto engine = EngineAs<ITWTimeline>();
    std::string name(kNameBytes, ' ');
    Bool16 ok = kFalse;
    check(engine->GetEffectTimes(track, seq, ShuffleStart, ShuffleStop, ok));
    check(engine->GetEffectName(track, seq, name));
    ShuffleName = trimmed(std::move(name));
    if (ok != kFalse) {
        check(engine->RemoveEffect(track, seq, ok));
    }
    return ok != kFalse;
}

bool EditCutOverlay(Handle track, std::int16_t seq)
{
    const auto engine = EngineAs<ITWTimeline>();
    Bool16 ok = kFalse;
    if (readSource(*engine, track, seq)) {
        readTransition(*engine, track, seq);
        Bool16 hadTransition = kFalse;
        check(engine->RemoveSource(track, seq, ok));
        check(engine->RemoveTransition(track, seq, hadTransition));
    }
    return ok != kFalse;
}

} // namespace ModuleTreeView
