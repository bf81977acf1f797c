#pragma once

// The packets of a medium's picture by number, in the order in which they are stored, each where it is shown: for whom
// would copy them. A medium that shows them in another order has none at the times in question.
//
// Serves one thread. Nothing is decoded here.

#include "twcore/media/picture_listing.h"
#include "twcore/media/picture_packets.h"

#include <map>
#include <memory>
#include <mutex>
#include <optional>

namespace twcore {

/// The lists of the media of one movie: each stays the same for all who copy, also when one of them finds it wrong, or
/// what is copied would depend on who comes first. Any thread.
class SourceLists {
public:
    /// nullptr when there is none, or patience was over.
    PictureListing::Index of(const MediaFilePtr& media, const Patience& patience);

private:
    std::mutex mutex_; // guards what follows
    std::map<const MediaFile*, PictureListing::Index> lists_;
};

class SourcePackets {
public:
    /// nullptr when the file cannot be read by packets, or is of a format whose packets nobody copies.
    static std::unique_ptr<SourcePackets> open(const MediaFilePtr& media, SourceLists& lists, const Patience& patience);
    virtual ~SourcePackets() = default;

    virtual const AVStream& stream() const noexcept = 0;
    /// The packet whose picture is shown at a media time in seconds; nothing where none is. Numbers hold until an
    /// earlier time is asked for.
    virtual std::optional<std::size_t> at(double seconds) = 0;
    /// Whether there is a packet of that number, none lower than the last answer's, and it is a key frame.
    virtual bool exists(std::size_t number) = 0;
    virtual bool isKey(std::size_t number) = 0;
    /// The packet as it would stand in an AVI; nullptr when it is not what the file has told.
    virtual PacketPtr read(std::size_t number) = 0;
    /// No packet below will be asked for, but by its time.
    virtual void passBy(std::size_t) {}
    /// What the file has told turned out to be wrong.
    virtual void distrust() {}
};

} // namespace twcore
