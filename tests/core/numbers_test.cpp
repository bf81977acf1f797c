// Numbers that may not fit: where they round to, and which error they raise.

#include "core/numbers.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>

namespace numbers_test {
namespace {

template <class Call>
std::string outcome(Call call)
{
    try {
        return std::to_string(call());
    } catch (const engine::RuntimeError& error) {
        return "error " + std::to_string(error.number());
    }
}

TEST(Numbers, RoundToTheNearestTiesToEven)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::pair<double, std::string> shorts[] = {{0.5, "0"},
                                                     {1.5, "2"},
                                                     {2.5, "2"},
                                                     {-0.5, "0"},
                                                     {-1.5, "-2"},
                                                     {-2.5, "-2"},
                                                     {2.4999, "2"},
                                                     {2.5001, "3"},
                                                     {32767.49, "32767"},
                                                     {32766.5, "32766"},
                                                     {32767.5, "error 6"},
                                                     {-32768.5, "-32768"},
                                                     {-32768.6, "error 6"},
                                                     {1e300, "error 6"},
                                                     {kInfinity, "error 6"},
                                                     {-kInfinity, "error 6"},
                                                     {std::nan(""), "error 6"},
                                                     {0.49999999999999994, "0"}};
    for (const auto& [value, expected] : shorts) {
        EXPECT_EQ(outcome([&] { return numbers::rounded<std::int16_t>(value); }), expected) << value;
    }
    const std::pair<double, std::string> longs[] = {{2147483647.4, "2147483647"},   {2147483647.5, "error 6"},
                                                    {-2147483648.5, "-2147483648"}, {-2147483649.0, "error 6"},
                                                    {1073741824.5, "1073741824"},   {1073741825.5, "1073741826"}};
    for (const auto& [value, expected] : longs) {
        EXPECT_EQ(outcome([&] { return numbers::rounded<std::int32_t>(value); }), expected) << value;
    }
}

TEST(Numbers, ArithmeticThatOverflowsRaises6)
{
    constexpr std::int16_t kMost16 = 32767;
    constexpr std::int16_t kLeast16 = -32768;
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr std::int16_t kOne16 = 1;
    const std::pair<std::string, std::string> cases[] = {
        {outcome([&] { return numbers::added(kMost16, kOne16); }), "error 6"},
        {outcome([&] { return numbers::added(kLeast16, kMost16); }), "-1"},
        {outcome([&] { return numbers::subtracted(kLeast16, kOne16); }), "error 6"},
        {outcome([&] { return numbers::multiplied(kLeast16, static_cast<std::int16_t>(-1)); }), "error 6"},
        {outcome([&] { return numbers::multiplied<std::int16_t>(181, 181); }), "32761"},
        {outcome([&] { return numbers::multiplied<std::int16_t>(182, 182); }), "error 6"},
        {outcome([&] { return numbers::added(kMost, 1); }), "error 6"},
        {outcome([&] { return numbers::subtracted(0, kLeast); }), "error 6"},
        {outcome([&] { return numbers::multiplied(kLeast, kLeast); }), "error 6"},
        {outcome([&] { return numbers::multiplied(46341, 46340); }), "2147441940"},
        {outcome([&] { return numbers::narrowed<std::int16_t>(32768); }), "error 6"},
        {outcome([&] { return numbers::narrowed<std::int32_t>(std::int64_t{kLeast}); }), "-2147483648"}};
    int number = 0;
    for (const auto& [got, expected] : cases) {
        EXPECT_EQ(got, expected) << "case " << number;
        ++number;
    }
}

TEST(Numbers, Texts)
{
    const std::pair<std::string, std::optional<double>> cases[] = {{"12", 12},
                                                                   {" -7.25\t", -7.25},
                                                                   {"+3", 3},
                                                                   {"1e3", 1000},
                                                                   {".5", 0.5},
                                                                   {"", std::nullopt},
                                                                   {"  ", std::nullopt},
                                                                   {"12a", std::nullopt},
                                                                   {"1 2", std::nullopt},
                                                                   {"0x10", std::nullopt},
                                                                   {"1,5", std::nullopt},
                                                                   {"+", std::nullopt},
                                                                   {"+-5", std::nullopt},
                                                                   {"inf", std::nullopt},
                                                                   {"nan", std::nullopt}};
    for (const auto& [text, expected] : cases) {
        const std::string told = expected ? std::to_string(*expected) : "error 13";
        EXPECT_EQ(outcome([&] { return numbers::fromText(text); }), told) << text;
    }
}

} // namespace
} // namespace numbers_test
