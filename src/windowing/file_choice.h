#pragma once

// What the open dialogue of the platform is asked, and what is read off it: the program's filters in the toolkit's
// words, and every path that a person chose, however.

#include "core/platform.h"

#include <QFileDialog>
#include <QStringList>

/// The filters as the toolkit writes them, in the same order. Those of video, sound and pictures let the newer kinds
/// through besides, and "*.*" lets files without a dot through, as it does where it comes from.
QStringList toolkitFilters(const std::vector<FileFilter>& filters);

/// Whole paths of what was chosen once the dialogue was accepted. Of names that were typed in quotes the toolkit drops
/// those that its list does not show; they are here too, also when there is no such file.
QStringList chosenPaths(const QFileDialog& dialog);

/// One path as it is; several as the folder that holds them all and behind it their names from there, separated by NUL.
std::string folderAndNames(const QStringList& paths);
