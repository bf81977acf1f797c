#include "disk/set_aside.h"

#include "disk/whole_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace disk {

namespace fs = std::filesystem;

namespace {

/// 0, or the system's error; EEXIST when somebody bears the name.
int renameUnlessThere(const fs::path& from, const fs::path& to)
{
#ifdef RENAME_NOREPLACE
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
#endif
    // A file system that cannot say so: nothing else of ours makes files of such names meanwhile.
    std::error_code error;
    if (fs::exists(fs::symlink_status(to, error))) {
        return EEXIST;
    }
    fs::rename(from, to, error);
    return error.value();
}

/// "film (old).avi"; the stem gives way where that is longer than names may be, at a whole character of UTF-8.
fs::path withMark(const fs::path& old, const std::string& mark)
{
    constexpr std::size_t kLongestName = 255;
    const std::string end = mark + old.extension().string();
    std::string stem = old.stem().string();
    if (stem.size() + end.size() > kLongestName && end.size() < kLongestName) {
        std::size_t length = kLongestName - end.size();
        while (length > 0 && (static_cast<unsigned char>(stem[length]) & 0xC0) == 0x80) {
            --length;
        }
        stem.resize(length);
    }
    return old.parent_path() / (stem + end);
}

} // namespace

std::string setAside(const std::string& path)
{
    const fs::path old(path);
    for (int number = 1;; ++number) {
        const std::string mark = number == 1 ? " (old)" : " (old " + std::to_string(number) + ")";
        const fs::path aside = withMark(old, mark);
        const int error = renameUnlessThere(old, aside);
        if (error == 0) {
            return aside.string();
        }
        if (error != EEXIST) {
            throw Refused(Why::kDisk,
                          "The old file \"" + path + "\" cannot be renamed, so that nothing is written over it: "
                              + std::strerror(error) + ". Choose another name.",
                          error);
        }
    }
}

bool putBack(const std::string& aside, const std::string& path)
{
    return std::rename(aside.c_str(), path.c_str()) == 0;
}

} // namespace disk
