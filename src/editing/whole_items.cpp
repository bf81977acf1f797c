#include "editing/whole_items.h"

#include "core/shared_state.h"
#include "editing/clipboard.h"
#include "editing/edit_trap.h"
#include "editing/moduleTWState.h"
#include "engine/engine_access.h"
#include "items/item_edit.h"
#include "items/items.h"

namespace moduleEdit {

using engine::Handle;
using engine::ITWTimeline;
using items::ItemKind;
using items::Items;
namespace {

enum class Row : std::uint8_t { kSource, kEffect, kOverlay };

struct WholeEdit {
    const char* routine;
    Row row;
    bool isRecorded; // what is touched goes on the clipboard
    bool isRemoved;  // and from its track
    bool isCrop;     // the unselected ones are touched, not the selected
};

bool isLocked(Row row, Handle track)
{
    return row == Row::kEffect ? moduleTWState::IsEffectLocked(track) : moduleTWState::IsTrackLocked(track);
}

bool isAnySelected(Row row, Handle track)
{
    return row == Row::kEffect ? moduleTWState::IsAnyEffectSelected(track) : moduleTWState::IsAnySourceSelected(track);
}

void recordEffect(ITWTimeline& engine, Handle track, std::int16_t seq, std::int16_t place)
{
    constexpr std::size_t kNameBytes = 10;
    const auto times = Items(engine, ItemKind::kEffect, track).times(seq).value_or(items::ItemTimes{});
    AddEffectClip({track, items::EffectEdit(track, seq, kNameBytes).name(), times.stop - times.start, place});
}

void recordSource(ITWTimeline& engine, Row row, Handle track, std::int16_t seq, std::int16_t place)
{
    constexpr std::size_t kNameBytes = 20;
    const items::SourceEdit edit(track, seq, kNameBytes);
    const SourceTimes times = items::readSource(engine, track, seq).value_or(SourceTimes{});
    const engine::Milliseconds length = times.stop - times.start;
    AddSourceClip({track, edit.stream(), times.mediaStart, times.mediaStop, place, length, edit.mode()});
    if (row == Row::kOverlay) {
        const items::OverlayKey key = edit.key().value_or(items::OverlayKey{});
        AddTransitionClip({track, key.name, length, key.red, key.green, key.blue, place});
    }
}

bool remove(ITWTimeline& engine, Row row, Handle track, std::int16_t seq)
{
    return row == Row::kOverlay
               ? items::removeOverlay(engine, seq)
               : Items(engine, row == Row::kEffect ? ItemKind::kEffect : ItemKind::kSource, track).remove(seq);
}

void editTrack(ITWTimeline& engine, const WholeEdit& edit, Handle track)
{
    if (edit.isCrop && !isAnySelected(edit.row, track)) {
        return;
    }
    const Items items(engine, edit.row == Row::kEffect ? ItemKind::kEffect : ItemKind::kSource, track);
    std::int16_t count = items.count();
    std::int16_t place = 0;
    for (std::int16_t seq = 0; seq < count; ++seq) {
        if (items.isSelected(seq) == edit.isCrop) {
            continue;
        }
        if (isLocked(edit.row, track)) {
            return;
        }
        if (edit.isRecorded) {
            edit.row == Row::kEffect ? recordEffect(engine, track, seq, place)
                                     : recordSource(engine, edit.row, track, seq, place);
            ++place;
        }
        if (edit.isRemoved && remove(engine, edit.row, track, seq)) {
            --seq;
            --count;
        }
    }
}

bool run(const WholeEdit& edit)
{
    return editing::trapped(edit.routine, [&] {
        const auto engine = engine::EngineAs<ITWTimeline>();
        if (edit.row == Row::kOverlay) {
            editTrack(*engine, edit, state::OverlayTrack);
            return;
        }
        for (const Handle track : state::TrackCollection) {
            editTrack(*engine, edit, track);
        }
    });
}

} // namespace

bool EditCutSource() { return run({"EditCutSource", Row::kSource, true, true, false}); }
bool EditCopySource() { return run({"EditCopySource", Row::kSource, true, false, false}); }
bool EditDeleteSource() { return run({"EditDeleteSource", Row::kSource, false, true, false}); }
bool EditCropSource() { return run({"EditCropSource", Row::kSource, false, true, true}); }

bool EditCutEffect() { return run({"EditCutEffect", Row::kEffect, true, true, false}); }
bool EditCopyEffect() { return run({"EditCopyEffect", Row::kEffect, true, false, false}); }
bool EditDeleteEffect() { return run({"EditDeleteEffect", Row::kEffect, false, true, false}); }
bool EditCropEffect() { return run({"EditCropEffect", Row::kEffect, false, true, true}); }

bool EditCutOverlay() { return run({"EditCutOverlay", Row::kOverlay, true, true, false}); }
bool EditCopyOverlay() { return run({"EditCopyOverlay", Row::kOverlay, true, false, false}); }
bool EditDeleteOverlay() { return run({"EditDeleteOverlay", Row::kOverlay, false, true, false}); }
bool EditCropOverlay() { return run({"EditCropOverlay", Row::kOverlay, false, true, true}); }

} // namespace moduleEdit
