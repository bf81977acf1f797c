#pragma once

// The next line of a random walk, drawn from what lies on the timeline.

#include "walk/oracle.h"

#include <random>
#include <string>
#include <vector>

namespace walk_test {

using Script = std::vector<std::string>;

/// What a walk begins with.
inline const Script kMedia{"media clip 3000 va", "media pic 1200 v", "media song 700 a", "media tiny 40 va",
                           "media long 25001 va"};

/// Of one line.
class Drawing {
public:
    Drawing(std::mt19937& random, const Timeline& timeline) : random_(random), timeline_(timeline) {}

    std::string line();

private:
    int pick(std::int64_t choices);
    std::string word(const std::string& choices);
    const Piece& any(const Pieces& lane);
    const Pieces& anyLane();
    int seq();
    std::int64_t time();
    std::string range();
    std::string span();
    std::string media();
    bool mayRepeat() const;

    std::mt19937& random_;
    const Timeline& timeline_;
    Row row_ = kVideo; // of the line
    int length_ = 0;   // of its span
};

} // namespace walk_test
