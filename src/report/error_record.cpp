#include "report/error_record.h"

#include "core/platform.h"
#include "core/shared_state.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"

#include <algorithm>
#include <array>

namespace error_record {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

void addLine(std::string& record, std::string_view label, std::string value)
{
    std::ranges::replace_if(
        value, [](char c) { return c == '\r' || c == '\n'; }, ' ');
    record.append(label).append(value).append(kLineEnd);
}

/// Runs `read`; an engine that fails, or is not there, leaves what stands.
template <class Read>
void readWithCare(Read read)
{
    try {
        read(*engine::EngineAs<engine::ITWCoreRoot>());
    } catch (const engine::RuntimeError&) { // NOLINT: the report is written all the same
    }
}

std::string joined(const std::array<std::int32_t, 4>& numbers, std::string_view between)
{
    std::string text = std::to_string(numbers[0]);
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        text.append(between).append(std::to_string(numbers[i]));
    }
    return text;
}

std::string fileVersions()
{
    std::string text;
    for (const std::string_view name : {"mscomctl.ocx", "comdlg32.ocx", "msxml.dll"}) {
        std::array<std::int32_t, 4> v{};
        readWithCare([&](auto& root) { engine::check(root.GetFileVersionInfo(name, v[0], v[1], v[2], v[3])); });
        text.append(text.empty() ? "" : ", ").append(joined(v, "."));
    }
    return text;
}

std::string memoryStatus()
{
    std::array<std::int32_t, 4> kib{};
    readWithCare([&](auto& root) { engine::check(root.GetMemoryStatus(kib[0], kib[1], kib[2], kib[3])); });
    return joined(kib, ", ");
}

std::string languageId()
{
    std::string text(10, ' ');
    readWithCare([&](auto& root) { engine::check(root.GetSystemVersion(text)); });
    text.resize(text.find_last_not_of(std::string_view(" \0", 2)) + 1);
    return text;
}

} // namespace

std::int32_t timelineDurationMs() noexcept
{
    std::int32_t longest = 0;
    try {
        const auto timeline = engine::EngineAs<engine::ITWTimeline>();
        const auto add = [&](engine::Handle track) {
            engine::Milliseconds duration = 0;
            engine::check(timeline->GetTrackDuration(track, duration));
            longest = std::max(longest, duration);
        };
        std::ranges::for_each(state::TrackCollection, add);
        if (state::OverlayTrack != 0) {
            add(state::OverlayTrack);
        }
    } catch (...) {
        return 0;
    }
    return longest;
}

std::string asText(const ErrorFacts& facts)
{
    std::string record;
    addLine(record, "Date         : ", ports.shell->asText(ports.shell->now()));
    addLine(record, "Ver          : ", "1.8 Release 1");
    addLine(record, "OS           : ", ports.shell->systemText());
    addLine(record, "Number       : ", facts.number);
    addLine(record, "Description  : ", facts.description);
    addLine(record, "Module       : ", facts.module);
    addLine(record, "Function     : ", facts.function);
    addLine(record, "Zoom Factor  : ", std::to_string(state::ZoomFactor));
    addLine(record, "Slider Pos   : ", std::to_string(state::SliderPosition));
    addLine(record, "Duration     : ", std::to_string(timelineDurationMs()));
    addLine(record, "File Vers    : ", fileVersions());
    addLine(record, "Mem Status   : ", memoryStatus());
    addLine(record, "Lang ID      : ", languageId());
    addLine(record, " ", {});
    return record;
}

} // namespace error_record
