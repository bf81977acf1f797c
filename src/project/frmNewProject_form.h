#pragma once

// The widgets of the dialogue for a new project.

namespace frmNewProject {

/// Connects the dialogue to the program; once, at the start.
void connectScreens();

} // namespace frmNewProject
