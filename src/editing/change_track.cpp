#include "editing/change_track.h"

#include "core/forms/frmTimeline.h"
#include "core/numbers.h"
#include "core/upcalls.h"
#include "editing/shuffle.h"
#include "editing/shuffle_hand.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/command.h"
#include "items/items.h"
#include "items/track_locks.h"
#include "items/whole_item.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/moduleScaleRenderer.h"

#include <algorithm>

namespace ModuleTreeView {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;
using engine::Milliseconds;
using history::Outcome;
using items::ItemKind;
using items::Items;
using items::ItemTimes;

namespace {

/// Puts the source in hand on a track, at a place from 1 to one behind the last. False when the track is full.
bool putInto(ITWTimeline& engine, Handle track, std::int32_t place)
{
    const Items items(engine, ItemKind::kSource, track);
    const std::int16_t last = items.count();
    const Milliseconds start = items.times(static_cast<std::int16_t>(place - 2)).value_or(ItemTimes{}).stop;
    Bool16 ok = kFalse;
    check(engine.AppendSource(track, ShuffleStream, -1, ok));
    if (ok == kFalse) {
        return false;
    }
    // It goes to its place by its start.
    const Milliseconds stop = numbers::added(start, ShuffleStop - ShuffleStart);
    items::setWhole({engine, track, last}, {start, stop, ShuffleMediaStart, ShuffleMediaStop}, ShuffleStretch);
    if (const Milliseconds media = numbers::subtracted(ShuffleMediaStop, ShuffleMediaStart); media > 0) {
        items.shift(place, media);
    }
    return true;
}

/// The list follows the engine.
void moveNode(Handle sourceTrack, std::int16_t seq, Handle targetTrack, std::int32_t place)
{
    SearchTrack(sourceTrack);
    SearchSource(seq + 1);
    if (TreeItemNode < 0) {
        return;
    }
    std::vector<TreeNode>& tracks = forms::frmTimeline.tvwTimeline.Change().Children;
    std::vector<TreeNode>& items = tracks.at(static_cast<std::size_t>(TreeTrackNode)).Children;
    const std::string text = items[static_cast<std::size_t>(TreeItemNode)].Text;
    items.erase(items.begin() + TreeItemNode);
    SearchTrack(targetTrack);
    if (TreeTrackNode >= 0) {
        InsertSource(text, TreeTrackNode, place - 1);
        tracks.at(static_cast<std::size_t>(TreeTrackNode)).Expanded = true;
    }
}

bool changeTrack(Handle sourceTrack, Handle targetTrack, std::int32_t position, std::int32_t targetPosition)
{
    const auto engine = EngineAs<ITWTimeline>();
    const Items sources(*engine, ItemKind::kSource, sourceTrack);
    const Items targets(*engine, ItemKind::kSource, targetTrack);
    bool isChanged = false;
    std::int16_t seq = sources.firstSelected(static_cast<std::int16_t>(std::max(position, 1) - 1));
    while (seq != -1 && readSource(*engine, sourceTrack, seq)) {
        const std::int32_t behind = targets.count() + 1;
        const std::int32_t place = targetPosition >= 1 ? std::min(targetPosition, behind) : behind;
        if (!putInto(*engine, targetTrack, place)) {
            break;
        }
        sources.remove(seq);
        moveNode(sourceTrack, seq, targetTrack, place);
        isChanged = true;
        targetPosition += targetPosition >= 1 ? 1 : 0; // the next one behind it
        seq = sources.firstSelected(seq);
    }
    return isChanged;
}

} // namespace

bool ChangeTrack(Handle sourceTrack, Handle targetTrack, std::int32_t position, std::int32_t targetPosition)
{
    if (sourceTrack == targetTrack || moduleTWState::IsTrackLocked(sourceTrack)
        || moduleTWState::IsTrackLocked(targetTrack)) {
        return false;
    }
    return history::runTrapped(
        "ModuleTreeView", "ChangeTrack", "Shuffle",
        [&] {
            const bool isChanged = changeTrack(sourceTrack, targetTrack, position, targetPosition);
            return isChanged ? Outcome::kChanged : Outcome::kNothing;
        },
        [] {
            RenderAllBars();
            moduleScaleRenderer::AdjustScroll();
        });
}

} // namespace ModuleTreeView
