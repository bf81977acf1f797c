// Times as texts: their exact forms, where 16 bits end, and that a text costs no memory besides itself.

#include "core/time_text.h"

#include "support/scripted_platform.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <new>

namespace {
std::size_t allocations = 0;
} // namespace

void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace time_text_test {
namespace {

using namespace time_text;

TEST(TimeText, Forms)
{
    struct Case {
        std::int32_t ms;
        std::string withMilliseconds;
        std::string without;
    };
    const Case cases[] = {{0, "0:00:00.000", "0:00:00"},
                          {999, "0:00:00.999", "0:00:00"},
                          {1000, "0:00:01.000", "0:00:01"},
                          {61250, "0:01:01.250", "0:01:01"},
                          {3599999, "0:59:59.999", "0:59:59"},
                          {3600000, "1:00:00.000", "1:00:00"},
                          {32767999, "9:06:07.999", "9:06:07"},
                          {32768000, "0:00:00.000", "0:00:00"},
                          {std::numeric_limits<std::int32_t>::max(), "0:00:00.000", "0:00:00"},
                          {-1, "-1:-01:-01.-001", "-1:-01:-01"},
                          {-61250, "-1:-02:-02.-250", "-1:-02:-02"},
                          {-32768000, "-10:-07:-08.000", "-10:-07:-08"},
                          {-32768001, "0:00:00.000", "0:00:00"},
                          {std::numeric_limits<std::int32_t>::min(), "0:00:00.000", "0:00:00"}};
    testsupport::ScriptedPlatform platform;
    for (const Case& c : cases) {
        EXPECT_EQ(MilliSecondsToTimetypeAsString(c.ms), c.withMilliseconds) << c.ms;
        EXPECT_EQ(MilliSecondsToTimetypeAsString2(c.ms), c.without) << c.ms;
    }
    EXPECT_EQ(MilliSecondsToTimetype(5025678), (TimeType{1, 23, 45, 678}));
    EXPECT_TRUE(std::filesystem::is_empty(platform.folder)) << "an overflow is not reported";
}

TEST(TimeText, AllocatesNothingButItsResult)
{
    const std::size_t before = allocations;
    const std::string text = MilliSecondsToTimetypeAsString(5025678); // short enough to live in the string itself
    EXPECT_EQ(allocations - before, 0u);
    EXPECT_GT(before, 0u) << "what the test itself allocates is counted";
    EXPECT_EQ(text, "1:23:45.678");
}

} // namespace
} // namespace time_text_test
