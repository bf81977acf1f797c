#include "editing/bare_tracks.h"

#include "core/shared_state.h"
#include "core/trap.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "items/items.h"

namespace moduleTimeline {

void EmptyEffectsOfBareTracks()
{
    Trapped("moduleTimeline", "EmptyEffectsOfBareTracks", [] {
        const auto timeline = engine::EngineAs<engine::ITWTimeline>();
        for (const engine::Handle track : state::TrackCollection) {
            engine::Bool16 isVideo = engine::kFalse;
            engine::check(timeline->IsVideoTrack(track, isVideo));
            if (isVideo != engine::kFalse && items::Items(*timeline, items::ItemKind::kSource, track).count() == 0) {
                items::Items(*timeline, items::ItemKind::kEffect, track).removeAll();
            }
        }
    });
}

} // namespace moduleTimeline
