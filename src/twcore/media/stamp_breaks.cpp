#include "twcore/media/stamp_breaks.h"

#include "twcore/media/stamp_jumps.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace twcore {

namespace {

// The sound of the part before that reaches further than this over its picture is kept, and the picture waits for it.
constexpr double kOverlapSeconds = 0.5;
// Packets at the beginning of a part that are looked at for its first picture.
constexpr std::size_t kFirstPictures = 32;
// Jumps on either side among which the one of the other stream is looked for.
constexpr std::ptrdiff_t kPartners = 8;
// In one part, a step from packet to packet is no longer than this.
constexpr double kStepSeconds = 1;
constexpr double kBetweenPlacesSeconds = 0.25;

/// A new clock: the jump that tells it in both streams, or in one.
struct Joint {
    std::array<const StampJump*, 2> parts;
    std::int64_t position;
};

/// From this packet on, in place of what was added before.
struct Move {
    std::size_t first;
    std::int64_t shift;
};

class BreakFinder {
public:
    BreakFinder(StampedStreams& streams, StampClock clock)
        : streams_(streams), clock_(clock), jumps_(countOn(streams, clock))
    {}

    std::shared_ptr<const StampBreaks> find();

private:
    std::int64_t ticks(double seconds) const { return clock_.ticks(seconds); }
    std::int64_t positionOf(std::size_t stream, const StampJump& part) const
    {
        return streams_[stream][part.first].position;
    }
    PacketRange between(std::size_t stream, std::int64_t from, std::int64_t to) const
    {
        return packetsBetween(streams_[stream], from, to);
    }
    std::int64_t extent(std::size_t stream, const PacketRange& range) const;
    bool areTogether(const StampJump& one, const StampJump& other) const;
    const StampJump* nearest(std::size_t stream, const StampJump& part) const;
    bool tellOneTime(const StampJump& picture, const StampJump& sound) const;
    bool isAloneIn(std::size_t stream, std::int64_t from, std::int64_t to) const;
    bool isClockAlone(std::size_t stream, const StampJump& part) const;
    void join();
    std::size_t firstBehind(std::size_t stream, const StampJump& jumpOfOther) const;
    void moveFrom(const Joint& joint);
    std::int64_t shiftAt(std::size_t stream, std::size_t index) const;
    void move();
    std::int64_t endAhead(std::size_t stream, std::size_t first) const;
    std::int64_t startOf(std::size_t stream, const StampJump& part) const;
    std::int64_t lead(std::size_t stream, std::size_t first) const;

    StampedStreams& streams_;
    StampClock clock_;
    StampJumps jumps_;
    std::array<std::size_t, 2> partStarts_{}; // of the part that runs ahead of the join in hand
    std::array<std::vector<Move>, 2> moves_;
};

std::shared_ptr<const StampBreaks> BreakFinder::find()
{
    join();
    move();
    auto breaks = std::make_shared<StampBreaks>();
    breaks->hasDamage = jumps_.hasDamage;
    bool anyShift = false;
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        for (std::size_t k = 0; k < streams_[i].size(); ++k) {
            const std::int64_t shift = streams_[i][k].decode - jumps_.stored[i][k];
            if (breaks->shifts[i].empty() || breaks->shifts[i].back().ticks != shift) {
                breaks->shifts[i].push_back({streams_[i][k].position, shift});
                anyShift = anyShift || shift != 0;
            }
        }
    }
    if (!anyShift) {
        return nullptr;
    }
    for (const auto& packet : streams_[1]) {
        auto& places = breaks->soundPlaces;
        if (places.empty()
            || (packet.position > places.back().position
                && packet.decode >= places.back().ticks + ticks(kBetweenPlacesSeconds))) {
            places.push_back({packet.position, packet.decode});
        }
    }
    return breaks;
}

/// How long a stream is there, without the jumps.
std::int64_t BreakFinder::extent(std::size_t stream, const PacketRange& range) const
{
    std::int64_t sum = 0;
    for (std::size_t i = range.first + 1; i < range.end; ++i) {
        sum += std::clamp<std::int64_t>(streams_[stream][i].decode - streams_[stream][i - 1].decode, 0,
                                        ticks(kStepSeconds));
    }
    return sum;
}

bool BreakFinder::areTogether(const StampJump& one, const StampJump& other) const
{
    return std::abs(one.before - other.before) < ticks(kApartSeconds)
           && std::abs(one.after - other.after) < ticks(kApartSeconds);
}

/// Of the other stream's jumps of the same kind the one next to this jump in the file; nullptr if there is none.
const StampJump* BreakFinder::nearest(std::size_t stream, const StampJump& part) const
{
    const auto& others = jumps_.parts[1 - stream];
    const std::int64_t position = positionOf(stream, part);
    const auto away = [&](const StampJump& other) { return std::abs(positionOf(1 - stream, other) - position); };
    const auto at = std::ranges::lower_bound(others, position, {},
                                             [&](const StampJump& other) { return positionOf(1 - stream, other); });
    const StampJump* best = nullptr;
    for (auto other = at - std::min(at - others.begin(), kPartners);
         other != at + std::min(others.end() - at, kPartners); ++other) {
        if (areTogether(part, *other) && (best == nullptr || away(*other) < away(*best))) {
            best = &*other;
        }
    }
    return best;
}

/// Whether, where the later one of two jumps stands, the stream that has jumped already tells the same time.
bool BreakFinder::tellOneTime(const StampJump& picture, const StampJump& sound) const
{
    const bool pictureFirst = positionOf(0, picture) < positionOf(1, sound);
    const std::size_t early = pictureFirst ? 0 : 1;
    const std::int64_t later = pictureFirst ? positionOf(1, sound) : positionOf(0, picture);
    const auto& packets = streams_[early];
    const std::size_t end = between(early, later, later).first;
    const std::size_t first = (pictureFirst ? picture : sound).first;
    const std::int64_t told = packets[std::max(first, end == 0 ? 0 : end - 1)].decode;
    return std::abs(told - (pictureFirst ? sound : picture).after) < ticks(kInterleaveSeconds);
}

/// Whether the other stream is not there in these bytes, but for what is stored ahead of its own part or behind it.
bool BreakFinder::isAloneIn(std::size_t stream, std::int64_t from, std::int64_t to) const
{
    return 2 * extent(1 - stream, between(1 - stream, from, to)) <= extent(stream, between(stream, from, to));
}

/// A jump back that the other stream cannot make, as it is missing in the part ahead or in the one behind.
bool BreakFinder::isClockAlone(std::size_t stream, const StampJump& part) const
{
    const auto& all = jumps_.parts[stream];
    const auto index = &part - all.data();
    const std::int64_t here = positionOf(stream, part);
    const std::int64_t from = index > 0 ? positionOf(stream, *(&part - 1)) : 0;
    const std::int64_t to = &part != &all.back() ? positionOf(stream, *(&part + 1)) : INT64_MAX;
    return part.after < part.before && (isAloneIn(stream, from, here) || isAloneIn(stream, here, to));
}

/// A jump that both streams make in one place is a new clock; so is one back, where the other stream is missing. What
/// one stream alone does is a hole.
void BreakFinder::join()
{
    std::vector<Joint> joints;
    std::vector<bool> isTaken(jumps_.parts[1].size());
    for (const StampJump& picture : jumps_.parts[0]) {
        const StampJump* const sound = nearest(0, picture);
        if (sound != nullptr && nearest(1, *sound) == &picture && tellOneTime(picture, *sound)) {
            isTaken[static_cast<std::size_t>(sound - jumps_.parts[1].data())] = true;
            joints.push_back({{&picture, sound}, std::min(positionOf(0, picture), positionOf(1, *sound))});
        } else if (isClockAlone(0, picture)) {
            joints.push_back({{&picture, nullptr}, positionOf(0, picture)});
        }
    }
    for (std::size_t i = 0; i < jumps_.parts[1].size(); ++i) {
        if (!isTaken[i] && isClockAlone(1, jumps_.parts[1][i])) {
            joints.push_back({{nullptr, &jumps_.parts[1][i]}, positionOf(1, jumps_.parts[1][i])});
        }
    }
    std::ranges::stable_sort(joints, {}, &Joint::position);
    std::ranges::for_each(joints, [this](const Joint& joint) { moveFrom(joint); });
}

/// From the stamp of decoding to that of showing, at the beginning of a part.
std::int64_t BreakFinder::lead(std::size_t stream, std::size_t first) const
{
    const auto& packets = streams_[stream];
    std::optional<std::int64_t> earliest;
    for (std::size_t i = first; i < std::min(packets.size(), first + kFirstPictures); ++i) {
        if (packets[i].show != AV_NOPTS_VALUE) {
            earliest = std::min(earliest.value_or(packets[i].show), packets[i].show);
        }
    }
    return earliest ? *earliest - packets[first].decode : 0;
}

std::int64_t BreakFinder::shiftAt(std::size_t stream, std::size_t index) const
{
    const auto& moves = moves_[stream];
    const auto above = std::ranges::upper_bound(moves, index, {}, &Move::first);
    return above == moves.begin() ? 0 : (above - 1)->shift;
}

/// The running end of the packet ahead of this one.
std::int64_t BreakFinder::endAhead(std::size_t stream, std::size_t first) const
{
    const auto& last = streams_[stream][first - 1];
    return last.decode + shiftAt(stream, first - 1) + std::max<std::int64_t>(0, last.length)
           + lead(stream, partStarts_[stream]);
}

std::int64_t BreakFinder::startOf(std::size_t stream, const StampJump& part) const
{
    return streams_[stream][part.first].decode + lead(stream, part.first);
}

/// The first packet by the new clock of a stream in which it makes no jump: some are stored on the other side of it.
std::size_t BreakFinder::firstBehind(std::size_t stream, const StampJump& jumpOfOther) const
{
    const auto& packets = streams_[stream];
    const auto isNew = [&](std::size_t i) {
        return std::abs(packets[i].decode - jumpOfOther.after) < std::abs(packets[i].decode - jumpOfOther.before);
    };
    const std::size_t least = moves_[stream].empty() ? 0 : moves_[stream].back().first;
    const std::int64_t position = positionOf(1 - stream, jumpOfOther);
    std::size_t first = std::max(least, between(stream, position, position).first);
    while (first > least && isNew(first - 1)) {
        --first;
    }
    while (first < packets.size() && !isNew(first)
           && (first == 0 || clock_.goesOn(packets[first - 1].decode, packets[first].decode))) {
        ++first;
    }
    return first;
}

/// Both streams move, the one that makes no jump as well.
void BreakFinder::moveFrom(const Joint& joint)
{
    const auto& [picture, sound] = joint.parts;
    const std::array<std::size_t, 2> firsts{picture != nullptr ? picture->first : firstBehind(0, *sound),
                                            sound != nullptr ? sound->first : firstBehind(1, *picture)};
    const auto shiftBy = [&](std::size_t stream) { // that begins where this stream ended
        const std::size_t starting = joint.parts[stream] != nullptr ? stream : 1 - stream;
        return endAhead(stream, firsts[stream]) - startOf(starting, *joint.parts[starting]);
    };
    const std::size_t main = picture != nullptr ? 0 : 1;
    std::int64_t shift = shiftBy(main);
    if (firsts[1 - main] > 0) {
        const std::int64_t own = shiftBy(1 - main);
        shift = own > shift + ticks(kOverlapSeconds) ? own : shift;
    }
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        partStarts_[i] = std::min(firsts[i], streams_[i].empty() ? 0 : streams_[i].size() - 1);
        moves_[i].push_back({firsts[i], shift});
    }
}

void BreakFinder::move()
{
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        std::int64_t shift = 0;
        auto next = moves_[i].begin();
        for (std::size_t k = 0; k < streams_[i].size(); ++k) {
            for (; next != moves_[i].end() && next->first <= k; ++next) {
                shift = next->shift;
            }
            auto& packet = streams_[i][k];
            packet.decode += shift;
            packet.show += packet.show != AV_NOPTS_VALUE ? shift : 0;
        }
    }
}

} // namespace

std::shared_ptr<const StampBreaks> findBreaks(StampedStreams& streams, std::int64_t ticksPerSecond, int counterBits)
{
    return BreakFinder(streams, {ticksPerSecond, std::int64_t{1} << counterBits}).find();
}

bool RunningStamps::apply(AVPacket& packet)
{
    position_ = packet.pos >= 0 ? packet.pos : position_;
    if (!breaks_ || breaks_->shifts[stream_].empty()) {
        return false;
    }
    const auto& shifts = breaks_->shifts[stream_];
    auto at = std::ranges::upper_bound(shifts, position_, {}, &StampBreaks::Shift::position);
    at = at == shifts.begin() ? at : at - 1;
    for (auto* const stamp : {&packet.dts, &packet.pts}) {
        *stamp += *stamp != AV_NOPTS_VALUE ? at->ticks : 0;
    }
    return std::exchange(shift_, at->ticks) != at->ticks;
}

} // namespace twcore
