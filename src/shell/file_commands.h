#pragma once

// The commands of the menus that concern media files. While one of them runs, another is refused without a word.

#include <cstddef>

namespace mdiTarnwick {

/// Opens chosen files; the project counts as modified afterwards.
void mnuFileOpen_Click();
/// Closes the files of the selected rows.
void mnuFileClose_Click();
/// Opens a file of the recent list by its place in the menu, from 0.
void mnuFileRF_Click(std::size_t index);

/// Saves the timeline as a movie, by its dialogue.
void mnuFileExportTimeline_Click();
/// The preferences.
void mnuToolsOptions_Click();

} // namespace mdiTarnwick
