#pragma once

// The command line of quillmont-render.

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace app {

struct RenderWords {
    std::vector<std::string> inputs; // one project file, or media files
    std::string output;
    std::optional<std::pair<int, int>> size; // width, height in pixels
    int framesPerSecond = -1;
    int soundRate = -1; // Hz
    std::string videoCompressor = "Motion JPEG";
    std::string audioCompressor = "PCM";
    int quality = -1;                           // 0 to 100
    int keyFrameRate = -1;                      // frames
    std::optional<std::pair<int, int>> rangeMs; // start, stop
    bool listsCompressors = false;
    bool tellsJson = false;
};

/// The words, or the exit status of a run that ends here: help or version were asked for (0), or words are wrong (2),
/// which has been said.
struct ReadWords {
    std::optional<RenderWords> words;
    int exitStatus = 0;
};
ReadWords readRenderWords(int count, const char* const* words);

} // namespace app
