// Times as texts: their exact forms, and where 16 bits end.

#include "core/time_text.h"

#include "support/scripted_platform.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <limits>

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

} // namespace
} // namespace time_text_test
