#include "twcore/files/core_root.h"

#include "engine/file_presence.h"
#include "twcore/guard.h"
#include "twcore/media/ff.h"
#include "twcore/model/names.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sys/stat.h>
#include <sys/sysinfo.h>
#include <thread>

namespace twcore {

using engine::kFalse;
using engine::toBool16;

namespace {

std::string workingFolder()
{
    std::error_code error;
    const char* const home = std::getenv("HOME");
    if (home != nullptr && *home != '\0') {
        const auto videos = std::filesystem::path(home) / "Videos";
        return std::filesystem::is_directory(videos, error) ? videos.string() : std::string(home);
    }
    return std::filesystem::temp_directory_path(error).string();
}

/// A value of os-release, without its quotes.
std::string osRelease(const std::string& key)
{
    std::ifstream file("/etc/os-release");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(key + "=")) {
            line.erase(0, key.size() + 1);
            std::erase(line, '"');
            return line;
        }
    }
    return {};
}

std::int32_t kibibytes(unsigned long units, unsigned int unitBytes)
{
    const auto value = static_cast<unsigned long long>(units) * unitBytes / 1024;
    return static_cast<std::int32_t>(std::min<unsigned long long>(value, std::numeric_limits<std::int32_t>::max()));
}

} // namespace

engine::Status CoreRoot::OpenFile(Text path, Handle& file)
{
    file = 0;
    return guarded([&] { file = files_.openFile(std::string(path)); });
}

engine::Status CoreRoot::CloseFile(Handle file, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] { ok = toBool16(files_.closeFile(file)); });
}

engine::Status CoreRoot::GetFileName(Handle file, TextBuffer buffer, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        const std::string* const path = files_.pathOf(file);
        ok = toBool16(path != nullptr && path->size() <= buffer.size());
        fillBuffer(buffer, ok != kFalse ? std::string_view(*path) : std::string_view());
    });
}

engine::Status CoreRoot::GetFirstStream(Handle file, Handle& stream)
{
    stream = 0;
    return guarded([&] { stream = files_.firstOpenStream(file); });
}

engine::Status CoreRoot::FileExists(Text path, Bool16& exists)
{
    exists = kFalse;
    return guarded([&] {
        std::error_code error;
        exists = toBool16(path.find('\0') == Text::npos && std::filesystem::exists(std::filesystem::path(path), error));
    });
}

engine::Status CoreRoot::ReleaseStillSource(Handle handle, Bool16& ok)
{
    // A still is a stream like any other here, held by its own handle.
    ok = kFalse;
    return guarded([&] { ok = toBool16(files_.closeStream(handle)); });
}

engine::Status CoreRoot::GetWorkingFolder(std::int32_t size, TextBuffer buffer)
{
    const auto length = std::min(buffer.size(), static_cast<std::size_t>(std::max(size, 0)));
    return guarded([&] {
        fillBuffer(buffer, {});
        const std::string folder = workingFolder();
        fillBuffer(buffer.first(length), folder.size() <= length ? std::string_view(folder) : std::string_view());
    });
}

engine::Status CoreRoot::GetFileVersionInfo(Text fileName, std::int32_t& v1, std::int32_t& v2, std::int32_t& v3,
                                            std::int32_t& v4)
{
    struct Library {
        std::string_view name;
        unsigned version;
    };
    const std::array libraries{Library{"avcodec", avcodec_version()}, Library{"avformat", avformat_version()},
                               Library{"swscale", swscale_version()}, Library{"swresample", swresample_version()}};
    v1 = v2 = v3 = v4 = 0;
    return guarded([&] {
        const auto found = std::ranges::find_if(
            libraries, [&](const auto& library) { return fileName.find(library.name) != Text::npos; });
        if (found != libraries.end()) {
            v1 = static_cast<std::int32_t>(AV_VERSION_MAJOR(found->version));
            v2 = static_cast<std::int32_t>(AV_VERSION_MINOR(found->version));
            v3 = static_cast<std::int32_t>(AV_VERSION_MICRO(found->version));
        }
    });
}

engine::Status CoreRoot::GetMemoryStatus(std::int32_t& physical, std::int32_t& physicalFree, std::int32_t& swap,
                                         std::int32_t& swapFree)
{
    physical = physicalFree = swap = swapFree = 0;
    return guarded([&] {
        struct sysinfo facts {};
        if (::sysinfo(&facts) == 0) {
            physical = kibibytes(facts.totalram, facts.mem_unit);
            physicalFree = kibibytes(facts.freeram, facts.mem_unit);
            swap = kibibytes(facts.totalswap, facts.mem_unit);
            swapFree = kibibytes(facts.freeswap, facts.mem_unit);
        }
    });
}

engine::Status CoreRoot::GetSystemVersion(TextBuffer buffer)
{
    return guarded([&] {
        const std::string name = osRelease("ID");
        const std::string version = osRelease("VERSION_ID");
        fillBuffer(buffer, version.empty() ? name : name + " " + version);
    });
}

engine::Status CoreRoot::CheckDirectShowVersion(Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        ok = toBool16(avcodec_version() >= LIBAVCODEC_VERSION_INT && avformat_version() >= LIBAVFORMAT_VERSION_INT);
    });
}

engine::Status CoreRoot::GetFileError(Text path, std::uint32_t& code)
{
    code = engine::media_error::kInvalidArgument;
    return guarded([&] {
        const Trial trial = files_.tryFile(std::string(path));
        code = trial.error;
        const bool isTaken = trial.trouble.empty() && trial.file;
        return engine::Status(engine::kDone.code(), isTaken ? trial.file->trouble : trial.trouble);
    });
}

engine::Status CoreRoot::DeleteFile(Text path, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        std::error_code error;
        const std::filesystem::path name(path);
        const bool isFile =
            path.find('\0') == Text::npos
            && std::filesystem::symlink_status(name, error).type() != std::filesystem::file_type::directory;
        ok = toBool16(isFile && std::filesystem::remove(name, error) && !error);
    });
}

engine::Status StreamInterface::OpenStream(Handle file, std::int16_t index, Handle& stream)
{
    stream = 0;
    return guarded([&] { stream = files_.openStream(file, index); });
}

engine::Status StreamInterface::CloseStream(Handle stream, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] { ok = toBool16(files_.closeStream(stream)); });
}

engine::Status StreamInterface::SelectStream(Handle stream, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        const bool isThere = files_.findOpen(stream) != nullptr;
        selected_ = isThere ? stream : 0;
        ok = toBool16(isThere);
    });
}

engine::Status StreamInterface::GetStreamFile(Handle stream, Handle& file)
{
    file = 0;
    return guarded([&] {
        const auto* const found = files_.findOpen(stream);
        file = found != nullptr ? found->file : 0;
    });
}

engine::Status StreamInterface::IsVideoStream(Handle stream, Bool16& isVideo)
{
    isVideo = kFalse;
    return guarded([&] {
        const auto* const found = files_.findOpen(stream);
        isVideo = toBool16(found != nullptr && found->isPicture);
    });
}

engine::Status StreamInterface::LookAhead(engine::Text path)
{
    return guarded([&] { files_.lookAhead(std::string(path)); });
}

engine::Status StreamInterface::LookForFiles()
{
    return guarded([&] {
        std::vector<std::string> paths;
        for (const Handle file : files_.openFiles()) {
            paths.push_back(files_.mediaOf(file)->path);
        }
        static std::atomic<bool> isLooking{false};
        if (paths.empty() || isLooking.exchange(true)) {
            return;
        }
        std::thread([paths = std::move(paths)] {
            for (const std::string& path : paths) {
                // What cannot be asked about is not known to have gone.
                struct stat facts {};
                const bool hasGone = ::stat(path.c_str(), &facts) != 0 && (errno == ENOENT || errno == ENOTDIR);
                engine::filePresence().tell(path, !hasGone);
            }
            isLooking = false;
        }).detach();
    });
}

engine::Status StreamInterface::IsVideo(Bool16& isVideo)
{
    isVideo = kFalse;
    return guarded([&] { isVideo = toBool16(chosen() != nullptr && chosen()->isPicture); });
}

engine::Status StreamInterface::IsAudio(Bool16& isAudio)
{
    isAudio = kFalse;
    return guarded([&] { isAudio = toBool16(chosen() != nullptr && !chosen()->isPicture); });
}

engine::Status StreamInterface::GetVideoSize(std::int32_t& height, std::int32_t& width)
{
    height = width = 0;
    return guarded([&] {
        if (const auto* const stream = chosen(); stream != nullptr && stream->isPicture) {
            const auto media = files_.mediaOf(stream->file);
            height = media->picture->height;
            width = media->picture->width;
        }
    });
}

engine::Status StreamInterface::GetAudioSampleRate(std::int32_t& hertz)
{
    hertz = 0;
    return guarded([&] {
        const auto* const stream = chosen();
        hertz = stream != nullptr && !stream->isPicture ? files_.mediaOf(stream->file)->sound->rate : 0;
    });
}

engine::Status StreamInterface::GetDuration(double& seconds)
{
    seconds = 0;
    return guarded([&] { seconds = chosen() != nullptr ? chosen()->durationMs / 1000.0 : 0; });
}

engine::Status StreamInterface::GetFrameRate(double& fps)
{
    fps = 0;
    return guarded([&] {
        if (const auto* const stream = chosen(); stream != nullptr && stream->isPicture) {
            const AVRational rate = files_.mediaOf(stream->file)->picture->frameRate;
            fps = rate.num > 0 ? av_q2d(rate) : 0;
        }
    });
}

engine::Status StreamInterface::OpenFileInfo(engine::Text path, std::int32_t)
{
    return guarded([&] { infoPath_ = path; });
}

engine::Status StreamInterface::GetStreamCount(std::int32_t& count)
{
    count = 0;
    return guarded([&] {
        const auto media = infoPath_.empty() ? nullptr : files_.tryFile(infoPath_).file;
        count = media ? (media->picture ? 1 : 0) + (media->sound ? 1 : 0) : 0;
    });
}

} // namespace twcore
