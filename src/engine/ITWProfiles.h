#pragma once

// Windows Media profiles: named descriptions of the streams of a Windows Media file, the system's and the user's own.
// The engine holds one open profile and in it one selected stream; the stream operations refer to those and answer 0
// without one. Texts end in NUL ahead of their blanks. Operations come from the interface thread and return at once.

#include "engine/status.h"
#include "engine/types.h"

namespace engine {

class ITWProfiles {
public:
    virtual ~ITWProfiles() = default;

    virtual Status InitProfileManager(Bool16& ok) = 0;
    virtual Status ReleaseProfileManager() = 0;
    virtual Status GetSystemProfileCount(std::int16_t& count) = 0;
    /// A custom profile, or a system one, by name.
    virtual Status OpenProfile(Text name, Bool16& ok) = 0;
    virtual Status OpenSystemProfile(std::int16_t index, Bool16& ok) = 0;
    virtual Status CloseProfile() = 0;
    virtual Status GetFirstCustomProfile(TextBuffer buffer, Bool16& found) = 0;
    /// Blank behind the last.
    virtual Status GetNextCustomProfile(TextBuffer buffer) = 0;
    virtual Status CloseCustomProfileList() = 0;
    virtual Status SelectStream(std::int16_t index, Bool16& ok) = 0;
    virtual Status CloseStream() = 0;
    virtual Status GetVideoWidth(std::int16_t& width) = 0;
    virtual Status GetVideoHeight(std::int16_t& height) = 0;
    virtual Status GetAudioSampleRate(std::int32_t& hertz) = 0;
    /// 1 is mono.
    virtual Status GetAudioChannels(std::int16_t& channels) = 0;
    virtual Status GetVideoFps(std::int16_t& fps) = 0;
    virtual Status GetKeyFrameInterval(std::int32_t& seconds) = 0;
    virtual Status GetVideoQuality(std::int32_t& quality) = 0;
    virtual Status GetStreamCount(std::int16_t& count) = 0;
    /// Buffer of 500.
    virtual Status GetProfileName(TextBuffer buffer) = 0;
    /// Buffer of 5000.
    virtual Status GetProfileDescription(TextBuffer buffer) = 0;
    virtual Status GetStreamBitRate(std::int32_t& bitsPerSecond) = 0;
    /// Buffer of 128.
    virtual Status GetStreamName(TextBuffer buffer) = 0;
    /// 0 video, any other value audio.
    virtual Status GetStreamType(std::int16_t& type) = 0;
};

} // namespace engine
