#pragma once

// The files of an image, opened again. Interface thread only.

#include "journal/capture.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace journal {

/// From the stream handles of the image to those of this process.
using StreamMap = std::unordered_map<engine::Handle, engine::Handle>;

struct MediaBack {
    StreamMap streams;
    std::vector<std::string> missing; // by their paths
};

/// The listed files get their rows, in their order, where they are there. Those that only images name are opened and
/// closed again, so that a step of the history can have them back; capture learns them. Raises the engine's failures.
MediaBack bringMediaBack(const StateImage& image, Capture& capture);

} // namespace journal
