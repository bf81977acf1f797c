#include "timeline/cuts.h"

#include "engine/engine_access.h"
#include "timeline/moduleBookmarks.h"

#include <algorithm>

namespace timeline {

using engine::Milliseconds;

namespace {

std::vector<Milliseconds> inOrder(std::vector<Milliseconds> times)
{
    std::ranges::sort(times);
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

} // namespace

std::vector<Milliseconds> cutTimes(const SkipsItem& skips)
{
    std::vector<Milliseconds> times;
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    items::forEachRow(*engine, [&](const items::RowItems& row) {
        const std::int16_t count = row.items.count();
        for (std::int16_t seq = 0; seq < count; ++seq) {
            if (const auto item = row.items.times(seq); item && !(skips && skips(row, seq))) {
                times.push_back(item->start);
                times.push_back(item->stop);
            }
        }
    });
    return inOrder(std::move(times));
}

std::vector<Milliseconds> markerTimes() { return inOrder(moduleBookmarks::bookmarkTimesToStore()); }

std::vector<Milliseconds> cutAndMarkerTimes()
{
    std::vector<Milliseconds> times = cutTimes();
    const std::vector<Milliseconds> markers = markerTimes();
    times.insert(times.end(), markers.begin(), markers.end());
    return inOrder(std::move(times));
}

std::optional<Milliseconds> neighbour(const std::vector<Milliseconds>& times, Milliseconds pos, bool isBehind)
{
    if (isBehind) {
        const auto next = std::ranges::upper_bound(times, pos);
        return next != times.end() ? std::optional(*next) : std::nullopt;
    }
    const auto from = std::ranges::lower_bound(times, pos);
    return from != times.begin() ? std::optional(*std::prev(from)) : std::nullopt;
}

} // namespace timeline
