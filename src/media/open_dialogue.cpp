#include "media/open_dialogue.h"

#include <algorithm>

namespace media {

OpenFileRequest openMediaRequest()
{
    constexpr int kAllSupported = 4;
    constexpr std::size_t kNameBuffer = 3000; // characters, for all names together
    return {.filters = {{"Video Files (*.aiff; *.asf; *.avi; *.mpeg; *.wmv)",
                         {"*.aiff", "*.asf", "*.avi", "*.mpeg", "*.mpg", "*.wmv"}},
                        {"Audio Files (*.au; *.midi; *.mp3; *.wav; *.wma)",
                         {"*.au", "*.midi", "*.mid", "*.mp3", "*.wav", "*.wma"}},
                        {"Image Files (*.bmp; *.gif; *.jpeg; *.tga)", {"*.bmp", "*.gif", "*.jpeg", "*.jpg", "*.tga"}},
                        {"All supported Media Files",
                         {"*.aiff", "*.asf", "*.avi", "*.mpeg", "*.mpg", "*.wmv", "*.au", "*.midi", "*.mid", "*.mp3",
                          "*.wav", "*.wma", "*.bmp", "*.gif", "*.jpeg", "*.jpg", "*.tga"}},
                        {"All Files (*.*)", {"*.*"}},
                        {"Newer Media Files (*.mp4; *.mov; *.mkv; *.webm; *.flac; *.png; ...)",
                         {"*.mp4",  "*.m4v", "*.mov", "*.mkv", "*.webm", "*.mts",  "*.m2ts",
                          "*.ts",   "*.m1v", "*.m2v", "*.mpe", "*.vob",  "*.flac", "*.ogg",
                          "*.opus", "*.m4a", "*.aac", "*.png", "*.webp", "*.tif",  "*.tiff"}}},
            .filterIndex = kAllSupported,
            .folder = {},
            .multiple = true,
            .bufferLength = kNameBuffer};
}

OpenFileRequest searchMediaRequest(std::string folder)
{
    OpenFileRequest request = openMediaRequest();
    constexpr std::ptrdiff_t kAllSupported = 3;
    const auto first = request.filters.begin() + kAllSupported;
    request.filters = {first, first + 2}; // whatever the file is, and then any file at all
    request.filterIndex = 1;
    request.folder = std::move(folder);
    request.multiple = false;
    request.bufferLength = 0; // one name, however long
    return request;
}

ChosenFiles chosenFiles(std::string_view answer)
{
    std::vector<std::string> parts;
    while (!answer.empty()) {
        const auto end = std::min(answer.find('\0'), answer.size());
        if (end > 0) {
            parts.emplace_back(answer.substr(0, end));
        }
        answer.remove_prefix(std::min(end + 1, answer.size()));
    }
    if (parts.size() < 2) {
        return {std::move(parts), false};
    }
    std::string folder = std::move(parts.front());
    parts.erase(parts.begin());
    if (!folder.ends_with('/') && !folder.ends_with('\\')) {
        folder += '/';
    }
    for (std::string& name : parts) {
        name.insert(0, folder);
    }
    return {std::move(parts), true};
}

} // namespace media
