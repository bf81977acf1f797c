#pragma once

// The shelf of source files: opening media files and their streams, their rows in the media list, closing them.
//
// `state::FileCollection` and the rows of `forms::frmMediaList.lvwMediaList` stand in the same order and change
// together; that place is the only link between a row and its file. Every routine traps its own errors: what it does
// not handle by number is reported, and nothing is raised to the caller. Interface thread only.

#include "engine/types.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace moduleTarnwick {

/// The row that later streams of the file being opened fill in; from 1, 0 none.
inline std::int32_t CurrentListItem = 0;

/// Empties the three lists of handles; true unless that failed.
bool Init();

// --- Opening -------------------------------------------------------------------------------------------------------

/// The whole open dialogue. The caller marks the program busy for the span of the call. Between two of several files
/// events run; `state::OpeningCancelled` set there ends the opening, and what is open by then stays.
void OnFileOpenClick();
/// Opens files dropped from a file manager as several chosen files are opened. The paths are whole and may lie in
/// different folders; there may be any number of them. Marks the program busy and the project modified by itself; does
/// nothing while another opening runs.
void OpenDroppedFiles(const std::vector<std::string>& paths);
/// Opens one file by its whole path. The recent list does not change.
void OpenResentFile(std::string_view path);
/// Whether the engine can render the file, or lets it pass because it is missing; tells the person if not. May wait
/// for a slow disk up to the engine's own deadline.
bool CheckMediaFile(std::string_view path);
/// Opens all streams of a file, adds them to `state::StreamCollection` and fills the file's row, which the first one
/// makes. `state::LastOpenedExtension` tells its media class.
void OpenStreams(engine::Handle file);

// --- Rows ----------------------------------------------------------------------------------------------------------

/// "Video", "Audio" or "Image" by `state::LastOpenedExtension`, which is trimmed and put in small letters.
std::string GetMediaClass();
/// Adds the file to `state::FileCollection` and names the row of that place, which `OpenStreams` has made.
void AppendToTWListView(engine::Handle file);
/// Removes the file from `state::FileCollection` and its row.
void RemoveFromTWListView(engine::Handle file);
/// Writes one stream's facts in the row; the first stream of a file makes it.
void FillTWListView(engine::Handle stream);

// --- Closing -------------------------------------------------------------------------------------------------------

/// Closes the files whose rows are selected, asking for each that the timeline uses.
void OnFileCloseClick();
/// Closes all streams of a file and drops them from `state::StreamCollection`.
void CloseStreams(engine::Handle file);
/// Closes every file and stream and empties the list, without a word. Sources on tracks stay as they are.
void CloseAllMediaFiles();
/// True when a source on any track, the overlay track too, uses a stream of this file.
bool IsFileHandleReferenced(engine::Handle file);
/// Removes every source of the file from all tracks; on the overlay track its transition goes with it.
void RemoveFileReferences(engine::Handle file);

} // namespace moduleTarnwick
