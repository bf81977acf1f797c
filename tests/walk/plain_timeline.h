#pragma once

// A timeline as plain lists, for working out what a command must leave: no engine behind it, and none of the program's
// code. Times in ms.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace walk_test {

struct Item {
    std::int64_t start = 0;
    std::int64_t stop = 0;
    std::int64_t mediaStart = 0; // of sources
    std::int64_t mediaStop = 0;
    std::string name;
    bool selected = false;
    int slack = 0; // ms by which start and media start may differ: they were rounded on the way

    std::int64_t length() const { return stop - start; }
    std::int64_t mediaLength() const { return mediaStop - mediaStart; }
    double rate() const { return static_cast<double>(length()) / static_cast<double>(mediaLength()); }
};

/// One row's items in their order.
struct Lane {
    std::vector<Item> items;
    bool locked = false;
    bool linked = true;

    int count() const { return static_cast<int>(items.size()); }
    Item& at(int seq) { return items[static_cast<std::size_t>(seq)]; }
    const Item& at(int seq) const { return items[static_cast<std::size_t>(seq)]; }
    std::int64_t end() const { return items.empty() ? 0 : items.back().stop; }
    /// -1 without one.
    int firstSelected(int from = 0) const;
    /// The first that holds the time, both ends counted; -1 without one.
    int holding(std::int64_t time) const;

    void insert(int seq, Item item);
    /// To the left as far as the item ahead, or 0, lets the first of them.
    void shift(int fromSeq, std::int64_t delta);
    /// Whoever overlaps the one ahead moves to its end.
    void makeRoom();
};

enum Row : std::uint8_t { kVideo, kAudio1, kAudio2, kOverlay, kEffects };
inline constexpr std::array kRows{kVideo, kAudio1, kAudio2, kOverlay, kEffects};
inline constexpr std::array kSourceRows{kVideo, kAudio1, kAudio2, kOverlay};

struct Range {
    std::int64_t start = 0;
    std::int64_t stop = 0;
};

struct Media {
    std::string name;
    std::int64_t length = 0;
    bool hasPicture = false;
    bool hasSound = false;
};

/// A record of the clipboard.
struct Clip {
    Item piece;  // its length and media; of a gap the length alone
    int seq = 0; // in its run
    bool isGap = false;
};

struct PlainTimeline {
    std::array<Lane, kRows.size()> lanes;
    std::array<std::vector<Clip>, kRows.size()> clipboard; // the last run of each row
    std::int64_t slider = 0;
    std::optional<Range> range; // between the selection sliders, when they are shown

    Lane& lane(Row row) { return lanes[row]; }
    const Lane& lane(Row row) const { return lanes[row]; }
    bool isEmpty() const;
    /// The end of the longest row; effects do not count.
    std::int64_t duration() const;
};

} // namespace walk_test
