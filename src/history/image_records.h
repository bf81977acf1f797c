#pragma once

// Records of timeline images: plain values, small, without memory of their own. Times are ms.

#include "engine/types.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ModuleHistory {

/// A name of at most 20 bytes, without blanks and NULs at its ends; what is longer is cut.
class ShortName {
public:
    ShortName() = default;
    /// From a text, or from a buffer that the engine has filled.
    explicit ShortName(std::string_view text)
    {
        constexpr std::string_view kFill(" \0", 2);
        const auto first = text.find_first_not_of(kFill);
        if (first != std::string_view::npos) {
            text = text.substr(first, std::min(text.find_last_not_of(kFill) + 1 - first, text_.size()));
            std::ranges::copy(text, text_.begin());
            length_ = static_cast<std::uint8_t>(text.size());
        }
    }

    std::string_view text() const { return {text_.data(), length_}; }
    bool empty() const { return length_ == 0; }
    bool operator==(const ShortName&) const = default;

private:
    std::array<char, 20> text_{};
    std::uint8_t length_ = 0;
};

struct SourceImage {
    engine::Milliseconds Start = 0;
    engine::Milliseconds Stop = 0;
    engine::Milliseconds MediaStart = 0;
    engine::Milliseconds MediaStop = 0;
    engine::Handle Stream = 0;
    engine::Handle Track = 0;
    std::int16_t Seq = 0; // on its track
    std::int16_t StretchMode = 0;

    bool operator==(const SourceImage&) const = default;
};

struct EffectImage {
    engine::Handle Track = 0;
    engine::Milliseconds Start = 0;
    engine::Milliseconds Stop = 0;
    ShortName Name;

    bool operator==(const EffectImage&) const = default;
};

/// The transition of the overlay source of the same place. Without a name there was none.
struct TransitionImage {
    engine::Handle Track = 0;
    engine::Milliseconds Start = 0;
    engine::Milliseconds Stop = 0;
    std::int16_t KeyRed = 0; // 0 to 255, as the other two
    std::int16_t KeyGreen = 0;
    std::int16_t KeyBlue = 0;
    ShortName Name;

    bool operator==(const TransitionImage&) const = default;
};

/// All that lies on the tracks. Items of one place in the last two belong together.
struct ImageRecords {
    std::vector<SourceImage> Sources; // of the video and audio tracks, track by track
    std::vector<EffectImage> Effects;
    std::vector<TransitionImage> Transitions;
    std::vector<SourceImage> OverlaySources;

    bool operator==(const ImageRecords&) const = default;
};

/// Of operations on files. No command fills it; it is carried along.
struct FileImage {};

} // namespace ModuleHistory
