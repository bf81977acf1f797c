#pragma once

// Opening media files and their streams: from the dialogue, by a path, dropped from a file manager.
//
// Errors are trapped inside; nothing is raised to the caller. Interface thread only.

#include "engine/types.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace media {

enum class Opened : std::uint8_t { kOpened, kNotThere, kNoStream };

/// Opens a file in the engine with all its streams and gives it a row. One that turns out to have no stream is closed
/// again, so that files and rows stay in step. Raises what the engine raises.
Opened openWithRow(const std::string& path);

/// Lets the engine look at the two files behind that place of a list (from 0) while the one there is opened. Raises
/// what the engine raises.
void lookAhead(const std::vector<std::string>& paths, std::size_t place);

} // namespace media

namespace moduleTarnwick {

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

} // namespace moduleTarnwick
