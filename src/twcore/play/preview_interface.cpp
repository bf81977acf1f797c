#include "twcore/play/preview_interface.h"

#include "twcore/guard.h"
#include "twcore/play/canvas_frames.h"
#include "twcore/play/surface_painter.h"

namespace twcore {

using engine::kFalse;
using engine::kTrue;
using engine::toBool16;

PlanPtr PreviewInterface::compile(const TimelineSnapshot& snapshot) const
{
    std::vector<Handle> tracks;
    for (const auto& track : snapshot.tracks) {
        tracks.push_back(track.handle);
    }
    return compilePlan(snapshot, tracks, true, [&](Handle stream) { return files_.targetOf(stream); });
}

void PreviewInterface::refreshLook() noexcept
{
    using Clock = std::chrono::steady_clock;
    // Calls that follow each other this closely are of one command, and may take so much in all.
    constexpr auto kPause = std::chrono::milliseconds(50);
    constexpr auto kMostTime = std::chrono::milliseconds(100);
    const auto now = Clock::now();
    lookTime_ = now - lookCalled_ < kPause ? lookTime_ : Clock::duration{};
    lookCalled_ = now;
    isLookStale_ = player_.isLoaded();
    if (isLookStale_ && lookTime_ < kMostTime) {
        takeLook();
        lookTime_ += Clock::now() - now;
    }
}

void PreviewInterface::takeLook() noexcept
{
    (void)guarded([&] { player_.swap(compile(timeline_.peek())); });
    isLookStale_ = false;
}

template <class Step>
engine::Status PreviewInterface::whenBuilt(Bool16& ok, Step&& step, OperationPlace operation)
{
    ok = kFalse;
    const auto run = [&] {
        if (isLookStale_) {
            takeLook();
        }
        if (player_.isLoaded()) {
            step();
            ok = kTrue;
        }
    };
    return guarded(run, operation);
}

engine::Status PreviewInterface::SetOwnerWindow(std::int32_t windowHandle)
{
    return guarded([&] {
        surface_ = windowHandle;
        player_.setSurface(windowHandle);
    });
}

engine::Status PreviewInterface::BuildPreview(Bool16& built)
{
    built = kFalse;
    return guarded([&] {
        player_.load(compile(timeline_.snapshot()));
        player_.show();
        built = kTrue;
    });
}

engine::Status PreviewInterface::ClosePreview()
{
    return guarded([&] {
        if (player_.isLoaded()) {
            player_.unload();
            if (const auto size = engine::surfaces().sizeOf(surface_)) {
                engine::surfaces().show(surface_, blackSurface(*size));
            }
        }
    });
}

engine::Status PreviewInterface::IsPreviewValid(Bool16& valid)
{
    valid = kFalse;
    return guarded([&] { valid = toBool16(player_.isLoaded() && !player_.hasFailed()); });
}

engine::Status PreviewInterface::Play(Bool16& ok)
{
    return whenBuilt(ok, [&] { player_.play(); });
}

engine::Status PreviewInterface::Pause(Bool16& ok)
{
    return whenBuilt(ok, [&] { player_.stop(); });
}

engine::Status PreviewInterface::Stop(Bool16& ok)
{
    return whenBuilt(ok, [&] { player_.stop(); });
}

engine::Status PreviewInterface::Seek(Milliseconds position, Bool16& ok)
{
    return whenBuilt(ok, [&] { player_.seek(position); });
}

engine::Status PreviewInterface::RefreshPreview(Bool16& ok)
{
    isLookStale_ = false;
    return whenBuilt(ok, [&] { player_.swap(compile(timeline_.snapshot())); });
}

engine::Status PreviewInterface::Halt(Bool16& ok)
{
    return whenBuilt(ok, [&] { player_.halt(); });
}

engine::Status PreviewInterface::GetDuration(Milliseconds& duration)
{
    duration = 0;
    return guarded([&] { duration = player_.durationMs(); });
}

engine::Status PreviewInterface::GetPosition(Milliseconds& position)
{
    Bool16 ok = kFalse;
    position = player_.positionMs();
    return whenBuilt(ok, [] {}); // a look that is still to be taken in
}

engine::Status PreviewInterface::GetFramePixel(std::int32_t deviceContext, std::int32_t x, std::int32_t y,
                                               std::int32_t& red, std::int32_t& green, std::int32_t& blue)
{
    red = green = blue = 0;
    return guarded([&] {
        const auto* const canvas = engine::surfaces().canvas(deviceContext);
        const std::uint32_t pixel = canvas != nullptr ? canvas->at(x, y) : 0;
        red = static_cast<std::int32_t>(pixel >> 16 & 0xFF);
        green = static_cast<std::int32_t>(pixel >> 8 & 0xFF);
        blue = static_cast<std::int32_t>(pixel & 0xFF);
    });
}

engine::Status PreviewInterface::DrawSnapFrame(Text path, double seconds, std::int32_t deviceContext,
                                               std::int32_t width, std::int32_t height)
{
    return guarded([&] {
        if (auto* const canvas = engine::surfaces().canvas(deviceContext)) {
            const auto find = [path = std::string(path)](const Patience& patience) {
                return tryMediaFile(path, patience).file;
            };
            (void)drawFrame(find, seconds, {width, height}, *canvas);
        }
    });
}

engine::Status PreviewInterface::DrawKeyFrame(Handle stream, double seconds, std::int32_t deviceContext,
                                              std::int32_t width, std::int32_t height)
{
    return guarded([&] {
        const StreamTarget target = files_.targetOf(stream);
        auto* const canvas = engine::surfaces().canvas(deviceContext);
        if (canvas != nullptr && target.isPicture) {
            const auto find = [media = target.media](const Patience&) { return media; };
            (void)drawFrame(find, seconds, {width, height}, *canvas);
        }
    });
}

engine::Status PreviewInterface::SaveSnapFrame(std::int32_t deviceContext, Text path, std::int32_t width,
                                               std::int32_t height, Bool16& ok)
{
    ok = kFalse;
    return guarded([&] {
        const auto* const canvas = engine::surfaces().canvas(deviceContext);
        ok = toBool16(canvas != nullptr && saveBitmap(*canvas, {width, height}, std::string(path)));
    });
}

engine::Status PreviewInterface::SetVolume(std::int32_t level)
{
    return guarded([&] { player_.setVolume(level); });
}

} // namespace twcore
