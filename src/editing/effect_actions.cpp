// Effects against the selection.

#include "editing/clipboard.h"
#include "editing/gaps.h"
#include "editing/range_actions.h"
#include "editing/range_part.h"
#include "engine/engine_access.h"
#include "items/item_edit.h"
#include "items/items.h"

namespace moduleEdit {

using editing::Action;
using editing::Answer;
using editing::Part;
using editing::SelectionEdges;
using engine::Handle;
using items::EffectEdit;
using items::ItemKind;
using items::Items;
using items::ItemTimes;

namespace {

/// Lowers seq when the effect goes.
bool takeOut(EffectEdit& edit, Handle track, std::int16_t& seq, const ItemTimes& effect, const Part& part)
{
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    const Items effects(*engine, ItemKind::kEffect, track);
    const ItemTimes ahead{effect.start, part.times.start};
    const ItemTimes behind{part.times.stop, effect.stop};
    if (part.isWhole()) {
        const bool ok = effects.remove(seq);
        seq = static_cast<std::int16_t>(seq - (ok ? 1 : 0));
        return ok;
    }
    if (part.isHead || part.isTail) {
        return effects.setTimes(seq, part.isHead ? behind : ahead);
    }
    return edit.split(ahead, behind);
}

/// Cut, copy or delete.
Answer take(const Action& action, Handle track, std::int16_t& seq, const ItemTimes& effect,
            const SelectionEdges& selection)
{
    return runAction(action, editing::isReached(effect, selection), [&](Answer& answer) {
        EffectEdit edit(track, seq, action.nameBytes);
        if (action.isRecorded) {
            answer.isWhole = LogGapsEffects(track, seq, effect, selection, true);
            editing::remember(effect);
        }
        const Part part = editing::partOf(effect, selection);
        const bool ok = !action.isRemoved || takeOut(edit, track, seq, effect, part);
        if (action.isRecorded) {
            AddEffectClip({track, edit.name(), part.times.stop - part.times.start, ClipSeq++});
            answer.isWhole = LogGapsEffects(track, seq, effect, selection, false) && answer.isWhole;
        }
        return ok;
    });
}

constexpr Action kCut{"CutActionEffect", true, true, 10};
constexpr Action kCopy{"CopyActionEffect", true, false, 260};
constexpr Action kDelete{"DeleteActionEffect", false, true, 260};
constexpr Action kCrop{"CropActionEffect", false, false, 0};

} // namespace

Answer CutActionEffect(Handle track, std::int16_t& seq, const ItemTimes& effect, const SelectionEdges& selection)
{
    return take(kCut, track, seq, effect, selection);
}

Answer CopyActionEffect(Handle track, std::int16_t& seq, const ItemTimes& effect, const SelectionEdges& selection)
{
    return take(kCopy, track, seq, effect, selection);
}

Answer DeleteActionEffect(Handle track, std::int16_t& seq, const ItemTimes& effect, const SelectionEdges& selection)
{
    return take(kDelete, track, seq, effect, selection);
}

Answer CropActionEffect(Handle track, std::int16_t& seq, const ItemTimes& effect, const SelectionEdges& selection)
{
    return runAction(kCrop, editing::isReached(effect, selection), [&](Answer&) {
        const Part part = editing::partOf(effect, selection);
        const auto engine = engine::EngineAs<engine::ITWTimeline>();
        return part.isWhole() || Items(*engine, ItemKind::kEffect, track).setTimes(seq, part.times);
    });
}

} // namespace moduleEdit
