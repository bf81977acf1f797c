#pragma once

// The timeline's part of a project file. See docs/project-format.md.
// Operations come from the interface thread and take the time that the disk needs.

#include "engine/status.h"
#include "engine/types.h"

namespace engine {

/// A longer file is no project: a hundred thousand sources take a third of it.
inline constexpr std::uintmax_t kMostProjectBytes = 64u << 20;

class ITWProjectStore {
public:
    virtual ~ITWProjectStore() = default;

    /// Creates or overwrites the file with one root element, first child of the document, that holds the timeline.
    /// A file that cannot be written is a failure status: 0x80070005 no permission, 0x80070070 the disk is full,
    /// else 75, path or file access, in the low word (0x800A004B). The old file stays as it was.
    virtual Status SaveProject(Text path, Bool16& ok) = 0;
    /// Rebuilds the tracks, which must exist, from the file over the streams of the open files, the n-th open file
    /// standing for the n-th of the file's media list. What lay on the tracks goes. A file that is no project, or
    /// that cannot be read, is a failure status, and the timeline stays as it was.
    virtual Status LoadProject(Text path) = 0;
};

} // namespace engine
