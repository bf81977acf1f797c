#pragma once

// The size of a picture, from a list of usual ones or typed, as several dialogues ask for it: the state of their
// controls, and what they do. Interface thread only.

#include "core/controls.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

struct DimensionBoxes {
    ComboBox cboDimension; // "640 x 480" and so on; the last is `kCustom`
    Shown<bool> fmeCustomPreviewEnabled{false};
    TextBox txtWidth, txtHeight; // pixels; a number that the lock has written may have a fraction
    Shown<bool> lblIntoEnabled{false};
    CheckBox chkLockAspectRatio;

    double AspectRatio = 4.0 / 3;   // width to height, which the lock keeps
    bool DimensionGuard = true;     // false while one of the boxes is written by the lock
    std::int32_t CustomWidth = 320; // pixels, accepted last
    std::int32_t CustomHeight = 240;
    std::int32_t Limit = 0; // a side is below it, and not below 0; 0: whatever is typed stands
};

namespace dimension {

inline constexpr const char* kCustom = "Custom";

/// Empties the boxes and makes them answer: the list on a choice, the boxes on a change, each other by the lock.
/// changed: behind each of these; may be none.
void reset(DimensionBoxes& boxes, std::vector<std::string> list, std::int32_t limit,
           std::function<void()> changed = nullptr);
/// Chooses that entry; what the list does not hold is put into the boxes as the person's own, or, where a side is over
/// their limit, into the list.
void choose(DimensionBoxes& boxes, std::string_view text);
/// One side as it stands in its box, rounded with ties to even. Nothing when it is no number of 16 bits.
std::optional<std::int16_t> sideIn(const TextBox& box);
/// Both.
std::optional<std::pair<std::int16_t, std::int16_t>> sizeIn(const DimensionBoxes& boxes);

/// "640 x 480"
std::string textOf(std::int32_t width, std::int32_t height);

} // namespace dimension
