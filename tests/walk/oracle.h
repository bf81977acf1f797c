#pragma once

// What must be seen and heard behind each command, by what was before it: a rule a command, in as few words as it
// allows. Where a command has a freedom that nobody minds (the gaps that a paste keeps, how far a delete draws out what
// lies behind it, the media at which a stretched piece is divided), the rule takes what it finds, within bounds.

#include "walk/rules.h"

namespace walk_test {

class Oracle {
public:
    /// What is wrong behind a line; empty when nothing is.
    std::string wrongBehind(const Words& words, const Timeline& before, const Timeline& now);

    /// The overlays on the clipboard have gaps, which their transitions do not keep.
    bool hasClippedGaps() const { return clips_[kOverlay].span > 0; }

private:
    std::array<Clip, kRows.size()> clips_;
};

} // namespace walk_test
