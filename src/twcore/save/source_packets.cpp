#include "twcore/save/source_packets.h"

#include "twcore/save/packet_shape.h"

#include <algorithm>
#include <deque>

namespace twcore {

namespace {

/// Of a file whose pictures are listed.
class ListedPackets final : public SourcePackets {
public:
    ListedPackets(MediaFilePtr media, PictureListing::Index index, std::unique_ptr<PicturePackets> packets)
        : media_(std::move(media)), index_(std::move(index)), packets_(std::move(packets))
    {}

    const AVStream& stream() const noexcept override { return packets_->stream(); }
    bool exists(std::size_t number) override { return number < index_->count(); }
    bool isKey(std::size_t number) override { return index_->packet(number).isKey; }
    void distrust() override { media_->listing->distrust(index_); }

    std::optional<std::size_t> at(double seconds) override
    {
        const double time = seconds + media_->zeroSeconds + kStampTolerance;
        const std::size_t slot = index_->slotAt(time);
        const bool isThere = slot < index_->count() && index_->startOfSlot(slot) <= time
                             && time < index_->startOfSlot(slot + 1) && index_->slotOf(slot) == slot;
        return isThere ? std::optional(slot) : std::nullopt;
    }

    PacketPtr read(std::size_t number) override
    {
        constexpr std::size_t kWorthReading = 6;
        if (number >= lostFrom_ && number < lostEnd_) {
            return nullptr;
        }
        if (!isPlaced_ || number < next_ || number > next_ + kWorthReading) {
            isPlaced_ = isKey(number) && packets_->jumpByIndex(*index_, number);
            next_ = number;
            if (!isPlaced_ && isKey(number)) {
                noteLost(number);
            }
        }
        while (isPlaced_ && packets_->any()) {
            PacketPtr packet = packets_->take();
            const auto& listed = index_->packet(next_);
            if (packet->pos != listed.position || packet->size != listed.byteCount) {
                break;
            }
            if (next_++ == number) {
                return packet;
            }
        }
        isPlaced_ = false;
        return nullptr;
    }

private:
    /// Behind a jump that found another packet: those ahead of it are not there. Each would be looked for over all of
    /// the hole.
    void noteLost(std::size_t number)
    {
        if (!packets_->any()) {
            return;
        }
        const PacketPtr packet = packets_->take();
        const auto found = index_->identify(packet->pos, stampOf(*packet), packet->size);
        if (found && *found > number) {
            lostFrom_ = number;
            lostEnd_ = *found;
        }
    }

    const MediaFilePtr media_;
    const PictureListing::Index index_;
    const std::unique_ptr<PicturePackets> packets_;
    std::size_t next_ = 0; // the packet that is read next
    bool isPlaced_ = false;
    std::size_t lostFrom_ = 0; // of the packets that are listed and not there
    std::size_t lostEnd_ = 0;
};

/// Of a file whose packets tell their times: read on from the key frame ahead of the time that is asked for.
class TimedPackets final : public SourcePackets {
public:
    TimedPackets(MediaFilePtr media, std::unique_ptr<PicturePackets> packets)
        : media_(std::move(media)), packets_(std::move(packets)), shape_(toldBy(*packets_->stream().codecpar))
    {}

    const AVStream& stream() const noexcept override { return packets_->stream(); }
    bool exists(std::size_t number) override
    {
        while (number >= first_ + window_.size() && fetch()) {
        }
        return number >= first_ && number < first_ + window_.size();
    }
    bool isKey(std::size_t number) override
    {
        return exists(number) && (window_[number - first_]->flags & AV_PKT_FLAG_KEY) != 0;
    }

    std::optional<std::size_t> at(double seconds) override
    {
        constexpr double kWorthReading = 0.25; // seconds
        const double time = seconds + media_->zeroSeconds + packets_->tolerance();
        if (time >= noneFrom_ && time < noneEnd_) {
            return std::nullopt;
        }
        if (window_.empty() || time < startOf(0) || time > startOf(window_.size() - 1) + kWorthReading) {
            place(time);
        }
        while (!window_.empty() && startOf(window_.size() - 1) <= time && fetch()) {
        }
        std::size_t i = 0;
        while (i + 1 < window_.size() && startOf(i + 1) <= time) {
            ++i;
        }
        const double frame = 1 / av_q2d(media_->picture->frameRate);
        if (window_.empty() || time < startOf(i) || (i + 1 == window_.size() && time >= startOf(i) + frame)) {
            return std::nullopt;
        }
        passBy(first_ + i);
        return first_;
    }

    PacketPtr read(std::size_t number) override
    {
        return exists(number) ? shape_.inAvi(*window_[number - first_]) : nullptr;
    }

    void passBy(std::size_t number) override
    {
        for (; first_ < number && !window_.empty(); ++first_) {
            window_.pop_front();
        }
    }

private:
    static PacketShape toldBy(const AVCodecParameters& told)
    {
        return {told.codec_id, {told.extradata, static_cast<std::size_t>(std::max(0, told.extradata_size))}};
    }
    double startOf(std::size_t i) const { return static_cast<double>(window_[i]->pts) * packets_->tick(); }

    void place(double time)
    {
        auto stamp = static_cast<std::int64_t>(time / packets_->tick());
        noneEnd_ = noneFrom_ = time;
        for (int attempt = 0; attempt < 2; ++attempt) {
            first_ += window_.size();
            window_.clear();
            hasEnded_ = !packets_->jumpByTime(stamp);
            if (!fetch() || startOf(0) <= time) {
                return;
            }
            stamp = std::min(stamp, stampOf(*window_.front())) - 1; // found by the time of decoding
        }
        noneEnd_ = startOf(0);
    }

    bool fetch()
    {
        hasEnded_ = hasEnded_ || !packets_->any();
        if (hasEnded_) {
            return false;
        }
        PacketPtr packet = packets_->take();
        hasEnded_ = packet->pts == AV_NOPTS_VALUE; // it cannot be told where it belongs
        std::size_t size = 0;
        if (const auto* const told = av_packet_get_side_data(packet.get(), AV_PKT_DATA_NEW_EXTRADATA, &size)) {
            shape_ = {stream().codecpar->codec_id, {told, size}};
        }
        if (!hasEnded_) {
            window_.push_back(std::move(packet));
        }
        return !hasEnded_;
    }

    const MediaFilePtr media_;
    const std::unique_ptr<PicturePackets> packets_;
    PacketShape shape_;
    std::deque<PacketPtr> window_; // from the one that was found last
    std::size_t first_ = 0;        // its number
    bool hasEnded_ = false;
    // From a time on that was looked for in vain: a hole in the file, which would be searched for each of its frames.
    double noneFrom_ = 0;
    double noneEnd_ = 0;
};

} // namespace

PictureListing::Index SourceLists::of(const MediaFilePtr& media, const Patience& patience)
{
    const std::lock_guard lock(mutex_);
    auto& list = lists_[media.get()];
    if (!list) {
        list = media->listing->whole(*media, patience);
    }
    return list;
}

std::unique_ptr<SourcePackets> SourcePackets::open(const MediaFilePtr& media, SourceLists& lists,
                                                   const Patience& patience)
{
    auto packets = std::make_unique<PicturePackets>(media);
    if (media->listing) {
        auto index = lists.of(media, patience);
        return index && packets->open(patience)
                   ? std::make_unique<ListedPackets>(media, std::move(index), std::move(packets))
                   : nullptr;
    }
    const bool tellsTimes = media->formatName.starts_with("mov,") || media->formatName.starts_with("matroska");
    return tellsTimes && packets->open(patience) ? std::make_unique<TimedPackets>(media, std::move(packets)) : nullptr;
}

} // namespace twcore
