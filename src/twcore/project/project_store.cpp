#include "twcore/project/project_store.h"

#include "twcore/guard.h"
#include "twcore/project/project_xml.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace twcore {

namespace {

constexpr std::uint32_t kPathFileAccess = engine::kNumberedFailure | 75;
constexpr std::uint32_t kInvalidFormat = engine::kNumberedFailure | 321;

engine::Status writeFailure(const std::string& path, int diskError)
{
    std::uint32_t code = kPathFileAccess;
    if (diskError == EACCES || diskError == EPERM || diskError == EROFS) {
        code = engine::kAccessDenied.code();
    } else if (diskError == ENOSPC || diskError == EDQUOT || diskError == EFBIG) {
        code = engine::kDiskFull.code();
    }
    return engine::Status(code, "Cannot write \"" + path + "\": " + std::generic_category().message(diskError) + ".");
}

/// Bytes for a document, written to a descriptor.
struct DescriptorWriter final : pugi::xml_writer {
    explicit DescriptorWriter(int file) : descriptor(file) {}

    void write(const void* data, std::size_t size) override
    {
        const auto* bytes = static_cast<const char*>(data);
        while (size > 0 && error == 0) {
            const auto count = ::write(descriptor, bytes, size);
            if (count < 0 && errno != EINTR) {
                error = errno;
            } else if (count > 0) {
                bytes += count;
                size -= static_cast<std::size_t>(count);
            }
        }
    }

    int descriptor;
    int error = 0;
};

/// What a link stands for, so that the link itself stays; also where nothing stands yet.
std::string realPath(const std::string& path)
{
    std::error_code error;
    std::filesystem::path real = path;
    constexpr int kMostLinks = 40;
    for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(real, error); ++i) {
        real = real.parent_path() / std::filesystem::read_symlink(real, error);
    }
    return real.string();
}

/// Writes beside the file and renames, so that a failure leaves the old one. 0, or the error of the disk.
int writeWhole(const pugi::xml_document& document, const std::string& path)
{
    const std::string target = realPath(path);
    struct stat old {};
    const bool isThere = ::stat(target.c_str(), &old) == 0;
    constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    // A file marked as read only is not replaced, whoever asks.
    if (isThere && ((old.st_mode & kAnyWrite) == 0 || ::access(target.c_str(), W_OK) != 0)) {
        return EACCES;
    }
    if (isThere && !S_ISREG(old.st_mode)) {
        return S_ISDIR(old.st_mode) ? EISDIR : EINVAL;
    }
    // A name of its own: the target's may be as long as the disk takes it.
    std::string temporary = (std::filesystem::path(target).parent_path() / ".quillmont-XXXXXX").string();
    DescriptorWriter writer(::mkostemp(temporary.data(), O_CLOEXEC));
    if (writer.descriptor < 0) {
        return errno;
    }
    document.save(writer, "  ", pugi::format_default | pugi::format_no_declaration, pugi::encoding_utf8);
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(writer.descriptor, isThere ? old.st_mode & 07777 : 0666 & ~mask);
    if (writer.error == 0 && ::fsync(writer.descriptor) != 0 && errno != EINVAL) {
        writer.error = errno;
    }
    if (::close(writer.descriptor) != 0 && writer.error == 0) {
        writer.error = errno;
    }
    if (writer.error == 0 && ::rename(temporary.c_str(), target.c_str()) != 0) {
        writer.error = errno;
    }
    if (writer.error != 0) {
        ::unlink(temporary.c_str());
    }
    return writer.error;
}

} // namespace

engine::Status ProjectStore::SaveProject(engine::Text path, engine::Bool16& ok)
{
    ok = engine::kFalse;
    return guarded([&]() -> engine::Status {
        const TimelineSnapshot snapshot = timeline_.snapshot();
        for (const auto& track : snapshot.tracks) {
            for (const auto& source : track.sources) {
                files_.acquire(source.stream); // every stream that is stored has a place in the list
            }
        }
        const auto openFiles = files_.openFiles();
        pugi::xml_document document;
        writeTimeline(document, snapshot, [&](engine::Handle handle) {
            const auto* const stream = files_.findOpen(handle);
            if (stream == nullptr) {
                return StreamPlace{};
            }
            const auto place = std::ranges::find(openFiles, stream->file) - openFiles.begin();
            return StreamPlace{static_cast<int>(place), stream->isPicture};
        });
        if (const int error = writeWhole(document, std::string(path)); error != 0) {
            return writeFailure(std::string(path), error);
        }
        ok = engine::kTrue;
        return engine::kDone;
    });
}

engine::Status ProjectStore::LoadProject(engine::Text path)
{
    return guarded([&]() -> engine::Status {
        const std::string name(path);
        const auto refusal = [&](const std::string& why) {
            return engine::Status(kInvalidFormat, "Cannot open the project \"" + name + "\": " + why);
        };
        std::error_code error;
        if (std::filesystem::exists(name, error) && !std::filesystem::is_regular_file(name, error)) {
            return refusal("it is no file.");
        }
        if (std::filesystem::file_size(name, error) > engine::kMostProjectBytes && !error) {
            return refusal("it is too large for a project.");
        }
        pugi::xml_document document;
        if (const auto result = document.load_file(name.c_str()); !result) {
            return refusal(std::string(result.description()) + ", at byte " + std::to_string(result.offset) + ".");
        }
        const auto openFiles = files_.openFiles();
        ReadTimeline read;
        try {
            read = readTimeline(document, [&](StreamPlace place) {
                const bool isListed = place.file >= 0 && static_cast<std::size_t>(place.file) < openFiles.size();
                return isListed ? files_.streamOfKind(openFiles[static_cast<std::size_t>(place.file)], place.isPicture)
                                : engine::Handle{0};
            });
        } catch (const std::runtime_error& why) {
            return refusal(why.what());
        }
        // Each of the file's tracks takes the next one of its kind.
        const auto tracks = timeline_.snapshot().tracks;
        std::vector<engine::Handle> targets;
        for (const auto& track : read.tracks) {
            const auto free = std::ranges::find_if(tracks, [&](const auto& candidate) {
                return candidate.isVideo == track.isVideo
                       && std::ranges::find(targets, candidate.handle) == targets.end();
            });
            if (free == tracks.end()) {
                return refusal("it has more tracks than there are.");
            }
            targets.push_back(free->handle);
        }
        for (const auto& track : tracks) {
            timeline_.restore(track.handle, {});
        }
        for (std::size_t i = 0; i < targets.size(); ++i) {
            timeline_.restore(targets[i], read.tracks[i].contents);
        }
        if (read.frameSize) {
            timeline_.setFrameSize(read.frameSize->first, read.frameSize->second);
        }
        return engine::kDone;
    });
}

} // namespace twcore
