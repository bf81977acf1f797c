#include "editing/whole_items.h"

#include "editing/clipboard.h"
#include "editing/edit_trap.h"
#include "engine/engine_access.h"
#include "items/item_edit.h"
#include "items/row_items.h"

namespace moduleEdit {

using engine::Handle;
using engine::ITWTimeline;
using items::RowItems;
using items::RowKind;

namespace {

struct WholeEdit {
    const char* routine;
    bool (*takes)(RowKind row);
    bool isRecorded; // what is touched goes on the clipboard
    bool isRemoved;  // and from its track
    bool isCrop;     // the unselected ones are touched, not the selected
};

constexpr bool isEffect(RowKind row) { return row == RowKind::kEffect; }
constexpr bool isOverlay(RowKind row) { return row == RowKind::kOverlay; }

void recordEffect(ITWTimeline& engine, const RowItems& row, std::int16_t seq, std::int16_t place)
{
    constexpr std::size_t kNameBytes = 10;
    const auto [name, times] = items::readEffect({engine, row.track, seq}, kNameBytes).value_or(items::WholeEffect{});
    AddEffectClip({row.track, name, times.stop - times.start, place});
}

void recordSource(ITWTimeline& engine, const RowItems& row, std::int16_t seq, std::int16_t place)
{
    constexpr std::size_t kNameBytes = 20;
    const auto source = items::readWhole({engine, row.track, seq}, kNameBytes).value_or(items::WholeSource{});
    const items::SourceTimes& times = source.times;
    const engine::Milliseconds length = times.stop - times.start;
    AddSourceClip({row.track, source.stream, times.mediaStart, times.mediaStop, place, length, source.mode});
    if (row.isOverlay()) {
        const items::OverlayKey key = source.key.value_or(items::OverlayKey{});
        AddTransitionClip({row.track, key.name, length, key.red, key.green, key.blue, place});
    }
}

void editRow(ITWTimeline& engine, const WholeEdit& edit, const RowItems& row)
{
    if (edit.isCrop && row.items.firstSelected() == -1) {
        return;
    }
    std::int16_t count = row.items.count();
    std::int16_t place = 0;
    for (std::int16_t seq = 0; seq < count; ++seq) {
        if (row.items.isSelected(seq) == edit.isCrop) {
            continue;
        }
        if (row.isLocked) {
            return;
        }
        if (edit.isRecorded) {
            isEffect(row.kind) ? recordEffect(engine, row, seq, place) : recordSource(engine, row, seq, place);
            ++place;
        }
        if (edit.isRemoved && (row.isOverlay() ? items::removeOverlay(seq) : row.items.remove(seq))) {
            --seq;
            --count;
        }
    }
}

bool run(const WholeEdit& edit)
{
    return editing::trapped(edit.routine, [&] {
        const auto engine = engine::EngineAs<ITWTimeline>();
        items::forEachRow(*engine, [&](const RowItems& row) {
            if (edit.takes(row.kind)) {
                editRow(*engine, edit, row);
            }
        });
    });
}

} // namespace

bool EditCutSource() { return run({"EditCutSource", items::isMediaRow, true, true, false}); }
bool EditCopySource() { return run({"EditCopySource", items::isMediaRow, true, false, false}); }
bool EditDeleteSource() { return run({"EditDeleteSource", items::isMediaRow, false, true, false}); }
bool EditCropSource() { return run({"EditCropSource", items::isMediaRow, false, true, true}); }

bool EditCutEffect() { return run({"EditCutEffect", isEffect, true, true, false}); }
bool EditCopyEffect() { return run({"EditCopyEffect", isEffect, true, false, false}); }
bool EditDeleteEffect() { return run({"EditDeleteEffect", isEffect, false, true, false}); }
bool EditCropEffect() { return run({"EditCropEffect", isEffect, false, true, true}); }

bool EditCutOverlay() { return run({"EditCutOverlay", isOverlay, true, true, false}); }
bool EditCopyOverlay() { return run({"EditCopyOverlay", isOverlay, true, false, false}); }
bool EditDeleteOverlay() { return run({"EditDeleteOverlay", isOverlay, false, true, false}); }
bool EditCropOverlay() { return run({"EditCropOverlay", isOverlay, false, true, true}); }

} // namespace moduleEdit
