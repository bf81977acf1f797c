#pragma once

// The numbered error of the program: what a routine's trap tells its cases by.

#include <cstdint>
#include <stdexcept>
#include <string>

namespace engine {

/// A run-time error. Its number is one of the program's own (6 overflow, 11 division by zero, 13 wrong type,
/// 53 file not found, ...) or, after a failed engine call, that call's status code as a signed number.
class RuntimeError : public std::runtime_error {
public:
    RuntimeError(std::int32_t number, const std::string& text) : std::runtime_error(text), number_(number) {}

    std::int32_t number() const noexcept { return number_; }

private:
    std::int32_t number_;
};

namespace error_number {
inline constexpr std::int32_t kInvalidCall = 5;
inline constexpr std::int32_t kOverflow = 6;
inline constexpr std::int32_t kDivisionByZero = 11;
inline constexpr std::int32_t kTypeMismatch = 13;
inline constexpr std::int32_t kPathFileAccess = 75;
inline constexpr std::int32_t kObjectNotSet = 91;
inline constexpr std::int32_t kNoSuchClass = 429;
inline constexpr std::int32_t kNoSuchInterface = 430;
} // namespace error_number

} // namespace engine
