#pragma once

// One record of the error log as text. Interface thread only; raises nothing but what the ports and memory raise.

#include <cstdint>
#include <string>

namespace error_record {

/// What a trap tells of an error.
struct ErrorFacts {
    std::string description;
    std::string number;
    std::string module;
    std::string function;
};

/// The record: a label and a value on each line, lines ending in CR LF, the last line one blank. Line ends in a value
/// become blanks. What a failing engine cannot tell is 0, or empty for a text.
std::string asText(const ErrorFacts& facts);

/// The end of the last source on any track in ms; 0 also when the engine fails.
std::int32_t timelineDurationMs() noexcept;

} // namespace error_record
