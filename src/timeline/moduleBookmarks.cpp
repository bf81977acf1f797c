#include "timeline/moduleBookmarks.h"

#include "core/forms/frmTimeline.h"
#include "core/numbers.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace moduleBookmarks {

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

void place(ImageBox& image, engine::Milliseconds time)
{
    const std::int64_t left = std::int64_t{moduleScaleRenderer::MsToPixels(time)} - timeline::viewLeft() - kHalf;
    // A file may hold any time: one that is out of reach is out of view, and keeps no other from its place.
    constexpr std::int64_t kFarthest = std::numeric_limits<std::int32_t>::max();
    image.Left = static_cast<std::int32_t>(std::clamp(left, -kFarthest, kFarthest));
    image.ToolTipText = time_text::MilliSecondsToTimetypeAsString(time);
}

void setMarkerCount(std::size_t count)
{
    form.imgBookmark.resize(count, form.imgBookmark.front());
    show::mark();
}

/// Places the marker that was loaded last, shows it, and records its time.
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

} // namespace

ImageBox& marker(std::int16_t index)
{
    if (index < 0 || index >= std::ssize(form.imgBookmark)) {
        throw engine::RuntimeError(9, "Subscript out of range");
    }
    return form.imgBookmark[static_cast<std::size_t>(index)];
}

void AddBookmark()
{
    Trapped("moduleBookmarks", "AddBookmark", [] {
        const auto count = numbers::narrowed<std::int16_t>(std::ssize(form.imgBookmark) + 1);
        setMarkerCount(static_cast<std::size_t>(count));
        SetBookmarkPosition(moduleTimeline::GetSliderPosition(), static_cast<std::int16_t>(count - 1));
    });
}

bool isAnyMarked()
{
    const ImageBox& first = form.imgBookmark.front();
    return form.SelectedBookmark != 0 || (first.Visible && first.Picture.get() == kSelectedLook);
}

void select(std::int16_t index)
{
    ImageBox& wanted = marker(index);
    marker(form.SelectedBookmark).Picture = kPlain;
    wanted.Picture = kSelectedLook;
    form.SelectedBookmark = index;
}

void selectAt(engine::Milliseconds time)
{
    Trapped("moduleBookmarks", "selectAt", [&] {
        for (std::size_t i = 0; i < form.imgBookmark.size(); ++i) {
            if (form.imgBookmark[i].Visible && form.BookmarkTimes.at(i) == time) {
                select(static_cast<std::int16_t>(i));
                return;
            }
        }
    });
}

void RemoveBookmark()
{
    Trapped("moduleBookmarks", "RemoveBookmark", [] {
        if (isAnyMarked()) {
            marker(form.SelectedBookmark).Visible = false;
            if (form.SelectedBookmark > 0) { // below the first one there is none
                --form.SelectedBookmark;
                marker(form.SelectedBookmark).Picture = kSelectedLook;
            }
        }
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

std::vector<engine::Milliseconds> bookmarkTimesToStore()
{
    std::vector<engine::Milliseconds> times;
    const auto count = std::min(form.imgBookmark.size(), form.BookmarkTimes.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (form.imgBookmark[i].Visible) {
            times.push_back(form.BookmarkTimes[i]);
        }
    }
    return times;
}

void takeBookmarks(const std::vector<engine::Milliseconds>& times)
{
    const auto count = numbers::narrowed<std::int16_t>(std::ssize(times));
    RemoveBookmarks();
    if (times.empty()) {
        return;
    }
    setMarkerCount(times.size());
    form.BookmarkTimes = times;
    form.BookmarkCount = count;
    UpdateBookmarks(-1, true);
}

} // namespace moduleBookmarks
