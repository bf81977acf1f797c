#include "twcore/play/file_preview_interface.h"

#include "twcore/guard.h"

#include <algorithm>
#include <cmath>

namespace twcore {

using engine::kFalse;
using engine::kTrue;

PlanPtr planOfFile(const MediaFilePtr& media)
{
    // As a timeline of two tracks, a source on each; handle 1 is the picture, 2 the sound.
    TimelineSnapshot timeline;
    const auto lay = [&](engine::Handle handle, std::int32_t lengthMs) {
        TrackSnapshot track;
        track.handle = handle;
        track.isVideo = handle == 1;
        track.sources.push_back({.stream = handle, .stopMs = lengthMs, .mediaStopMs = lengthMs});
        timeline.tracks.push_back(std::move(track));
    };
    if (media->picture) {
        // The frame gives the proportions alone.
        constexpr int kMostSide = 16384;
        const PictureFacts& picture = *media->picture;
        const double scale = std::min(1.0, static_cast<double>(kMostSide) / std::max(picture.width, picture.height));
        timeline.frameWidth = static_cast<std::int16_t>(std::max(1.0, std::round(picture.width * scale)));
        timeline.frameHeight = static_cast<std::int16_t>(std::max(1.0, std::round(picture.height * scale)));
        lay(1, picture.durationMs);
    }
    if (media->sound) {
        lay(2, media->sound->durationMs);
    }
    return compilePlan(timeline, {1, 2}, false, [&](engine::Handle stream) {
        return StreamTarget{media, stream == 1};
    });
}

template <class Step>
engine::Status FilePreviewInterface::whenLoaded(Bool16& ok, Step&& step, OperationPlace operation)
{
    ok = kFalse;
    const auto run = [&] {
        if (player_.durationMs() > 0) {
            step();
            ok = kTrue;
        }
    };
    return guarded(run, operation);
}

engine::Status FilePreviewInterface::SetOwnerWindow(std::int32_t windowHandle)
{
    return guarded([&] {
        surface_ = windowHandle;
        player_.setSurface(windowHandle);
    });
}

engine::Status FilePreviewInterface::ResetPlayer(Bool16& ok)
{
    ok = kTrue;
    return Close();
}

engine::Status FilePreviewInterface::OpenFile(Text path, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        const std::uint64_t load = ++newestLoad_;
        player_.unload();
        player_.rewind();
        const Trial trial = files_.tryFile(std::string(path));
        if (load != newestLoad_) {
            return; // events were let run meanwhile, and one of them loaded another file or closed this
        }
        if (!trial.file) {
            engine::surfaces().say(surface_, "This file cannot be played.");
            return;
        }
        player_.load(planOfFile(trial.file));
        ok = kTrue;
    });
}

engine::Status FilePreviewInterface::Close()
{
    return guarded([&] {
        ++newestLoad_;
        player_.unload();
        player_.rewind();
    });
}

engine::Status FilePreviewInterface::Play(Bool16& ok)
{
    return whenLoaded(ok, [&] { player_.play(); });
}

engine::Status FilePreviewInterface::Stop(Bool16& ok)
{
    return whenLoaded(ok, [&] { player_.stop(); });
}

engine::Status FilePreviewInterface::SetVideoWindow(std::int32_t left, std::int32_t top, std::int32_t width,
                                                    std::int32_t height)
{
    return guarded([&] { player_.setArea(PictureRect{left, top, width, height}); });
}

engine::Status FilePreviewInterface::Seek(std::int32_t position, Bool16& ok)
{
    return whenLoaded(ok, [&] { player_.seek(position); });
}

engine::Status FilePreviewInterface::Rewind(Bool16& ok)
{
    return whenLoaded(ok, [&] { player_.seek(0); });
}

engine::Status FilePreviewInterface::GetDuration(std::int32_t& length)
{
    length = 0;
    return guarded([&] { length = player_.durationMs(); });
}

engine::Status FilePreviewInterface::GetPosition(std::int32_t& position)
{
    position = 0;
    return guarded([&] { position = player_.positionMs(); });
}

engine::Status FilePreviewInterface::ShowFirstFrame(Bool16& ok)
{
    return whenLoaded(ok, [&] { player_.show(); });
}

engine::Status FilePreviewInterface::SetVolume(std::int32_t level)
{
    return guarded([&] { player_.setVolume(level); });
}

} // namespace twcore
