#pragma once

// Numbers that may not fit: conversions to 16 and 32 bits, and arithmetic in them.
//
// A result is worked out wider and narrowed once; what does not fit raises error 6, a division by 0 error 11, a text
// that is no number error 13. A fraction goes to the nearest whole number, ties to the even one.

#include "engine/runtime_error.h"

#include <charconv>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <string_view>

namespace numbers {

[[noreturn]] inline void raiseOverflow() { throw engine::RuntimeError(engine::error_number::kOverflow, "Overflow"); }

/// `value` as a narrower whole number. Raises error 6.
template <std::signed_integral To>
constexpr To narrowed(std::int64_t value)
{
    if (value < std::numeric_limits<To>::min() || value > std::numeric_limits<To>::max()) {
        raiseOverflow();
    }
    return static_cast<To>(value);
}

/// `value` rounded to the nearest whole number, ties to even. Raises error 6, also for what is no number.
template <std::signed_integral To>
To rounded(double value)
{
    const double even = value - std::remainder(value, 1.0);
    if (!(even >= static_cast<double>(std::numeric_limits<To>::min())
          && even < -static_cast<double>(std::numeric_limits<To>::min()))) {
        raiseOverflow();
    }
    return static_cast<To>(even);
}

template <std::signed_integral T>
requires(sizeof(T) <= 4) constexpr T added(T a, T b) { return narrowed<T>(std::int64_t{a} + b); }

template <std::signed_integral T>
requires(sizeof(T) <= 4) constexpr T subtracted(T a, T b) { return narrowed<T>(std::int64_t{a} - b); }

template <std::signed_integral T>
requires(sizeof(T) <= 4) constexpr T multiplied(T a, T b) { return narrowed<T>(std::int64_t{a} * b); }

/// A text, blanks around it allowed, as a real number with a point. Raises error 13.
inline double fromText(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t");
    const auto last = text.find_last_not_of(" \t");
    double value = 0;
    if (first != std::string_view::npos) {
        text = text.substr(first, last - first + 1);
        text.remove_prefix(text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error == std::errc{} && end == text.data() + text.size() && std::isfinite(value)) {
            return value;
        }
    }
    throw engine::RuntimeError(engine::error_number::kTypeMismatch, "Type mismatch");
}

} // namespace numbers
