#pragma once

// The tutorial: from the menu, and at the start of the program until the person wants it no more. Nothing is raised to
// the caller. Interface thread only.

#include <string_view>

namespace mdiTarnwick {

inline constexpr std::string_view kTutorialPage = "tutorial/index.html";
/// Starts the tutorial's player where it lies below the program's folder, else shows the page of the help.
void mnuHelpTutorial_Click();
/// The last step of the start, when the window stands: the tutorial, unless the person has hidden it.
void ShowTutorialAtStart();
/// What the settings say of it.
bool IsTutorialHidden();
/// Says it there, and in the preferences' dialogue.
void HideTutorialAtStart(bool hide);

} // namespace mdiTarnwick
