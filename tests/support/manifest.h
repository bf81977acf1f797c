// What stands in the folder of generated test media.
//
// `make-test-media` writes one line a file into manifest.txt; tests iterate over the entries instead of naming files
// again. The folder is the one that the test run made (see mediaFolder).
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace testmedia {

// name|kind|fps|frames|first number|duration|sample rate|channels|notes
struct MediaEntry {
    std::string name;    // relative to the folder, UTF-8
    std::string kind;    // movie, picture (a movie without sound), sound, still, animation, midi, bad, odd
    std::string fps;     // "25", "24000/1001"; "0" without picture
    int frames = 0;      // 0 without picture
    int firstNumber = 0; // bar code of the first shown picture; the others follow, one by one
    double durationSeconds = 0;
    int rateHz = 0; // 0 without sound
    int channels = 0;
    std::string notes = {}; // words apart by blanks, some as key=value; see note()

    double framesPerSecond() const;
    bool has(const std::string& word) const;
    // The value of key=value, or `otherwise`.
    std::string note(const std::string& key, const std::string& otherwise = {}) const;
    double noteNumber(const std::string& key, double otherwise = 0) const;
};

std::string manifestLine(const MediaEntry& entry);

// Where the test run keeps its media: the environment's TEST_MEDIA_DIR, or the build's own folder.
std::filesystem::path mediaFolder();
// The path of one of them.
inline std::string medium(const std::string& name) { return (mediaFolder() / name).string(); }

// Throws std::runtime_error when the media have not been made.
std::vector<MediaEntry> readManifest(const std::filesystem::path& folder = mediaFolder());

// The entry of one file; throws when there is none of that name.
MediaEntry mediaEntry(const std::string& name);

} // namespace testmedia
