#include "twcore/save/save_interface.h"

#include "twcore/guard.h"
#include "twcore/model/names.h"

#include <algorithm>
#include <limits>

namespace twcore {

using engine::kDone;
using engine::kFalse;
using engine::kTrue;
using engine::toBool16;

namespace {

/// The text and a NUL, then blanks: callers of this interface drop the last character that is no blank.
void fillTerminated(engine::TextBuffer buffer, std::string_view text)
{
    fillBuffer(buffer, {});
    if (!text.empty() && !buffer.empty()) {
        const auto shown = cutAtCharacter(text, buffer.size() - 1);
        *std::ranges::copy(shown, buffer.begin()).out = '\0';
    }
}

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

PlanPtr SaveInterface::compile()
{
    return compilePlan(timeline_.snapshot(), tracks_, withEffects_,
                       [&](Handle stream) { return files_.targetOf(stream); });
}

engine::Status SaveInterface::AddSaveTrack(Handle track, Bool16& ok)
{
    ok = kFalse;
    return guarded([&]() -> Status {
        if (timeline_.find(track) == nullptr) {
            return engine::kInvalidArgument;
        }
        if (std::ranges::find(tracks_, track) == tracks_.end()) {
            tracks_.push_back(track);
        }
        ok = kTrue;
        return kDone;
    });
}

engine::Status SaveInterface::PrepareAviFile(Text path, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] { return prepareAvi(std::string(path), ok); });
}

engine::Status SaveInterface::prepareAvi(const std::string& path, Bool16& ok)
{
    run_.reset();
    started_ = failureTold_ = false;
    const PlanPtr plan = compile();
    const Milliseconds length = wholeTimeline_ ? plan->durationMs : rangeStop_ - rangeStart_;
    const int video = videoCompressorIndex(settings_.videoCompressor);
    const int audio = audioCompressorIndex(settings_.audioCompressor);
    if (length <= 0 || (video < 0 && settings_.videoCompressor != kUncompressed)
        || (audio < 0 && settings_.audioCompressor != kUncompressed)) {
        return kDone; // refused: ok stays false
    }
    SaveOrder order;
    order.path = path;
    order.hasSound = plan->hasSoundTrack;
    order.soundRate = soundRate_;
    if (audio >= 0) {
        order.audioCompressor = audioCompressors()[static_cast<std::size_t>(audio)];
    }
    if (plan->hasPictureTrack) {
        VideoEncoding encoding;
        if (const auto* const compressor = videoAt(video)) {
            encoding.compressor = *compressor;
        }
        encoding.size = {settings_.width > 0 ? settings_.width : plan->frame.width,
                         settings_.height > 0 ? settings_.height : plan->frame.height};
        encoding.fps = settings_.frameRate > 0 ? AVRational{settings_.frameRate, 1} : plan->frameRate;
        encoding.quality = settings_.quality;
        encoding.keyFrameRate = settings_.keyFrameRate;
        frameRateSaved_ = encoding.fps;
        order.picture = encoding;
    }
    WriteError error;
    run_ = SaveRun::prepare(std::move(order), error);
    if (!run_ && error.code != 0) {
        return Status(error.code, error.text);
    }
    ok = toBool16(run_ != nullptr);
    return kDone;
}

engine::Status SaveInterface::PrepareWindowsMediaFile(Text, Bool16& ok)
{
    ok = kFalse;
    return engine::kNotImplemented;
}

bool SaveInterface::begin()
{
    if (!run_ || started_) {
        return false;
    }
    const PlanPtr plan = compile();
    run_->start(plan, wholeTimeline_ ? 0 : rangeStart_, wholeTimeline_ ? plan->durationMs : rangeStop_);
    started_ = true;
    return true;
}

void SaveInterface::note()
{
    if (run_) {
        framesSaved_ = run_->framesWritten();
        samplesSaved_ = run_->samplesMeant();
    }
}

engine::Status SaveInterface::CloseSave()
{
    return guarded([&] {
        note();
        run_.reset();
        tracks_.clear();
        wholeTimeline_ = withEffects_ = true;
        rangeStart_ = rangeStop_ = 0;
    });
}

engine::Status SaveInterface::StartSave(Bool16& ok)
{
    ok = kFalse;
    return guarded([&] { ok = toBool16(begin()); });
}

engine::Status SaveInterface::RunSaveToEnd()
{
    return guarded([&]() -> Status {
        if (!begin()) {
            return engine::kUnexpected;
        }
        run_->wait();
        return failureOnce();
    });
}

engine::Status SaveInterface::StopSave(Bool16& ok)
{
    ok = kTrue;
    return guarded([&] {
        if (run_) {
            run_->stop();
            note();
        }
    });
}

engine::Status SaveInterface::GetSaveDuration(Milliseconds& duration)
{
    duration = run_ && started_ ? run_->durationMs() : 0;
    return kDone;
}

engine::Status SaveInterface::GetSavePosition(Milliseconds& position)
{
    position = run_ && started_ ? run_->positionMs() : 0;
    return kDone;
}

engine::Status SaveInterface::failureOnce()
{
    if (!run_ || run_->state() != SaveState::kFailed || failureTold_) {
        return kDone;
    }
    failureTold_ = true;
    return Status(run_->error().code, run_->error().text);
}

engine::Status SaveInterface::GetSaveState(std::int32_t& state)
{
    state = engine::save_state::kIdle;
    if (run_ && run_->state() == SaveState::kComplete) {
        state = engine::save_state::kComplete;
    } else if (run_ && run_->state() == SaveState::kFailed) {
        state = engine::save_state::kFailed;
    }
    return guarded([&] { return failureOnce(); });
}

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

engine::Status SaveInterface::SetWindowsMediaVideoSize(std::int16_t, std::int16_t) { return engine::kNotImplemented; }

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

engine::Status SaveInterface::OpenMetadata(Text, Bool16& ok)
{
    ok = kFalse;
    return engine::kNotImplemented;
}

engine::Status SaveInterface::SetTitle(Text) { return engine::kNotImplemented; }
engine::Status SaveInterface::SetAuthor(Text) { return engine::kNotImplemented; }
engine::Status SaveInterface::SetRating(Text) { return engine::kNotImplemented; }
engine::Status SaveInterface::SetCopyright(Text) { return engine::kNotImplemented; }
engine::Status SaveInterface::SetDescription(Text) { return engine::kNotImplemented; }
engine::Status SaveInterface::SaveMetadata() { return engine::kNotImplemented; }

bool SaveInterface::setSoundRate(int hertz)
{
    const bool isGood = hertz >= 8000 && hertz <= 192000;
    soundRate_ = isGood ? hertz : soundRate_;
    return isGood;
}

void SaveInterface::frameRateSaved(int& numerator, int& denominator) const
{
    numerator = frameRateSaved_.num;
    denominator = frameRateSaved_.den;
}

} // namespace twcore
