#include "export/save_estimate.h"

#include "core/time_text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>

namespace exporting {

namespace {

/// One digit behind the point below ten.
std::string shortNumber(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, number < 10 ? "%.1f" : "%.0f", number);
    return text;
}

} // namespace

void SaveEstimate::note(engine::Milliseconds saved, std::int64_t fileBytes, std::uint32_t nowMs)
{
    saved_ = saved;
    fileBytes_ = fileBytes;
    elapsedMs_ = nowMs - begin_;
}

std::string SaveEstimate::timeLeft() const
{
    if (!isKnown()) {
        return {};
    }
    const double left = static_cast<double>(length_ - saved_) / saved_ * elapsedMs_;
    constexpr double kMost = 32'767'000; // what the time's text can say
    return left < kMost
               ? time_text::MilliSecondsToTimetypeAsString2(static_cast<std::int32_t>(std::max(0.0, left))) + " left"
               : std::string();
}

std::string SaveEstimate::speed() const
{
    return isKnown() ? shortNumber(static_cast<double>(saved_) / elapsedMs_) + " times as fast as it plays"
                     : std::string();
}

std::string SaveEstimate::size() const
{
    if (!isKnown() || fileBytes_ <= 0) {
        return {};
    }
    constexpr std::array<const char*, 4> kUnits{"KB", "MB", "GB", "TB"};
    constexpr double kStep = 1024;
    double size = static_cast<double>(fileBytes_) * length_ / saved_ / kStep;
    std::size_t unit = 0;
    while (size >= kStep && unit + 1 < kUnits.size()) {
        size /= kStep;
        ++unit;
    }
    return "about " + shortNumber(size) + " " + kUnits[unit] + " in the end";
}

} // namespace exporting
