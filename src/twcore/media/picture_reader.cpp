#include "twcore/media/picture_reader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace twcore {

namespace {

constexpr double kNever = -std::numeric_limits<double>::infinity();

} // namespace

PictureReader::PictureReader(MediaFilePtr media, int threads, Patience patience)
    : media_(std::move(media)), threads_(threads), patience_(patience), packets_(media_)
{}

std::string PictureReader::lack() const
{
    if (!isBroken() && wanted_ < lostFrom_) {
        return {};
    }
    const FileStamp now = FileStamp::of(media_->path);
    if (!now.isThere) {
        return "\"" + media_->path + "\" is missing. Put it back.";
    }
    return now.byteCount < wholeBytes_ ? "\"" + media_->path + "\" has become shorter. Put the whole file back." : "";
}

/// Begins anew with a file that gave nothing, and has changed since.
void PictureReader::lookForFile(double seconds)
{
    const bool isLost = isBroken() || fileTime(seconds) >= lostFrom_;
    if (isLost && patience_.faults == nullptr && FileStamp::of(media_->path) != opened_) {
        forgetFile();
        broken_ = false; // another look at it
        decoder_.reset();
        nearPictures_.reset();
    }
}

bool PictureReader::openFile()
{
    decoder_.reset();
    opened_ = FileStamp::of(media_->path);
    wholeBytes_ = std::max(wholeBytes_, opened_.byteCount);
    if (!packets_.open(patience_)) {
        return false;
    }
    decoder_ = Decoder::open(packets_.stream(), threads_);
    nextOrdinal_ = 0;
    lastPacketTime_ = AV_NOPTS_VALUE;
    isRested_ = false;
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
    if (isRested_ && (decoder_ = Decoder::open(packets_.stream(), threads_)) != nullptr) {
        return true;
    }
    broken_ = true;
    if (!openFile()) {
        return false;
    }
    tolerance_ = packets_.tolerance();
    broken_ = false;
    return true;
}

bool PictureReader::rest()
{
    if (!decoder_ || isBroken() || media_->picture->isStill) {
        return false;
    }
    // A packet that says more of the stream than its header is given by a file alone that was opened anew.
    const AVCodecID codec = packets_.stream().codecpar->codec_id;
    const bool isToldAhead =
        !media_->listing && packets_.isOfOneHeader() && (codec == AV_CODEC_ID_H264 || codec == AV_CODEC_ID_HEVC);
    constexpr int kFewPackets = 20'000; // of long films the file's own list is larger than a dozen pictures
    if (!isToldAhead || avformat_index_get_entries_count(&packets_.stream()) > kFewPackets) {
        return false;
    }
    packets_.forget();
    current_.reset();
    next_.reset();
    decoder_.reset();
    isRested_ = true;
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

void PictureReader::forgetFile()
{
    isRested_ = false;
    index_.reset();
    jumpedTo_.reset();
    current_.reset();
    next_.reset();
    lostFrom_ = std::numeric_limits<double>::infinity();
}

void PictureReader::readAfresh()
{
    forgetFile();
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

void PictureReader::expectUpTo(double seconds) noexcept
{
    // A first picture that begins a little behind its sound is shown ahead of its time, so it is always wanted.
    const double first = media_->picture ? media_->picture->startSeconds - media_->zeroSeconds : 0;
    expectedEnd_ = fileTime(first <= kHoldSeconds ? std::max(seconds, first) : seconds);
}

SharedFrame PictureReader::at(double seconds)
{
    isNear_ = isPaused_ = hasWorked_ = false;
    lookForFile(seconds);
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
    const double time = fileTime(seconds);
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
    if (isRested_ && time <= media_->picture->startSeconds + 2 * tolerance_) {
        readAfresh(); // nothing is jumped over for the first picture, which may be whole only then
    }
    if (std::exchange(isRested_, false) || (stoppedBehind_ && time > *stoppedBehind_) || needsJump(time)) {
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

double PictureReader::endOfLast(double start) const
{
    const AVRational rate = media_->picture->frameRate;
    const double frame = rate.num > 0 ? 1 / av_q2d(rate) : 0.04;
    const double told = media_->zeroSeconds + media_->picture->durationMs / 1000.0;
    const double own = start + frame;
    return told > own && told - own <= kHoldSeconds ? told + tolerance_ : own + tolerance_;
}

bool PictureReader::isPassedOver(const AVPacket& packet)
{
    if (index_) {
        return !index_->isPacked() && nextOrdinal_ < index_->count()
               && index_->slotOf(nextOrdinal_) < index_->slotAt(wanted_)
               && index_->startOfSlot(index_->slotOf(nextOrdinal_)) < wholeFrom_;
    }
    const double start = static_cast<double>(packet.pts) * packets_.tick();
    return packet.pts != AV_NOPTS_VALUE && start < wanted_ && start < wholeFrom_ && !lastsUpTo(start, wanted_)
           && packets_.anyBetween(start, wanted_);
}

/// Whether the picture of the packet that was taken last is shown beyond a time: where a format tells that for sure,
/// and none is shown in another order, the next packet need not be read for it.
bool PictureReader::lastsUpTo(double start, double time) const
{
    return packets_.lookAhead() == 1 && media_->formatName.starts_with("mov,") && start == ownStart_ && time < ownEnd_;
}

/// Whether no later picture begins by that time, as far as that is known without decoding on.
bool PictureReader::isLastUpTo(const Shown& shown, double time)
{
    if (index_) {
        const std::size_t slot = index_->slotAt(shown.start + tolerance_ / 2);
        return slot == index_->slotAt(time) && slot + 1 < index_->count();
    }
    if (lastsUpTo(shown.start, time)) {
        return true;
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
        for (std::size_t i = nextOrdinal_; i < std::min(index_->count(), nextOrdinal_ + packets_.lookAhead()); ++i) {
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
    ownStart_ = static_cast<double>(packet->pts) * packets_.tick();
    ownEnd_ = static_cast<double>(packet->pts + packet->duration) * packets_.tick();
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
