#pragma once

// The room between the header and the pictures of an AVI, for the descriptive fields in it.
//
//     RIFF AVI [ LIST hdrl | LIST INFO ..., JUNK ... | LIST movi ... idx1 ]  RIFF AVIX ...
//                          ^---- the room -----------^
//
// Fields are written over the room in place. Where it is too small, a copy of the file gets a larger one, and the
// places that its indexes name are moved by as much.

#include "twcore/save/movie_fields.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace twcore {

class AviHeader {
public:
    /// nullopt when the file is no AVI, or a damaged one.
    static std::optional<AviHeader> read(int descriptor);

    std::uint64_t roomStart() const noexcept { return roomStart_; }
    std::size_t roomSize() const noexcept { return roomSize_; }
    /// The least size that `room` takes.
    std::size_t leastRoom() const;
    /// Puts the fields that are not blank in; the others stay as they are.
    void set(const MovieFields& fields);
    /// The room in `size` bytes; empty when it does not fit.
    std::vector<std::uint8_t> room(std::size_t size) const;
    /// In a copy whose room has grown by `growth`: the sizes and places that follow from it. False when the disk
    /// refuses or the file would break the format's limits.
    bool moveIndexes(int copy, std::uint64_t growth) const;

private:
    struct Chunk {
        std::string name; // four letters
        std::vector<std::uint8_t> body;
    };

    bool moveSuperIndex(int copy, std::uint64_t at, std::uint64_t size, std::uint64_t growth) const;
    bool moveOldIndex(int copy, std::uint64_t growth) const;

    std::uint64_t headerStart_ = 0; // of the first chunk inside LIST hdrl
    std::uint64_t roomStart_ = 0;
    std::size_t roomSize_ = 0;
    std::vector<Chunk> fields_; // what LIST INFO holds
    std::vector<Chunk> others_; // what else stands in the room
};

} // namespace twcore
