#include "editing/bare_tracks.h"

#include "core/shared_state.h"
#include "core/trap.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"

namespace moduleTimeline {

void EmptyEffectsOfBareTracks()
{
    Trapped("moduleTimeline", "EmptyEffectsOfBareTracks", [] {
        const auto timeline = engine::EngineAs<engine::ITWTimeline>();
        for (const engine::Handle track : state::TrackCollection) {
            engine::Bool16 isVideo = engine::kFalse;
            std::int16_t sources = 0;
            engine::check(timeline->IsVideoTrack(track, isVideo));
            engine::check(timeline->GetSourceCount(track, sources));
            if (isVideo == engine::kFalse || sources > 0) {
                continue;
            }
            engine::Bool16 removed = engine::kTrue;
            while (removed != engine::kFalse) {
                engine::check(timeline->RemoveEffect(track, 0, removed));
            }
        }
    });
}

} // namespace moduleTimeline
