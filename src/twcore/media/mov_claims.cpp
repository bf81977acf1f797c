#include "twcore/media/mov_claims.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace twcore {

namespace {

constexpr std::int64_t kMostSamples = 8 << 20;
constexpr std::int64_t kFragmentsBytes = 64 << 20;
// Uncompressed sound is listed in blocks of as many samples at least.
constexpr std::int64_t kSamplesPerBlock = 160;

constexpr std::array<std::string_view, 7> kContainers{"moov", "trak", "mdia", "minf", "stbl", "moof", "traf"};

constexpr std::int64_t kRunBytes = 12; // of the table that lays samples into chunks

std::int64_t bigEndian(std::span<const std::uint8_t> bytes)
{
    std::uint64_t value = 0;
    for (const std::uint8_t byte : bytes) {
        value = value << 8 | byte;
    }
    return static_cast<std::int64_t>(std::min<std::uint64_t>(value, INT64_MAX));
}

/// Walks the boxes of a file and adds up what they claim.
class Claims {
public:
    Claims(int descriptor, std::int64_t byteCount, const Patience& patience)
        : descriptor_(descriptor), byteCount_(byteCount), patience_(patience)
    {
        walk(0, byteCount, 0);
    }

    std::int64_t samples() const { return samples_; }

private:
    /// What the tables of one track tell.
    struct Track {
        bool isSound = false;
        std::int64_t samples = 0;
        std::int64_t chunks = 0;
        bool evenTimes = true;                                   // one after the other at the track's own rate
        std::vector<std::pair<std::int64_t, std::int64_t>> runs; // from a chunk on, so many samples in each
    };

    bool readAt(std::int64_t at, std::span<std::uint8_t> bytes) const
    {
        return ::pread(descriptor_, bytes.data(), bytes.size(), at) == static_cast<ssize_t>(bytes.size());
    }

    std::int64_t number(std::int64_t at, std::size_t count = 4) const
    {
        std::array<std::uint8_t, 8> bytes{};
        const auto wanted = std::span(bytes).first(count);
        return readAt(at, wanted) ? bigEndian(wanted) : 0;
    }

    void walk(std::int64_t at, std::int64_t end, int depth)
    {
        constexpr std::int64_t kHeadBytes = 8;
        constexpr int kDeepest = 8;
        while (at + kHeadBytes <= end && !patience_.over()) {
            std::array<char, 4> name{};
            if (::pread(descriptor_, name.data(), name.size(), at + 4) != static_cast<ssize_t>(name.size())) {
                return;
            }
            std::int64_t head = kHeadBytes;
            std::int64_t size = number(at);
            if (size == 1) {
                head += 8;
                size = number(at + kHeadBytes, 8);
            }
            size = size == 0 ? end - at : std::min(size, end - at);
            if (size < head) {
                return;
            }
            const std::string_view type(name.data(), name.size());
            const bool isPassedOver = type == "moof" && byteCount_ > kFragmentsBytes;
            if (depth < kDeepest && !isPassedOver && std::ranges::find(kContainers, type) != kContainers.end()) {
                walk(at + head, at + size, depth + 1);
                if (type == "trak") {
                    samples_ += entriesOf(track_);
                    track_ = {};
                }
            } else if (depth > 0) {
                take(type, at + head, at + size);
            }
            at += size;
        }
    }

    /// Tables begin with four bytes of version and flags.
    void take(std::string_view type, std::int64_t at, std::int64_t end)
    {
        if (type == "hdlr") {
            track_.isSound = number(at + 8) == 0x736F756E; // "soun"
        } else if (type == "stsz" || type == "stz2") {
            track_.samples = std::max(track_.samples, number(at + 8));
        } else if (type == "stts") {
            track_.evenTimes = track_.evenTimes && number(at + 4) == 1 && number(at + 12) == 1;
        } else if (type == "stco" || type == "co64") {
            track_.chunks = std::max(track_.chunks, number(at + 4));
        } else if (type == "stsc") {
            takeRuns(at + 8, std::min(number(at + 4), (end - at - 8) / kRunBytes));
        } else if (type == "trun") {
            samples_ += number(at + 4);
        }
    }

    void takeRuns(std::int64_t at, std::int64_t count)
    {
        constexpr std::int64_t kRunsAtOnce = 4096;
        std::vector<std::uint8_t> bytes;
        for (std::int64_t done = 0; done < count; done += kRunsAtOnce) {
            bytes.resize(static_cast<std::size_t>(std::min(kRunsAtOnce, count - done) * kRunBytes));
            if (!readAt(at + done * kRunBytes, bytes)) {
                return;
            }
            for (std::size_t i = 0; i < bytes.size(); i += kRunBytes) {
                track_.runs.emplace_back(bigEndian(std::span(bytes).subspan(i, 4)),
                                         bigEndian(std::span(bytes).subspan(i + 4, 4)));
            }
        }
    }

    /// Places that the track takes in memory: one a sample, or one a block of uncompressed sound.
    static std::int64_t entriesOf(const Track& track)
    {
        if (!track.isSound || !track.evenTimes) {
            return track.samples;
        }
        std::int64_t blocks = 0;
        for (std::size_t i = 0; i < track.runs.size(); ++i) {
            const std::int64_t next = i + 1 < track.runs.size() ? track.runs[i + 1].first : track.chunks + 1;
            const std::int64_t chunks = std::clamp<std::int64_t>(next - track.runs[i].first, 0, track.chunks);
            blocks = std::min(kMostSamples + 1, blocks + chunks * (track.runs[i].second / kSamplesPerBlock + 1));
        }
        return blocks;
    }

    const int descriptor_;
    const std::int64_t byteCount_;
    const Patience& patience_;
    std::int64_t samples_ = 0;
    Track track_;
};

} // namespace

bool claimsTooManySamples(int descriptor, std::int64_t byteCount, const Patience& patience)
{
    const std::int64_t samples = Claims(descriptor, byteCount, patience).samples();
    return samples > byteCount || samples > kMostSamples;
}

} // namespace twcore
