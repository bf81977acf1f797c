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

} // namespace

std::string setAside(const std::string& path)
{
    const fs::path old(path);
    for (int number = 1;; ++number) {
        const std::string mark = number == 1 ? " (old)" : " (old " + std::to_string(number) + ")";
        const fs::path aside = old.parent_path() / (old.stem().string() + mark + old.extension().string());
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
