#pragma once

// The start of the program: the engine, the splash, the panels.
//
// What the screens do at each step comes in as hooks, so that the order stands here and is tested without a screen.
// Messages, questions and letting events run go through the ports, which must be set.

#include <functional>

/// All must be set. A hook that fails raises; error 364 says that a form was unloaded during its own load.
struct StartSteps {
    std::function<bool()> anotherInstanceRuns;
    std::function<void()> showSplash; // topmost, neither moved nor sized
    std::function<bool()> init;       // makes the empty collections; false when that fails
    /// Loads the main window and with it the panels: media list, timeline, preview, tools. Shows nothing.
    std::function<void()> loadMainWindow;
    std::function<void()> showMainWindow;
    std::function<void()> unloadSplash; // does nothing when there is none
    /// Ends the process at once. When it comes back all the same, nothing more of the start is run.
    std::function<void()> endProcess;
};

/// The entry routine. Raises nothing: a failure is told in a message box, and then no form stands, so that the process
/// has nothing to run for. The main window is up exactly when `showMainWindow` has run.
void StartProgram(const StartSteps& steps);

namespace frmSplash {

/// The rest of the start, ending with the splash unloaded. Raises what the engine or a hook raises.
void Load(const StartSteps& steps);

} // namespace frmSplash
