#include "shell/panel_places.h"

#include "core/forms/frmMediaList.h"
#include "core/forms/frmPreview.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/frmTools.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"

#include <algorithm>
#include <string>
#include <utility>

namespace mdiTarnwick {

namespace {

forms::MdiTarnwick& form = forms::mdiTarnwick;

constexpr std::int32_t kWholeWidth = 10000; // what shares are counted in

/// As far as there is room: both sides of a divider keep some.
std::int32_t withRoom(std::int32_t wanted, std::int32_t least, std::int32_t leastBeyond, std::int32_t all)
{
    const std::int32_t low = std::min(least, all / 2);
    return std::clamp(wanted, low, std::max(low, all - std::min(leastBeyond, all / 2)));
}

std::int32_t listWithRoom(std::int32_t wanted, std::int32_t width) { return withRoom(wanted, 260, 180, width); }

std::int32_t timelineWithRoom(std::int32_t wanted, std::int32_t height) { return withRoom(wanted, 150, 160, height); }

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
    const std::int32_t timelineHeight = form.KeptTimelineHeight != 0 ? timelineWithRoom(form.KeptTimelineHeight, height)
                                                                     : std::min(form.TimelineHeight.get(), height);
    form.TimelinePlace = forms::Rectangle{0, height - timelineHeight, width, timelineHeight};
    return {width, height - timelineHeight};
}

void ArrangeAllVisible()
{
    const Room room = placeFrame();
    // What is left is 0.38 of the width; taken so, no pixel between the two stays bare.
    const double share = form.KeptListShare != 0 ? static_cast<double>(form.KeptListShare) / kWholeWidth : 0.62;
    auto listWidth = numbers::rounded<std::int32_t>(room.width * share);
    if (form.KeptListShare != 0) {
        listWidth = listWithRoom(listWidth, room.width);
    }
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

/// In the gaps, where there is a panel on either side.
void placeDividers()
{
    constexpr std::int32_t kThick = 6;
    const bool isList = forms::frmMediaList.Visible;
    const bool isPreview = forms::frmPreview.Visible;
    const forms::Rectangle& list = form.MediaListPlace.get();
    const forms::Rectangle& timeline = form.TimelinePlace.get();
    form.ListDividerPlace =
        isList && isPreview ? forms::Rectangle{list.width - kThick / 2, 0, kThick, list.height} : forms::Rectangle{};
    form.TimelineDividerPlace = forms::frmTimeline.Visible && (isList || isPreview)
                                    ? forms::Rectangle{0, timeline.top - kThick / 2, timeline.width, kThick}
                                    : forms::Rectangle{};
}

struct KeptNumber {
    std::int32_t& value;
    std::string_view key;
    std::int32_t most;
};

constexpr std::string_view kSection = "Panels";
const KeptNumber kKept[] = {{form.KeptListShare, "Media List Share", kWholeWidth - 1},
                            {form.KeptTimelineHeight, "Timeline Height", 32767}};

void forget(std::int32_t& kept)
{
    if (std::exchange(kept, 0) != 0) {
        KeepDividers();
    }
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
    placeDividers();
}

void mnuViewMediaList_Click() { turn(forms::frmMediaList.Visible, form.mnuViewMediaList); }

void mnuViewPreview_Click() { turn(forms::frmPreview.Visible, form.mnuViewPreview); }

void mnuViewTimeline_Click() { turn(forms::frmTimeline.Visible, form.mnuViewTimeline); }

void mnuViewTools_Click() { turn(forms::frmTools.Visible, form.mnuViewTools); }

void mnuWindowArrangeAll_Click()
{
    Trapped("mdiTarnwick", "mnuWindowArrangeAll_Click", [] {
        forget(form.KeptListShare);
        forget(form.KeptTimelineHeight);
        ArrangeVisible();
        ports.events->letRun();
        ArrangeVisible();
    });
}

void LoadDividers()
{
    Trapped("mdiTarnwick", "LoadDividers", [] {
        for (const KeptNumber& kept : kKept) {
            kept.value = 0;
            const std::string text = ports.settings->get(state::AppSection, kSection, kept.key).value_or("");
            try {
                const auto found = numbers::rounded<std::int32_t>(numbers::fromText(text));
                kept.value = found > 0 && found <= kept.most ? found : 0;
            } catch (const engine::RuntimeError&) { // NOLINT: none is kept
            }
        }
    });
}

void DrawListDivider(std::int32_t x)
{
    const std::int32_t width = form.MediaListPlace.get().width + form.PreviewPlace.get().width;
    if (width > 0) {
        const double share = static_cast<double>(listWithRoom(x, width)) / width;
        form.KeptListShare = std::clamp(numbers::rounded<std::int32_t>(share * kWholeWidth), 1, kWholeWidth - 1);
        ArrangeVisible();
    }
}

void DrawTimelineDivider(std::int32_t y)
{
    const std::int32_t height = std::max(form.InnerHeight.get(), 0);
    form.KeptTimelineHeight = std::max(1, timelineWithRoom(height - y, height));
    ArrangeVisible();
}

void KeepDividers()
{
    Trapped("mdiTarnwick", "KeepDividers", [] {
        for (const KeptNumber& kept : kKept) {
            ports.settings->save(state::AppSection, kSection, kept.key,
                                 kept.value != 0 ? std::to_string(kept.value) : std::string());
        }
    });
}

void ForgetListDivider()
{
    forget(form.KeptListShare);
    ArrangeVisible();
}

void ForgetTimelineDivider()
{
    forget(form.KeptTimelineHeight);
    ArrangeVisible();
}

} // namespace mdiTarnwick
