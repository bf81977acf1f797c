#pragma once

// An image of the state as the objects of a journal, and back. An object is a row of an image, the media table, what
// the work was begun over, or the root that names them all; rows that are alike in several images are one object.
//
// Pure: any thread, one object one thread.

#include "journal/objects.h"
#include "journal/state_image.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace journal {

/// What the project's file was when the work on it began.
struct Origin {
    bool isThere = false;
    std::uint64_t byteCount = 0;
    std::uint64_t hash = 0;

    bool operator==(const Origin&) const = default;
};

class StateWriter {
public:
    /// From now on all is written anew.
    void forget();
    /// What leads from the image before to this one. time: seconds since 1970.
    std::string difference(const StateImage& image, const Origin& origin, std::int64_t time);
    std::size_t byteCount() const { return objects_.byteCount(); }

private:
    static constexpr std::size_t kLanes = 6;
    struct Piece {
        Records records;
        std::array<ObjectNumber, kLanes> lanes{};
    };

    const Piece& pieceOf(const Records& records, const Tracks& tracks, ByteWriter& changes);
    ObjectNumber numberOf(std::size_t lane, std::string bytes, ByteWriter& changes);
    void putRoot(const StateImage& image, ByteWriter& changes);
    void putLanes(const Records& records, const Tracks& tracks, ByteWriter& root, ByteWriter& changes);
    void dropUnused(ByteWriter& changes);

    Objects objects_;
    ObjectNumber next_ = kFirstOther;
    std::vector<Piece> before_; // of the image before
    std::vector<Piece> pieces_; // of this one
    std::shared_ptr<const MediaTable> media_;
    std::optional<Origin> origin_;
    bool isNew_ = true;
};

/// Sources stand on tracks 1 to 3, overlays on 4. Raises `Broken`; whatever the bytes are, what comes out is in bounds.
StateImage readState(const Objects& objects, Origin& origin);

} // namespace journal
