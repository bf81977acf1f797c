#pragma once

// The small player of the media list as the program calls it: a plan of one file, over the same player.

#include "engine/ITWFilePreview.h"
#include "twcore/files/file_registry.h"
#include "twcore/guard.h"
#include "twcore/play/audio_devices.h"
#include "twcore/play/player.h"

namespace twcore {

/// A file's picture and sound from media time 0 to its end, laid out in the picture's own size.
PlanPtr planOfFile(const MediaFilePtr& media);

class FilePreviewInterface final : public engine::ITWFilePreview {
public:
    using Status = engine::Status;
    using Bool16 = engine::Bool16;
    using Text = engine::Text;

    /// The files outlive this.
    explicit FilePreviewInterface(FileRegistry& files, AudioMaker makeAudio = openAudio)
        : files_(files), player_(kStoreShare, std::move(makeAudio))
    {}

    Status SetOwnerWindow(std::int32_t windowHandle) override;
    Status ResetPlayer(Bool16& ok) override;
    Status OpenFile(Text path, Bool16& ok) override;
    Status Close() override;
    Status Play(Bool16& ok) override;
    Status Stop(Bool16& ok) override;
    Status SetVideoWindow(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) override;
    Status Seek(std::int32_t position, Bool16& ok) override;
    Status Rewind(Bool16& ok) override;
    Status GetDuration(std::int32_t& length) override;
    Status GetPosition(std::int32_t& position) override;
    Status ShowFirstFrame(Bool16& ok) override;
    Status SetVolume(std::int32_t level) override;

private:
    template <class Step>
    Status whenLoaded(Bool16& ok, Step&& step, OperationPlace operation = OperationPlace::current());

    static constexpr double kStoreShare = 0.125; // its pictures are small ones

    FileRegistry& files_;
    Player player_;
    std::int32_t surface_ = 0;
    std::uint64_t newestLoad_ = 0; // of loads and closings: the newest one stands
};

} // namespace twcore
