#pragma once

// The elements that the program adds to a project file, written and applied.
//
// Each writing routine is one round trip over the file: load the document, append an element to its root, save it. So
// each starts from what the engine or the routine before it has left. They raise 91 for a document without a root, 61
// when it cannot be written, and what the engine raises. The attributes' order is part of the format. Those that apply
// take what `readProjectFile` has read. Interface thread only.

#include "project/project_file.h"

#include <string>

namespace ModuleProject {

/// `MediaList` with all rows, while the file bears its temporary name. `state::SavedFileCount` counts them.
void StoreMediaList(const std::string& path);
/// The rows behind `state::SavedFileCount`, added to the first `MediaList`.
void AppendMediaListFiles(const std::string& path);
/// The overlays' key colours; nothing where there is no transition.
void StorePropertySettings(const std::string& path);
void StorePreviewDimensions(const std::string& path);
void StoreZoomFactor(const std::string& path);
void StoreSelSliderPos(const std::string& path);
/// The visible markers, numbered without gaps.
void SetBookMarksToProject(const std::string& path);
/// Link, lock and disable of the rows, behind all others.
void StoreRowOptions(const std::string& path);

/// Sets the frame size, in the engine too, and fits the preview. False, and nothing is set, for a size that no movie
/// has (16 to 4096 pixels a side).
bool GetPreviewDimensions(const project::ProjectFile& file);
/// Colours by place; those behind the last overlay are passed over.
void GetPropertySettings(const project::ProjectFile& file);
/// A zoom that the scale cannot show, and none, is the usual one.
void GetZoomFactor(const project::ProjectFile& file);
void GetSelSliderPos(const project::ProjectFile& file);
void GetBookMarkFromProject(const project::ProjectFile& file);

} // namespace ModuleProject
