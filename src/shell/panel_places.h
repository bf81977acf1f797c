#pragma once

// Where the panels stand in the main window, and the commands that show and hide them. Nothing is raised to the caller.
// Interface thread only.
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

namespace mdiTarnwick {

/// Places what is visible: where media list or preview is hidden, the other has the whole width. For the screen too,
/// whenever a panel was hidden by itself.
void ArrangeVisible();

/// Turn a panel's visibility over.
void mnuViewMediaList_Click();
void mnuViewPreview_Click();
void mnuViewTimeline_Click();
void mnuViewTools_Click();
/// Places the panels, lets events run, places them again.
void mnuWindowArrangeAll_Click();

} // namespace mdiTarnwick
