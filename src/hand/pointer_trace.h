#pragma once

// What a pointer event is called in the error log: its routine and its values.

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

namespace hand {

/// "picAudio_MouseMove - Index: 0, X: 12, Y: 3.5", and `mark` behind it: "*" for events that repeat by themselves.
inline std::string pointerTrace(std::string_view event, std::int16_t index, float x, float y,
                                std::string_view mark = {})
{
    const auto inWords = [](float value) {
        char text[48];
        return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
    };
    std::string trace(event);
    trace += " - Index: " + std::to_string(index) + ", X: " + inWords(x) + ", Y: " + inWords(y);
    return trace.append(mark);
}

} // namespace hand
