#include "twcore/media/picture_reader.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace twcore {

namespace {

constexpr double kNever = -std::numeric_limits<double>::infinity();
// Between the last frame's own end and the end that the header tells, as long as that is no damage.
constexpr double kHoldSeconds = 0.25;
// Packets that are decoded on the way rather than jumped over: a jump costs about as much.
constexpr int kWorthDecoding = 6;

} // namespace

PictureReader::PictureReader(MediaFilePtr media, int threads, Patience patience)
    : media_(std::move(media)), threads_(threads), patience_(patience), packets_(media_)
{}

bool PictureReader::openFile()
{
    decoder_.reset();
    if (!packets_.open(patience_)) {
        return false;
    }
    decoder_ = Decoder::open(packets_.stream(), threads_);
    nextOrdinal_ = 0;
    lastPacketTime_ = AV_NOPTS_VALUE;
    inside_.clear();
    seen_.clear();
    drained_ = false;
    stoppedBehind_.reset();
    dropBefore_ = kNever;
    return decoder_ != nullptr;
}

bool PictureReader::prepare()
{
    if (broken_) {
        return false;
    }
    if (decoder_) {
        return true;
    }
    broken_ = true;
    if (!openFile()) {
        return false;
    }
    // Stamps of whole milliseconds are rounded ones.
    tolerance_ = packets_.tick() >= 0.0009 && !media_->listing ? 0.0005 : 0.00001;
    if (media_->formatName == "flv") {
        tolerance_ = 0.0005;
    }
    broken_ = false;
    return true;
}

/// False when there is no list that knows the picture of the time, or not yet.
bool PictureReader::takeIndex(double time)
{
    if (!media_->listing || (index_ && time < index_->knownUpTo())) {
        return true;
    }
    auto index = media_->listing->upTo(time, *media_, patience_);
    broken_ = !index && !patience_.over() && !media_->listing->isComing();
    if (index) {
        index_ = std::move(index);
    }
    return index_ && time < index_->knownUpTo();
}

void PictureReader::readAfresh()
{
    index_.reset();
    jumpedTo_.reset();
    current_.reset();
    next_.reset();
    lostFrom_ = std::numeric_limits<double>::infinity();
    broken_ = !openFile();
}

SharedFrame PictureReader::nearTo(double time)
{
    isNear_ = true;
    if (!nearPictures_) {
        nearPictures_ = std::make_unique<NearPictures>(media_, patience_);
    }
    return nearPictures_->at(time);
}

void PictureReader::expectUpTo(double seconds) noexcept { expectedEnd_ = seconds + media_->zeroSeconds + tolerance_; }

SharedFrame PictureReader::at(double seconds)
{
    isNear_ = isPaused_ = hasWorked_ = false;
    if (!media_->picture || seconds < 0 || !prepare()) {
        return nullptr;
    }
    if (media_->picture->isStill) {
        if (!current_) {
            current_ = decodeNext();
            broken_ = !current_;
        }
        return current_ && seconds * 1000 < media_->picture->durationMs ? current_->frame : nullptr;
    }
    const double time = seconds + media_->zeroSeconds + tolerance_;
    for (;;) {
        if (broken_ || !takeIndex(time)) {
            return broken_ || !patience_.takesNear || patience_.over() ? nullptr : nearTo(time);
        }
        try {
            return exactly(time);
        } catch (const ListedWrongly&) {
            media_->listing->distrust(index_);
            readAfresh();
        }
    }
}

SharedFrame PictureReader::exactly(double time)
{
    if (time >= lostFrom_) {
        return nullptr;
    }
    wanted_ = time;
    if ((stoppedBehind_ && time > *stoppedBehind_) || needsJump(time)) {
        jumpTo(time);
    }
    auto frame = broken_ ? nullptr : answer(time);
    if (!frame && fromStart_ && drained_) {
        // Every packet was read on the way: what is not there now is not looked for again, picture by picture.
        lostFrom_ = std::min(lostFrom_, current_ ? endOfLast(current_->start) : time);
    }
    return frame;
}

SharedFrame PictureReader::answer(double time)
{
    while (next_ || !current_ || !isLastUpTo(*current_, time)) {
        if (!next_) {
            next_ = decodeNext();
        }
        if (!next_ || next_->start > time) {
            break;
        }
        if (passed_ && current_) {
            passed_({current_->frame, mediaTime(current_->start), mediaTime(endOf(*current_, current_->start))});
        }
        current_ = std::move(next_);
        next_.reset();
        seen_.erase(seen_.begin(), seen_.lower_bound(current_->start));
    }
    if (!current_ && next_ && next_->start - time <= kHoldSeconds && time < media_->zeroSeconds + kHoldSeconds) {
        return next_->frame; // a picture that begins a little behind its sound
    }
    if (isPaused_) {
        return nullptr;
    }
    const bool isLast = !next_ && drained_ && inside_.empty();
    if (!current_ || current_->start > time || (isLast && time >= endOfLast(current_->start))) {
        return nullptr;
    }
    return current_->frame;
}

/// Where a picture ends; `unknown` when the one behind it has not come yet.
double PictureReader::endOf(const Shown& shown, double unknown) const
{
    if (index_) {
        return index_->startOfSlot(index_->slotAt(shown.start + tolerance_ / 2) + 1);
    }
    // What begins ahead of a picture that has come out has gone into the decoder before.
    const auto behind = next_ ? seen_.upper_bound(shown.start) : seen_.end();
    return behind != seen_.end() ? *behind : unknown;
}

double PictureReader::knownEnd() const
{
    constexpr double kMoment = 1e-6;
    if (media_->picture->isStill) {
        return media_->picture->durationMs / 1000.0;
    }
    return current_ ? std::max(mediaTime(endOf(*current_, wanted_)), mediaTime(wanted_) + kMoment) : 0;
}

std::optional<double> PictureReader::keySecondsFor(double seconds) const
try {
    const double time = seconds + media_->zeroSeconds + tolerance_;
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
    const double time = seconds + media_->zeroSeconds + tolerance_;
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
    const double time = seconds + media_->zeroSeconds + tolerance_;
    const auto key = keySecondsFor(seconds);
    double from = key ? *key + media_->zeroSeconds : time;
    if (current_ && current_->start <= time) {
        from = std::max(from, current_->start);
    }
    return static_cast<int>(std::clamp((time - from) * rate, 0.0, 1e6));
}

double PictureReader::endOfLast(double start) const
{
    const AVRational rate = media_->picture->frameRate;
    const double frame = rate.num > 0 ? 1 / av_q2d(rate) : 0.04;
    const double told = media_->zeroSeconds + media_->picture->durationMs / 1000.0;
    const double own = start + frame;
    return told > own && told - own <= kHoldSeconds ? told + tolerance_ : own + tolerance_;
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
            if (isFirst || (next_ && next_->start <= time)) {
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

bool PictureReader::isPassedOver(const AVPacket& packet)
{
    if (index_) {
        return nextOrdinal_ < index_->count() && index_->slotOf(nextOrdinal_) < index_->slotAt(wanted_)
               && index_->startOfSlot(index_->slotOf(nextOrdinal_)) < wholeFrom_;
    }
    const double start = static_cast<double>(packet.pts) * packets_.tick();
    return packet.pts != AV_NOPTS_VALUE && start < wanted_ && start < wholeFrom_ && packets_.anyBetween(start, wanted_);
}

/// Whether no later picture begins by that time, as far as that is known without decoding on.
bool PictureReader::isLastUpTo(const Shown& shown, double time)
{
    if (index_) {
        const std::size_t slot = index_->slotAt(shown.start + tolerance_ / 2);
        return slot == index_->slotAt(time) && slot + 1 < index_->count();
    }
    const auto inside = inside_.upper_bound(shown.start);
    return !packets_.hasEnded() && (inside == inside_.end() || *inside > time)
           && !packets_.anyBetween(shown.start, time) && !packets_.hasEnded();
}

/// Whether every picture up to the expected end has gone into the decoder, as far as the packets ahead tell.
bool PictureReader::nothingWantedAhead()
{
    if (expectedEnd_ == std::numeric_limits<double>::infinity() || media_->picture->isStill || wanted_ > expectedEnd_) {
        return false;
    }
    if (index_) {
        const std::size_t lastSlot = index_->slotAt(expectedEnd_);
        for (std::size_t i = nextOrdinal_; i < std::min(index_->count(), nextOrdinal_ + kLookAhead); ++i) {
            if (index_->slotOf(i) <= lastSlot) {
                return false;
            }
        }
        return nextOrdinal_ < index_->count();
    }
    return !packets_.anyBetween(kNever, expectedEnd_) && packets_.tellTimes();
}

/// The file's own list is held against every packet that is read, and against the end.
void PictureReader::checkList(const AVPacket* packet) const
{
    if (!index_ || !index_->isFromFile() || (packet == nullptr && patience_.over())) {
        return;
    }
    const bool isListed = nextOrdinal_ < index_->count();
    if (packet == nullptr ? isListed
                          : !isListed || index_->packet(nextOrdinal_).position != packet->pos
                                || index_->packet(nextOrdinal_).byteCount != packet->size) {
        throw ListedWrongly("The packets do not follow the file's own list.");
    }
}

bool PictureReader::sendPacket()
{
    if (!packets_.any()) {
        checkList(nullptr);
        drained_ = true;
        decoder_->send(nullptr);
        return false;
    }
    if (nothingWantedAhead()) {
        stoppedBehind_ = expectedEnd_;
        decoder_->send(nullptr);
        return false;
    }
    hasWorked_ = true;
    const PacketPtr packet = packets_.take();
    const auto stored = stampOf(*packet);
    lastPacketTime_ = stored != AV_NOPTS_VALUE ? stored : lastPacketTime_;
    // What is not shown, and nothing refers to, need not be decoded.
    decoder_->context().skip_frame = isPassedOver(*packet) ? AVDISCARD_NONREF : AVDISCARD_DEFAULT;
    if (index_) {
        checkList(packet.get());
        packet->pts = static_cast<std::int64_t>(nextOrdinal_++);
        packet->dts = AV_NOPTS_VALUE;
    } else if (packet->pts != AV_NOPTS_VALUE) {
        const double start = static_cast<double>(packet->pts) * packets_.tick();
        if (passed_) {
            seen_.insert(start);
        }
        if (decoder_->context().skip_frame == AVDISCARD_DEFAULT) {
            inside_.insert(start);
        }
    }
    decoder_->send(packet.get());
    return true;
}

std::optional<PictureReader::Shown> PictureReader::timed(FramePtr frame) const
{
    if (index_) {
        const auto ordinal = static_cast<std::size_t>(frame->pts);
        if (frame->pts == AV_NOPTS_VALUE || ordinal >= index_->count()) {
            return std::nullopt;
        }
        const double start = index_->startOfSlot(index_->slotOf(ordinal));
        return Shown{shareFrame(std::move(frame)), start};
    }
    const auto stamp = frame->best_effort_timestamp != AV_NOPTS_VALUE ? frame->best_effort_timestamp : frame->pts;
    if (stamp == AV_NOPTS_VALUE && !media_->picture->isStill) {
        return std::nullopt;
    }
    const double start = media_->picture->isStill ? 0 : static_cast<double>(stamp) * packets_.tick();
    return Shown{shareFrame(std::move(frame)), start};
}

std::optional<PictureReader::Shown> PictureReader::decodeNext()
{
    while (!patience_.over()) {
        // Not ahead of the first, or a jump would be for nothing, and not before something has been done.
        if (hasWorked_ && (current_ || next_) && patience_.isPaused()) {
            isPaused_ = true;
            return std::nullopt;
        }
        if (auto frame = decoder_->receive()) {
            auto shown = timed(std::move(frame));
            if (shown) {
                inside_.erase(shown->start);
            }
            if (shown && shown->start >= dropBefore_) {
                return shown;
            }
            continue;
        }
        if (drained_ || stoppedBehind_) {
            inside_.clear();
            return std::nullopt;
        }
        sendPacket();
    }
    return std::nullopt;
}

} // namespace twcore
