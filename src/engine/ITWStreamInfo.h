#pragma once

// The particulars of the stream chosen by `ITWMediaFiles::SelectStream`, or of a file named by path.
// Without a chosen stream every answer is 0. All operations come from the interface thread and return at once.

#include "engine/status.h"
#include "engine/types.h"

namespace engine {

class ITWStreamInfo {
public:
    virtual ~ITWStreamInfo() = default;

    virtual Status IsVideo(Bool16& isVideo) = 0;
    virtual Status IsAudio(Bool16& isAudio) = 0;
    /// In pixels as displayed, rotation and pixel aspect applied. Height comes first.
    virtual Status GetVideoSize(std::int32_t& height, std::int32_t& width) = 0;
    virtual Status GetAudioSampleRate(std::int32_t& hertz) = 0;
    /// Seconds from media time 0, which is the earlier start of the file's two streams.
    virtual Status GetDuration(double& seconds) = 0;
    /// Frames a second; 0 for a still.
    virtual Status GetFrameRate(double& fps) = 0;
    /// Points the reader of `GetStreamCount` at a file; flags are always 0. A file that cannot be read has no streams.
    virtual Status OpenFileInfo(Text path, std::int32_t flags) = 0;
    virtual Status GetStreamCount(std::int32_t& count) = 0;
};

} // namespace engine
