#include "shell/panel_places.h"

#include "core/forms/frmMediaList.h"
#include "core/forms/frmPreview.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/frmTools.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/trap.h"

#include <algorithm>

namespace mdiTarnwick {

namespace {

forms::MdiTarnwick& form = forms::mdiTarnwick;

/// The room that the three panels share.
struct Room {
    std::int32_t width;
    std::int32_t upperHeight; // above the timeline
};

/// Places the tools and the timeline, which stand alike in every arrangement.
Room placeFrame()
{
    constexpr std::int32_t kToolsWidth = 230;
    const std::int32_t height = std::max(form.InnerHeight.get(), 0);
    const std::int32_t toolsWidth = forms::frmTools.Visible ? kToolsWidth : 0;
    const std::int32_t width = std::max(form.InnerWidth - toolsWidth, 0);
    if (forms::frmTools.Visible) {
        form.ToolsPlace = forms::Rectangle{width, 0, toolsWidth, height};
    }
    if (!forms::frmTimeline.Visible) {
        return {width, height};
    }
    const std::int32_t timelineHeight = std::min(form.TimelineHeight.get(), height);
    form.TimelinePlace = forms::Rectangle{0, height - timelineHeight, width, timelineHeight};
    return {width, height - timelineHeight};
}

void ArrangeAllVisible()
{
    const Room room = placeFrame();
    // What is left is 0.38 of the width; taken so, no pixel between the two stays bare.
    const auto listWidth = numbers::rounded<std::int32_t>(room.width * 0.62);
    form.MediaListPlace = forms::Rectangle{0, 0, listWidth, room.upperHeight};
    form.PreviewPlace = forms::Rectangle{listWidth, 0, room.width - listWidth, room.upperHeight};
}

/// The preview has the whole width.
void ArrangeMediaListNotVisible()
{
    const Room room = placeFrame();
    form.PreviewPlace = forms::Rectangle{0, 0, room.width, room.upperHeight};
}

/// The media list has the whole width.
void ArrangePreviewNotVisible()
{
    const Room room = placeFrame();
    form.MediaListPlace = forms::Rectangle{0, 0, room.width, room.upperHeight};
}

void turn(Shown<bool>& visible, Menu& menu)
{
    visible = !visible;
    menu.Checked = visible.get();
    ArrangeVisible();
}

} // namespace

void ArrangeVisible()
{
    if (!forms::frmPreview.Visible) {
        ArrangePreviewNotVisible();
    } else if (!forms::frmMediaList.Visible) {
        ArrangeMediaListNotVisible();
    } else {
        ArrangeAllVisible();
    }
}

void mnuViewMediaList_Click() { turn(forms::frmMediaList.Visible, form.mnuViewMediaList); }

void mnuViewPreview_Click() { turn(forms::frmPreview.Visible, form.mnuViewPreview); }

void mnuViewTimeline_Click() { turn(forms::frmTimeline.Visible, form.mnuViewTimeline); }

void mnuViewTools_Click() { turn(forms::frmTools.Visible, form.mnuViewTools); }

void mnuWindowArrangeAll_Click()
{
    Trapped("mdiTarnwick", "mnuWindowArrangeAll_Click", [] {
        ArrangeVisible();
        ports.events->letRun();
        ArrangeVisible();
    });
}

} // namespace mdiTarnwick
