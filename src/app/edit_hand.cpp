#include "app/edit_hand.h"

#include "core/forms/frmTools.h"
#include "editing/trim.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "hand/row_events.h"
#include "hand/tree_drop.h"
#include "history/ModuleHistory.h"
#include "items/items.h"
#include "shell/frmTools_events.h"
#include "shell/track_menu.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <cstdlib>

namespace app {

using engine::EngineAs;
using engine::ITWTimeline;
using engine::Milliseconds;
using items::ItemKind;
using items::Items;
using items::ItemTimes;

namespace {

constexpr int kLeftButton = 1;
constexpr float kTop = 0;     // of a row: here an item is taken by its end
constexpr float kMiddle = 20; // and here as a whole

Items itemsOf(ITWTimeline& engine, EditTrack track)
{
    return {engine, track == EditTrack::kEffects ? ItemKind::kEffect : ItemKind::kSource, handleOf(track)};
}

std::optional<ItemTimes> timesOf(EditTrack track, std::int16_t seq)
{
    return seq < 0 ? std::nullopt : itemsOf(*EngineAs<ITWTimeline>(), track).times(seq);
}

std::int32_t countOf(EditTrack track) { return itemsOf(*EngineAs<ITWTimeline>(), track).count(); }

/// Press, one move, release.
void dragFrom(EditTrack track, Milliseconds pos, float y, Milliseconds by)
{
    const PictureEvents events = eventsOf(track);
    const std::int16_t index = rowOf(track).index;
    const double at = static_cast<double>(pos) - timeline::viewLeft();
    const auto x = static_cast<float>(at);
    const auto to = static_cast<float>(at + by);
    events.mouseDown(index, kLeftButton, 0, x, y);
    events.mouseMove(index, kLeftButton, 0, to, y);
    events.mouseUp(index, kLeftButton, 0, to, y);
}

/// False when there is none.
bool selectAlone(EditTrack track, std::int32_t place)
{
    if (place < 1 || place > countOf(track)) {
        return false;
    }
    const auto engine = EngineAs<ITWTimeline>();
    const auto seq = static_cast<std::int16_t>(place - 1);
    moduleTimeline::ClearMFSTSubSelections();
    itemsOf(*engine, track).select(seq, true);
    if (track == EditTrack::kOverlay) {
        engine::check(engine->SetTransitionSelected(handleOf(track), seq, engine::kTrue));
    }
    return true;
}

} // namespace

void drag(EditTrack track, std::int16_t seq, Milliseconds by)
{
    if (const auto item = timesOf(track, seq)) {
        // Rounded up: the very start may belong to the item ahead.
        dragFrom(track, item->stop - (item->stop - item->start) / 2, kMiddle, by);
    }
}

void resize(EditTrack track, std::int16_t seq, Milliseconds by)
{
    if (const auto item = timesOf(track, seq)) {
        dragFrom(track, item->stop, kTop, by);
    }
}

void trim(EditTrack track, std::int16_t seq, editing::ItemEnd end, Milliseconds by)
{
    if (!timesOf(track, seq)) {
        return;
    }
    if (!itemsOf(*EngineAs<ITWTimeline>(), track).isSelected(seq)) {
        selectAlone(track, seq + 1);
    }
    if (auto trim = editing::Trim::begin(rowOf(track), seq, end)) {
        const auto to = std::int64_t{trim->origin()} + by;
        trim->moveTo(static_cast<Milliseconds>(std::clamp<std::int64_t>(to, trim->leftmost(), trim->rightmost())));
        trim->finish();
    }
}

void nudge(std::int32_t pixels)
{
    constexpr int kLeftArrow = 37;
    constexpr int kRightArrow = 39;
    constexpr int kShift = 1;
    frmTimeline::picVideo_KeyDown(0, pixels < 0 ? kLeftArrow : kRightArrow, std::abs(pixels) == 1 ? kShift : 0);
}

void shuffle(EditTrack track, std::int32_t from, std::int32_t onto)
{
    if (onto < 1 || onto > countOf(track) || !selectAlone(track, from)) {
        return;
    }
    const std::int32_t place = treePlaceOf(track);
    frmTimeline::tvwTimeline_OLEDragDrop({place, from - 1}, {place, onto - 1});
}

void changeTrack(EditTrack fromTrack, std::int32_t from, EditTrack toTrack, std::int32_t place)
{
    if (place < 1 || !selectAlone(fromTrack, from)) {
        return;
    }
    const std::int32_t count = countOf(toTrack);
    if (place <= count || count == 0) {
        const std::int32_t node = treePlaceOf(toTrack);
        const std::vector<std::int32_t> drop = count == 0 ? std::vector{node} : std::vector{node, place - 1};
        frmTimeline::tvwTimeline_OLEDragDrop({treePlaceOf(fromTrack), from - 1}, drop);
    } else if (fromTrack == EditTrack::kAudio1 && toTrack == EditTrack::kAudio2) {
        mdiTarnwick::mnuEditAddtoAudio2_Click(); // a drop reaches no place behind the last item
    } else if (fromTrack == EditTrack::kAudio2 && toTrack == EditTrack::kAudio1) {
        mdiTarnwick::mnuEditAddtoAudio1_Click();
    }
}

void clickHistory(std::int32_t row)
{
    if (row >= 1 && row <= std::ssize(forms::frmTools.lvwHistory.get())) {
        forms::frmTools.lvwHistorySelected = row;
        frmTools::lvwHistory_Click();
    }
}

} // namespace app
