#pragma once

// One damaged time stamp must not make a film of days: what jumps further ahead than can be is refused, and the stream
// goes on from the last good stamp, or ends there.

#include "twcore/media/input_file.h"

#include <cstddef>
#include <cstdint>

namespace twcore {

/// Within one stream, and among the seconds of its file, a jump ahead of more than this is damage.
inline constexpr double kLongestHoleSeconds = 24 * 3600.0;
/// Less than this is no jump: stamps may run on past a length that a header tells a little short.
inline constexpr double kJumpSeconds = 10;
/// So many damaged stamps in a row behind the first one end the stream.
inline constexpr int kDamagedStamps = 10;

/// How long the container's own header says that the file lasts, from its first stamp; 0 when nothing says it but the
/// stamps themselves.
double ownLength(const InputFile& file, const std::string& path);

/// Whether a picture's stamp of showing is damaged, `lead` ticks behind that of its decoding. One that is shown after a
/// long still may be decoded long before, with the last pictures ahead of the still: then the decoding of the few
/// behind it reaches that time as well. `untilDecoded` tells the ticks from its own decoding to that of packet i of
/// `count`; nothing denies the last pictures of all.
template <typename UntilDecoded>
bool isLeadDamaged(std::int64_t lead, std::int64_t ticksPerSecond, std::size_t index, std::size_t count,
                   UntilDecoded untilDecoded)
{
    constexpr std::int64_t kLongestSeconds = 5;
    constexpr std::size_t kReordered = 16;
    constexpr std::size_t kLast = 4;
    const std::int64_t longest = kLongestSeconds * ticksPerSecond;
    if (lead >= -longest && lead <= longest) {
        return false;
    }
    bool isReached = lead > 0 && index + kLast >= count;
    for (std::size_t i = index + 1; !isReached && i < count && i <= index + kReordered; ++i) {
        isReached = lead > 0 && untilDecoded(i) >= lead - longest;
    }
    return !isReached;
}

/// Watches the stamps of one stream, read from its beginning, packet by packet.
class StampGuard {
public:
    /// `ownEnd` is the last moment that the container's own length allows, in seconds of the file's time; 0: unknown.
    StampGuard(AVRational timeBase, double ownEnd) : tick_(av_q2d(timeBase)), ownEnd_(ownEnd) {}

    /// Puts a stamp that can be in place of a damaged one. False when the stream is over: the packets since the last
    /// good one, this one among them, are to be left out.
    bool pass(AVPacket& packet);
    /// Packets since the last good stamp, which count only if a good one follows.
    int damagedRun() const noexcept { return damaged_; }
    /// Whether any stamp was refused so far.
    bool hasRefused() const noexcept { return hasRefused_; }

private:
    bool isDamaged(std::int64_t stamp) const;

    double tick_;
    double ownEnd_;
    std::int64_t last_ = AV_NOPTS_VALUE; // the running place: a good stamp, or one put in place
    std::int64_t step_ = 0;
    std::int64_t lead_ = 0; // from decoding to showing
    int damaged_ = 0;
    bool hasRefused_ = false;
};

} // namespace twcore
