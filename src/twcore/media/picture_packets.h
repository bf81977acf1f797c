#pragma once

// The packets of a file's picture in the order in which they are stored, read as far ahead of the decoder as somebody
// looks at them, and where their reading goes on after a jump.
//
// Stamps run on over a break of the clock. Nothing is decoded here. Not thread safe.

#include "twcore/media/input_file.h"
#include "twcore/media/media_file.h"
#include "twcore/media/picture_index.h"
#include "twcore/media/stamp_breaks.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>

namespace twcore {

/// The stamp by which a packet is stored, of showing where that of decoding is missing. AV_NOPTS_VALUE without either.
inline std::int64_t stampOf(const AVPacket& packet) { return packet.dts != AV_NOPTS_VALUE ? packet.dts : packet.pts; }

class PicturePackets {
public:
    /// Of a file that has a picture. Nothing is opened yet.
    explicit PicturePackets(MediaFilePtr media) : media_(std::move(media)) {}

    /// Opens the file, anew where it is open, and stands ahead of its first packet. False when that fails, or the file
    /// has the picture no more; then only `hasFailed` may be asked.
    bool open(const Patience& patience);
    /// Some of the file could not be read, for a cause that is not in the file.
    bool hasFailed() const noexcept { return file_ && file_->hasFailed(); }

    const AVStream& stream() const noexcept { return *file_->stream(media_->picture->streamIndex); }
    /// Seconds of one tick of the stamps.
    double tick() const noexcept { return av_q2d(stream().time_base); }
    /// Seconds by which a stamp may be off.
    double tolerance() const noexcept;

    /// Whether there is a packet to take; one is read where none was read ahead.
    bool any() { return !ahead_.empty() || fetch(); }
    /// The next packet, while there is one.
    const AVPacket& front() const { return *ahead_.front(); }
    PacketPtr take();
    /// Forgets what was read ahead: a jump comes next.
    void forget();
    /// Whether all packets so far are decoded by what the stream's header tells.
    bool isOfOneHeader() const noexcept { return isOfOneHeader_; }
    /// The last packet has been read, though perhaps not taken.
    bool hasEnded() const noexcept { return fileEnded_; }

    /// How many packets are read ahead at most, to find one that makes another needless: more than any group of
    /// reordered pictures has, and a single one where none is reordered.
    std::size_t lookAhead() const noexcept { return lookAhead_; }
    /// Whether a packet that is still to be taken holds a picture that begins in (start, end], in seconds of the file's
    /// own time.
    bool anyBetween(double start, double end);
    /// Whether every packet that was read ahead says when its picture begins.
    bool tellTimes() const;

    /// Jumps to the last key frame that the format finds by the stamp. False when it finds none or nothing follows.
    bool jumpByTime(std::int64_t stamp);
    /// Jumps to a key frame that is listed. False when something else is there.
    bool jumpByIndex(const PictureIndex& index, std::size_t keyOrdinal);
    /// The stamp of the key frame that a jump to a time, in seconds of the file's own, may count on.
    std::optional<std::int64_t> keyStampFor(double seconds) const;
    /// Seconds by which pictures are decoded ahead of being shown, as far as it was read.
    double lead() const noexcept { return static_cast<double>(longestLead_) * tick(); }
    /// The stamp of the first key frame behind that one.
    std::optional<std::int64_t> keyStampBehind(std::int64_t key) const;
    /// Whether the format lists key frames, and none that is stored ahead of the stamp.
    bool isFirstKey(std::int64_t stamp) const;

private:
    bool fetch();

    MediaFilePtr media_;
    std::unique_ptr<InputFile> file_;
    RunningStamps running_;
    std::deque<PacketPtr> ahead_; // read and not yet taken
    bool fileEnded_ = false;
    bool isOfOneHeader_ = true;
    std::size_t lookAhead_ = 1;
    std::int64_t longestLead_ = 0; // of decoding ahead of showing, in ticks, as far as it was read
};

} // namespace twcore
