#include "project/staging.h"

#include "core/platform.h"
#include "engine/ITWProjectStore.h"
#include "engine/runtime_error.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace project {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kFolder = ".quillmont-staging-"; // a name that nobody gives a folder of his own

[[noreturn]] void raise(std::int32_t number, const std::string& text) { throw engine::RuntimeError(number, text); }

std::int32_t numberOf(int systemError)
{
    switch (systemError) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return kDiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return kNoPermission;
    default:
        return kDiskFails;
    }
}

std::int32_t numberOf(const disk::Refused& refused)
{
    switch (refused.why) {
    case disk::Why::kReadOnly:
    case disk::Why::kFolderClosed:
        return kNoPermission;
    case disk::Why::kNoFolder:
        return kPathNotFound;
    case disk::Why::kDisk:
        return numberOf(refused.error);
    case disk::Why::kMoved:
        return kDiskFails;
    default:
        return kPathFileAccess;
    }
}

/// Copies what stands in one file into another, which may be there already. `name`: how people know it.
void copyBytes(const std::string& from, const std::string& to, const std::string& name)
{
    errno = 0;
    std::ifstream source(from, std::ios::binary);
    const bool isOpen = source.is_open(); // one that is not open reads like an empty file
    std::ofstream target(to, std::ios::binary);
    if (isOpen && source.peek() != std::ifstream::traits_type::eof()) {
        target << source.rdbuf();
    }
    target.close();
    if (!isOpen || source.bad() || target.fail()) {
        const int error = errno != 0 ? errno : EIO;
        raise(numberOf(error), "\"" + name + "\" cannot be written: " + std::generic_category().message(error) + ".");
    }
}

/// Nothing, and `errno`, when another process holds it, it has gone, or is no folder of ours.
disk::Descriptor lockOn(const std::string& folder)
{
    disk::Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat named {};
    const bool isHeld = opened.get() >= 0 && ::flock(opened.get(), LOCK_EX | LOCK_NB) == 0
                        && ::stat(folder.c_str(), &named) == 0 && named.st_uid == ::geteuid();
    return isHeld ? std::move(opened) : disk::Descriptor();
}

/// What a killed run left is locked by nobody.
void removeAbandoned(const std::string& runtime)
{
    std::error_code none;
    for (fs::directory_iterator entry(runtime, none), end; !none && entry != end; entry.increment(none)) {
        if (!entry->path().filename().string().starts_with(kFolder)) {
            continue;
        }
        std::error_code ignored;
        if (const auto lock = lockOn(entry->path().string()); lock.get() >= 0) {
            fs::remove_all(entry->path(), ignored);
        }
    }
}

} // namespace

std::string temporaryNameOf(const std::string& path)
{
    constexpr std::string_view kOwn = "qpj";
    std::string name = path;
    for (auto at = name.find(kOwn); at != std::string::npos; at = name.find(kOwn, at)) {
        name.replace(at, kOwn.size(), "xml");
    }
    return name;
}

void askForTemporaryName(const std::string& path)
{
    const std::string name = temporaryNameOf(path);
    std::error_code ignored;
    if (name == path || fs::exists(fs::symlink_status(name, ignored))) {
        raise(kFileExists, "\"" + name + "\" exists already.");
    }
    if (!fs::is_directory(fs::path(name).parent_path(), ignored)) {
        const bool hasFolder = fs::is_directory(fs::path(path).parent_path(), ignored);
        raise(kPathNotFound, hasFolder ? "A project cannot lie in a folder with \"qpj\" in its name."
                                       : "The folder of \"" + path + "\" is not there.");
    }
}

disk::WholeFile placeOf(const std::string& path)
{
    try {
        return disk::WholeFile(path);
    } catch (const disk::Refused& refused) {
        raise(numberOf(refused), refused.what());
    }
}

Staging::Staging()
{
    const std::string runtime = ports.shell->runtimeFolder();
    removeAbandoned(runtime);
    do {
        folder_ = (fs::path(runtime) / kFolder).string() + "XXXXXX";
        if (mkdtemp(folder_.data()) == nullptr) {
            raise(numberOf(errno), "No folder can be made in \"" + runtime + "\".");
        }
        lock_ = lockOn(folder_);
        // Until it was locked, another run may have taken it for abandoned.
    } while (lock_.get() < 0 && (errno == EWOULDBLOCK || errno == ENOENT));
    path_ = folder_ + "/project.qpj";
}

Staging::~Staging()
{
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void Staging::copyFrom(const std::string& project) const
{
    std::error_code error;
    const auto status = fs::status(project, error);
    if (!fs::exists(status)) {
        const bool hasFolder = fs::is_directory(fs::path(project).parent_path(), error);
        raise(hasFolder ? kFileNotFound : kPathNotFound, "\"" + project + "\" is not there.");
    }
    if (!fs::is_regular_file(status)) {
        raise(kPathFileAccess, "\"" + project + "\" is no file.");
    }
    if (fs::file_size(project, error) > engine::kMostProjectBytes || error) {
        raise(kInvalidFormat, "\"" + project + "\" is too large for a project.");
    }
    if (!std::ifstream(project, std::ios::binary)) {
        raise(kPathFileAccess, "\"" + project + "\" cannot be read.");
    }
    copyBytes(project, path_, path_);
}

void Staging::putIn(disk::WholeFile& place) const
{
    copyBytes(path_, place.path(), place.name());
    try {
        place.takeName();
    } catch (const disk::Refused& refused) {
        raise(numberOf(refused), refused.what());
    }
}

} // namespace project
