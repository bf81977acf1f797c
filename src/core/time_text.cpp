#include "core/time_text.h"

#include "core/numbers.h"
#include "core/trap.h"

#include <cmath>

namespace time_text {

namespace {

/// Whole units of `count`, towards minus infinity.
std::int16_t wholeUnits(std::int32_t count, double unit)
{
    return numbers::narrowed<std::int16_t>(static_cast<std::int64_t>(std::floor(count / unit)));
}

/// At least `digits` digits; a minus sign stands ahead of them.
void append(std::string& text, std::int16_t number, std::size_t digits)
{
    char reversed[8];
    std::size_t count = 0;
    for (int rest = std::abs(int{number}); rest > 0 || count < digits; rest /= 10) {
        reversed[count++] = static_cast<char>('0' + rest % 10);
    }
    if (number < 0) {
        text += '-';
    }
    while (count > 0) {
        text += reversed[--count];
    }
}

std::string clockText(const TimeType& time)
{
    std::string text;
    append(text, time.Hour, 1);
    text += ':';
    append(text, time.Minute, 2);
    text += ':';
    append(text, time.Second, 2);
    return text;
}

} // namespace

TimeType MilliSecondsToTimetype(std::int32_t ms)
{
    TimeType time;
    Trapped("time_text", "MilliSecondsToTimetype",
            [&] {
                const std::int16_t seconds = wholeUnits(ms, 1000.0);
                const std::int16_t minutes = wholeUnits(seconds, 60.0);
                time = {wholeUnits(minutes, 60.0), static_cast<std::int16_t>(minutes % 60),
                        static_cast<std::int16_t>(seconds % 60), static_cast<std::int16_t>(ms % 1000)};
            },
            {{engine::error_number::kOverflow, [] {}}});
    return time;
}

std::string MilliSecondsToTimetypeAsString(std::int32_t ms)
{
    std::string text;
    Trapped("time_text", "MilliSecondsToTimetypeAsString",
            [&] {
                const TimeType time = MilliSecondsToTimetype(ms);
                text = clockText(time);
                text += '.';
                append(text, time.Millisecond, 3);
            },
            // The last colon, where others have a point, tells a time that did not fit from time 0.
            {{engine::error_number::kOverflow, [&] { text = "0:00:00:000"; }}});
    return text;
}

std::string MilliSecondsToTimetypeAsString2(std::int32_t ms)
{
    std::string text;
    Trapped("time_text", "MilliSecondsToTimetypeAsString2", [&] { text = clockText(MilliSecondsToTimetype(ms)); },
            {{engine::error_number::kOverflow, [&] { text = "0:00:00"; }}});
    return text;
}

} // namespace time_text
