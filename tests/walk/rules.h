#pragma once

// What a command must leave of a timeline: a rule each, which works out `Command::t`. For the oracle alone.

#include "app/edit_words.h"
#include "walk/pieces.h"

#include <array>
#include <string_view>

namespace walk_test {

/// The pieces of one row that were cut or copied. With gaps between them, the length of the range that they were in.
struct Clip {
    Pieces pieces;
    Ms span = 0;
    bool isOpen = false; // one that nothing can be worked out for was in the range: which gaps stay is left open
};

/// One command.
struct Command {
    const Words& words;
    const Timeline& before;
    const Timeline& now;
    std::array<Clip, kRows.size()>& clips;
    Timeline t{before}; // as the command asks for it

    bool is(std::string_view word) const { return words.front() == word; }
    Ms number(std::size_t at) const { return std::stoi(words.at(at)); }
    std::ptrdiff_t seq(std::size_t at) const { return number(at); }
    Row row(std::size_t at) const { return static_cast<Row>(app::trackNamed(words.at(at)).value()); }
    bool isClipping() const { return is("cut") || is("copy"); }
    bool isCrop() const { return is("crop") || is("crop-sources"); }
};

// Ranges, whole pieces, and the clipboard.
void edit(Command& c);
void paste(Command& c);
void split(Command& c);
void pack(Command& c);
void restore(Command& c);
// How it looks.
void keyColour(Command& c);
void stretchMode(Command& c);
void title(Command& c);
// By hand, and what lets the rest follow.
void drag(Command& c);
void resize(Command& c);
void nudge(Command& c);
void trim(Command& c);
void closeGap(Command& c);
void insert(Command& c);

} // namespace walk_test
