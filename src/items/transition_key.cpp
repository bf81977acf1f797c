#include "items/transition_key.h"

#include "engine/ITWKeyTransition.h"
#include "engine/check.h"
#include "engine/engine_access.h"

namespace moduleEdit {

bool ApplyTransitionKey(engine::Handle track, std::int16_t seq, std::int16_t red, std::int16_t green, std::int16_t blue)
{
    const auto keys = engine::EngineAs<engine::ITWKeyTransition>();
    constexpr std::int32_t kKeyByColour = 0;
    engine::Bool16 ok = engine::kFalse;
    const engine::Status cleared = keys->ClearKeyParameters(track, seq);
    const engine::Status typed = keys->SetKeyParameter(track, seq, "KeyType", kKeyByColour, ok);
    const engine::Status coloured = keys->SetKeyColor(track, seq, red, green, blue, ok);
    check(cleared);
    check(typed);
    check(coloured);
    return ok != engine::kFalse;
}

} // namespace moduleEdit
