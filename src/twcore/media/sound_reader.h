#pragma once

// The sound of a file that the media libraries decode, mixed down to stereo and brought to the rate of the mix.

#include "twcore/media/decoder.h"
#include "twcore/media/sound_source.h"
#include "twcore/media/stamp_breaks.h"

#include <optional>
#include <vector>

namespace twcore {

class SoundReader final : public SoundSource {
public:
    SoundReader(MediaFilePtr media, int rate, Patience patience);

    void read(std::int64_t first, std::span<float> out) override;
    bool isBroken() const noexcept override { return broken_ || (file_ && file_->hasFailed()); }

private:
    bool openFile();
    void jumpTo(std::int64_t first);
    bool landAhead(std::int64_t anchor, double seconds);
    bool seekTo(std::int64_t stamp);
    std::int64_t anchorFor(std::int64_t first);
    void giveOut(std::int64_t first, std::span<float> out);
    void sendNext();
    void decodeMore();
    void take(FramePtr frame);
    std::int64_t positionOf(const AVFrame& frame);
    void openHole(std::int64_t position);
    void feed(const AVFrame& frame, int skip);
    void feedSilence(std::int64_t count);
    void finish();
    bool fitConverter(const AVFrame& frame);
    void convert(const std::uint8_t** data, int count);
    std::int64_t bufferEnd() const { return bufferFirst_ + static_cast<std::int64_t>(buffer_.size() / 2); }
    std::int64_t stampedPosition(const AVFrame& frame) const;

    MediaFilePtr media_;
    int rate_;
    Patience patience_;
    bool broken_ = false;

    std::unique_ptr<InputFile> file_;
    std::unique_ptr<Decoder> decoder_;
    RunningStamps running_;
    std::optional<std::int64_t> seam_; // stamp of the first packet behind a break, while none of its sound was taken
    PacketPtr packet_ = makePacket();
    FramePtr pending_; // decoded while looking for a place, not taken yet
    bool drained_ = false;
    bool ended_ = false;

    SwrPtr converter_;
    AVSampleFormat sourceFormat_ = AV_SAMPLE_FMT_NONE;
    int sourceRate_ = 0;
    int sourceChannels_ = 0;
    std::int64_t anchor_ = 0;     // source sample at which the converter began
    std::int64_t sourceNext_ = 0; // source sample that the converter expects next

    std::vector<float> buffer_; // converted, from sample bufferFirst_ of the mix
    std::int64_t bufferFirst_ = 0;
    std::optional<std::int64_t> holeEnd_; // nothing sounds from the buffer's end to this sample, with which it goes on
    int damaged_ = 0;                     // frames in a row whose stamps cannot be
    std::vector<float> block_;
};

} // namespace twcore
