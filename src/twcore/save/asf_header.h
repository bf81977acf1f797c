#pragma once

// The header of a Windows Media file as its list of objects, for the descriptive fields in it.
//
//     header:   [properties][streams]...[content description][extended content description][padding] | data ...
//
// Fields are written over the header in place: what they need is taken from the padding, and what they leave goes back
// to it. The data behind the header never move.

#include "twcore/save/movie_fields.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace twcore {

class AsfHeader {
public:
    /// nullopt when the file has no such header, or a damaged one.
    static std::optional<AsfHeader> read(int descriptor);

    std::size_t size() const noexcept { return size_; }
    /// Puts the fields that are no blanks in; the others stay as they are.
    void set(const MovieFields& fields);
    /// The header in `size` bytes, filled with padding; empty when it does not fit.
    std::vector<std::uint8_t> bytes(std::size_t size) const;
    /// The least size that `bytes` takes.
    std::size_t leastSize() const;
    /// For a file that has grown.
    void setFileSize(std::uint64_t size);

private:
    using Guid = std::array<std::uint8_t, 16>;
    struct Object {
        Guid guid;
        std::vector<std::uint8_t> body;
    };

    Object& objectOf(const Guid& guid);
    void setContent(const MovieFields& fields);
    void setExtended(const MovieFields& fields);

    std::size_t size_ = 0;
    std::array<std::uint8_t, 2> reserved_{};
    std::vector<Object> objects_; // without padding

    friend bool emptyExtendedFields(int descriptor);
};

/// Makes the extended content description of a file's header padding of the same size. False when that fails.
bool emptyExtendedFields(int descriptor);

} // namespace twcore
