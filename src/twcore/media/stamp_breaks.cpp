#include "twcore/media/stamp_breaks.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace twcore {

namespace {

// Stamps wander by less than this where nothing is wrong.
constexpr double kBackSeconds = 0.3;
// A clock that was set forward, or a hole, is more than this.
constexpr double kAheadSeconds = 10;
// Both streams meet a new clock within this time of each other.
constexpr double kApartSeconds = 10;
// A stamp is damaged, and not the first of a new clock, when one of so many behind it goes on from the one before it.
constexpr int kWitnesses = 10;
// The sound of the part before that reaches further than this over its picture is kept, and the picture waits for it.
constexpr double kOverlapSeconds = 0.5;
// Packets at the beginning of a part that are looked at for its first picture.
constexpr std::size_t kFirstPictures = 32;
// Jumps of the sound among which the one is looked for that goes with a jump of the picture.
constexpr std::ptrdiff_t kPartners = 16;
constexpr double kBetweenPlacesSeconds = 0.25;

/// Where the stamps of one stream jump, still with every jump in them.
struct Part {
    std::size_t first;   // packet behind the jump
    std::int64_t before; // stamp of the packet ahead of it
    std::int64_t after;  // and of its own
};

/// From this packet on.
struct Move {
    std::size_t first;
    std::int64_t shift;
};

class BreakFinder {
public:
    BreakFinder(StampedStreams& streams, std::int64_t ticksPerSecond, int counterBits)
        : streams_(streams), second_(ticksPerSecond), counter_(std::int64_t{1} << counterBits)
    {}

    std::shared_ptr<const StampBreaks> find();

private:
    std::int64_t ticks(double seconds) const
    {
        return static_cast<std::int64_t>(seconds * static_cast<double>(second_));
    }
    /// The way from one stored stamp to another, round the counter's end where that is shorter.
    std::int64_t way(std::int64_t from, std::int64_t to) const
    {
        const std::int64_t ahead = ((to - from) % counter_ + counter_) % counter_;
        return ahead < counter_ / 2 ? ahead : ahead - counter_;
    }
    bool goesOn(std::int64_t from, std::int64_t to) const
    {
        return way(from, to) >= -ticks(kBackSeconds) && way(from, to) <= ticks(kAheadSeconds);
    }
    bool isDamaged(std::size_t stream, std::size_t index, std::int64_t lastStored) const;
    void unroll(std::size_t stream, std::int64_t origin);
    bool areTogether(const Part& picture, const Part& sound) const;
    bool endsBefore(std::size_t stream, const Part& part) const;
    void join();
    void moveFrom(const std::optional<Part>& picture, const std::optional<Part>& sound);
    void move();
    std::int64_t endAhead(std::size_t stream, const Part& part) const;
    std::int64_t startOf(std::size_t stream, const Part& part) const;
    std::int64_t lead(std::size_t stream, std::size_t first) const;

    StampedStreams& streams_;
    std::int64_t second_;
    std::int64_t counter_;
    std::array<std::vector<std::int64_t>, 2> stored_; // the stamps of decoding before anything was changed
    std::array<std::vector<Part>, 2> parts_;          // behind the first
    std::array<std::size_t, 2> partStarts_{};         // of the part that runs ahead of the join in hand
    std::array<std::vector<Move>, 2> moves_;
};

std::shared_ptr<const StampBreaks> BreakFinder::find()
{
    std::int64_t origin = AV_NOPTS_VALUE;
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        std::int64_t position = 0;
        std::erase_if(streams_[i], [](const auto& packet) { return packet.decode == AV_NOPTS_VALUE; });
        for (auto& packet : streams_[i]) {
            position = packet.position = packet.position >= 0 ? packet.position : position;
            stored_[i].push_back(packet.decode);
        }
        if (!stored_[i].empty()) {
            origin = origin == AV_NOPTS_VALUE ? stored_[i].front() : origin;
            unroll(i, origin + way(origin, stored_[i].front()));
        }
    }
    join();
    move();
    auto breaks = std::make_shared<StampBreaks>();
    bool anyShift = false;
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        for (std::size_t k = 0; k < streams_[i].size(); ++k) {
            const std::int64_t shift = streams_[i][k].decode - stored_[i][k];
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

bool BreakFinder::isDamaged(std::size_t stream, std::size_t index, std::int64_t lastStored) const
{
    const auto& stored = stored_[stream];
    const std::size_t end = std::min(stored.size(), index + 1 + kWitnesses);
    if (index + 1 >= end) {
        return true;
    }
    return std::any_of(stored.begin() + static_cast<std::ptrdiff_t>(index) + 1,
                       stored.begin() + static_cast<std::ptrdiff_t>(end),
                       [&](std::int64_t stamp) { return goesOn(lastStored, stamp); });
}

/// Counts the stamps of a stream on over the counter's end and lists where they jump.
void BreakFinder::unroll(std::size_t stream, std::int64_t origin)
{
    auto& packets = streams_[stream];
    std::int64_t lastStored = stored_[stream].front();
    std::int64_t running = origin;
    for (std::size_t i = 0; i < packets.size(); ++i) {
        auto& packet = packets[i];
        const std::int64_t stored = stored_[stream][i];
        const std::int64_t shownLater = packet.show != AV_NOPTS_VALUE ? way(packet.decode, packet.show) : 0;
        if (!goesOn(lastStored, stored)) {
            if (isDamaged(stream, i, lastStored)) {
                packet.decode = running + std::max<std::int64_t>(packet.length, 0);
                packet.show = packet.show != AV_NOPTS_VALUE ? packet.decode + shownLater : packet.show;
                continue;
            }
            parts_[stream].push_back({i, running, running + way(lastStored, stored)});
        }
        running += way(lastStored, stored);
        lastStored = stored;
        packet.decode = running;
        packet.show = packet.show != AV_NOPTS_VALUE ? running + shownLater : packet.show;
    }
}

bool BreakFinder::areTogether(const Part& picture, const Part& sound) const
{
    return std::abs(picture.before - sound.before) < ticks(kApartSeconds)
           && std::abs(picture.after - sound.after) < ticks(kApartSeconds);
}

/// Whether a stream has nothing at or behind the beginning of the other one's part.
bool BreakFinder::endsBefore(std::size_t stream, const Part& part) const
{
    const auto& other = streams_[1 - stream];
    return streams_[stream].empty() || streams_[stream].back().position < other[part.first].position;
}

/// A jump that both streams make is a new clock; so is one back, where there is no other stream. What one stream alone
/// does is a hole.
void BreakFinder::join()
{
    const auto pictures = parts_[0];
    const auto sounds = parts_[1];
    std::size_t next = 0;
    for (const Part& picture : pictures) {
        const auto from = sounds.begin() + static_cast<std::ptrdiff_t>(next);
        const auto end = from + std::min<std::ptrdiff_t>(sounds.end() - from, kPartners);
        const auto partner = std::find_if(from, end, [&](const Part& sound) { return areTogether(picture, sound); });
        if (partner != end) {
            next = static_cast<std::size_t>(partner - sounds.begin()) + 1;
            moveFrom(picture, *partner);
        } else if (picture.after < picture.before && endsBefore(1, picture)) {
            moveFrom(picture, std::nullopt);
        }
    }
    for (; next < sounds.size(); ++next) {
        if (sounds[next].after < sounds[next].before && endsBefore(0, sounds[next])) {
            moveFrom(std::nullopt, sounds[next]);
        }
    }
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

std::int64_t BreakFinder::endAhead(std::size_t stream, const Part& part) const
{
    const auto& last = streams_[stream][part.first - 1];
    return last.decode + std::max<std::int64_t>(0, last.length) + lead(stream, partStarts_[stream]);
}

std::int64_t BreakFinder::startOf(std::size_t stream, const Part& part) const
{
    return streams_[stream][part.first].decode + lead(stream, part.first);
}

/// What is moved later moves with what is moved now, so that each shift is told by the stamps as they were unrolled.
void BreakFinder::moveFrom(const std::optional<Part>& picture, const std::optional<Part>& sound)
{
    std::int64_t shift = 0;
    if (picture) {
        shift = endAhead(0, *picture) - startOf(0, *picture);
    }
    if (sound) {
        const std::int64_t own = endAhead(1, *sound) - startOf(1, *sound);
        shift = !picture || own > shift + ticks(kOverlapSeconds) ? own : shift;
    }
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        if (const auto& part = i == 0 ? picture : sound) {
            partStarts_[i] = part->first;
            moves_[i].push_back({part->first, shift});
        }
    }
}

void BreakFinder::move()
{
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        std::int64_t shift = 0;
        auto next = moves_[i].begin();
        for (std::size_t k = 0; k < streams_[i].size(); ++k) {
            for (; next != moves_[i].end() && next->first == k; ++next) {
                shift += next->shift;
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
    return BreakFinder(streams, ticksPerSecond, counterBits).find();
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
