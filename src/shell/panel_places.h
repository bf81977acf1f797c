#pragma once

// Where the panels stand in the main window, the commands that show and hide them, and the dividers between them.
// Nothing is raised to the caller. Interface thread only.
//
// With W and H the inner size without the tools' column, and T the height of the timeline:
//
//     0            0.62 W      W
//     +--------------+---------+------+
//     |  media list  | preview |      |
//     +--------------+---------+ tools|   top of the timeline: H - T
//     |        timeline        |      |
//     +------------------------+------+
//
// Results stand in `forms::mdiTarnwick` as `TimelinePlace` and so on; the place of a hidden panel is not touched. A
// hidden timeline and hidden tools take no room.
//
// What a hand sets by the dividers stands in for the 0.62 and for T from then on, also when the window changes and when
// a panel comes back, and is kept in the settings. Where the window is too small for it, every panel keeps some room.

#include <cstdint>

namespace mdiTarnwick {

/// Places what is visible: where media list or preview is hidden, the other has the whole width. For the screen too,
/// whenever a panel was hidden by itself.
void ArrangeVisible();

/// Turn a panel's visibility over.
void mnuViewMediaList_Click();
void mnuViewPreview_Click();
void mnuViewTimeline_Click();
void mnuViewTools_Click();
/// What a hand has set is forgotten; then it places the panels, lets events run, places them again.
void mnuWindowArrangeAll_Click();

/// Takes over what the settings keep of the dividers.
void LoadDividers();
/// A divider is drawn to that place of the inner area, pixels; the panels go along.
void DrawListDivider(std::int32_t x);
void DrawTimelineDivider(std::int32_t y);
/// It was let go: the settings keep it.
void KeepDividers();
/// The arrangement's own share, or height, is back.
void ForgetListDivider();
void ForgetTimelineDivider();

} // namespace mdiTarnwick
