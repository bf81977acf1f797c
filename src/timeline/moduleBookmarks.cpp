#include "timeline/moduleBookmarks.h"

#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "editing/cut_place.h"
#include "hand/pointer_trace.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace moduleBookmarks {

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

constexpr std::int32_t kHalf = 4; // pixels from a marker's left to its time
constexpr const char* kPlain = "BOOKMARK";

/// Raises error 9 for a marker that does not exist.
ImageBox& marker(std::int16_t index)
{
    if (index < 0 || index >= std::ssize(form.imgBookmark)) {
        throw engine::RuntimeError(9, "Subscript out of range");
    }
    return form.imgBookmark[static_cast<std::size_t>(index)];
}

void place(ImageBox& image, engine::Milliseconds time)
{
    image.Left = numbers::subtracted(moduleScaleRenderer::MsToPixels(time), timeline::viewLeft()) - kHalf;
    image.ToolTipText = time_text::MilliSecondsToTimetypeAsString(time);
}

void setMarkerCount(std::size_t count)
{
    form.imgBookmark.resize(count, form.imgBookmark.front());
    show::mark();
}

} // namespace

void AddBookmark()
{
    Trapped("moduleBookmarks", "AddBookmark", [] {
        const std::size_t index = form.imgBookmark.size();
        setMarkerCount(index + 1);
        SetBookmarkPosition(moduleTimeline::GetSliderPosition(), numbers::narrowed<std::int16_t>(index));
    });
}

void RemoveBookmark()
{
    Trapped("moduleBookmarks", "RemoveBookmark", [] {
        if (form.SelectedBookmark != 0) {
            marker(form.SelectedBookmark).Visible = false;
            --form.SelectedBookmark;
            marker(form.SelectedBookmark).Picture = "BOOKMARKSEL";
        }
    });
}

void SetBookmarkPosition(engine::Milliseconds time, std::int16_t index)
{
    Trapped("moduleBookmarks", "SetBookmarkPosition", [&] {
        ImageBox& image = marker(index);
        place(image, time);
        image.Picture = kPlain;
        image.Visible = true;
        form.BookmarkTimes.resize(static_cast<std::size_t>(form.BookmarkCount) + 1);
        form.BookmarkTimes.at(static_cast<std::size_t>(index)) = time;
        ++form.BookmarkCount;
    });
}

void UpdateBookmarks(std::int16_t excluded, bool show)
{
    Trapped("moduleBookmarks", "UpdateBookmarks*", [&] {
        const auto count = std::min(form.imgBookmark.size(), form.BookmarkTimes.size());
        for (std::size_t i = 0; i < count; ++i) {
            if (std::cmp_not_equal(i, excluded)) {
                place(form.imgBookmark[i], form.BookmarkTimes[i]);
                form.imgBookmark[i].Visible = show || form.imgBookmark[i].Visible;
            }
        }
    });
}

void RemoveBookmarks()
{
    Trapped("moduleBookmarks", "RemoveBookmarks", [] {
        setMarkerCount(1);
        form.BookmarkTimes.clear();
        form.BookmarkCount = 0;
        form.SelectedBookmark = 0;
        form.DraggingBookmark = false;
        SetBookmarkPosition(0, 0);
        form.imgBookmark.front().Visible = false; // a flag that nobody has set would go into the project
    });
}

} // namespace moduleBookmarks

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

} // namespace

void cmdAddBookmark_Click()
{
    const editing::CutPlace place(editing::CutPlace::kAtSlider);
    moduleBookmarks::AddBookmark();
    state::ProjectModified = true;
    place.follow();
}

void cmdRemoveBookmark_Click()
{
    moduleBookmarks::RemoveBookmark();
    state::ProjectModified = true;
}

void mnueditclearmarkers_Click()
{
    moduleBookmarks::RemoveBookmarks();
    state::ProjectModified = true;
}

void imgBookmark_MouseDown(std::int16_t index, int button, float x, float y)
{
    Trapped("frmTimeline", hand::pointerTrace("imgBookmark_MouseDown", index, x, y), [&] {
        ImageBox& pressed = marker(index);
        marker(form.SelectedBookmark).Picture = moduleBookmarks::kPlain;
        pressed.Picture = "BOOKMARKSEL";
        form.SelectedBookmark = index;
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
        state::ProjectModified = true;
    });
}

void imgBookmark_MouseUp(std::int16_t, int button, float, float)
{
    if (button == kLeftButton) {
        form.DraggingBookmark = false;
    }
}

} // namespace frmTimeline
