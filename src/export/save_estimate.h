#pragma once

// What can be said of a running save ahead of its end. Plain values.

#include "engine/types.h"

#include <cstdint>
#include <string>

namespace exporting {

class SaveEstimate {
public:
    /// nowMs: a clock that turns over, as `Events::ticks`.
    SaveEstimate(engine::Milliseconds length, std::uint32_t nowMs) : length_(length), begin_(nowMs) {}

    /// How much of the movie is saved, and how long its file is by now.
    void note(engine::Milliseconds saved, std::int64_t fileBytes, std::uint32_t nowMs);

    // Texts for people; empty as long as too little is known.
    std::string timeLeft() const; // "0:01:05 left"
    std::string speed() const;    // "12.3 times as fast as it plays"
    std::string size() const;     // "about 1.2 GB in the end"

private:
    bool isKnown() const { return saved_ > 0 && elapsedMs_ >= kFirstMs; }

    static constexpr std::uint32_t kFirstMs = 1000; // what comes earlier says little of the rest

    engine::Milliseconds length_;
    std::uint32_t begin_;
    engine::Milliseconds saved_ = 0;
    std::int64_t fileBytes_ = 0;
    std::uint32_t elapsedMs_ = 0;
};

} // namespace exporting
