#include "hand/bookmark_events.h"

#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "editing/cut_place.h"
#include "hand/pointer_trace.h"
#include "preview/frame_steps.h"
#include "timeline/moduleBookmarks.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/slider_places.h"
#include "timeline/view_times.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace frmTimeline {

using moduleBookmarks::kHalf;
using moduleBookmarks::marker;

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

constexpr int kLeftButton = 1;

/// The new time of a marker that was dragged.
void takePlace(std::int16_t index)
{
    ImageBox& image = marker(index);
    const std::int32_t x = numbers::added(image.Left.get(), timeline::viewLeft()) + kHalf;
    const engine::Milliseconds time = moduleScaleRenderer::PixelsToMs(x);
    form.BookmarkTimes.at(static_cast<std::size_t>(index)) = time;
    image.ToolTipText = time_text::MilliSecondsToTimetypeAsString(time);
}

/// The last time that the scale can show.
engine::Milliseconds lastTime()
{
    const std::int32_t ticks = form.hsb.Enabled ? form.hsb.Max() : 0;
    const std::int32_t px = numbers::added(moduleScaleRenderer::TicksToPixels(ticks), form.picScale.ScaleWidth.get());
    return moduleScaleRenderer::PixelsToMs(px);
}

void moveByPicture(const char* routine, bool isBehind)
{
    Trapped("frmTimeline", routine, [&] {
        if (!moduleBookmarks::isAnyMarked() || !marker(form.SelectedBookmark).Visible) {
            return;
        }
        engine::Milliseconds& time = form.BookmarkTimes.at(static_cast<std::size_t>(form.SelectedBookmark));
        // One that a file has beyond them may come nearer.
        const engine::Milliseconds wanted =
            std::clamp(moduleTWPreview::frameBeside(time, isBehind), 0, std::max(time, lastTime()));
        if (std::exchange(time, wanted) != wanted) {
            state::markModified();
        }
        constexpr std::int32_t kSeen = 2 * kHalf; // pixels
        const engine::Milliseconds half = moduleScaleRenderer::PixelsToMs(kHalf);
        timeline::bringIntoView({std::max(0, wanted - half), numbers::added(wanted, half)}, kSeen);
        moduleBookmarks::UpdateBookmarks();
        if (!state::BusyOpening) {
            forms::mdiTarnwick.sbr.Panel(1) = "Marker at " + time_text::MilliSecondsToTimetypeAsString(wanted);
        }
    });
}

} // namespace

void cmdAddBookmark_Click()
{
    const editing::CutPlace place(editing::CutPlace::kAtSlider);
    moduleBookmarks::AddBookmark();
    state::markModified();
    place.follow();
}

void cmdRemoveBookmark_Click()
{
    if (moduleBookmarks::isAnyMarked()) {
        moduleBookmarks::RemoveBookmark();
        state::markModified();
    }
}

void mnueditclearmarkers_Click()
{
    moduleBookmarks::RemoveBookmarks();
    state::markModified();
}

void imgBookmark_MouseDown(std::int16_t index, int button, float x, float y)
{
    Trapped("frmTimeline", hand::pointerTrace("imgBookmark_MouseDown", index, x, y), [&] {
        moduleBookmarks::select(index);
        form.DraggingBookmark = button == kLeftButton;
        form.BookmarkOffset = x;
    });
}

void imgBookmark_MouseMove(std::int16_t index, int button, float x, float y)
{
    Trapped("frmTimeline", hand::pointerTrace("imgBookmark_MouseMove", index, x, y, "*"), [&] {
        if (!state::BusyOpening) {
            forms::mdiTarnwick.sbr.Panel(1) = "Reposition the marker slider";
        }
        if (button != kLeftButton || !form.DraggingBookmark) {
            return;
        }
        ImageBox& image = marker(index);
        const float left = static_cast<float>(image.Left) + x - form.BookmarkOffset;
        // Its time stays on the scale, from the first pixel to the last.
        image.Left = std::clamp(static_cast<std::int32_t>(std::lround(left)), -kHalf,
                                std::max(form.picScale.ScaleWidth.get(), 0) - kHalf);
        takePlace(index);
        state::markModified();
    });
}

void imgBookmark_MouseUp(std::int16_t, int button, float, float)
{
    if (button == kLeftButton) {
        form.DraggingBookmark = false;
    }
}

void MoveMarkerBack() { moveByPicture("MoveMarkerBack", false); }

void MoveMarkerOn() { moveByPicture("MoveMarkerOn", true); }

} // namespace frmTimeline
