#pragma once

// The project and its file: saved, opened, and what the file holds beside the timeline.
//
// A project is one XML document. The engine writes its root with the timeline; this room adds the media list, the keys
// of the overlays, zoom, selection, markers, frame size and the options of the rows (`project_elements.h`,
// docs/project-format.md). All of it runs on a copy in a folder of the program's own (`staging.h`); only the finished
// document takes the project's name, so that under it stands either the old project or the new one, whatever happens on
// the way. Opening changes nothing on the disk.
//
// Every routine traps its own errors: what it does not tell the person by number is reported, and nothing is raised to
// the caller. Interface thread only.

#include <string>
#include <string_view>

namespace ModuleProject {

/// Saves the project, and asks for a name when it has no file. Writes nothing when nothing was changed.
/// `state::SaveCancelled` is true afterwards when it was cancelled or failed: then flags and name are what they were.
void SaveProject();
/// Saves under another name, which is asked for again when it cannot be one. Otherwise as above.
void SaveProjectAs();

/// Opens a project into an emptied program; the path that is named may stand between quotes. Missing media are searched
/// for with the person. When that fails, the person is told, the program is empty again, and `state::ProjectOpenFailed`
/// is true. The caller marks the program busy, and empties it before.
void OpenProject(std::string_view named);

/// Takes away what a project holds: timeline, files, list, history, selection, markers, options of the rows, the size
/// of the movie. The zoom is 0 afterwards. The clipboard stays.
void EmptyProject();

/// Puts the path on top of the recent projects, unless their menu shows it.
void PutInRecentProjects(const std::string& path);

/// The caption of the media list, which alone tells the project's name. Without a path it is "Untitled".
void ShowProjectName(const std::string& path);

/// What stands behind the last separator of a path.
std::string NameOf(const std::string& path);

} // namespace ModuleProject
