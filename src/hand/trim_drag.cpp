#include "hand/trim_drag.h"

#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/upcalls.h"
#include "editing/trim.h"
#include "engine/engine_access.h"
#include "hand/row_drag.h"
#include "hand/snapping.h"
#include "items/row_items.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <string>
#include <utility>

namespace frmTimeline {

using editing::ItemEnd;
using engine::Milliseconds;
using items::TrackRow;

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

/// The trim in progress.
struct Held {
    const TrackRow& row;
    TrimGrip grip;
    editing::Trim trim;
    Milliseconds press; // the pointer's time, which a zoom leaves alone
    hand::SnapPlaces places;
};
std::optional<Held> held;

Milliseconds timeAt(float x)
{
    const auto px = numbers::added(numbers::rounded<std::int32_t>(x), timeline::viewLeft());
    return moduleScaleRenderer::PixelsToMs(px);
}

bool isTrimming(int shift, bool isCorner)
{
    constexpr int kAltKey = 4;
    return forms::mdiTarnwick.mnuToolsTrimMode.Checked || ((shift & kAltKey) != 0 && !isCorner);
}

void say(std::string text)
{
    if (!state::BusyOpening) { // the progress of an opening is not written over
        forms::mdiTarnwick.sbr.Panel(1) = std::move(text);
    }
}

/// Where the end would go, and whether that is a place that it is drawn to. From where it stood at the press it goes
/// freely: a joint, or the slider that the press has put there, would hold it for the first few pixels.
Milliseconds wantedPlace(Milliseconds free, int shift, std::optional<Milliseconds>& snapped)
{
    if (hand::isSnapping(shift)) {
        snapped = held->places.near(free);
        const editing::Trim& trim = held->trim;
        if (snapped && (*snapped == trim.origin() || *snapped < trim.leftmost() || *snapped > trim.rightmost())) {
            snapped.reset();
        }
    }
    return snapped.value_or(free);
}

std::optional<Held> takeHeld()
{
    form.Trimming = false;
    hand::showSnapLine({});
    return std::exchange(held, std::nullopt);
}

} // namespace

std::optional<TrimGrip> trimGripAt(const TrackRow& row, int shift, float x, float y)
{
    constexpr std::int32_t kZone = 12; // pixels
    if (row.isLocked() || !isTrimming(shift, false)) {
        return {};
    }
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    const items::Items items = items::rowItems(*engine, row).items;
    const Milliseconds pos = timeAt(x);
    const std::int16_t seq = items.at(pos);
    const auto item = items.times(seq);
    if (!item) {
        return {};
    }
    const Milliseconds corner = moduleScaleRenderer::PixelsToMs(kZone);
    const bool isCorner = y < kZone && pos >= item->stop - corner;
    const Milliseconds zone = std::min(corner, (item->stop - item->start) / 3);
    if (!isTrimming(shift, isCorner)) {
        return {};
    }
    if (isCorner || pos >= item->stop - zone) {
        return TrimGrip{seq, ItemEnd::kStop};
    }
    return pos <= item->start + zone ? std::optional(TrimGrip{seq, ItemEnd::kStart}) : std::nullopt;
}

bool beginTrim(const TrackRow& row, const TrimGrip& grip, float x)
{
    auto trim = editing::Trim::begin(row, grip.seq, grip.end);
    if (!trim) {
        return false;
    }
    const auto moves = [&](const items::RowItems& lane, std::int16_t seq) { return trim->moves(lane, seq); };
    hand::SnapPlaces places(hand::SnapPlaces::kAll, moves);
    held.emplace(Held{row, grip, std::move(*trim), timeAt(x), std::move(places)});
    form.Trimming = true;
    return true;
}

void trimTo(float x, int shift)
{
    if (!held) {
        return;
    }
    const Milliseconds free = numbers::added(held->trim.origin(), numbers::subtracted(timeAt(x), held->press));
    std::optional<Milliseconds> snapped;
    held->trim.moveTo(wantedPlace(free, shift, snapped));
    hand::showSnapLine(snapped);
    say((held->grip.end == ItemEnd::kStart ? "Begins at " : "Ends at ")
        + time_text::MilliSecondsToTimetypeAsString(held->trim.place()));
}

void trimWithView(std::int32_t ticks, float x, int shift)
{
    const bool isRight = ticks > 0;
    if (held && (isRight ? held->trim.place() < held->trim.rightmost() : held->trim.place() > held->trim.leftmost())) {
        moduleScaleRenderer::ScrollTo(form.hsb.Value() + ticks);
        trimTo(x, shift);
    }
}

void endTrim(bool keepsSelection)
{
    auto drag = takeHeld();
    if (drag && !drag->trim.finish() && !keepsSelection) {
        selectAlone(drag->row, drag->grip.seq);
        EnableOrDisableMenuItems();
    }
}

void cancelTrim()
{
    if (auto drag = takeHeld()) {
        drag->trim.takeBack();
        say("Ready"); // where the end stood is no longer so
    }
}

} // namespace frmTimeline
