#pragma once

// Media files and projects laid on the engine's tracks, as the editor lays them.

#include "engine/types.h"

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

struct LaidInputs {
    int width = 0; // the project's frame, or the first picture's; 0 without picture
    int height = 0;
    bool isProject = false;
};

/// Lays a project, or media files each behind the end of the longest track. Raises `RenderFailed`.
LaidInputs layInputs(const Tracks& tracks, const std::vector<std::string>& inputs);

} // namespace app
