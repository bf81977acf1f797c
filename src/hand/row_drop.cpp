#include "hand/row_drop.h"

#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "editing/insert.h"
#include "hand/row_pointer.h"
#include "hand/snapping.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <string>
#include <utility>

namespace frmTimeline {

using engine::Milliseconds;
using items::RowKind;
using items::TrackRow;

namespace {

constexpr std::int32_t kThin = 2; // pixels; of a length that is not known

bool takesFiles(const TrackRow& row)
{
    return row.kind != RowKind::kEffect && !(row.kind == RowKind::kAudio && row.index != 0);
}

struct Place {
    Milliseconds pos;
    bool isSnapped;
};

Place placeAt(float x, int shift)
{
    const auto px = numbers::added(numbers::rounded<std::int32_t>(x), timeline::viewLeft());
    const Milliseconds free = std::max(moduleScaleRenderer::PixelsToMs(px), 0);
    const auto snapped = hand::isSnapping(shift) ? hand::SnapPlaces(hand::SnapPlaces::kAll).near(free) : std::nullopt;
    return {snapped.value_or(free), snapped.has_value()};
}

void say(std::string text)
{
    if (!state::BusyOpening) { // the progress of an opening is not written over
        forms::mdiTarnwick.sbr.Panel(1) = std::move(text);
    }
}

/// Of files that nobody has looked into yet only the place is known, and that film goes on Video, sound on Audio 1.
std::vector<moduleTimeline::Landing> landingsOf(const TrackRow& row, Milliseconds pos, bool areListed)
{
    if (areListed) {
        return moduleTimeline::LandingsOfSelectedFiles(row, pos);
    }
    if (row.kind == RowKind::kOverlay) {
        return {{row, {pos, pos}}};
    }
    return {{items::row(RowKind::kVideo, 0), {pos, pos}}, {items::row(RowKind::kAudio, 0), {pos, pos}}};
}

bool isRefused = false; // the status bar says why nothing can be dropped here

/// With the text that told about them.
void hideMarks()
{
    if (std::exchange(isRefused, false)) {
        say("Ready");
    }
    for (const TrackRow& row : items::rows()) {
        Marker& mark = moduleTimeline::pointerOf(row.kind, row.index).DropMark;
        if (mark.Visible) {
            mark.Visible = false;
            say("Ready");
        }
    }
    hand::showSnapLine({});
}

} // namespace

void dragFilesOver(const TrackRow& row, float x, int shift, bool areListed)
{
    Trapped("frmTimeline", "dragFilesOver*", [&] {
        hideMarks();
        if (row.kind == RowKind::kAudio && row.index != 0) {
            say("Drop it on Audio 1, then choose Edit > Move to Audio 2");
            isRefused = true;
            return;
        }
        if (!dropPlace(row, x, shift)) {
            return;
        }
        if (const std::string_view refusal = moduleTimeline::InsertRefusal(row); !refusal.empty()) {
            say(std::string(refusal));
            return;
        }
        const Place place = placeAt(x, shift);
        for (const auto& [landing, times] : landingsOf(row, place.pos, areListed)) {
            Marker& mark = moduleTimeline::pointerOf(landing.kind, landing.index).DropMark;
            mark.Left = numbers::subtracted(moduleScaleRenderer::MsToPixels(times.start), timeline::viewLeft());
            mark.Width = std::max(moduleScaleRenderer::MsToPixels(times.stop - times.start), kThin);
            mark.Visible = true;
        }
        if (place.isSnapped) {
            hand::showSnapLine(place.pos);
        }
        say("Goes in at " + time_text::MilliSecondsToTimetypeAsString(place.pos) + ", what follows moves on");
    });
}

void dragFilesOff() { hideMarks(); }

std::optional<Milliseconds> dropPlace(const TrackRow& row, float x, int shift)
{
    constexpr int kCtrlKey = 2;
    std::optional<Milliseconds> place;
    if ((shift & kCtrlKey) != 0 && takesFiles(row)) {
        Trapped("frmTimeline", "dropPlace*", [&] { place = placeAt(x, shift).pos; });
    }
    return place;
}

void insertFiles(const TrackRow& row, Milliseconds pos) { moduleTimeline::InsertSelectedFiles(row, pos); }

} // namespace frmTimeline
