#pragma once

// Where every picture of a stream stands, for files whose time stamps alone cannot be trusted to find one.
//
// Packets are numbered in the order in which they are stored (the ordinal) and pictures in the order in which they are
// shown (the slot). The order of showing is that of the presentation times where the format writes them; else, as in
// AVI, it is worked out from the kinds of the pictures, and the slots take the stored times in their order, so that a
// missing time means that the picture before it stays longer.
//
// Where the file brings a list of its packets that fits, only the kinds of the pictures are read, when they are asked
// for. Any thread may ask.

#include "twcore/media/media_file.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

namespace twcore {

class PictureOrder;

/// Seconds by which a stamp may be off, where it is none of whole milliseconds.
inline constexpr double kStampTolerance = 0.00001;

/// A file's own list of its packets turned out not to fit them: they have to be listed by reading them.
struct ListedWrongly : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Of a list taken from the file itself, whatever asks for an order of showing may throw ListedWrongly.
class PictureIndex {
public:
    struct Packet {
        std::int64_t position;   // in the file, -1 when the format does not tell
        std::int64_t storedTime; // of decoding, in the stream's time base, running on over a break of the clock
        std::int64_t decodeTime; // the same, and a damaged one mended
        std::int32_t byteCount;
        bool isKey;
    };

    using Publish = std::function<void(std::shared_ptr<const PictureIndex>)>;

    /// Lists the packets by reading the whole file. nullptr when nothing could be read or patience was over. On the way
    /// `partly`, if there is one, is given lists of the beginning, each twice as long as the one before.
    static std::shared_ptr<const PictureIndex> build(const MediaFile& media, const Patience& patience,
                                                     const Publish& partly = {});
    /// From the list that the file brings itself, next to nothing of it is read. nullptr when there is none that fits.
    static std::shared_ptr<const PictureIndex> fromFile(const MediaFile& media, const Patience& patience);

    bool isFromFile() const noexcept { return isFromFile_; }
    /// Before this time, in seconds of the file's own time, a list of the beginning says what the whole one will say.
    double knownUpTo() const noexcept { return knownUpTo_; }

    std::size_t count() const noexcept { return packets_.size(); }
    const Packet& packet(std::size_t ordinal) const { return packets_[ordinal]; }
    std::size_t slotOf(std::size_t ordinal) const;
    /// Whether pictures come out with packets behind their own, so that the decoder needs all of them.
    bool isPacked() const noexcept;
    /// Seconds in the file's own time at which the slot begins; for the slot behind the last, its end.
    double startOfSlot(std::size_t slot) const { return slotStarts_[slot]; }
    /// The slot that holds the time; the first one for an earlier time, the last one for a later.
    std::size_t slotAt(double seconds) const;
    /// The key frame to decode from so that the picture of the slot comes out whole: a picture shown ahead of its own
    /// key frame leans on the group before.
    std::size_t keyOrdinalFor(std::size_t slot) const;
    /// The number of a packet that was read after a jump; nullopt when it is not whole or not known.
    std::optional<std::size_t> identify(std::int64_t position, std::int64_t storedTime, int byteCount) const;

private:
    struct Scanned;
    struct Clock;
    std::shared_ptr<PictureIndex> beginning(std::vector<Scanned>& scanned, const MediaFile& media,
                                            const Clock& clock) const;
    void mendLeads(std::vector<Scanned>& scanned, const Clock& clock) const;
    void finish(std::vector<Scanned>& scanned, const MediaFile& media, const Clock& clock);
    std::size_t ordinalOf(std::size_t slot) const;
    void arrange(const std::vector<Scanned>& scanned, const Clock& clock, double frameSeconds);

    std::vector<Packet> packets_;
    std::vector<std::uint32_t> slotOfOrdinal_;
    std::vector<std::uint32_t> ordinalOfSlot_;
    std::vector<double> slotStarts_; // one more than slots
    std::vector<std::pair<std::int64_t, std::uint32_t>>
        byPosition_; // sorted; by decode time where there are no positions
    bool hasPositions_ = true;
    std::shared_ptr<PictureOrder> order_; // where the order of showing is worked out when it is asked for
    bool isFromFile_ = false;
    bool isPacked_ = false;
    double knownUpTo_ = std::numeric_limits<double>::infinity();
};

} // namespace twcore
