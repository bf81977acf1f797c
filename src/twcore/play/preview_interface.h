#pragma once

// The player over the timeline as the program calls it, and single frames over canvases.

#include "engine/ITWPreview.h"
#include "twcore/files/file_registry.h"
#include "twcore/guard.h"
#include "twcore/model/timeline.h"
#include "twcore/play/audio_devices.h"
#include "twcore/play/player.h"

#include <chrono>

namespace twcore {

class PreviewInterface final : public engine::ITWPreview {
public:
    using Handle = engine::Handle;
    using Status = engine::Status;
    using Bool16 = engine::Bool16;
    using Milliseconds = engine::Milliseconds;
    using Text = engine::Text;

    /// Timeline and files outlive this.
    PreviewInterface(Timeline& timeline, FileRegistry& files, AudioMaker makeAudio = openAudio)
        : timeline_(timeline), files_(files), player_(kStoreShare, std::move(makeAudio))
    {}

    /// Takes in what `SetTrackDisabled`, `SetEffectsEnabled` and `SetSourceStretchMode` have changed. It may come in
    /// the middle of an edit, and settles nothing.
    void refreshLook() noexcept;

    Status SetOwnerWindow(std::int32_t windowHandle) override;
    Status BuildPreview(Bool16& built) override;
    Status ClosePreview() override;
    Status IsPreviewValid(Bool16& valid) override;
    Status Play(Bool16& ok) override;
    Status Pause(Bool16& ok) override;
    Status Stop(Bool16& ok) override;
    Status Seek(Milliseconds position, Bool16& ok) override;
    Status RefreshPreview(Bool16& ok) override;
    Status Halt(Bool16& ok) override;
    Status GetDuration(Milliseconds& duration) override;
    Status GetPosition(Milliseconds& position) override;
    Status GetFramePixel(std::int32_t deviceContext, std::int32_t x, std::int32_t y, std::int32_t& red,
                         std::int32_t& green, std::int32_t& blue) override;
    Status DrawSnapFrame(Text path, double seconds, std::int32_t deviceContext, std::int32_t width,
                         std::int32_t height) override;
    Status DrawKeyFrame(Handle stream, double seconds, std::int32_t deviceContext, std::int32_t width,
                        std::int32_t height) override;
    Status SaveSnapFrame(std::int32_t deviceContext, Text path, std::int32_t width, std::int32_t height,
                         Bool16& ok) override;
    Status SetVolume(std::int32_t level) override;

private:
    PlanPtr compile(const TimelineSnapshot& snapshot) const;
    void takeLook() noexcept;
    /// Runs a step of the player when there is one.
    template <class Step>
    Status whenBuilt(Bool16& ok, Step&& step, OperationPlace operation = OperationPlace::current());

    static constexpr double kStoreShare = 0.875;

    Timeline& timeline_;
    FileRegistry& files_;
    Player player_;
    std::int32_t surface_ = 0;

    // Thousands of sources may change their look in one command: what is not taken in at once, the next call takes in.
    bool isLookStale_ = false;
    std::chrono::steady_clock::time_point lookCalled_;
    std::chrono::steady_clock::duration lookTime_{}; // spent in this command
};

} // namespace twcore
