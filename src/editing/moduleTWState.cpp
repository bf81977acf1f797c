#include "editing/moduleTWState.h"

#include "core/forms/frmMediaList.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "editing/clipboard.h"
#include "editing/selection_edges.h"
#include "engine/engine_access.h"
#include "items/row_items.h"
#include "items/whole_item.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>

namespace moduleTWState {

using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using items::ItemKind;
using items::Items;
using items::RowKind;
using items::TrackRow;

namespace {

/// A question's answer; false when it fails.
template <class Question>
bool answerTo(const char* routine, Question question)
{
    bool answer = false;
    Trapped("moduleTWState", routine, [&] { answer = question(); });
    return answer;
}

/// Any row whose track could be made.
template <class Question>
bool anyRow(Question question)
{
    return std::ranges::any_of(items::rows(), [&](const TrackRow& row) { return items::isMade(row) && question(row); });
}

bool anyRowOf(RowKind kind, bool (*question)(Handle track))
{
    return anyRow([&](const TrackRow& row) { return row.kind == kind && question(items::trackOf(row)); });
}

bool isLaneOf(const TrackRow& row, Handle track)
{
    return row.kind == RowKind::kEffect && items::trackOf(row) == track;
}

Items itemsOf(ITWTimeline& engine, const TrackRow& row) { return items::rowItems(engine, row).items; }

bool hasItems(ItemKind kind, Handle track) { return Items(*EngineAs<ITWTimeline>(), kind, track).count() > 0; }

/// Any item for which `question(seq)` holds.
template <class Question>
bool anyItem(const Items& items, Question question)
{
    const std::int16_t count = items.count();
    for (std::int16_t seq = 0; seq < count; ++seq) {
        if (question(seq)) {
            return true;
        }
    }
    return false;
}

bool anySelected(const Items& items)
{
    return anyItem(items, [&](std::int16_t seq) { return items.isSelected(seq); });
}

bool anySelected(ItemKind kind, Handle track)
{
    return !moduleTimeline::IsTimelineEmpty() && anySelected(Items(*EngineAs<ITWTimeline>(), kind, track));
}

bool anySourceSelected(Handle track) { return anySelected(ItemKind::kSource, track); }

/// The source of that audio track, from 0.
bool anySelectedOnAudio(std::int16_t index)
{
    return anySourceSelected(items::trackOf(items::row(RowKind::kAudio, index)));
}

/// An edit of the selection would find something on an unlocked row. An overlay counts only under an edge.
bool isReachedBySelection(ITWTimeline& engine, const TrackRow& row)
{
    if (row.isLocked() || !items::isLinked(engine, row)) {
        return false;
    }
    const Items sources = itemsOf(engine, row);
    if (row.kind != RowKind::kOverlay) {
        return sources.count() > 0;
    }
    const editing::SelectionEdges edges = editing::selectionEdges();
    return sources.at(edges.start) != -1 || sources.at(edges.stop) != -1;
}

bool isStretched(ITWTimeline& engine, Handle track, std::int16_t seq)
{
    const auto times = items::readTimes({engine, track, seq}).value_or(items::SourceTimes{});
    return std::int64_t{times.stop} - times.start != std::int64_t{times.mediaStop} - times.mediaStart;
}

} // namespace

bool IsTrackDisabled(Handle track)
{
    return answerTo("IsTrackDisabled", [&] {
        return anyRow([&](const TrackRow& row) {
            return row.kind != RowKind::kEffect && row.chkDisable.Value == 1 && items::trackOf(row) == track;
        });
    });
}

bool IsEffectLocked(Handle track)
{
    return answerTo("IsEffectLocked", [&] {
        return anyRow([&](const TrackRow& row) { return isLaneOf(row, track) && row.isLocked(); });
    });
}

bool IsEffectDisabled(Handle track)
{
    return answerTo("IsEffectDisabled", [&] {
        return anyRow([&](const TrackRow& row) { return isLaneOf(row, track) && row.chkDisable.Value == 1; });
    });
}

bool IsEffectSelected(Handle track)
{
    return answerTo("IsEffectSelected", [&] {
        return anyRow([&](const TrackRow& row) { return isLaneOf(row, track) && row.chkLink.Value == 1; });
    });
}

bool IsAnySourceSelected(Handle track)
{
    return answerTo("IsAnySourceSelected", [&] { return anySourceSelected(track); });
}

bool IsAnyEffectSelected(Handle track)
{
    return answerTo("IsAnyEffectSelected", [&] { return anySelected(ItemKind::kEffect, track); });
}

bool IsVideoTrackEmpty()
{
    return answerTo("IsVideoTrackEmpty", [] {
        return moduleTimeline::IsTimelineEmpty() || !hasItems(ItemKind::kSource, state::TrackCollection.Item(1));
    });
}

bool IsEffectTrackEmpty()
{
    return answerTo("IsEffectTrackEmpty", [] {
        return !anyRowOf(RowKind::kVideo, [](Handle track) { return hasItems(ItemKind::kEffect, track); });
    });
}

bool IsOverlayTrackEmpty()
{
    return answerTo("IsOverlayTrackEmpty", [] { return !hasItems(ItemKind::kSource, state::OverlayTrack); });
}

bool IsAudioSourceSelected()
{
    return answerTo("IsAudioSourceSelected", [] { return anyRowOf(RowKind::kAudio, anySourceSelected); });
}

bool IsAudio1SourceSelected()
{
    return answerTo("IsAudio1SourceSelected", [] { return anySelectedOnAudio(0); });
}

bool IsAudio2SourceSelected()
{
    return answerTo("IsAudio2SourceSelected", [] { return anySelectedOnAudio(1); });
}

bool IsVideoSourceSelected()
{
    return answerTo("IsVideoSourceSelected", [] { return anyRowOf(RowKind::kVideo, anySourceSelected); });
}

bool IsOverlaySourceSelected()
{
    return answerTo("IsOverlaySourceSelected", [] { return anySourceSelected(state::OverlayTrack); });
}

bool IsEditingValid()
{
    return answerTo("IsEditingValid", [] {
        if (moduleTimeline::IsTimelineEmpty()) {
            return false;
        }
        const auto engine = EngineAs<ITWTimeline>();
        const bool isSelectionShown = timeline::isSelectionShown();
        return anyRow([&](const TrackRow& row) {
            return isSelectionShown ? isReachedBySelection(*engine, row)
                                    : !row.isLocked() && anySelected(itemsOf(*engine, row));
        });
    });
}

bool IsTrimValid()
{
    return answerTo("IsTrimValid", [] {
        const auto engine = EngineAs<ITWTimeline>();
        return anyRow([&](const TrackRow& row) { return !row.isLocked() && anySelected(itemsOf(*engine, row)); });
    });
}

bool IsRestoreSizeValid()
{
    return answerTo("IsRestoreSizeValid", [] {
        if (moduleTimeline::IsTimelineEmpty() || !timeline::isSelectionHidden()) {
            return false;
        }
        const auto engine = EngineAs<ITWTimeline>();
        return anyRow([&](const TrackRow& row) {
            if (row.kind == RowKind::kEffect || row.isLocked()) {
                return false;
            }
            const Items sources = itemsOf(*engine, row);
            return anyItem(sources, [&](std::int16_t seq) {
                return sources.isSelected(seq) && isStretched(*engine, items::trackOf(row), seq);
            });
        });
    });
}

bool IsSetOverlayTransparencyValid()
{
    return answerTo("IsSetOverlayTransparencyValid", [] {
        return timeline::isSelectionHidden() && !IsTrackLocked(state::OverlayTrack)
               && anySourceSelected(state::OverlayTrack);
    });
}

bool IsClipboardFilled()
{
    using namespace moduleEdit;
    return !SourceClips.empty() || !EffectClips.empty() || !TransitionClips.empty();
}

bool IsOneMediaFileSelected()
{
    return answerTo("IsOneMediaFileSelected", [] {
        const ListView& list = forms::frmMediaList.lvwMediaList;
        std::int32_t selected = 0;
        for (std::int32_t place = 1; place <= list.Count(); ++place) {
            selected += list.Row(place).Selected ? 1 : 0;
        }
        return selected == 1;
    });
}

} // namespace moduleTWState
