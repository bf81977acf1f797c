#include "twcore/save/save_interface.h"

#include "twcore/guard.h"
#include "twcore/profiles/user_profiles.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <utility>

namespace twcore {

using engine::kDone;
using engine::kFalse;
using engine::kTrue;
using engine::toBool16;

namespace {

constexpr int kSoundRate = 48000;
constexpr auto kNever = std::chrono::steady_clock::time_point::max();
constexpr std::chrono::seconds kEndWait{2}; // that the end of the program waits for a picture in hand

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
    return guarded([&] { return prepare(std::string(path), &SaveInterface::aviOrder, ok); });
}

engine::Status SaveInterface::PrepareWindowsMediaFile(Text path, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] { return prepare(std::string(path), &SaveInterface::windowsMediaOrder, ok); });
}

engine::Status SaveInterface::prepare(const std::string& path,
                                      std::optional<SaveOrder> (SaveInterface::*orderFor)(const Plan&) const,
                                      Bool16& ok)
{
    leave();
    started_ = failureTold_ = false;
    framesCopied_ = 0;
    const PlanPtr plan = compile();
    const Milliseconds length = wholeTimeline_ ? plan->durationMs : rangeStop_ - rangeStart_;
    auto order = length > 0 ? (this->*orderFor)(*plan) : std::nullopt;
    if (!order) {
        return kDone; // refused: ok stays false
    }
    if (Status status = takeNameFromStopped(path); status.failed()) {
        return status;
    }
    order->path = path;
    frameRateSaved_ = order->picture ? order->picture->fps : frameRateSaved_;
    soundRateSaved_ = order->soundRate;
    WriteError error;
    run_ = SaveRun::prepare(std::move(*order), error);
    if (!run_ && error.code != 0) {
        return Status(error.code, error.text);
    }
    ok = toBool16(run_ != nullptr);
    return Status(kDone.code(), error.text);
}

std::optional<SaveOrder> SaveInterface::aviOrder(const Plan& plan) const
{
    const int video = videoCompressorIndex(settings_.videoCompressor);
    const int audio = audioCompressorIndex(settings_.audioCompressor);
    if ((video < 0 && settings_.videoCompressor != kUncompressed)
        || (audio < 0 && settings_.audioCompressor != kUncompressed)) {
        return std::nullopt;
    }
    SaveOrder order;
    order.hasSound = plan.hasSoundTrack;
    order.soundRate = soundRate_ > 0 ? soundRate_ : kSoundRate;
    if (audio >= 0) {
        order.audioCompressor = audioCompressors()[static_cast<std::size_t>(audio)];
    }
    if (plan.hasPictureTrack) {
        VideoEncoding encoding;
        if (video >= 0) {
            encoding.compressor = videoCompressors()[static_cast<std::size_t>(video)];
        }
        encoding.size = {settings_.width > 0 ? settings_.width : plan.frame.width,
                         settings_.height > 0 ? settings_.height : plan.frame.height};
        encoding.fps = settings_.frameRate > 0 ? AVRational{settings_.frameRate, 1} : plan.frameRate;
        encoding.bitRate = videoBitRate_;
        encoding.quality = settings_.quality;
        encoding.keyFrameRate = settings_.keyFrameRate;
        encoding.copiesUnchanged = settings_.copiesUnchanged;
        order.picture = encoding;
    }
    return order;
}

/// A movie with picture takes the video profile, one of sound alone the audio profile.
std::optional<SaveOrder> SaveInterface::windowsMediaOrder(const Plan& plan) const
{
    const auto profile = findProfile(plan.hasPictureTrack ? settings_.videoProfile : settings_.audioProfile);
    if (!profile || (plan.hasPictureTrack ? !profile->picture : !profile->sound)) {
        return std::nullopt;
    }
    SaveOrder order;
    order.format = MovieFormat::kWindowsMedia;
    order.hasSound = plan.hasSoundTrack && profile->sound;
    if (order.hasSound) {
        order.soundRate = soundRate_ > 0 ? soundRate_ : profile->sound->sampleRate;
        order.audioCompressor = windowsMediaAudio(profile->sound->bitRate, profile->sound->channels);
    }
    if (plan.hasPictureTrack) {
        const ProfilePicture& wanted = *profile->picture;
        VideoEncoding encoding;
        encoding.compressor = windowsMediaVideo();
        // The encoder wants even sides, and every frame size has to be good for every profile.
        const auto side = [](int told, int profiled, int framed) {
            return std::max(2, (told > 0 ? told : profiled > 0 ? profiled : framed) & ~1);
        };
        encoding.size = {side(settings_.profileWidth, wanted.width, plan.frame.width),
                         side(settings_.profileHeight, wanted.height, plan.frame.height)};
        encoding.fps = profileFrameRate_ > 0     ? AVRational{profileFrameRate_, 1}
                       : wanted.fpsNumerator > 0 ? AVRational{wanted.fpsNumerator, wanted.fpsDenominator}
                                                 : plan.frameRate;
        encoding.bitRate = wanted.bitRate;
        encoding.quality = wanted.quality;
        encoding.keyFrameRate =
            std::max(1, static_cast<int>(std::lround(wanted.keyFrameSeconds * av_q2d(encoding.fps))));
        encoding.keepsKeyDistance = true;
        order.picture = encoding;
    }
    return order;
}

SaveInterface::~SaveInterface()
{
    leave();
    const auto deadline = std::chrono::steady_clock::now() + kEndWait;
    for (const auto& run : stopped_) {
        run->waitUntil(deadline);
    }
}

/// Lets go of the save. One that still has a picture in hand goes on to its end by itself.
void SaveInterface::leave()
{
    if (run_) {
        run_->stop();
        stopped_.push_back(std::move(run_));
        run_.reset();
    }
    std::erase_if(stopped_, [](const auto& run) { return run->isThrough(); });
}

/// A save that was stopped may still write to this path: the file is its own until it is through, and only the name is
/// free for another.
engine::Status SaveInterface::takeNameFromStopped(const std::string& path)
{
    if (std::ranges::none_of(stopped_, [&](const auto& run) { return run->writesTo(path); })) {
        return kDone;
    }
    std::error_code error;
    const auto target = std::filesystem::canonical(path, error); // a link stays one
    if (!error) {
        std::filesystem::remove(target, error);
    }
    if (error) {
        return Status(engine::kAccessDenied.code(),
                      "\"" + path
                          + "\" is still being closed by the save that was "
                            "stopped, and its folder may not be written to. Wait a little.");
    }
    return kDone;
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
        framesCopied_ = run_->framesCopied();
        samplesSaved_ = run_->samplesMeant();
    }
}

engine::Status SaveInterface::CloseSave()
{
    return guarded([&] {
        note();
        leave();
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
            // Nobody asks whether a snap of an empty timeline could be prepared: its picture is empty.
            return run_ ? engine::kUnexpected : kDone;
        }
        run_->waitUntil(kNever);
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

engine::Status SaveInterface::WaitForStopped(Milliseconds longest, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(std::max(0, longest));
        auto all = stopped_;
        if (run_ && run_->isStopped()) {
            all.push_back(run_);
        }
        ok = toBool16(std::ranges::all_of(all, [&](const auto& run) { return run->waitUntil(deadline); }));
    });
}

engine::Status SaveInterface::GetFramesCopied(std::int32_t& count)
{
    note();
    count = static_cast<std::int32_t>(std::min<std::int64_t>(framesCopied_, std::numeric_limits<std::int32_t>::max()));
    return kDone;
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

engine::Status SaveInterface::OpenMetadata(Text path, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        fields_ = {};
        describedPath_ = canCarryFields(std::string(path)) ? std::string(path) : std::string();
        ok = toBool16(!describedPath_.empty());
    });
}

engine::Status SaveInterface::SetTitle(Text text)
{
    return guarded([&] { fields_.title = text; });
}

engine::Status SaveInterface::SetAuthor(Text text)
{
    return guarded([&] { fields_.author = text; });
}

engine::Status SaveInterface::SetRating(Text text)
{
    return guarded([&] { fields_.rating = text; });
}

engine::Status SaveInterface::SetCopyright(Text text)
{
    return guarded([&] { fields_.copyright = text; });
}

engine::Status SaveInterface::SetDescription(Text text)
{
    return guarded([&] { fields_.description = text; });
}

engine::Status SaveInterface::SaveMetadata()
{
    return guarded([&] {
        const std::string path = std::exchange(describedPath_, {});
        const MovieFields fields = std::exchange(fields_, {});
        return path.empty() || fields.isBlank() ? kDone : writeFields(path, fields);
    });
}

} // namespace twcore
