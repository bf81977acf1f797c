#pragma once

// Media files and projects laid on the engine's tracks, as the editor lays them.

#include "engine/types.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace app {

/// The editor's fixed set of tracks.
struct Tracks {
    engine::Handle video = 0;
    engine::Handle overlay = 0;
    engine::Handle audio1 = 0;
    engine::Handle audio2 = 0;

    std::vector<engine::Handle> all() const { return {video, overlay, audio1, audio2}; }
};

Tracks createTracks();

/// A file that the movie is made from, as it was when it was opened.
struct ReadFile {
    std::string path;
    std::filesystem::file_time_type changed;
    std::uintmax_t byteCount = 0;
};

struct LaidInputs {
    std::vector<ReadFile> files;
    int width = 0; // the project's frame, or the first picture's; 0 without picture
    int height = 0;
    bool isProject = false;
    std::vector<std::string> troubles; // sentences about files that are damaged and taken all the same
};

/// Lays a project, or media files each behind the end of the longest track. Raises `RenderFailed`, also when
/// `interrupted` becomes true between two files.
LaidInputs layInputs(const Tracks& tracks, const std::vector<std::string>& inputs, const volatile int& interrupted);

/// Raises `RenderFailed` when a file is not what it was when it was opened: what was missing of it is black and silent.
void checkUnchanged(const LaidInputs& laid);

} // namespace app
