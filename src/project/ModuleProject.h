#pragma once

// The project and its file: saved, opened, and what the file holds beside the timeline.
//
// A project is one XML document. The engine writes its root with the timeline; this room adds the media list, the keys
// of the overlays, zoom, selection, markers, frame size and the options of the rows, each in a round of its own: load
// the document, append an element to its root, save it (docs/project-format.md). All rounds run on a copy in a folder
// of the program's own; only the finished document takes the project's name, so that under it stands either the old
// project or the new one, whatever happens on the way. Opening changes nothing on the disk.
//
// Every routine traps its own errors: what it does not tell the person by number is reported, and nothing is raised to
// the caller. Interface thread only.

#include <string>

namespace ModuleProject {

/// Saves the project, and asks for a name when it has no file. Writes nothing when nothing was changed.
/// `state::SaveCancelled` tells whether it was cancelled or failed: then the flags and the name are what they were.
void SaveProject();

/// Opens a project into an emptied program. The path may stand between quotes. `state::ProjectOpenFailed` tells whether
/// that failed: then the person knows, and the program is empty.
void OpenProject(std::string path);

/// Takes away what a project holds: timeline, files, list, history, selection, markers. The zoom is 0 afterwards.
void EmptyProject();

} // namespace ModuleProject
