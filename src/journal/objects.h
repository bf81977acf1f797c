#pragma once

// What a journal holds: byte strings by number, and the differences that lead from one set of them to the next. Pure.
//
//     difference   i64 time (s) | u8 1: from nothing | changes
//     change       u8 1 | number | number of its base, 0 none | bytes of the base's head and tail that stay | the
//     middle
//                  u8 2 | number, which goes

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace journal {

class ByteReader;
class ByteWriter;

using ObjectNumber = std::uint32_t;
inline constexpr ObjectNumber kRoot = 1;
inline constexpr ObjectNumber kFirstOther = 16;
inline constexpr std::size_t kMostBytes = std::size_t{256} << 20; // of all objects

class Objects {
public:
    /// Nothing when there is none of that number.
    const std::string* find(ObjectNumber number) const;
    std::size_t byteCount() const { return byteCount_; }
    std::int64_t time() const { return time_; } // of the last difference; seconds since 1970

    /// Takes a difference in. Raises `Broken`, and all is as it was then.
    void apply(std::string_view difference);

    // The other side: each makes a change and writes it down.
    void clear();
    void set(ObjectNumber number, ObjectNumber base, std::string bytes, ByteWriter& changes);
    void drop(ObjectNumber number, ByteWriter& changes);

private:
    using Changes = std::map<ObjectNumber, std::optional<std::string>>; // nothing: it goes

    std::pair<ObjectNumber, std::optional<std::string>> takeChange(ByteReader& reader, const Changes& changes,
                                                                   bool isFromNothing, std::size_t& byteCount) const;
    void put(ObjectNumber number, std::string bytes);
    void remove(ObjectNumber number);

    std::map<ObjectNumber, std::string> objects_;
    std::size_t byteCount_ = 0;
    std::int64_t time_ = 0;
};

} // namespace journal
