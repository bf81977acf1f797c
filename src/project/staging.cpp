#include "project/staging.h"

#include "core/platform.h"
#include "engine/ITWProjectStore.h"
#include "engine/runtime_error.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace project {

namespace fs = std::filesystem;

namespace {

constexpr const char* kFolder = ".quillmont-staging-"; // a name that nobody gives a folder of his own

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

disk::RunFolder Staging::makeFolder()
{
    try {
        return disk::RunFolder(ports.shell->runtimeFolder(), kFolder);
    } catch (const disk::Refused& refused) {
        raise(numberOf(refused), refused.what());
    }
}

Staging::Staging() : folder_(makeFolder()), path_(folder_.path() + "/project.qpj") {}

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
