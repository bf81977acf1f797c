#include "timeline/moduleTimeline.h"

#include "core/forms/frmTimeline.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "settings/ModuleSettings.h"
#include "settings/recent_lists.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/moduleBookmarks.h"
#include "timeline/moduleScaleRenderer.h"

#include <algorithm>
#include <string>

namespace moduleTimeline {

using engine::check;
using engine::EngineAs;
using engine::ITWTimeline;
using items::ItemKind;
using items::Items;

namespace {

/// A new track that takes part in selections; 0, and the person is told, when the engine has none to give.
engine::Handle makeTrack(ITWTimeline& engine, bool isVideo)
{
    engine::Handle track = 0;
    check(engine.CreateTrack(engine::toBool16(isVideo), track));
    if (track == 0) {
        tellUser("Unable to initialize timeline.", MessageIcon::kCritical);
    } else {
        check(engine.SetTrackLink(track, engine::kTrue));
    }
    return track;
}

void makeVideoTracks(ITWTimeline& engine)
{
    for (std::size_t i = 0; i < forms::frmTimeline.picVideo.size(); ++i) {
        const engine::Handle track = makeTrack(engine, true);
        if (track == 0) {
            break;
        }
        state::TrackCollection.Add(track);
        ModuleTreeView::AddTrack("Video", track);
        ModuleTreeView::VideoTrackNode = track;
        ModuleTreeView::AddTrack("Effects", ModuleTreeView::kEffectLane);
    }
}

void makeOverlayTrack(ITWTimeline& engine)
{
    state::OverlayTrack = makeTrack(engine, true);
    ModuleTreeView::AddTrack("Overlays", state::OverlayTrack);
    ModuleTreeView::OverlayTrackNode = state::OverlayTrack;
}

void makeAudioTracks(ITWTimeline& engine)
{
    for (std::size_t i = 0; i < forms::frmTimeline.picAudio.size(); ++i) {
        const engine::Handle track = makeTrack(engine, false);
        if (track == 0) {
            break;
        }
        state::TrackCollection.Add(track);
        ModuleTreeView::AddTrack("Audio " + std::to_string(state::TrackCollection.Count() - 1), track);
        (i == 0 ? ModuleTreeView::Audio1TrackNode : ModuleTreeView::Audio2TrackNode) = track;
    }
}

void placeSliders()
{
    SetSliderPosition(0, false);
    SetSelSliderPosition(1000, true);
    SetSelSliderPosition(2000, false);
    state::SelStartPosition = GetSelSliderPosition(true);
    state::SelEndPosition = GetSelSliderPosition(false);
}

void clearItems(const Items& items)
{
    const std::int16_t count = items.count();
    for (std::int16_t seq = 0; seq < count; ++seq) {
        items.select(seq, false);
    }
}

} // namespace

void InitTimeline()
{
    Trapped("moduleTimeline", "InitTimeline", [] {
        ModuleSettings::SetApplicationName("Quillmont 1.1");
        ModuleSettings::GetResentFilesFromReg();
        ModuleSettings::GetResentProjectFilesFromReg();
        ModuleTreeView::MakeRoot();
        const auto engine = EngineAs<ITWTimeline>();
        makeVideoTracks(*engine);
        makeOverlayTrack(*engine);
        makeAudioTracks(*engine);
        ModuleSettings::LoadRegistrySettings();
        moduleScaleRenderer::InitScale();
        placeSliders();
        moduleBookmarks::UpdateBookmarks();
    });
}

std::int16_t GetSequenceNumberFromPos(engine::Handle track, engine::Milliseconds pos)
{
    std::int16_t found = -1;
    Trapped("moduleTimeline", "GetSequenceNumberFromPos",
            [&] { found = Items(*EngineAs<ITWTimeline>(), ItemKind::kSource, track).at(pos); });
    return found;
}

std::int16_t GetSequenceNumberAtPosEffect(engine::Handle track, engine::Milliseconds pos)
{
    std::int16_t found = -1;
    Trapped("moduleTimeline", "GetSequenceNumberAtPosEffect",
            [&] { found = Items(*EngineAs<ITWTimeline>(), ItemKind::kEffect, track).at(pos); });
    return found;
}

engine::Milliseconds GetTimelineDuration()
{
    engine::Milliseconds longest = 0;
    Trapped("moduleTimeline", "GetTimelineDuration", [&] {
        const auto engine = EngineAs<ITWTimeline>();
        const auto compare = [&](engine::Handle track) {
            engine::Milliseconds duration = 0;
            check(engine->GetTrackDuration(track, duration));
            longest = std::max(longest, duration);
        };
        for (const engine::Handle track : state::TrackCollection) {
            compare(track);
        }
        compare(state::OverlayTrack);
    });
    return longest;
}

bool IsTimelineEmpty()
{
    bool isEmpty = true;
    Trapped("moduleTimeline", "IsTimelineEmpty", [&] {
        const auto engine = EngineAs<ITWTimeline>();
        const auto look = [&](engine::Handle track) {
            isEmpty = isEmpty && Items(*engine, ItemKind::kSource, track).count() == 0;
        };
        for (const engine::Handle track : state::TrackCollection) {
            look(track);
        }
        look(state::OverlayTrack);
    });
    return isEmpty;
}

void ClearMFSTSubSelections()
{
    Trapped("moduleTimeline", "ClearMFSTSubSelections", [] {
        const auto engine = EngineAs<ITWTimeline>();
        for (const engine::Handle track : state::TrackCollection) {
            clearItems({*engine, ItemKind::kSource, track});
            engine::Bool16 isVideo = engine::kFalse;
            check(engine->IsVideoTrack(track, isVideo));
            if (isVideo != engine::kFalse) {
                clearItems({*engine, ItemKind::kEffect, track});
            }
        }
        clearItems({*engine, ItemKind::kSource, state::OverlayTrack});
        clearItems({*engine, ItemKind::kTransition, state::OverlayTrack});
    });
}

} // namespace moduleTimeline
