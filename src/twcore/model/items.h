#pragma once

// What lies on a track, as the track keeps it: a placement and what the item is. The plain values that leave the
// timeline are in `timeline_snapshot.h`.

#include "engine/types.h"
#include "twcore/model/placement.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace twcore {

struct Source : Placement {
    engine::Handle stream = 0;
    std::int16_t stretchMode = 0;
};

struct Effect : Placement {
    std::string name;
};

struct KeyColor {
    std::int16_t red = 0; // 0 to 255, as the other two
    std::int16_t green = 0;
    std::int16_t blue = 0;
};

constexpr KeyColor keyColor(std::int16_t red, std::int16_t green, std::int16_t blue) noexcept
{
    constexpr std::int16_t kLow = 0;
    constexpr std::int16_t kHigh = 255;
    return {std::clamp(red, kLow, kHigh), std::clamp(green, kLow, kHigh), std::clamp(blue, kLow, kHigh)};
}

using KeyParameters = std::vector<std::pair<std::string, std::int32_t>>;

/// Sets the one of that name, which is added when it is not there.
inline void setParameter(KeyParameters& parameters, std::string_view name, std::int32_t value)
{
    for (auto& [known, kept] : parameters) {
        if (known == name) {
            kept = value;
            return;
        }
    }
    parameters.emplace_back(name, value);
}

struct Transition : Placement {
    std::string name;
    KeyColor color;
    KeyParameters parameters; // in the order in which they were first set
};

} // namespace twcore
