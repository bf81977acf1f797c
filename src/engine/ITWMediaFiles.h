#pragma once

// The streams of open files. A file offers at most one picture and one sound stream, picture first.
// All operations come from the interface thread and return at once.

#include "engine/status.h"
#include "engine/types.h"

namespace engine {

class ITWMediaFiles {
public:
    virtual ~ITWMediaFiles() = default;

    /// Opens stream number index of the file, from 0; 0 when there is no such stream. A stream that is open already
    /// answers its handle again.
    virtual Status OpenStream(Handle file, std::int16_t index, Handle& stream) = 0;
    virtual Status CloseStream(Handle stream, Bool16& ok) = 0;
    /// Makes this stream the subject of `ITWStreamInfo`.
    virtual Status SelectStream(Handle stream, Bool16& ok) = 0;
    /// The file to which the stream belongs, 0 when there is no such stream.
    virtual Status GetStreamFile(Handle stream, Handle& file) = 0;
    virtual Status IsVideoStream(Handle stream, Bool16& isVideo) = 0;
    /// Looks on a thread of its own which of the open files are still on the disk, and tells `filePresence()` of each.
    /// Does nothing while an earlier look waits for a disk.
    virtual Status LookForFiles() = 0;
    /// Begins to look at a file on a thread of its own: what it finds is there when the file is asked for next
    /// (`GetFileError`, `OpenFile`). For lists of files; only the last two such looks count.
    virtual Status LookAhead(Text path) = 0;
};

} // namespace engine
