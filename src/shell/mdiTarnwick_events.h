#pragma once

// The main window: its commands, and which of them are enabled.
//
// Every command comes here, from the menu bar, the toolbar, the pop-up menus or the tools panel; the tables in
// `menu_table.h` say from where. All handlers of the window stand in this room: those of media files in
// `file_commands.h`, those of the project in `project_commands.h`, edits in `edit_commands.h`, commands over tracks in
// `track_menu.h`, panels in `panel_places.h`, the tutorial in `tutorial.h`. Nothing is raised to the caller. Interface
// thread only.

#include <cstdint>
#include <functional>
#include <string_view>

namespace mdiTarnwick {

// --- What only the screens can do. Set by them; a command whose hook is missing stays disabled. --------------------

/// Closes the main window, which asks `QueryUnload` first.
inline std::function<void()> unload;
/// Shows a topic of the help, as "1_Welcome.htm".
inline std::function<void(std::string_view topic)> showHelp;
/// Enters the mode in which a click explains a control.
inline std::function<void()> enterWhatsThis;
inline std::function<void()> showAbout;
/// Starts a program with one word and leaves it to itself; false when it cannot be started.
inline std::function<bool(std::string_view program, std::string_view word)> startProgram;

// --- The window ----------------------------------------------------------------------------------------------------

/// Before the panels are loaded: the folder and the frame size of a project that has none.
void Form_Initialize();
/// After the panels are loaded: captions, checks, places, what project files open with, and what is enabled.
void Form_Load();
/// The inner size has changed (logical pixels): places the panels.
void MDIForm_Resize(std::int32_t width, std::int32_t height);
/// Hints over the frame and the toolbar.
void MDIForm_MouseMove();
void tbr_MouseMove();
/// The entry of the menu bar with that name is highlighted; empty: none is. Of Undo and Redo the status bar says
/// meanwhile what they would take back, or bring back.
void MenuHighlighted(std::string_view name);
/// False when the window must stay open: while a long operation runs, which the status bar then says, and when the
/// person keeps it for unsaved changes.
bool QueryUnload();

// --- Commands ------------------------------------------------------------------------------------------------------

/// Enables menu entries, buttons and the tools panel's button by what the timeline, the media list and the history
/// hold, and refreshes the actions of the tools panel.
void EnableOrDisableMenuItems();
/// Runs what the button with that key stands for; nothing for one that is disabled.
void tbr_ButtonClick(std::string_view key);
/// Runs what a node of the tools panel with that caption stands for; nothing for an unknown one.
void OnActionsClick(std::string_view caption);

void mnuFilePreview_Click();
void mnuFileExit_Click();

void mnuEditAddToTimeline_Click();
void mnuEditAddToOverlay_Click();
/// Selects the effect in the tools panel and adds it.
void mnuAddEffectFade_Click();
void mnuAddEffectPixelate_Click();
void mnuAddEffectBlur_Click();
void mnuAddEffectWave_Click();
void mnuAddEffectEmboss_Click();
void mnuAddEffectEngrave_Click();
/// The selection begins, or ends, at the main slider. One that is not shown yet, or would be turned round, becomes 100
/// pixels long.
void mnuEditStartSel_Click();
void mnuEditEndSel_Click();

/// Shows or hides the list beside the timeline.
void mnuViewTimelineList_Click();
void mnuViewML_LargeIcon_Click();
void mnuViewML_SmallIcon_Click();
void mnuViewML_List_Click();
void mnuViewML_Detail_Click();

void mnuHelpSection_Click();
void mnuHelpWhatsThis_Click();
void mnuHelpReportBugs_Click();
void mnuHelpNewFeatureRequest_Click();
void mnuHelpAbout_Click();

} // namespace mdiTarnwick
