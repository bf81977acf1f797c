#pragma once

// The command line of quillmont-render.

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace app {

/// Which of the editor's tracks take part.
struct ChosenTracks {
    bool video = true;
    bool overlay = true;
    bool audio1 = true;
    bool audio2 = true;
};

/// Texts that players show; blank ones are not written.
struct DescribingWords {
    std::string title;
    std::string author;
    std::string rating;
    std::string copyright;
    std::string description;

    bool isBlank() const { return (title + author + rating + copyright + description).empty(); }
};

struct RenderWords {
    std::vector<std::string> inputs; // one project file, or media files
    std::string output;
    ChosenTracks tracks;
    bool withEffects = true;
    DescribingWords describing;
    std::string profile;                     // of a Windows Media file; empty: one that fits
    std::optional<std::pair<int, int>> size; // width, height in pixels
    int framesPerSecond = -1;
    int soundRate = -1; // Hz
    std::string videoCompressor = "Motion JPEG";
    std::string audioCompressor = "PCM";
    int quality = -1;                           // 0 to 100
    int keyFrameRate = -1;                      // frames
    int videoRate = 0;                          // bits a second; 0: quality decides
    bool copiesUnchanged = true;                // what nothing is done to, where neither quality nor rate is told
    std::optional<std::pair<int, int>> rangeMs; // start, stop
    bool listsCompressors = false;
    bool listsProfiles = false;
    bool tellsJson = false;
    std::string trace; // file for where the time went; empty: none

    /// The output's name ends in .wmv, .wma or .asf.
    bool isWindowsMedia() const;
};

/// The words, or the exit status of a run that ends here: help or version were asked for (0), or words are wrong (2),
/// which has been said.
struct ReadWords {
    std::optional<RenderWords> words;
    int exitStatus = 0;
};
ReadWords readRenderWords(int count, const char* const* words);

} // namespace app
