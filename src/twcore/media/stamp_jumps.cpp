#include "twcore/media/stamp_jumps.h"

#include "twcore/media/stamp_guard.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace twcore {

namespace {

// Stamps wander by less than this where nothing is wrong.
constexpr double kBackSeconds = 0.3;
// A clock that was set forward, or a hole, is more than this.
constexpr double kAheadSeconds = 10;
// A stamp is damaged, and not the first of a new clock, when one of so many behind it goes on from the one before it.
constexpr int kWitnesses = 10;

class JumpCounter {
public:
    JumpCounter(StampedStreams& streams, const StampClock& clock) : streams_(streams), clock_(clock) {}

    StampJumps countOn();

private:
    bool isDamaged(std::size_t stream, std::size_t index, std::int64_t lastStored) const;
    std::int64_t leadOf(std::size_t stream, std::size_t index, std::int64_t before) const;
    void unroll(std::size_t stream, std::int64_t origin);

    StampedStreams& streams_;
    StampClock clock_;
    StampJumps found_;
};

StampJumps JumpCounter::countOn()
{
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        std::int64_t position = 0;
        std::erase_if(streams_[i], [](const auto& packet) { return packet.decode == AV_NOPTS_VALUE; });
        for (auto& packet : streams_[i]) {
            position = packet.position = packet.position >= 0 ? packet.position : position;
            found_.stored[i].push_back(packet.decode);
        }
    }
    std::int64_t origin = AV_NOPTS_VALUE;
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        if (!found_.stored[i].empty()) {
            origin = origin == AV_NOPTS_VALUE ? found_.stored[i].front() : origin;
            unroll(i, origin + clock_.way(origin, found_.stored[i].front()));
        }
    }
    return std::move(found_);
}

bool JumpCounter::isDamaged(std::size_t stream, std::size_t index, std::int64_t lastStored) const
{
    const auto& stored = found_.stored[stream];
    const std::size_t end = std::min(stored.size(), index + 1 + kWitnesses);
    if (index + 1 >= end) { // the last one, behind a still: the other stream alone can deny it
        const std::int64_t position = streams_[stream][index].position;
        const std::size_t behind = packetsBetween(streams_[1 - stream], position, position).first;
        const auto& others = found_.stored[1 - stream];
        const bool goOn = // and are not just what was left over at the end of the file
            behind < others.size() && clock_.way(others[behind], others.back()) > clock_.ticks(kInterleaveSeconds);
        return goOn ? std::abs(clock_.way(others[behind], stored[index])) > clock_.ticks(kApartSeconds)
                    : clock_.way(lastStored, stored[index]) < 0;
    }
    return std::any_of(stored.begin() + static_cast<std::ptrdiff_t>(index) + 1,
                       stored.begin() + static_cast<std::ptrdiff_t>(end),
                       [&](std::int64_t stamp) { return clock_.goesOn(lastStored, stamp); });
}

/// From the stored stamp of decoding to that of showing, or as with the packet before, where it cannot be.
std::int64_t JumpCounter::leadOf(std::size_t stream, std::size_t index, std::int64_t before) const
{
    const auto& stored = found_.stored[stream];
    const std::int64_t show = streams_[stream][index].show;
    const std::int64_t lead = show != AV_NOPTS_VALUE ? clock_.way(stored[index], show) : before;
    const auto untilDecoded = [&](std::size_t i) { return clock_.way(stored[index], stored[i]); };
    return isLeadDamaged(lead, clock_.second, index, stored.size(), untilDecoded) ? before : lead;
}

/// Counts the stamps of a stream on over the counter's end and lists where they jump.
void JumpCounter::unroll(std::size_t stream, std::int64_t origin)
{
    auto& packets = streams_[stream];
    std::int64_t lastStored = found_.stored[stream].front();
    std::int64_t running = origin;
    std::int64_t shownLater = 0;
    for (std::size_t i = 0; i < packets.size(); ++i) {
        auto& packet = packets[i];
        const std::int64_t stored = found_.stored[stream][i];
        shownLater = leadOf(stream, i, shownLater);
        if (!clock_.goesOn(lastStored, stored)) {
            if (isDamaged(stream, i, lastStored)) {
                found_.hasDamage = true;
                packet.decode = running + std::max<std::int64_t>(packet.length, 0);
                packet.show = packet.show != AV_NOPTS_VALUE ? packet.decode + shownLater : packet.show;
                continue;
            }
            found_.parts[stream].push_back({i, running, running + clock_.way(lastStored, stored)});
        }
        running += clock_.way(lastStored, stored);
        lastStored = stored;
        packet.decode = running;
        packet.show = packet.show != AV_NOPTS_VALUE ? running + shownLater : packet.show;
    }
}

} // namespace

bool StampClock::goesOn(std::int64_t from, std::int64_t to) const
{
    return way(from, to) >= -ticks(kBackSeconds) && way(from, to) <= ticks(kAheadSeconds);
}

StampJumps countOn(StampedStreams& streams, const StampClock& clock) { return JumpCounter(streams, clock).countOn(); }

PacketRange packetsBetween(const std::vector<StampedPacket>& packets, std::int64_t from, std::int64_t to)
{
    const auto indexOf = [&](std::int64_t position) {
        return static_cast<std::size_t>(std::ranges::lower_bound(packets, position, {}, &StampedPacket::position)
                                        - packets.begin());
    };
    return {indexOf(from), indexOf(to)};
}

} // namespace twcore
