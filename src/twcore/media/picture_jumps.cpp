// How a reader finds its way to a picture: from where it has to decode, and how it comes there.

#include "twcore/media/picture_reader.h"

#include <algorithm>
#include <cmath>

namespace twcore {

namespace {

// Packets that are decoded on the way rather than jumped over: a jump costs about as much.
constexpr int kWorthDecoding = 6;
// Key frames, one ahead of the other, that are tried for one that is not damaged.
constexpr int kFurtherBack = 3;

} // namespace

std::optional<double> PictureReader::keySecondsFor(double seconds) const
try {
    const double time = fileTime(seconds);
    if (index_ && time < index_->knownUpTo()) {
        return index_->startOfSlot(index_->slotOf(index_->keyOrdinalFor(index_->slotAt(time)))) - media_->zeroSeconds;
    }
    if (index_ || !decoder_ || media_->listing) {
        return std::nullopt;
    }
    const auto key = packets_.keyStampFor(time);
    return key ? std::optional(static_cast<double>(*key) * packets_.tick() + packets_.lead() - media_->zeroSeconds)
               : std::nullopt;
} catch (const ListedWrongly&) {
    return std::nullopt; // whoever asks for the picture finds it out
}

std::optional<double> PictureReader::keySecondsBehind(double seconds) const
try {
    const double time = fileTime(seconds);
    if (index_ && time < index_->knownUpTo()) {
        for (std::size_t i = index_->keyOrdinalFor(index_->slotAt(time)) + 1; i < index_->count(); ++i) {
            if (index_->packet(i).isKey) {
                return index_->startOfSlot(index_->slotOf(i)) - media_->zeroSeconds;
            }
        }
        return std::nullopt;
    }
    if (index_ || !decoder_ || media_->listing) {
        return std::nullopt;
    }
    const auto key = packets_.keyStampFor(time);
    const auto next = key ? packets_.keyStampBehind(*key) : std::nullopt;
    return next ? std::optional(static_cast<double>(*next) * packets_.tick() + packets_.lead() - media_->zeroSeconds)
                : std::nullopt;
} catch (const ListedWrongly&) {
    return std::nullopt;
}

std::optional<double> PictureReader::position() const
{
    return current_ ? std::optional(mediaTime(current_->start)) : std::nullopt;
}

int PictureReader::picturesTo(double seconds) const
{
    if (media_->picture->isStill || media_->picture->frameRate.num <= 0) {
        return 0;
    }
    const double rate = av_q2d(media_->picture->frameRate);
    const double time = fileTime(seconds);
    const auto key = keySecondsFor(seconds);
    double from = key ? *key + media_->zeroSeconds : time;
    if (current_ && current_->start <= time) {
        from = std::max(from, current_->start);
    }
    return static_cast<int>(std::clamp((time - from) * rate, 0.0, 1e6));
}

bool PictureReader::needsJump(double time) const
{
    if (!current_ && !next_) {
        return drained_ || time > media_->picture->startSeconds + 2 * tolerance_ || lastPacketTime_ != AV_NOPTS_VALUE;
    }
    const double from = current_ ? current_->start : next_->start;
    if (time < from) {
        return current_ || time < next_->start - kHoldSeconds || next_->start > media_->picture->startSeconds + 1;
    }
    if (index_) {
        const std::size_t key = index_->keyOrdinalFor(index_->slotAt(time));
        return key > nextOrdinal_ + kWorthDecoding && static_cast<std::int64_t>(key) != jumpedTo_;
    }
    if ((next_ && time < next_->start) || drained_) {
        return false;
    }
    const auto key = packets_.keyStampFor(time);
    const AVRational rate = media_->picture->frameRate;
    const double frame = rate.num > 0 ? 1 / av_q2d(rate) : 0.04;
    // A jump that has ended ahead of its key frame would end there again.
    return key && key != jumpedTo_ && lastPacketTime_ != AV_NOPTS_VALUE
           && static_cast<double>(*key - lastPacketTime_) * packets_.tick() > kWorthDecoding * frame;
}

void PictureReader::jumpTo(double time)
{
    current_.reset();
    next_.reset();
    if (index_) {
        jumpByIndex(time);
    } else {
        jumpByTime(time);
    }
}

void PictureReader::restart()
{
    broken_ = !openFile();
    fromStart_ = true;
}

void PictureReader::jumpByTime(double time)
{
    const double tick = packets_.tick();
    jumpedTo_ = packets_.keyStampFor(time);
    auto stamp = static_cast<std::int64_t>(std::floor(time / tick));
    for (int attempt = 0; attempt < 6; ++attempt) {
        forget();
        lastPacketTime_ = AV_NOPTS_VALUE;
        if (!packets_.jumpByTime(stamp)) {
            break;
        }
        const AVPacket& key = packets_.front();
        const auto keyTime = key.pts != AV_NOPTS_VALUE ? key.pts : key.dts;
        const auto storedTime = stampOf(key);
        const bool isFirst = packets_.isFirstKey(storedTime);
        dropBefore_ = static_cast<double>(keyTime) * tick;
        if (isFirst || dropBefore_ <= time) {
            next_ = decodeNext();
            const bool isWhole = !decoder_->startsDamaged() || attempt >= kFurtherBack;
            if (isFirst || (isWhole && next_ && next_->start <= time)) {
                return;
            }
        }
        // Landed behind the time: pictures ahead of this key frame belong to the group before it.
        stamp = std::min(stamp, storedTime) - (attempt < 2 ? 1 : static_cast<std::int64_t>(attempt * 5 / tick));
        next_.reset();
    }
    restart();
}

void PictureReader::jumpByIndex(double time)
{
    if (nextOrdinal_ == 0) {
        // Some writers tell what their stream is in the first packet alone.
        sendPacket();
        (void)decoder_->receive();
    }
    std::size_t key = index_->keyOrdinalFor(index_->slotAt(time));
    jumpedTo_ = static_cast<std::int64_t>(key);
    for (int attempt = 0; attempt < 3; ++attempt) {
        forget();
        if (packets_.jumpByIndex(*index_, key)) {
            nextOrdinal_ = key;
            dropBefore_ = index_->startOfSlot(index_->slotOf(key)) - tolerance_;
            return;
        }
        if (key == 0) {
            break;
        }
        key = index_->keyOrdinalFor(index_->slotOf(key - 1));
    }
    if (index_->isFromFile() && !patience_.over()) {
        throw ListedWrongly("No key frame is where the file's own list says.");
    }
    restart(); // and decode from the beginning, which always finds it
}

void PictureReader::forget()
{
    fromStart_ = false;
    decoder_->flush();
    drained_ = false;
    stoppedBehind_.reset();
    inside_.clear();
    seen_.clear();
}

} // namespace twcore
