#include "editing/stream_facts.h"

#include "core/numbers.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWStreamInfo.h"
#include "engine/check.h"
#include "engine/engine_access.h"

namespace editing {

StreamFacts factsOf(engine::Handle stream)
{
    engine::Bool16 isChosen = engine::kFalse;
    engine::check(engine::EngineAs<engine::ITWMediaFiles>()->SelectStream(stream, isChosen));
    if (isChosen == engine::kFalse) {
        return {};
    }
    const auto info = engine::EngineAs<engine::ITWStreamInfo>();
    engine::Bool16 isVideo = engine::kFalse;
    double fps = 0;
    double seconds = 0;
    engine::check(info->IsVideo(isVideo));
    engine::check(info->GetFrameRate(fps));
    engine::check(info->GetDuration(seconds));
    return {isVideo != engine::kFalse && fps == 0, numbers::rounded<std::int32_t>(seconds * 1000)};
}

} // namespace editing
