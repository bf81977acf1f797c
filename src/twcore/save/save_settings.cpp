// The settings of saving: compressors, rates, sizes, profiles.

#include "twcore/save/save_interface.h"

#include "twcore/guard.h"
#include "twcore/profiles/terminated_text.h"

#include <algorithm>
#include <limits>

namespace twcore {

using engine::kDone;
using engine::kFalse;
using engine::toBool16;

namespace {

std::int16_t toInt16(std::int32_t value)
{
    return static_cast<std::int16_t>(std::clamp<std::int32_t>(value, -1, std::numeric_limits<std::int16_t>::max()));
}

const VideoCompressor* videoAt(std::int32_t index)
{
    const auto& list = videoCompressors();
    return index >= 0 && static_cast<std::size_t>(index) < list.size() ? &list[static_cast<std::size_t>(index)]
                                                                       : nullptr;
}

template <class Compressor>
std::string_view nameAt(const std::vector<Compressor>& list, std::int16_t index)
{
    return index >= 0 && static_cast<std::size_t>(index) < list.size() ? list[static_cast<std::size_t>(index)].name
                                                                       : "";
}

} // namespace

engine::Status SaveInterface::OpenVideoCompressorList(Bool16& ok)
{
    ok = kFalse;
    return guarded([&] { ok = toBool16(!videoCompressors().empty()); });
}

engine::Status SaveInterface::OpenAudioCompressorList(Bool16& ok)
{
    ok = kFalse;
    return guarded([&] { ok = toBool16(!audioCompressors().empty()); });
}

engine::Status SaveInterface::GetVideoCompressorName(std::int16_t index, TextBuffer buffer)
{
    return guarded([&] { fillTerminated(buffer, nameAt(videoCompressors(), index)); });
}

engine::Status SaveInterface::GetAudioCompressorName(std::int16_t index, TextBuffer buffer)
{
    return guarded([&] { fillTerminated(buffer, nameAt(audioCompressors(), index)); });
}

// The lists last as long as the process; opening and closing them costs nothing.
engine::Status SaveInterface::CloseVideoCompressorList() { return kDone; }
engine::Status SaveInterface::CloseAudioCompressorList() { return kDone; }

engine::Status SaveInterface::SetVideoCompressor(Text name)
{
    return guarded([&] { settings_.videoCompressor = name; });
}

engine::Status SaveInterface::SetAudioCompressor(Text name)
{
    return guarded([&] { settings_.audioCompressor = name; });
}

engine::Status SaveInterface::GetVideoCompressorIndex(std::int32_t& index)
{
    index = -1;
    return guarded([&] { index = videoCompressorIndex(settings_.videoCompressor); });
}

engine::Status SaveInterface::CanSetKeyFrameRate(std::int32_t index, Bool16& can)
{
    can = kFalse;
    return guarded([&] { can = toBool16(videoAt(index) != nullptr && videoAt(index)->canSetKeyFrameRate); });
}

engine::Status SaveInterface::CanSetPFrameFrequency(std::int32_t, Bool16& can)
{
    can = kFalse; // none of the encoders takes such a number
    return kDone;
}

engine::Status SaveInterface::CanSetQuality(std::int32_t index, Bool16& can)
{
    can = kFalse;
    return guarded(
        [&] { can = toBool16(videoAt(index) != nullptr && videoAt(index)->quality != QualityScale::kNone); });
}

engine::Status SaveInterface::SetFrameRate(std::int32_t value)
{
    settings_.frameRate = value > 0 ? std::min(value, 1000) : -1;
    return kDone;
}

engine::Status SaveInterface::SetKeyFrameRate(std::int32_t value)
{
    settings_.keyFrameRate = value > 0 ? value : -1;
    return kDone;
}

engine::Status SaveInterface::SetPFrameFrequency(std::int32_t value)
{
    settings_.pFrameFrequency = value > 0 ? value : -1;
    return kDone;
}

engine::Status SaveInterface::SetQuality(std::int32_t value)
{
    settings_.quality = value >= 0 ? std::min(value, 100) : -1;
    return kDone;
}

engine::Status SaveInterface::GetFrameRate(std::int16_t& value)
{
    value = toInt16(settings_.frameRate);
    return kDone;
}

engine::Status SaveInterface::GetKeyFrameRate(std::int16_t& value)
{
    value = toInt16(settings_.keyFrameRate);
    return kDone;
}

engine::Status SaveInterface::GetPFrameFrequency(std::int16_t& value)
{
    value = toInt16(settings_.pFrameFrequency);
    return kDone;
}

engine::Status SaveInterface::GetQuality(std::int16_t& value)
{
    value = toInt16(settings_.quality);
    return kDone;
}

engine::Status SaveInterface::ResetSave()
{
    return guarded([&] { settings_ = Settings{}; });
}

engine::Status SaveInterface::SetCopyUnchanged(Bool16 on)
{
    settings_.copiesUnchanged = on != kFalse;
    return kDone;
}

engine::Status SaveInterface::SetSaveRange(Milliseconds start, Milliseconds stop)
{
    rangeStart_ = std::max(0, std::min(start, stop));
    rangeStop_ = std::max(0, std::max(start, stop));
    return kDone;
}

engine::Status SaveInterface::SetSaveWholeTimeline(Bool16 whole)
{
    wholeTimeline_ = whole != kFalse;
    return kDone;
}

engine::Status SaveInterface::SetSaveEffects(Bool16 include)
{
    withEffects_ = include != kFalse;
    return kDone;
}

engine::Status SaveInterface::GetVideoWidth(std::int16_t& width)
{
    width = toInt16(settings_.width);
    return guarded([&] { width = settings_.width > 0 ? width : timeline_.frameWidth(); });
}

engine::Status SaveInterface::GetVideoHeight(std::int16_t& height)
{
    height = toInt16(settings_.height);
    return guarded([&] { height = settings_.height > 0 ? height : timeline_.frameHeight(); });
}

engine::Status SaveInterface::SetVideoSize(std::int32_t width, std::int32_t height)
{
    settings_.width = width > 0 ? width : -1;
    settings_.height = height > 0 ? height : -1;
    return kDone;
}

engine::Status SaveInterface::SetWindowsMediaVideoSize(std::int16_t width, std::int16_t height)
{
    const bool isSize = width > 0 && height > 0;
    settings_.profileWidth = isSize ? width : -1;
    settings_.profileHeight = isSize ? height : -1;
    return kDone;
}

engine::Status SaveInterface::SetVideoProfile(Text name)
{
    return guarded([&] { settings_.videoProfile = name; });
}

engine::Status SaveInterface::GetVideoProfile(TextBuffer buffer)
{
    return guarded([&] { fillTerminated(buffer, settings_.videoProfile); });
}

engine::Status SaveInterface::SetAudioProfile(Text name)
{
    return guarded([&] { settings_.audioProfile = name; });
}

engine::Status SaveInterface::GetAudioProfile(TextBuffer buffer)
{
    return guarded([&] { fillTerminated(buffer, settings_.audioProfile); });
}

bool SaveInterface::setSoundRate(int hertz)
{
    const bool isGood = hertz >= 8000 && hertz <= 192000;
    soundRate_ = isGood ? hertz : soundRate_;
    return isGood;
}

bool SaveInterface::setProfileFrameRate(int framesPerSecond)
{
    const bool isGood = framesPerSecond >= 1 && framesPerSecond <= 240;
    profileFrameRate_ = isGood ? framesPerSecond : profileFrameRate_;
    return isGood;
}

bool SaveInterface::setVideoBitRate(int bitsPerSecond)
{
    videoBitRate_ = bitsPerSecond >= 0 ? bitsPerSecond : videoBitRate_;
    return bitsPerSecond >= 0;
}

void SaveInterface::frameRateSaved(int& numerator, int& denominator) const
{
    numerator = frameRateSaved_.num;
    denominator = frameRateSaved_.den;
}

} // namespace twcore
