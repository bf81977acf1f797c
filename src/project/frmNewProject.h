#pragma once

// The dialogue for a new project: the size of its movie, and the folder for new files. OK sets both; whatever else
// ends it changes nothing. What becomes of the project before is its caller's.
//
// State stands in `forms::frmNewProject`. Every routine traps its own errors and raises nothing. Interface thread only.

#include <functional>

namespace frmNewProject {

/// Shows the dialogue over the state that `Form_Load` has made, and comes back when it is closed. Set by the screens.
inline std::function<void()> showDialogue;
/// Closes it. Set by the screens.
inline std::function<void()> closeDialogue;

/// Asks for a new project's size and folder. True when the person said OK; then they stand in the program's state and
/// in the engine. False without screens.
bool ShowModal();

/// 320 x 240, in proportions of 4:3, and the present working folder. The boxes answer by themselves
/// (`core/dimension_boxes.h`).
void Form_Load();

void cmdBrowse_Click();
void cmdDefault_Click();
/// Stays open, and says why, when the size is none from 16 x 16 to 4096 x 4096 or no file can be made in the folder.
void cmdOK_Click();
void cmdCancel_Click();
void cmdHelp_Click();

} // namespace frmNewProject
