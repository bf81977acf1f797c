// The selected effect of the tools panel goes on the lane.

#include "core/forms/frmTools.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/adding.h"
#include "editing/cut_place.h"
#include "editing/moduleTWState.h"
#include "engine/engine_access.h"
#include "history/command.h"
#include "items/items.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"
#include "timeline/view_times.h"

#include <string>

namespace moduleTimeline {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;
using engine::Milliseconds;
using items::ItemKind;
using items::Items;

namespace {

constexpr const char* kModule = "moduleTimeline";
constexpr std::string_view kEffectFailed = "Unable to add effect to timeline. The timeline may be empty.";

/// Raises error 91 when none is selected.
std::string selectedEffect()
{
    const ListView& list = forms::frmTools.lvwEffects;
    const std::int32_t place = list.SelectedItem;
    if (place < 1 || place > list.Count()) {
        throw engine::RuntimeError(engine::error_number::kObjectNotSet, "No effect is selected.");
    }
    return list.Row(place).Text;
}

/// 0 without items.
Milliseconds lastStop(const Items& items)
{
    const auto last = items.times(static_cast<std::int16_t>(items.count() - 1));
    return last ? last->stop : 0;
}

/// False when the engine has no room for it.
bool placeEffect(ITWTimeline& engine, Handle track)
{
    constexpr Milliseconds kDefaultLength = -1;
    const std::string name = selectedEffect();
    Bool16 ok = engine::kTrue;
    if (timeline::isSelectionHidden()) {
        check(engine.AddEffectAt(track, name, GetSliderPosition(), kDefaultLength, ok));
    } else if (timeline::isSelectionShown()) {
        check(engine.AddEffectAt(track, name, GetSelSliderPosition(true), GetSelSliderPosition(false), ok));
    }
    return ok != kFalse;
}

bool refuse(std::string_view why)
{
    tellUser(why);
    return false;
}

/// The view shows the effect that was put there.
void followEffect(Milliseconds start)
{
    const Items effects(*EngineAs<ITWTimeline>(), ItemKind::kEffect, state::TrackCollection.Item(1));
    for (std::int16_t seq = 0; const auto effect = effects.times(seq); ++seq) {
        if (effect->start == start) {
            timeline::followEdit(*effect);
        }
    }
}

bool addEffect()
{
    if (moduleTWState::IsVideoTrackEmpty()) {
        return refuse("Unable to add effect to the timeline as the video track is empty.");
    }
    const Handle track = state::TrackCollection.Item(1);
    const auto engine = EngineAs<ITWTimeline>();
    // The ends alone are compared, as the message says: room ahead of the last effect counts once that is moved there.
    if (lastStop({*engine, ItemKind::kEffect, track}) == lastStop({*engine, ItemKind::kSource, track})) {
        return refuse("Unable to add effect.\r\n\r\nThe duration of the effect track cannot be more than the duration "
                      "of the video track. You may have to shift one or more effects or clear the effect track to make "
                      "room for a new effect.");
    }
    if (!placeEffect(*engine, track)) {
        return refuse(kEffectFailed);
    }
    UpdateTreeView(); // an effect may come to lie before others
    moduleScaleRenderer::RenderEffectBars();
    ShowOrHideTrackSelections();
    RenderAllSelections();
    moduleScaleRenderer::AdjustScroll();
    UpdatePreview();
    UpdateTrackOptions();
    return true;
}

} // namespace

bool OnEditAddEffectToTimelineClick()
{
    bool isAdded = false;
    Trapped(kModule, "OnEditAddEffectToTimelineClick", [&] { isAdded = addEffect(); },
            {{engine::error_number::kObjectNotSet, [] { tellUser(kEffectFailed); }}});
    return isAdded;
}

bool AddSelectedEffect()
{
    bool isAdded = false;
    Trapped(kModule, "AddSelectedEffect", [&] {
        if (moduleTWState::IsEffectLocked(state::TrackCollection.Item(1))) {
            tellUser("Please unlock the Effect Track before adding an effect to it.");
            return;
        }
        const editing::CutPlace cut;
        const Milliseconds start = timeline::isSelectionHidden() ? GetSliderPosition() : GetSelSliderPosition(true);
        const auto add = [&] {
            isAdded = OnEditAddEffectToTimelineClick();
            return isAdded ? history::Outcome::kChanged : history::Outcome::kNothing;
        };
        history::run("Effect", add, [] {});
        if (isAdded) {
            cut.follow();
            followEffect(start);
        }
    });
    return isAdded;
}

} // namespace moduleTimeline
