#pragma once

// Profiles as the program calls them: one open profile, and in it one selected stream. The picture is stream 0 where
// there is one, the sound the last.

#include "engine/ITWProfiles.h"
#include "twcore/profiles/profile.h"

#include <optional>
#include <vector>

namespace twcore {

class ProfilesInterface final : public engine::ITWProfiles {
public:
    using Status = engine::Status;
    using Bool16 = engine::Bool16;
    using Text = engine::Text;
    using TextBuffer = engine::TextBuffer;

    Status InitProfileManager(Bool16& ok) override;
    Status ReleaseProfileManager() override;
    Status GetSystemProfileCount(std::int16_t& count) override;
    Status OpenProfile(Text name, Bool16& ok) override;
    Status OpenSystemProfile(std::int16_t index, Bool16& ok) override;
    Status CloseProfile() override;
    Status GetFirstCustomProfile(TextBuffer buffer, Bool16& found) override;
    Status GetNextCustomProfile(TextBuffer buffer) override;
    Status CloseCustomProfileList() override;
    Status SelectStream(std::int16_t index, Bool16& ok) override;
    Status CloseStream() override;
    Status GetVideoWidth(std::int16_t& width) override;
    Status GetVideoHeight(std::int16_t& height) override;
    Status GetAudioSampleRate(std::int32_t& hertz) override;
    Status GetAudioChannels(std::int16_t& channels) override;
    Status GetVideoFps(std::int16_t& fps) override;
    Status GetKeyFrameInterval(std::int32_t& seconds) override;
    Status GetVideoQuality(std::int32_t& quality) override;
    Status GetStreamCount(std::int16_t& count) override;
    Status GetProfileName(TextBuffer buffer) override;
    Status GetProfileDescription(TextBuffer buffer) override;
    Status GetStreamBitRate(std::int32_t& bitsPerSecond) override;
    Status GetStreamName(TextBuffer buffer) override;
    Status GetStreamType(std::int16_t& type) override;

    /// The open one.
    const std::optional<Profile>& opened() const noexcept { return open_; }

private:
    void open(std::optional<Profile> profile);
    int streamCount() const;
    const ProfilePicture* picture() const; // selected
    const ProfileSound* sound() const;

    std::optional<Profile> open_;
    int stream_ = -1; // selected; -1: none
    std::vector<Profile> custom_;
    std::size_t nextCustom_ = 0;
};

} // namespace twcore
