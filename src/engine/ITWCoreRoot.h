#pragma once

// Files, and what the program asks of the machine: the interface that the program holds its engine by.
//
// Threads: every operation comes from the interface thread. `GetFileError` may wait for a slow disk up to its
// deadline; all others return at once.

#include "engine/status.h"
#include "engine/types.h"

#include <typeinfo>

namespace engine {

class ITWCoreRoot {
public:
    virtual ~ITWCoreRoot() = default;

    /// The object's interface of that type, or nullptr when it has none. It lives as long as the object.
    /// `EngineAs` is the caller of this.
    virtual void* interfaceOf(const std::type_info& type) noexcept = 0;

    /// Opens a media file; 0 when it cannot. The path is kept as it was given.
    virtual Status OpenFile(Text path, Handle& file) = 0;
    /// Closes a file. Its streams stay readable until each is closed; with the last one the file is gone.
    virtual Status CloseFile(Handle file, Bool16& ok) = 0;
    /// The full path as it was opened. ok is false when there is no such file or the path is longer than the buffer
    /// (260 at most callers): ask again with a longer one.
    virtual Status GetFileName(Handle file, TextBuffer buffer, Bool16& ok) = 0;
    /// The first stream handle still open on the file, 0 when none is left.
    virtual Status GetFirstStream(Handle file, Handle& stream) = 0;
    virtual Status FileExists(Text path, Bool16& exists) = 0;
    /// Drops the handle that a still was held by. ok is false when it names nothing.
    virtual Status ReleaseStillSource(Handle handle, Bool16& ok) = 0;
    /// Default of the working folder; `size` is the length of the buffer (500).
    virtual Status GetWorkingFolder(std::int32_t size, TextBuffer buffer) = 0;
    /// Version numbers of a library of the media system by its name ("avcodec", ...), most significant first;
    /// 0 0 0 0 when it is not known.
    virtual Status GetFileVersionInfo(Text fileName, std::int32_t& v1, std::int32_t& v2, std::int32_t& v3,
                                      std::int32_t& v4) = 0;
    /// Memory of the machine in KiB: physical in all, physical free, swap in all, swap free.
    virtual Status GetMemoryStatus(std::int32_t& physical, std::int32_t& physicalFree, std::int32_t& swap,
                                   std::int32_t& swapFree) = 0;
    /// Name and version of the operating system, at most the length of the buffer (10).
    virtual Status GetSystemVersion(TextBuffer buffer) = 0;
    /// False when the media libraries are older than the engine was built for.
    virtual Status CheckDirectShowVersion(Bool16& ok) = 0;
    /// Tries whether the file can be rendered; `code` is one of `media_error`. Waits 10 s at most. The status, which is
    /// no failure, has a text where there is more to say of the file than the code does.
    virtual Status GetFileError(Text path, std::uint32_t& code) = 0;
    /// Removes a file from the disk. ok is false when it is not there or may not be removed.
    virtual Status DeleteFile(Text path, Bool16& ok) = 0;
};

} // namespace engine
