#include "twcore/media/picture_index.h"

#include "twcore/media/avi_index.h"
#include "twcore/media/picture_kind.h"
#include "twcore/media/picture_order.h"
#include "twcore/media/stamp_breaks.h"
#include "twcore/media/stamp_guard.h"
#include "twcore/media/stream_times.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace twcore {

struct PictureIndex::Scanned {
    std::int64_t presentationTime;
    PictureKind kind;
};

/// What a stream's own times are worth.
struct PictureIndex::Clock {
    AVRational timeBase;
    bool tellsOrder;      // AVI writes no presentation times: what the demuxer hands out there are guesses
    bool isBare = false;  // no times at all: what comes with them is counted by a demuxer that knows no order
    std::int64_t first{}; // the tick at which a first picture without a time begins
};

namespace {

// The first list of a beginning; further than any picture is stored from where it is shown.
constexpr std::size_t kFirstPart = 64;
constexpr std::size_t kUnsettled = 40;

double frameSecondsOf(const MediaFile& media)
{
    return media.picture->frameRate.num > 0 ? 1 / av_q2d(media.picture->frameRate) : 1.0 / 25;
}

/// AVI counts its pictures in ticks of one picture each: where that rate was refused, in those of the one in its place.
AVRational timeBaseOf(const MediaFile& media, const AVStream& stream)
{
    const AVRational rate = media.picture->frameRate;
    const bool isRefused = media.formatName == "avi" && rate.num > 0 && av_q2d(stream.time_base) * av_q2d(rate) > 100;
    return isRefused ? av_inv_q(rate) : stream.time_base;
}

bool isBareFormat(const std::string& format) { return format == "h264" || format == "hevc" || format == "mpegvideo"; }

} // namespace

std::shared_ptr<const PictureIndex> PictureIndex::build(const MediaFile& media, const Patience& patience,
                                                        const Publish& partly)
{
    std::uint32_t error = 0;
    const auto file = InputFile::open(media.path, patience, error);
    if (!file || !file->readStreamInfo()
        || media.picture->streamIndex >= static_cast<int>(file->context()->nb_streams)) {
        return nullptr;
    }
    const AVStream& stream = *file->stream(media.picture->streamIndex);
    file->keepOnly(media.picture->streamIndex);
    const std::string format = file->formatName();
    const Clock clock{
        .timeBase = timeBaseOf(media, stream), .tellsOrder = format != "avi", .isBare = isBareFormat(format)};
    PictureKindReader kinds(*stream.codecpar);
    auto index = std::make_shared<PictureIndex>();
    std::vector<Scanned> scanned;
    std::size_t nextPart = kFirstPart;
    RunningStamps running(media.breaks, 0);
    StampGuard guard(clock.timeBase, ownEndOf(media, *file));
    auto packet = makePacket();
    while (file->read(*packet)) {
        if (packet->stream_index != media.picture->streamIndex) {
            continue;
        }
        if (partly && scanned.size() >= nextPart && guard.damagedRun() == 0) {
            partly(index->beginning(scanned, media, clock));
            nextPart *= 2;
        }
        running.apply(*packet);
        const std::int64_t storedTime = packet->dts != AV_NOPTS_VALUE ? packet->dts : packet->pts;
        if (!guard.pass(*packet)) {
            // The ones behind the last good stamp were let through on trial.
            index->packets_.resize(index->packets_.size() - kDamagedStamps);
            scanned.resize(index->packets_.size());
            break;
        }
        const std::int64_t decodeTime = packet->dts != AV_NOPTS_VALUE ? packet->dts : packet->pts;
        PictureKind kind = media.picture->reorders ? kinds.read(*packet) : PictureKind{};
        if (!kind.isKey) {
            kind.isKey = isKeyByHead(stream.codecpar->codec_id, *packet);
        }
        const bool isKey = (packet->flags & AV_PKT_FLAG_KEY) != 0 && kind.isKey.value_or(true);
        index->packets_.push_back({packet->pos, storedTime, decodeTime, packet->size, isKey});
        index->isPacked_ = kinds.isPacked();
        scanned.push_back({clock.isBare ? AV_NOPTS_VALUE : packet->pts, kind});
    }
    if (index->packets_.empty() || file->gaveUp() || file->hasFailed()) {
        return nullptr; // half a list would be shared as if it were whole
    }
    index->finish(scanned, media, clock);
    return index;
}

/// A single damaged time of showing would hold one picture for minutes, and make the film as long.
void PictureIndex::mendLeads(std::vector<Scanned>& scanned, const Clock& clock) const
{
    const auto second = static_cast<std::int64_t>(1 / av_q2d(clock.timeBase));
    std::int64_t before = 0;
    for (std::size_t i = 0; i < scanned.size(); ++i) {
        const std::int64_t decode = packets_[i].decodeTime;
        auto& shown = scanned[i].presentationTime;
        if (shown == AV_NOPTS_VALUE || decode == AV_NOPTS_VALUE) {
            continue;
        }
        const auto untilDecoded = [&](std::size_t k) {
            return packets_[k].decodeTime != AV_NOPTS_VALUE ? packets_[k].decodeTime - decode : 0;
        };
        if (isLeadDamaged(shown - decode, second, i, scanned.size(), untilDecoded)) {
            shown = decode + before;
        }
        before = shown - decode;
    }
}

void PictureIndex::finish(std::vector<Scanned>& scanned, const MediaFile& media, const Clock& clock)
{
    if (clock.tellsOrder) {
        mendLeads(scanned, clock);
    }
    hasPositions_ = std::ranges::all_of(packets_, [](auto& p) { return p.position >= 0; });
    if (media.breaks) {
        // Nothing but bytes tells the way there: a picture that tells no place is found from the one ahead of it.
        for (std::size_t i = 1; i < packets_.size(); ++i) {
            auto& position = packets_[i].position;
            position = position >= 0 ? position : packets_[i - 1].position;
        }
    }
    Clock counted = clock;
    const std::int64_t decodeStart = packets_[0].decodeTime;
    counted.first = clock.isBare || decodeStart == AV_NOPTS_VALUE
                        ? static_cast<std::int64_t>(std::llround(media.picture->startSeconds / av_q2d(clock.timeBase)))
                        : decodeStart;
    arrange(scanned, counted, frameSecondsOf(media));
}

std::shared_ptr<PictureIndex> PictureIndex::beginning(std::vector<Scanned>& scanned, const MediaFile& media,
                                                      const Clock& clock) const
{
    auto part = std::make_shared<PictureIndex>(*this);
    part->finish(scanned, media, clock);
    for (std::size_t i = part->count() - kUnsettled; i < part->count(); ++i) {
        part->knownUpTo_ = std::min(part->knownUpTo_, part->startOfSlot(part->slotOf(i)));
    }
    return part;
}

std::shared_ptr<const PictureIndex> PictureIndex::fromFile(const MediaFile& media, const Patience& patience)
{
    std::uint32_t error = 0;
    const int streamIndex = media.picture->streamIndex;
    auto file = InputFile::open(media.path, patience, error);
    auto packets = file ? listedByAvi(*file, streamIndex) : std::nullopt;
    if (!packets) {
        return nullptr;
    }
    auto index = std::make_shared<PictureIndex>();
    index->isFromFile_ = true;
    index->packets_ = std::move(*packets);
    std::vector<Scanned> scanned(index->count(), Scanned{AV_NOPTS_VALUE, {}});
    index->finish(scanned, media, {.timeBase = timeBaseOf(media, *file->stream(streamIndex)), .tellsOrder = false});
    if (media.picture->reorders) {
        index->order_ = PictureOrder::open(media.path, streamIndex, index->packets_);
    }
    return media.picture->reorders && !index->order_ ? nullptr : index;
}

namespace {

/// Display order of pictures stored in decoding order, from their kinds: within a group by the order numbers where
/// the codec writes them, else each picture that others lean on comes out when the next such one arrives.
std::vector<std::uint32_t> orderByKind(const std::vector<PictureKind>& kinds)
{
    std::vector<std::uint32_t> order;
    order.reserve(kinds.size());
    std::size_t groupStart = 0;
    const auto sortGroup = [&](std::size_t end) {
        const auto first = static_cast<std::ptrdiff_t>(order.size());
        for (auto i = groupStart; i < end; ++i) {
            order.push_back(static_cast<std::uint32_t>(i));
        }
        std::stable_sort(order.begin() + first, order.end(),
                         [&](auto a, auto b) { return *kinds[a].orderNumber < *kinds[b].orderNumber; });
        groupStart = end;
    };
    const bool numbered = std::ranges::all_of(kinds, [](const auto& kind) { return kind.orderNumber.has_value(); });
    if (numbered) {
        for (std::size_t i = 1; i < kinds.size(); ++i) {
            if (kinds[i].startsGroup) {
                sortGroup(i);
            }
        }
        sortGroup(kinds.size());
        return order;
    }
    std::optional<std::uint32_t> held;
    for (std::uint32_t i = 0; i < kinds.size(); ++i) {
        if (kinds[i].isBidirectional) {
            order.push_back(i);
            continue;
        }
        if (held) {
            order.push_back(*held);
        }
        held = i;
    }
    if (held) {
        order.push_back(*held);
    }
    return order;
}

} // namespace

void PictureIndex::arrange(const std::vector<Scanned>& scanned, const Clock& clock, double frameSeconds)
{
    const std::size_t count = packets_.size();
    const bool allTimes = std::ranges::none_of(scanned, [](auto& s) { return s.presentationTime == AV_NOPTS_VALUE; });
    std::vector<std::int64_t> times(count);
    ordinalOfSlot_.resize(count);
    std::iota(ordinalOfSlot_.begin(), ordinalOfSlot_.end(), 0u);
    if (clock.tellsOrder && allTimes) {
        std::ranges::stable_sort(ordinalOfSlot_, {}, [&](auto i) { return scanned[i].presentationTime; });
        std::ranges::transform(ordinalOfSlot_, times.begin(), [&](auto i) { return scanned[i].presentationTime; });
    } else {
        std::vector<PictureKind> kinds(count);
        std::ranges::transform(scanned, kinds.begin(), &Scanned::kind);
        ordinalOfSlot_ = orderByKind(kinds);
        if (clock.tellsOrder) {
            // Program streams stamp some pictures only: the others follow the one that is shown before them.
            const auto frame = static_cast<std::int64_t>(std::llround(frameSeconds / av_q2d(clock.timeBase)));
            for (std::size_t slot = 0; slot < count; ++slot) {
                const auto own = scanned[ordinalOfSlot_[slot]].presentationTime;
                times[slot] = own != AV_NOPTS_VALUE ? own : (slot > 0 ? times[slot - 1] + frame : clock.first);
            }
        } else {
            std::ranges::transform(packets_, times.begin(), &Packet::decodeTime);
            for (std::size_t i = 1; i < count; ++i) { // a packet without any time follows the one before it
                times[i] = times[i] == AV_NOPTS_VALUE ? times[i - 1] : times[i];
            }
        }
        std::ranges::sort(times);
    }
    slotOfOrdinal_.resize(count);
    slotStarts_.resize(count + 1);
    for (std::size_t slot = 0; slot < count; ++slot) {
        slotOfOrdinal_[ordinalOfSlot_[slot]] = static_cast<std::uint32_t>(slot);
        slotStarts_[slot] = static_cast<double>(times[slot]) * av_q2d(clock.timeBase);
    }
    slotStarts_[count] = slotStarts_[count - 1] + frameSeconds;

    byPosition_.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        byPosition_.emplace_back(hasPositions_ ? packets_[i].position : packets_[i].storedTime, i);
    }
    std::ranges::sort(byPosition_);
}

std::size_t PictureIndex::slotOf(std::size_t ordinal) const
{
    return order_ ? order_->slotOf(ordinal) : slotOfOrdinal_[ordinal];
}

std::size_t PictureIndex::ordinalOf(std::size_t slot) const
{
    return order_ ? order_->ordinalOf(slot) : ordinalOfSlot_[slot];
}

bool PictureIndex::isPacked() const noexcept { return order_ ? order_->isPacked() : isPacked_; }

std::size_t PictureIndex::slotAt(double seconds) const
{
    const auto end = slotStarts_.end() - 1;
    const auto above = std::upper_bound(slotStarts_.begin(), end, seconds);
    return above == slotStarts_.begin() ? 0 : static_cast<std::size_t>(above - slotStarts_.begin()) - 1;
}

std::size_t PictureIndex::keyOrdinalFor(std::size_t slot) const
{
    std::size_t ordinal = ordinalOf(slot);
    bool leansOnEarlier = false;
    for (;; --ordinal) {
        if (packets_[ordinal].isKey) {
            if (leansOnEarlier || slotOf(ordinal) <= slot) {
                return ordinal;
            }
            leansOnEarlier = true;
        }
        if (ordinal == 0) {
            return 0;
        }
    }
}

std::optional<std::size_t> PictureIndex::identify(std::int64_t position, std::int64_t storedTime, int byteCount) const
{
    const std::int64_t wanted = hasPositions_ ? position : storedTime;
    auto found = std::ranges::lower_bound(byPosition_, std::pair{wanted, 0u});
    for (; found != byPosition_.end() && found->first == wanted; ++found) {
        if (packets_[found->second].byteCount == byteCount) {
            return found->second;
        }
    }
    return std::nullopt;
}

} // namespace twcore
