// Sources and overlays against the selection.

#include "editing/range_actions.h"

#include "core/numbers.h"
#include "editing/clipboard.h"
#include "editing/gaps.h"
#include "editing/range_part.h"
#include "items/item_edit.h"

namespace moduleEdit {

using editing::Action;
using editing::Answer;
using editing::Part;
using editing::SelectionEdges;
using engine::Handle;
using engine::Milliseconds;
using items::SourceEdit;
using items::SourceTimes;

namespace {

/// The part with its media times, which follow from the source's rate. Of one that has none they are all of the
/// source's, where that may be.
SourceTimes withMedia(const Part& part, const SourceTimes& source, bool mayHaveNoRate)
{
    SourceTimes times{part.times.start, part.times.stop, source.mediaStart, source.mediaStop};
    if (mayHaveNoRate && !source.hasRate()) {
        return times;
    }
    const double rate = source.rate();
    if (!part.isTail) {
        const double behind = static_cast<double>(source.stop) - part.times.stop;
        times.mediaStop = numbers::rounded<std::int32_t>(source.mediaStop - behind / rate);
    }
    if (!part.isHead) {
        const double ahead = static_cast<double>(part.times.start) - source.start;
        times.mediaStart = numbers::rounded<std::int32_t>(ahead / rate + source.mediaStart);
    }
    return times;
}

/// Lowers seq when the source goes.
bool takeOut(SourceEdit& edit, std::int16_t& seq, const SourceTimes& source, const Part& part, const SourceTimes& times)
{
    SourceTimes ahead = source;
    SourceTimes behind = source;
    ahead.stop = times.start;
    behind.start = times.stop;
    if (source.hasRate()) {
        ahead.mediaStop = times.mediaStart;
        behind.mediaStart = times.mediaStop;
    }
    if (part.isWhole()) {
        const bool ok = edit.remove();
        seq = static_cast<std::int16_t>(seq - (ok ? 1 : 0));
        return ok;
    }
    if (part.isHead || part.isTail) {
        return edit.trim(part.isHead ? behind : ahead);
    }
    return edit.split(ahead, behind);
}

bool logAllGaps(const Action& action, Handle track, std::int16_t seq, const SourceTimes& source,
                const SelectionEdges& selection, bool before)
{
    const bool isWhole = LogGaps(track, seq, source.onTimeline(), selection, before);
    return (!action.isOverlay || LogGapsTransition(track, seq, source.onTimeline(), selection, before)) && isWhole;
}

void record(const Action& action, const SourceEdit& edit, Handle track, const SourceTimes& part)
{
    const Milliseconds length = part.stop - part.start;
    AddSourceClip(
        {track, edit.source().stream, part.mediaStart, part.mediaStop, ClipSeq++, length, edit.source().mode});
    if (action.isOverlay) {
        const items::OverlayKey key = edit.source().key.value_or(items::OverlayKey{});
        AddTransitionClip({track, key.name, length, key.red, key.green, key.blue, TransitionClipSeq++});
    }
}

/// Cut, copy or delete.
Answer take(const Action& action, Handle track, std::int16_t& seq, const SourceTimes& source,
            const SelectionEdges& selection)
{
    const bool isDrawnOut = source.hasRate() || !action.isReplaced;
    const bool isReached = action.isRecorded || action.isOverlay || !isDrawnOut
                               ? editing::isReached(source.onTimeline(), selection)
                               : editing::isReachedLoosely(source.onTimeline(), selection);
    return runAction(action, isReached, [&](Answer& answer) {
        SourceEdit edit(track, seq, action.nameBytes);
        if (action.isRecorded) {
            answer.isWhole = logAllGaps(action, track, seq, source, selection, true);
            editing::remember(source.onTimeline());
        }
        const Part part = editing::partOf(source.onTimeline(), selection);
        const SourceTimes times = withMedia(part, source, action.isReplaced);
        const bool ok = !action.isRemoved || takeOut(edit, seq, source, part, times);
        if (action.isRecorded) {
            record(action, edit, track, times);
            answer.isWhole = logAllGaps(action, track, seq, source, selection, false) && answer.isWhole;
        }
        return ok;
    });
}

Answer crop(const Action& action, Handle track, std::int16_t seq, const SourceTimes& source,
            const SelectionEdges& selection)
{
    const bool isReached = action.isOverlay ? editing::isReached(source.onTimeline(), selection)
                                            : editing::isReachedLoosely(source.onTimeline(), selection);
    return runAction(action, isReached, [&](Answer&) {
        const Part part = editing::partOf(source.onTimeline(), selection);
        const SourceTimes times = withMedia(part, source, action.isReplaced);
        return part.isWhole() || SourceEdit(track, seq, action.nameBytes).trim(times);
    });
}

// Only overlays have names to be read.
constexpr Action kCut{"CutAction", true, true, 0};
constexpr Action kCopy{"CopyAction", true, false, 0};
constexpr Action kDelete{"DeleteAction", false, true, 0};
constexpr Action kReplace{"DeleteAction", false, true, 0, false, true};
constexpr Action kCrop{"CropAction", false, false, 0};
constexpr Action kCutOverlay{"CutActionOverlay", true, true, 20, true};
constexpr Action kCopyOverlay{"CopyActionOverlay", true, false, 20, true};
constexpr Action kDeleteOverlay{"DeleteActionOverlay", false, true, 260, true};
constexpr Action kReplaceOverlay{"DeleteActionOverlay", false, true, 260, true, true};
constexpr Action kCropOverlay{"CropActionOverlay", false, false, 20, true};

} // namespace

Answer CutAction(Handle track, std::int16_t& seq, const SourceTimes& source, const SelectionEdges& selection)
{
    return take(kCut, track, seq, source, selection);
}

Answer CopyAction(Handle track, std::int16_t& seq, const SourceTimes& source, const SelectionEdges& selection)
{
    return take(kCopy, track, seq, source, selection);
}

Answer DeleteAction(Handle track, std::int16_t& seq, const SourceTimes& source, const SelectionEdges& selection)
{
    return take(kDelete, track, seq, source, selection);
}

Answer replaceAction(Handle track, std::int16_t& seq, const SourceTimes& source, const SelectionEdges& selection)
{
    return take(kReplace, track, seq, source, selection);
}

Answer CropAction(Handle track, std::int16_t& seq, const SourceTimes& source, const SelectionEdges& selection)
{
    return crop(kCrop, track, seq, source, selection);
}

Answer CutActionOverlay(Handle track, std::int16_t& seq, const SourceTimes& source, const SelectionEdges& selection)
{
    return take(kCutOverlay, track, seq, source, selection);
}

Answer CopyActionOverlay(Handle track, std::int16_t& seq, const SourceTimes& source, const SelectionEdges& selection)
{
    return take(kCopyOverlay, track, seq, source, selection);
}

Answer DeleteActionOverlay(Handle track, std::int16_t& seq, const SourceTimes& source, const SelectionEdges& selection)
{
    return take(kDeleteOverlay, track, seq, source, selection);
}

Answer replaceActionOverlay(Handle track, std::int16_t& seq, const SourceTimes& source, const SelectionEdges& selection)
{
    return take(kReplaceOverlay, track, seq, source, selection);
}

Answer CropActionOverlay(Handle track, std::int16_t& seq, const SourceTimes& source, const SelectionEdges& selection)
{
    return crop(kCropOverlay, track, seq, source, selection);
}

} // namespace moduleEdit
