#pragma once

// Files, streams and the machine, as the program calls them: handles, buffers and statuses over a `FileRegistry`.

#include "engine/ITWCoreRoot.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWStreamInfo.h"
#include "twcore/files/file_registry.h"

#include <string>

namespace twcore {

/// `ITWMediaFiles` and `ITWStreamInfo`, which share the chosen stream.
class StreamInterface final : public engine::ITWMediaFiles, public engine::ITWStreamInfo {
public:
    using Handle = engine::Handle;
    using Status = engine::Status;
    using Bool16 = engine::Bool16;

    explicit StreamInterface(FileRegistry& files) : files_(files) {}

    Status OpenStream(Handle file, std::int16_t index, Handle& stream) override;
    Status CloseStream(Handle stream, Bool16& ok) override;
    Status SelectStream(Handle stream, Bool16& ok) override;
    Status GetStreamFile(Handle stream, Handle& file) override;
    Status IsVideoStream(Handle stream, Bool16& isVideo) override;
    Status LookForFiles() override;
    Status LookAhead(engine::Text path) override;

    Status IsVideo(Bool16& isVideo) override;
    Status IsAudio(Bool16& isAudio) override;
    Status GetVideoSize(std::int32_t& height, std::int32_t& width) override;
    Status GetAudioSampleRate(std::int32_t& hertz) override;
    Status GetDuration(double& seconds) override;
    Status GetFrameRate(double& fps) override;
    Status OpenFileInfo(engine::Text path, std::int32_t flags) override;
    Status GetStreamCount(std::int32_t& count) override;

private:
    const FileRegistry::Stream* chosen() const { return files_.findOpen(selected_); }

    FileRegistry& files_;
    Handle selected_ = 0;
    std::string infoPath_;
};

/// The operations of `ITWCoreRoot`; the object that holds all interfaces adds the casting.
class CoreRoot : public engine::ITWCoreRoot {
public:
    using Handle = engine::Handle;
    using Status = engine::Status;
    using Bool16 = engine::Bool16;
    using Text = engine::Text;
    using TextBuffer = engine::TextBuffer;

    explicit CoreRoot(FileRegistry& files) : files_(files) {}

    Status OpenFile(Text path, Handle& file) override;
    Status CloseFile(Handle file, Bool16& ok) override;
    Status GetFileName(Handle file, TextBuffer buffer, Bool16& ok) override;
    Status GetFirstStream(Handle file, Handle& stream) override;
    Status FileExists(Text path, Bool16& exists) override;
    Status ReleaseStillSource(Handle handle, Bool16& ok) override;
    Status GetWorkingFolder(std::int32_t size, TextBuffer buffer) override;
    Status GetFileVersionInfo(Text fileName, std::int32_t& v1, std::int32_t& v2, std::int32_t& v3,
                              std::int32_t& v4) override;
    Status GetMemoryStatus(std::int32_t& physical, std::int32_t& physicalFree, std::int32_t& swap,
                           std::int32_t& swapFree) override;
    Status GetSystemVersion(TextBuffer buffer) override;
    Status CheckDirectShowVersion(Bool16& ok) override;
    Status GetFileError(Text path, std::uint32_t& code) override;
    Status DeleteFile(Text path, Bool16& ok) override;

private:
    FileRegistry& files_;
};

} // namespace twcore
