#include "hand/edge_keys.h"

#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/upcalls.h"
#include "editing/item_moves.h"
#include "editing/trim.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"
#include "history/command.h"
#include "items/row_items.h"
#include "preview/frame_steps.h"
#include "timeline/moduleScaleRenderer.h"

#include <optional>
#include <string>
#include <vector>

namespace frmTimeline {

using editing::ItemEnd;
using engine::EngineAs;
using engine::ITWTimeline;
using engine::Milliseconds;
using items::RowItems;
using items::TrackRow;

namespace {

enum class Deed : std::uint8_t { kResize, kTrimStart, kTrimEnd };

struct Lying {
    items::RowKind kind;
    engine::Handle track;
    bool isLocked;
    std::int16_t seq;
    items::ItemTimes times;

    bool operator==(const Lying&) const = default;
};

std::vector<Lying> allSelected()
{
    const auto engine = EngineAs<ITWTimeline>();
    std::vector<Lying> all;
    items::forEachRow(*engine, [&](const RowItems& row) {
        for (std::int16_t seq = row.items.firstSelected(); seq != -1;
             seq = row.items.firstSelected(static_cast<std::int16_t>(seq + 1))) {
            all.push_back({row.kind, row.track, row.isLocked, seq, row.items.times(seq).value_or(items::ItemTimes{})});
        }
    });
    return all;
}

/// The item whose end a hand would have taken hold of.
struct Taken {
    const TrackRow* row;
    std::int16_t seq;

    bool operator==(const Taken&) const = default;
};

std::optional<Taken> takenOn(const TrackRow& row)
{
    if (row.isLocked() || !items::isMade(row)) {
        return {};
    }
    const std::int16_t seq = items::rowItems(*EngineAs<ITWTimeline>(), row).items.firstSelected();
    return seq != -1 ? std::optional(Taken{&row, seq}) : std::nullopt;
}

std::optional<Taken> takenFrom(const TrackRow& focused)
{
    auto taken = takenOn(focused);
    for (auto row = items::rows().begin(); !taken && row != items::rows().end(); ++row) {
        taken = takenOn(*row);
    }
    return taken;
}

/// Presses in a row: what the last one has left, and the step that they are.
struct Presses {
    Deed deed;
    Taken taken;
    std::vector<Lying> left;
    std::optional<history::Command> resize;
    std::optional<editing::Trim> trim;

    bool goOn(Deed next, const Taken& from) const
    {
        return deed == next && taken == from && (resize ? resize->isNewest() : !trim->isOver())
               && left == allSelected();
    }
};
std::optional<Presses> presses;

Milliseconds endOf(const Taken& taken)
{
    const RowItems row = items::rowItems(*EngineAs<ITWTimeline>(), *taken.row);
    return row.items.times(taken.seq).value_or(items::ItemTimes{}).stop;
}

/// True when anything has changed.
bool resize(const Taken& taken, bool isBehind)
{
    const Milliseconds end = endOf(taken);
    const Milliseconds picture = moduleTWPreview::frameBeside(end, isBehind) - end;
    const bool isFirst = !presses->resize;
    if (isFirst) {
        presses->resize.emplace("Resize");
    }
    if (!presses->resize->isMade() || !moduleTimeline::ResizeSelSources(picture)) {
        if (isFirst) {
            presses->resize->leaveNoTrace();
        }
        return false;
    }
    if (isFirst) {
        presses->resize->bringIntoForce();
    }
    RenderAllBars();
    moduleScaleRenderer::AdjustScroll();
    history::keepNewestState();
    UpdatePreview();
    EnableOrDisableMenuItems();
    return true;
}

bool trim(const Taken& taken, ItemEnd end, bool isBehind)
{
    auto& trim = presses->trim;
    if (!trim) {
        trim = editing::Trim::begin(*taken.row, taken.seq, end);
    }
    if (!trim || !trim->moveTo(moduleTWPreview::frameBeside(trim->place(), isBehind))) {
        return false;
    }
    trim->keep();
    return true;
}

void say(const Taken& taken, Deed deed)
{
    if (state::BusyOpening) { // the progress of an opening is not written over
        return;
    }
    const RowItems row = items::rowItems(*EngineAs<ITWTimeline>(), *taken.row);
    const auto times = row.items.times(taken.seq).value_or(items::ItemTimes{});
    const bool isStart = deed == Deed::kTrimStart;
    forms::mdiTarnwick.sbr.Panel(1) = (isStart ? "Begins at " : "Ends at ")
                                      + time_text::MilliSecondsToTimetypeAsString(isStart ? times.start : times.stop);
}

void press(const TrackRow& row, Deed deed, bool isBehind)
{
    const auto taken = takenFrom(row);
    if (!taken) {
        presses.reset();
        return;
    }
    const bool goesOn = presses && presses->goOn(deed, *taken);
    if (!goesOn) {
        presses.emplace(Presses{deed, *taken, {}, {}, {}});
    }
    const bool isChanged = deed == Deed::kResize
                               ? resize(*taken, isBehind)
                               : trim(*taken, deed == Deed::kTrimStart ? ItemEnd::kStart : ItemEnd::kStop, isBehind);
    if (isChanged) {
        presses->left = allSelected();
    } else if (!goesOn) {
        presses.reset();
    }
    say(*taken, deed);
}

} // namespace

bool takeEdgeKey(const TrackRow& row, int key, int shift)
{
    constexpr int kComma = 188;
    constexpr int kPeriod = 190;
    constexpr int kShiftKey = 1;
    constexpr int kCtrlKey = 2;
    constexpr int kAltKey = 4;
    const int keys = shift & ~kShiftKey; // on some keyboards a period needs it
    if ((key != kComma && key != kPeriod) || (keys != 0 && keys != kCtrlKey && keys != kAltKey)) {
        return false;
    }
    const bool trims = keys == kAltKey || forms::mdiTarnwick.mnuToolsTrimMode.Checked;
    press(row, keys == kCtrlKey ? Deed::kTrimStart : trims ? Deed::kTrimEnd : Deed::kResize, key == kPeriod);
    return true;
}

} // namespace frmTimeline
