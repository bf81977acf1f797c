#include "editing/sound_mates.h"

#include "core/upcalls.h"
#include "editing/edit_trap.h"
#include "engine/ITWMediaFiles.h"
#include "engine/engine_access.h"
#include "items/whole_item.h"
#include "timeline/moduleTimeline.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace editing {

using engine::Handle;
using engine::ITWTimeline;
using items::RowItems;
using items::RowKind;

std::vector<PlacedSource> placedSources(ITWTimeline& engine)
{
    const auto files = engine::EngineAs<engine::ITWMediaFiles>();
    std::vector<PlacedSource> all;
    items::forEachRow(engine, [&](const RowItems& row) {
        const std::int16_t count = row.kind == RowKind::kEffect ? std::int16_t{0} : row.items.count();
        for (std::int16_t seq = 0; seq < count; ++seq) {
            PlacedSource source{row, seq, 0, items::readTimes({engine, row.track, seq}).value_or(items::SourceTimes{})};
            Handle stream = 0;
            engine::check(engine.GetSourceStream(row.track, seq, stream));
            engine::check(files->GetStreamFile(stream, source.file));
            all.push_back(source);
        }
    });
    return all;
}

bool belongTogether(const PlacedSource& one, const PlacedSource& other)
{
    constexpr std::int64_t kUnheard = 40; // ms
    if (one.row.track == other.row.track || one.file == 0 || one.file != other.file) {
        return false;
    }
    const engine::Milliseconds from = std::max(one.times.start, other.times.start);
    return one.times.onTimeline() == other.times.onTimeline()
           || (from < std::min(one.times.stop, other.times.stop)
               && std::abs(std::int64_t{one.times.mediaAt(from)} - other.times.mediaAt(from)) <= kUnheard);
}

} // namespace editing

namespace moduleEdit {

using editing::PlacedSource;
using engine::ITWTimeline;

namespace {

/// True when any was not selected yet.
bool selectMatesOfSelected(ITWTimeline& engine)
{
    const std::vector<PlacedSource> all = editing::placedSources(engine);
    std::vector<PlacedSource> selected;
    std::ranges::copy_if(all, std::back_inserter(selected),
                         [](const PlacedSource& source) { return source.row.items.isSelected(source.seq); });
    bool isAdded = false;
    for (const PlacedSource& source : all) {
        if (!source.row.items.isSelected(source.seq) && std::ranges::any_of(selected, [&](const PlacedSource& chosen) {
                return editing::belongTogether(source, chosen);
            })) {
            source.row.select(source.seq, true);
            isAdded = true;
        }
    }
    return isAdded;
}

} // namespace

bool SelectWithSound()
{
    bool isAdded = false;
    editing::trapped("SelectWithSound", [&] {
        isAdded = selectMatesOfSelected(*engine::EngineAs<ITWTimeline>());
        RenderAllBars();
    });
    return isAdded;
}

void SelectAloneWithSound(const items::TrackRow& row, std::int16_t seq)
{
    editing::trapped("SelectAloneWithSound", [&] {
        const auto engine = engine::EngineAs<ITWTimeline>();
        moduleTimeline::ClearMFSTSubSelections();
        items::rowItems(*engine, row).select(seq, true);
        selectMatesOfSelected(*engine);
        RenderAllBars();
    });
}

} // namespace moduleEdit
