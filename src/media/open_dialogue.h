#pragma once

// The open dialogue for media files: what it asks for, and what comes back.

#include "core/platform.h"

#include <string>
#include <string_view>
#include <vector>

namespace media {

OpenFileRequest openMediaRequest();

/// For one file that a project misses, looked for from `folder`: the one where the last such file was found. Empty:
/// where the dialogue was last.
OpenFileRequest searchMediaRequest(std::string folder);

/// What was chosen: whole paths. `severally` is true when they came as a folder and names in it.
struct ChosenFiles {
    std::vector<std::string> paths;
    bool severally = false;
};

/// Takes apart what the dialogue answered: one path, or a folder and names, separated by NUL.
ChosenFiles chosenFiles(std::string_view answer);

} // namespace media
