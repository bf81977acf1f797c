#include "disk/folder_trial.h"

#include "disk/whole_file.h"

#include <filesystem>

namespace disk {

namespace fs = std::filesystem;

std::string troubleWithFolder(const std::string& folder)
{
    constexpr const char* kNext = "\r\nPlease choose another working folder.";
    std::error_code error;
    const fs::path path(folder);
    const fs::file_status there = fs::status(path, error);
    if (!path.is_absolute() || !fs::is_directory(there)) {
        return "There is no folder \"" + folder + "\"." + kNext;
    }
    std::string closed = "No files can be made in the folder \"" + folder + "\"." + kNext;
    if ((there.permissions() & fs::perms::owner_write) == fs::perms::none) {
        return closed; // root could; but nobody is meant to
    }
    try {
        const WholeFile trial((path / ".quillmont-trial").string()); // gone again with its object
        return {};
    } catch (const Refused&) { // NOLINT: the reason is the folder's
        return closed;
    }
}

} // namespace disk
