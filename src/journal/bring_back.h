#pragma once

// From an image of the state to the program. Interface thread only.

#include "journal/capture.h"
#include "journal/state_image.h"

#include <string>
#include <vector>

namespace journal {

/// What came of it.
struct Back {
    std::vector<std::string> missing; // files that were not found, by their paths
    bool isWhole = false;             // all lies on the tracks as it did
};

/// Fills an empty program. What cannot be had is left out, and all else brought back. capture learns the handles of
/// closed files. Raises the engine's failures.
Back bringBack(const StateImage& image, Capture& capture);

} // namespace journal
