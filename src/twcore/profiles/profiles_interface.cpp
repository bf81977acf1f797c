#include "twcore/profiles/profiles_interface.h"

#include "twcore/guard.h"
#include "twcore/profiles/system_profiles.h"
#include "twcore/profiles/terminated_text.h"
#include "twcore/profiles/user_profiles.h"

namespace twcore {

using engine::kDone;
using engine::kFalse;
using engine::kTrue;
using engine::toBool16;

namespace {

constexpr std::int16_t kVideoType = 0;
constexpr std::int16_t kAudioType = 1;

/// A member of a part of the profile that may not be there, then 0.
template <class Part, class Number>
Number of(const Part* part, int Part::*member, Number& value)
{
    return value = static_cast<Number>(part != nullptr ? part->*member : 0);
}

} // namespace

void ProfilesInterface::open(std::optional<Profile> profile)
{
    open_ = std::move(profile);
    stream_ = -1;
}

int ProfilesInterface::streamCount() const { return open_ ? (open_->picture ? 1 : 0) + (open_->sound ? 1 : 0) : 0; }

const ProfilePicture* ProfilesInterface::picture() const
{
    return open_ && open_->picture && stream_ == 0 ? &*open_->picture : nullptr;
}

const ProfileSound* ProfilesInterface::sound() const
{
    return open_ && open_->sound && stream_ >= 0 && stream_ == streamCount() - 1 ? &*open_->sound : nullptr;
}

engine::Status ProfilesInterface::InitProfileManager(Bool16& ok)
{
    ok = kTrue;
    return kDone;
}

engine::Status ProfilesInterface::ReleaseProfileManager()
{
    return guarded([&] {
        open(std::nullopt);
        custom_.clear();
    });
}

engine::Status ProfilesInterface::GetSystemProfileCount(std::int16_t& count)
{
    count = 0;
    return guarded([&] { count = static_cast<std::int16_t>(systemProfiles().size()); });
}

engine::Status ProfilesInterface::OpenProfile(Text name, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        open(findProfile(std::string(name)));
        ok = toBool16(open_.has_value());
    });
}

engine::Status ProfilesInterface::OpenSystemProfile(std::int16_t index, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        const auto& list = systemProfiles();
        const bool isThere = index >= 0 && static_cast<std::size_t>(index) < list.size();
        open(isThere ? std::optional(list[static_cast<std::size_t>(index)]) : std::nullopt);
        ok = toBool16(isThere);
    });
}

engine::Status ProfilesInterface::CloseProfile()
{
    return guarded([&] { open(std::nullopt); });
}

engine::Status ProfilesInterface::GetFirstCustomProfile(TextBuffer buffer, Bool16& found)
{
    found = kFalse;
    return guarded([&]() -> Status {
        custom_ = userProfiles();
        nextCustom_ = 0;
        found = toBool16(!custom_.empty());
        return GetNextCustomProfile(buffer);
    });
}

engine::Status ProfilesInterface::GetNextCustomProfile(TextBuffer buffer)
{
    return guarded([&] {
        const bool isThere = nextCustom_ < custom_.size();
        fillTerminated(buffer, isThere ? std::string_view(custom_[nextCustom_].name) : std::string_view());
        nextCustom_ += isThere ? 1 : 0;
    });
}

engine::Status ProfilesInterface::CloseCustomProfileList()
{
    custom_.clear();
    return kDone;
}

engine::Status ProfilesInterface::SelectStream(std::int16_t index, Bool16& ok)
{
    const bool isThere = index >= 0 && index < streamCount();
    stream_ = isThere ? index : -1;
    ok = toBool16(isThere);
    return kDone;
}

engine::Status ProfilesInterface::CloseStream()
{
    stream_ = -1;
    return kDone;
}

engine::Status ProfilesInterface::GetVideoWidth(std::int16_t& width)
{
    of(picture(), &ProfilePicture::width, width);
    return kDone;
}

engine::Status ProfilesInterface::GetVideoHeight(std::int16_t& height)
{
    of(picture(), &ProfilePicture::height, height);
    return kDone;
}

engine::Status ProfilesInterface::GetAudioSampleRate(std::int32_t& hertz)
{
    of(sound(), &ProfileSound::sampleRate, hertz);
    return kDone;
}

engine::Status ProfilesInterface::GetAudioChannels(std::int16_t& channels)
{
    of(sound(), &ProfileSound::channels, channels);
    return kDone;
}

engine::Status ProfilesInterface::GetVideoFps(std::int16_t& fps)
{
    const auto* const selected = picture();
    fps = 0;
    if (selected != nullptr) {
        const int rounded = (selected->fpsNumerator + selected->fpsDenominator / 2) / selected->fpsDenominator;
        fps = static_cast<std::int16_t>(rounded);
    }
    return kDone;
}

engine::Status ProfilesInterface::GetKeyFrameInterval(std::int32_t& seconds)
{
    of(picture(), &ProfilePicture::keyFrameSeconds, seconds);
    return kDone;
}

engine::Status ProfilesInterface::GetVideoQuality(std::int32_t& quality)
{
    of(picture(), &ProfilePicture::quality, quality);
    return kDone;
}

engine::Status ProfilesInterface::GetStreamCount(std::int16_t& count)
{
    count = static_cast<std::int16_t>(streamCount());
    return kDone;
}

engine::Status ProfilesInterface::GetProfileName(TextBuffer buffer)
{
    return guarded([&] { fillTerminated(buffer, open_ ? std::string_view(open_->name) : std::string_view()); });
}

engine::Status ProfilesInterface::GetProfileDescription(TextBuffer buffer)
{
    return guarded([&] { fillTerminated(buffer, open_ ? std::string_view(open_->description) : std::string_view()); });
}

engine::Status ProfilesInterface::GetStreamBitRate(std::int32_t& bitsPerSecond)
{
    if (of(picture(), &ProfilePicture::bitRate, bitsPerSecond) == 0) {
        of(sound(), &ProfileSound::bitRate, bitsPerSecond);
    }
    return kDone;
}

engine::Status ProfilesInterface::GetStreamName(TextBuffer buffer)
{
    return guarded([&] {
        fillTerminated(buffer, picture() != nullptr ? "Video Stream" : sound() != nullptr ? "Audio Stream" : "");
    });
}

engine::Status ProfilesInterface::GetStreamType(std::int16_t& type)
{
    type = sound() != nullptr ? kAudioType : kVideoType;
    return kDone;
}

} // namespace twcore
