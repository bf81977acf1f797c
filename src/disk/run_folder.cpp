#include "disk/run_folder.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace disk {

namespace fs = std::filesystem;

namespace {

/// Nothing, and `errno`, when another process holds it, it has gone, or is no folder of ours.
Descriptor lockOn(const std::string& folder)
{
    Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat named {};
    const bool isHeld = opened.get() >= 0 && ::flock(opened.get(), LOCK_EX | LOCK_NB) == 0
                        && ::stat(folder.c_str(), &named) == 0 && named.st_uid == ::geteuid();
    return isHeld ? std::move(opened) : Descriptor();
}

void removeAbandoned(const std::string& beside, const std::string& kind)
{
    std::error_code none;
    for (fs::directory_iterator entry(beside, none), end; !none && entry != end; entry.increment(none)) {
        if (!entry->path().filename().string().starts_with(kind)) {
            continue;
        }
        std::error_code ignored;
        if (const auto lock = lockOn(entry->path().string()); lock.get() >= 0) {
            fs::remove_all(entry->path(), ignored);
        }
    }
}

} // namespace

RunFolder::RunFolder(const std::string& beside, const std::string& kind)
{
    removeAbandoned(beside, kind);
    do {
        path_ = (fs::path(beside) / kind).string() + "XXXXXX";
        if (::mkdtemp(path_.data()) == nullptr) {
            throw Refused(Why::kDisk, "No folder can be made in \"" + beside + "\".", errno);
        }
        lock_ = lockOn(path_);
        // Until it was locked, another run may have taken it for abandoned.
    } while (lock_.get() < 0 && (errno == EWOULDBLOCK || errno == ENOENT));
}

RunFolder::~RunFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

} // namespace disk
