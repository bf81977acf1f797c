#pragma once

// The commands of the menus that concern the project: new, open, recent, save, close; and the question that stands
// ahead of losing work. Nothing is raised to the caller. While files or a project are being opened, they are refused
// without a word. Interface thread only.
//
// A save that failed or was cancelled counts as not saved: whatever asked for it stops there. An answered No clears the
// marks of what is unsaved.

#include <cstddef>
#include <string>

namespace mdiTarnwick {

/// Asks for the frame size and the folder of a new project, when the present one is closed.
void mnuFileNewProject_Click();
/// Asks for a project, then what becomes of unsaved changes, and opens it.
void mnuFileOpenProject_Click();
/// The same with a project that needs no choosing, by its whole path.
void OpenProjectFile(const std::string& path);
/// Opens a project of the recent list by its place in the menu, from 0. Unsaved changes are dropped without a question.
void mnuFileRP_Click(std::size_t index);
/// Closes the project after two questions. `forms::mdiTarnwick.CloseCancelled` is true when it stays.
void mnuFileCloseProject_Click();
void mnuFileSaveProject_Click();
void mnuFileSaveProjectAs_Click();

/// The project that the program was started with: the words of the command line, joined. Nothing for "" and "%1".
void OpenCommandLine(const std::string& path);

/// Whether the window may go, as far as the project is concerned: asks about unsaved changes.
bool MayLoseProject();

} // namespace mdiTarnwick
