#include "twcore/save/copied_pictures.h"

#include <algorithm>
#include <stdexcept>

namespace twcore {

namespace {

// What is held at once of a group that is being looked at.
constexpr std::size_t kMostBytes = std::size_t{32} << 20;
// Media of one worker, as many as it decodes.
constexpr std::size_t kMostOpen = 4;

/// Whether a stretch shows one source as it is, as far as the plan tells.
bool isPlain(const PictureStretch& stretch, AVRational fps)
{
    if (stretch.layers.size() != 1 || stretch.effect != nullptr) {
        return false;
    }
    const PlannedSource& source = *stretch.layers.front();
    const PictureFacts& facts = *source.media->picture;
    return !source.key && !facts.isStill && facts.frameRate.num > 0 && facts.orientation.isPlain()
           && source.mediaStopMs - source.mediaStartMs == source.stopMs - source.startMs
           && av_cmp_q(facts.frameRate, fps) == 0;
}

} // namespace

CopiedPictures::CopiedPictures(const Plan& plan, MovieClock clock, const PacketRules& rules, SourceLists& lists,
                               Patience patience)
    : plan_(plan), clock_(clock), rules_(rules), lists_(lists), patience_(patience)
{}

CopiedPictures::Span CopiedPictures::from(std::int64_t first, std::int64_t end, PictureRenderer& renderer)
{
    const auto isBehind = [&](std::int64_t number, const PictureStretch& s) {
        return number < clock_.firstFrameAt(s.stopMs);
    };
    auto stretch = std::upper_bound(plan_.stretches.begin(), plan_.stretches.end(), first, isBehind);
    if (stretch == plan_.stretches.end() || !mayCopy(*stretch)) {
        while (stretch != plan_.stretches.end() && clock_.firstFrameAt(stretch->startMs) < end && !mayCopy(*stretch)) {
            ++stretch;
        }
        return {stretch == plan_.stretches.end() ? end : std::min(end, clock_.firstFrameAt(stretch->startMs))};
    }
    end = std::min(end, clock_.firstFrameAt(stretch->stopMs));
    copied_ = stretch->layers.front();
    SourcePackets& source = *open(copied_->media);
    try {
        const Span span = groupFrom(source, *copied_, first, end);
        return !span.isCopied || isUntouched(*stretch, source, renderer) ? span : Span{end};
    } catch (const ListedWrongly&) {
        source.distrust();
        return {end};
    }
}

/// Whether the plan and the medium leave it open that some of a stretch is copied.
bool CopiedPictures::mayCopy(const PictureStretch& stretch)
{
    return isPlain(stretch, clock_.fps) && open(stretch.layers.front()->media) != nullptr;
}

/// The first that could begin to be copied speaks for all, the same one whoever asks first: the packets themselves are
/// all of one kind.
bool CopiedPictures::isUntouched(const PictureStretch& stretch, SourcePackets& source, PictureRenderer& renderer)
{
    const auto [known, isNew] = untouched_.try_emplace(&stretch, false);
    if (isNew) {
        const PlannedSource& planned = *stretch.layers.front();
        const std::int64_t end = clock_.firstFrameAt(stretch.stopMs);
        for (std::int64_t number = clock_.firstFrameAt(stretch.startMs); number < end; ++number) {
            const auto packet = packetAt(source, planned, number);
            if (packet && source.isKey(*packet)) {
                known->second = renderer.isUntouched(number);
                break;
            }
        }
    }
    return known->second;
}

SourcePackets* CopiedPictures::open(const MediaFilePtr& media)
{
    const auto known = std::ranges::find(opened_, media.get(), &Source::media);
    if (known != opened_.end()) {
        std::rotate(opened_.begin(), known, known + 1);
        return opened_.front().packets.get();
    }
    if (!rules_.mayTake(*media->picture) || refused_.contains(media.get())) {
        return nullptr;
    }
    auto packets = SourcePackets::open(media, lists_, patience_);
    if (!packets || !rules_.take(packets->stream())) {
        refused_.insert(media.get());
        return nullptr;
    }
    if (opened_.size() == kMostOpen) {
        opened_.pop_back();
    }
    opened_.insert(opened_.begin(), {media.get(), std::move(packets)});
    return opened_.front().packets.get();
}

/// The packet of the picture that a frame shows; nothing where the medium has none.
std::optional<std::size_t> CopiedPictures::packetAt(SourcePackets& source, const PlannedSource& planned,
                                                    std::int64_t number) const
{
    return source.at(planned.mediaSecondsAt(clock_.timeMs(number)));
}

CopiedPictures::Span CopiedPictures::groupFrom(SourcePackets& source, const PlannedSource& planned, std::int64_t first,
                                               std::int64_t end)
{
    const auto begin = packetAt(source, planned, first);
    PacketPtr packet = begin ? groupBegin(source, *begin) : nullptr;
    if (!packet) {
        return groupBehind(source, planned, begin, first, end);
    }
    held_.clear();
    heldBytes_ = 0;
    isHeld_ = true;
    Span span{first, true};
    for (std::size_t at = *begin;;) {
        span.isCopied = span.isCopied && packet && packetAt(source, planned, span.end) == at
                        && rules_.take(*packet, span.end == first);
        if (span.isCopied) {
            hold(std::move(packet));
        }
        ++at;
        if (++span.end == end || !rules_.areGroups() || !source.exists(at) || source.isKey(at)) {
            return span;
        }
        packet = span.isCopied ? source.read(at) : nullptr;
    }
}

/// Groups that are encoded stay together, or each would cost a key frame. `packet`: of the first frame.
CopiedPictures::Span CopiedPictures::groupBehind(SourcePackets& source, const PlannedSource& planned,
                                                 std::optional<std::size_t> packet, std::int64_t first,
                                                 std::int64_t end)
{
    // Pictures often begin a little behind their sound. Where none has come for longer, the medium has ended.
    constexpr std::int64_t kMostMissing = 25;
    std::int64_t next = first + 1;
    std::int64_t missing = packet ? 0 : 1;
    while (rules_.areGroups() && next < end) {
        const auto at = packetAt(source, planned, next);
        missing = at ? 0 : missing + 1;
        if (missing > kMostMissing) {
            return {end};
        }
        if (at && at != packet && groupBegin(source, *at)) {
            break;
        }
        packet = at;
        ++next;
    }
    return {next};
}

/// The packet of a number, where it may stand as the first of a group; else nullptr.
PacketPtr CopiedPictures::groupBegin(SourcePackets& source, std::size_t number)
{
    PacketPtr packet = source.exists(number) && source.isKey(number) ? source.read(number) : nullptr;
    return packet && rules_.take(*packet, true) ? std::move(packet) : nullptr;
}

void CopiedPictures::hold(PacketPtr packet)
{
    heldBytes_ += static_cast<std::size_t>(packet->size);
    isHeld_ = isHeld_ && heldBytes_ <= kMostBytes;
    if (isHeld_) {
        held_.push_back(std::move(packet));
    } else {
        held_.clear();
    }
}

bool CopiedPictures::hand(std::int64_t first, std::int64_t end, const std::function<bool(PacketPtr)>& take)
{
    if (isHeld_) {
        return std::ranges::all_of(held_, [&](PacketPtr& packet) { return take(std::move(packet)); });
    }
    SourcePackets& source = *open(copied_->media);
    const auto begin = packetAt(source, *copied_, first);
    for (std::int64_t number = first; number < end; ++number) {
        const std::size_t at = begin ? *begin + static_cast<std::size_t>(number - first) : 0;
        PacketPtr packet = begin ? source.read(at) : nullptr;
        if (!packet || !rules_.take(*packet, number == first)) {
            if (patience_.over()) {
                return false;
            }
            throw std::runtime_error("\"" + copied_->media->path + "\" has changed while it was copied.");
        }
        source.passBy(at);
        if (!take(std::move(packet))) {
            return false;
        }
    }
    return true;
}

} // namespace twcore
