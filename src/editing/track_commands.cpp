#include "editing/track_commands.h"

#include "core/forms/frmTimeline.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/moduleTWState.h"
#include "editing/split.h"
#include "engine/engine_access.h"
#include "history/command.h"
#include "items/row_items.h"
#include "items/whole_item.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"

#include <limits>

namespace moduleTimeline {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;
using engine::Milliseconds;
using history::Outcome;
using items::BareSource;
using items::forEachRow;
using items::ItemKind;
using items::Items;
using items::ItemTimes;
using items::RowItems;
using items::RowKind;

namespace {

constexpr const char* kModule = "moduleTimeline";

void showMoved()
{
    RenderAllBars();
    moduleScaleRenderer::AdjustScroll();
    UpdatePreview();
}

// --- Pack and restore ----------------------------------------------------------------------------------------------

void packRow(const RowItems& row)
{
    const std::int16_t count = row.items.count();
    Milliseconds end = 0; // of the item ahead
    for (std::int16_t seq = 0; seq < count; ++seq) {
        const ItemTimes item = row.items.times(seq).value_or(ItemTimes{end, end});
        if (item.start != end) {
            row.shift(seq, end - item.start);
        }
        end += item.stop - item.start;
    }
}

void restoreSource(ITWTimeline& engine, const RowItems& row, std::int16_t seq)
{
    const auto times = items::readTimes({engine, row.track, seq}).value_or(items::SourceTimes{});
    const auto stop = numbers::narrowed<Milliseconds>(std::int64_t{times.start} + times.mediaStop - times.mediaStart);
    row.setTimes(seq, {times.start, stop});
}

void restoreRow(ITWTimeline& engine, const RowItems& row)
{
    if (row.kind == RowKind::kEffect) {
        return;
    }
    for (std::int16_t seq = row.items.firstSelected(); seq != -1;
         seq = row.items.firstSelected(static_cast<std::int16_t>(seq + 1))) {
        restoreSource(engine, row, seq);
    }
}

// --- Repeat --------------------------------------------------------------------------------------------------------

BareSource lastOf(ITWTimeline& engine, Handle track, std::int16_t seq)
{
    return items::readSource({engine, track, seq}).value_or(BareSource{});
}

/// Adds one more behind the last, as source seq. False when the track is full.
bool repeatOnce(ITWTimeline& engine, Handle track, std::int16_t seq, const BareSource& last, Milliseconds videoEnd)
{
    const items::SourceTimes& now = last.times;
    const Milliseconds length = numbers::subtracted(now.mediaStop, now.mediaStart);
    const Milliseconds remaining = videoEnd - now.stop;
    Bool16 ok = kFalse;
    check(engine.AppendSource(track, last.stream, now.stop, ok));
    if (ok == kFalse) {
        return false;
    }
    const bool isWhole = remaining >= length;
    // The media stop is the length that is left, not counted from the media start: kept, scripts count on where the
    // last repeat ends. The mode does not come along.
    items::setTimes({engine, track, seq}, {now.stop, isWhole ? now.stop + length : videoEnd, now.mediaStart,
                                           isWhole ? now.mediaStop : remaining});
    return true;
}

/// How many more sources an image of the timeline takes, which counts those of all tracks together.
int roomInImages(ITWTimeline& engine)
{
    int room = std::numeric_limits<std::int16_t>::max();
    for (const Handle track : state::TrackCollection) {
        room -= Items(engine, ItemKind::kSource, track).count();
    }
    return room;
}

bool repeatUntil(ITWTimeline& engine, Handle track, Milliseconds videoEnd)
{
    int room = roomInImages(engine);
    std::int16_t count = Items(engine, ItemKind::kSource, track).count();
    BareSource last = lastOf(engine, track, static_cast<std::int16_t>(count - 1));
    bool isChanged = false;
    // Without length it would repeat for ever.
    while (room-- > 0 && last.times.stop < videoEnd && last.times.mediaStop > last.times.mediaStart
           && repeatOnce(engine, track, count, last, videoEnd)) {
        isChanged = true;
        last = lastOf(engine, track, count);
        ++count;
    }
    return isChanged;
}

bool repeatAudio()
{
    const auto engine = EngineAs<ITWTimeline>();
    const Items video(*engine, ItemKind::kSource, state::TrackCollection.Item(1));
    const auto last = video.times(static_cast<std::int16_t>(video.count() - 1));
    if (!last) {
        return false;
    }
    for (const std::int32_t place : {2, 3}) {
        const Handle track = state::TrackCollection.Item(place);
        if (Items(*engine, ItemKind::kSource, track).firstSelected() != -1) {
            return repeatUntil(*engine, track, last->stop);
        }
    }
    return false;
}

// --- Split ---------------------------------------------------------------------------------------------------------

void splitRow(const RowItems& row, Milliseconds pos)
{
    constexpr Milliseconds kShortest = 11;
    constexpr std::size_t kEffectNameBytes = 10;
    const std::int16_t seq = row.items.at(pos);
    const auto item = row.items.times(seq);
    if (!item) {
        return;
    }
    if (row.kind == RowKind::kEffect) {
        editing::splitEffect(row.track, seq, pos, kEffectNameBytes);
    } else if (item->stop - pos >= kShortest && pos - item->start >= kShortest) {
        if (row.isOverlay()) {
            editing::splitOverlay(row.track, seq, pos);
        } else {
            editing::splitSource(row.track, seq, pos);
        }
    }
}

void showEmptied()
{
    moduleScaleRenderer::RenderScale();
    RenderAllBars();
    ShowOrHideTrackSelections();
    RenderAllSelections();
}

} // namespace

bool PackTracks()
{
    return history::runTrapped(
        kModule, "PackTracks", "Pack",
        [] {
            const auto engine = EngineAs<ITWTimeline>();
            forEachRow(*engine, [](const RowItems& row) {
                if (!row.isLocked) {
                    packRow(row);
                }
            });
            return Outcome::kChanged;
        },
        showMoved);
}

bool RestoreSize()
{
    return history::runTrapped(
        kModule, "RestoreSize", "Restore",
        [] {
            const auto engine = EngineAs<ITWTimeline>();
            forEachRow(*engine, [&](const RowItems& row) { restoreRow(*engine, row); });
            return Outcome::kChanged;
        },
        showMoved);
}

bool RepeateAudio()
{
    return history::runTrapped(
        kModule, "RepeateAudio", "Repeat", [] { return repeatAudio() ? Outcome::kChanged : Outcome::kNothing; },
        [] {
            showMoved();
            UpdateTreeView();
        });
}

bool SplitTracks()
{
    return history::runTrapped(
        kModule, "SplitTracks", "Split",
        [] {
            const Milliseconds pos = GetSliderPosition();
            const auto engine = EngineAs<ITWTimeline>();
            forEachRow(*engine, [&](const RowItems& row) {
                if (!row.isLocked) {
                    splitRow(row, pos);
                }
            });
            return Outcome::kChanged;
        },
        [] {
            RenderAllBars();
            UpdatePreview();
            UpdateTreeView();
        });
}

bool EmptyEffectTrack()
{
    return history::runTrapped(
        kModule, "EmptyEffectTrack", "Clear Effects",
        [] {
            const auto engine = EngineAs<ITWTimeline>();
            forEachRow(*engine, [](const RowItems& row) {
                if (row.kind == RowKind::kEffect) {
                    row.items.removeAll();
                }
            });
            return Outcome::kChanged;
        },
        showEmptied);
}

bool EmptyOverlayTrack()
{
    return history::runTrapped(
        kModule, "EmptyOverlayTrack", "Clear Overlays",
        [] {
            const auto engine = EngineAs<ITWTimeline>();
            Items(*engine, ItemKind::kTransition, state::OverlayTrack).removeAll();
            Items(*engine, ItemKind::kSource, state::OverlayTrack).removeAll();
            return Outcome::kChanged;
        },
        showEmptied);
}

} // namespace moduleTimeline
