#include "twcore/media/mov_claims.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace twcore {

namespace {

// A day of film at 240 pictures a second has its place in this.
constexpr std::int64_t kMostMemory = 768 << 20;
constexpr std::int64_t kFragmentsBytes = 64 << 20;
constexpr std::int64_t kEntryMemory = 24; // of a sample, or of a block of uncompressed sound
constexpr std::int64_t kOffsetMemory = 8; // of a sample that is shown at another time than it is decoded
constexpr std::int64_t kBlockSamples = 1024;

constexpr std::array<std::string_view, 7> kContainers{"moov", "trak", "mdia", "minf", "stbl", "moof", "traf"};

/// Tables that tell their number of entries behind four bytes of version and flags.
struct Table {
    std::string_view type;
    std::int64_t storedBytes; // of each entry
    std::int64_t memory;
};
constexpr std::array<Table, 8> kTables{{{"stts", 8, 8},
                                        {"ctts", 8, 8},
                                        {"stss", 4, 4},
                                        {"stps", 4, 4},
                                        {"sbgp", 8, 8},
                                        {"stsc", 12, 12},
                                        {"stco", 4, 8},
                                        {"co64", 8, 8}}};
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

    /// Whether what is claimed is more than the file's bytes can carry, or than memory is taken for.
    bool areTooMany() const { return entries_ > byteCount_ || memory_ > kMostMemory; }

private:
    /// What the tables of one track tell.
    struct Track {
        bool isSound = false;
        std::int64_t samples = 0;
        std::int64_t chunks = 0;
        bool evenTimes = false;  // one after the other at the track's own rate
        bool hasOffsets = false; // from decoding to showing
        std::int64_t blockSamples = kBlockSamples;
        std::int64_t runsAt = 0; // each: from a chunk on, so many samples in each chunk
        std::int64_t runCount = 0;
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
        while (at + kHeadBytes <= end && !areTooMany() && !patience_.over()) {
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
                    addSamples(entriesOf(track_), track_.hasOffsets);
                    track_ = {};
                }
            } else if (depth > 0) {
                take(type, at + head, at + size);
            }
            at += size;
        }
    }

    void addSamples(std::int64_t count, bool haveOffsets)
    {
        entries_ += count;
        memory_ += count * (kEntryMemory + (haveOffsets ? kOffsetMemory : 0));
    }

    /// A table is read as far as it claims to go, and be it behind the end of its box.
    std::int64_t carried(std::int64_t count, std::int64_t at, std::int64_t bits) const
    {
        return std::min(count, (byteCount_ - at) * 8 / bits);
    }

    void take(std::string_view type, std::int64_t at, std::int64_t end)
    {
        const auto table = std::ranges::find(kTables, type, &Table::type);
        const std::int64_t count = number(at + 4);
        if (table != kTables.end()) {
            memory_ += carried(count, at + 8, table->storedBytes * 8) * table->memory;
        }
        if (type == "hdlr") { // QuickTime tells a second one, of where the data are
            const std::int64_t kind = number(at + 8);
            track_.isSound = kind == 0x736F756E || (track_.isSound && kind != 0x76696465); // "soun", "vide"
        } else if (type == "stsd") {
            track_.blockSamples = blockSamplesAt(at + 8);
        } else if (type == "stsz" || type == "stz2") {
            takeSizes(type == "stsz", at);
        } else if (type == "stts") {
            track_.evenTimes = count == 1 && number(at + 12) == 1;
        } else if (type == "ctts") {
            track_.hasOffsets = true;
        } else if (type == "sdtp") {
            memory_ += end - at;
        } else if (type == "stco" || type == "co64") {
            track_.chunks = std::max(track_.chunks, count);
        } else if (type == "stsc") {
            track_.runsAt = at + 8;
            track_.runCount = std::min(count, (end - at - 8) / kRunBytes);
        } else if (type == "trun") {
            addSamples(count, true);
        }
    }

    void takeSizes(bool ofWholeBytes, std::int64_t at)
    {
        constexpr std::int64_t kSizeMemory = 4;
        const std::int64_t count = number(at + 8);
        const std::int64_t bits = ofWholeBytes ? 32 : std::clamp<std::int64_t>(number(at + 7, 1), 4, 16);
        track_.samples = std::max(track_.samples, count);
        if (!ofWholeBytes || number(at + 4) == 0) { // else all have the same
            memory_ += carried(count, at + 12, bits) * kSizeMemory;
        }
    }

    /// Samples of uncompressed sound that are one entry, by the description of the sound that begins here.
    std::int64_t blockSamplesAt(std::int64_t at) const
    {
        constexpr std::int64_t kWholePackets = 160; // so many samples to a packet, and each is an entry
        if (number(at + 4) == 0x6167736D) {         // "agsm"
            return kWholePackets;
        }
        const std::int64_t version = number(at + 16, 2);
        const std::int64_t packet = version == 1 ? number(at + 36) : version == 2 ? number(at + 68) : 1;
        if (packet >= kWholePackets) {
            return std::min(packet, kBlockSamples);
        }
        return packet > 1 ? kBlockSamples / packet * packet : kBlockSamples;
    }

    /// Entries that the track is laid out in: one a sample, or one a block of uncompressed sound.
    std::int64_t entriesOf(const Track& track) const
    {
        if (!track.isSound || !track.evenTimes) {
            return track.samples;
        }
        constexpr std::int64_t kRunsAtOnce = 4096;
        std::vector<std::uint8_t> bytes;
        std::int64_t entries = 0;
        std::int64_t from = 0; // of the run in hand
        std::int64_t blocks = 0;
        const auto addUpTo = [&](std::int64_t chunk) {
            const std::int64_t chunks = std::clamp<std::int64_t>(chunk - from, 0, track.chunks);
            entries = std::min(kMostMemory, entries + chunks * blocks);
            from = chunk;
        };
        for (std::int64_t done = 0; done < track.runCount && !areTooMany(); done += kRunsAtOnce) {
            bytes.resize(static_cast<std::size_t>(std::min(kRunsAtOnce, track.runCount - done) * kRunBytes));
            if (patience_.over() || !readAt(track.runsAt + done * kRunBytes, bytes)) {
                break;
            }
            for (std::size_t i = 0; i < bytes.size(); i += kRunBytes) {
                addUpTo(bigEndian(std::span(bytes).subspan(i, 4)));
                const std::int64_t samples = bigEndian(std::span(bytes).subspan(i + 4, 4));
                blocks = (samples + track.blockSamples - 1) / track.blockSamples;
            }
        }
        addUpTo(track.chunks + 1);
        return entries;
    }

    const int descriptor_;
    const std::int64_t byteCount_;
    const Patience& patience_;
    std::int64_t entries_ = 0;
    std::int64_t memory_ = 0;
    Track track_;
};

} // namespace

bool claimsTooMuch(int descriptor, std::int64_t byteCount, const Patience& patience)
{
    return Claims(descriptor, byteCount, patience).areTooMany();
}

} // namespace twcore
