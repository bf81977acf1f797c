#pragma once

// Where every picture of a stream stands, for files whose time stamps alone cannot be trusted to find one.
//
// Packets are numbered in the order in which they are stored (the ordinal) and pictures in the order in which they are
// shown (the slot). The order of showing is that of the presentation times where the format writes them; else, as in
// AVI, it is worked out from the kinds of the pictures, and the slots take the stored times in their order, so that a
// missing time means that the picture before it stays longer.

#include "twcore/media/media_file.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace twcore {

class PictureIndex {
public:
    struct Packet {
        std::int64_t position;   // in the file, -1 when the format does not tell
        std::int64_t decodeTime; // in the stream's time base
        std::int32_t byteCount;
        bool isKey;
    };

    /// Lists the packets by reading the whole file. nullptr when nothing could be read or patience was over.
    static std::shared_ptr<const PictureIndex> build(const MediaFile& media, const Patience& patience);

    std::size_t count() const noexcept { return packets_.size(); }
    const Packet& packet(std::size_t ordinal) const { return packets_[ordinal]; }
    std::size_t slotOf(std::size_t ordinal) const { return slotOfOrdinal_[ordinal]; }
    /// Seconds in the file's own time at which the slot begins; for the slot behind the last, its end.
    double startOfSlot(std::size_t slot) const { return slotStarts_[slot]; }
    /// The slot that holds the time; the first one for an earlier time, the last one for a later.
    std::size_t slotAt(double seconds) const;
    /// The key frame to decode from so that the picture of the slot comes out whole: a picture shown ahead of its own
    /// key frame leans on the group before.
    std::size_t keyOrdinalFor(std::size_t slot) const;
    /// The number of a packet that was read after a jump; nullopt when it is not whole or not known.
    std::optional<std::size_t> identify(std::int64_t position, std::int64_t decodeTime, int byteCount) const;

private:
    struct Scanned;
    void arrange(const std::vector<Scanned>& scanned, AVRational timeBase, double frameSeconds, bool timesTellOrder);

    std::vector<Packet> packets_;
    std::vector<std::uint32_t> slotOfOrdinal_;
    std::vector<std::uint32_t> ordinalOfSlot_;
    std::vector<double> slotStarts_; // one more than slots
    std::vector<std::pair<std::int64_t, std::uint32_t>>
        byPosition_; // sorted; by decode time where there are no positions
    bool hasPositions_ = true;
};

} // namespace twcore
