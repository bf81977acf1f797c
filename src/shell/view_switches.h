#pragma once

// Checks of the View menu that are kept in the person's settings from one run to the next. The menus' state is the
// value; whoever acts by a switch reads it there. Nothing is raised. Interface thread only.

namespace mdiTarnwick {

/// Puts them to what is kept, or to how they are at first.
void LoadViewSwitches();

/// Whether edges in the hand are drawn to cuts and markers; at first they are.
void mnuViewSnapping_Click();
/// Whether bars show pictures of what lies in them, and their sound; at first they do not.
void mnuViewPicturesOnBars_Click();
void mnuViewWavesOnBars_Click();
/// Whether the view goes to what an adding, a paste or a new effect has brought; at first it stays.
void mnuViewFollowEdits_Click();

} // namespace mdiTarnwick
