#include "editing/trim.h"

#include "core/upcalls.h"
#include "editing/edit_trap.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"
#include "items/put_back.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"

#include <algorithm>
#include <cstdlib>

namespace editing {

using engine::EngineAs;
using engine::ITWTimeline;
using engine::Milliseconds;
using items::TrackRow;

namespace {

/// The selected item of the row whose end is level with pos; sound seldom ends to the millisecond with its picture.
std::optional<TrimItem> levelItem(ITWTimeline& engine, const TrackRow& row, Milliseconds pos, ItemEnd end)
{
    constexpr std::int64_t kLevel = 100;
    const items::Items lane = items::rowItems(engine, row).items;
    std::int16_t nearest = -1;
    std::int64_t least = kLevel + 1;
    for (std::int16_t seq = lane.firstSelected(); seq != -1;
         seq = lane.firstSelected(static_cast<std::int16_t>(seq + 1))) {
        const auto times = lane.times(seq).value_or(items::ItemTimes{});
        const std::int64_t off = std::abs(std::int64_t{end == ItemEnd::kStart ? times.start : times.stop} - pos);
        if (off < least) {
            least = off;
            nearest = seq;
        }
    }
    return nearest == -1 ? std::nullopt : readTrimItem(engine, row, nearest);
}

struct Step {
    TrimItem before;
    TrimItem then;
};

/// All or none.
void putAll(ITWTimeline& engine, const std::vector<Step>& steps)
{
    items::PutBack putBack;
    for (const Step& step : steps) {
        putBack.onFailure([&] {
            try {
                putTimes(engine, step.before);
            } catch (...) { // what fails on the way back is left
            }
        });
        putTimes(engine, step.then);
    }
    putBack.done();
}

/// The item of the row that a trim of that end to pos means: -1 for none.
std::int16_t itemToTrim(const items::Items& lane, Milliseconds pos, ItemEnd end)
{
    std::int16_t seq = 0; // the first that ends behind pos
    auto item = lane.times(seq);
    for (; item && item->stop <= pos; item = lane.times(seq)) {
        ++seq;
    }
    const bool isInGap = !item || pos <= item->start;
    if (isInGap && end == ItemEnd::kStop) {
        --seq;
    }
    return seq < lane.count() ? seq : std::int16_t{-1};
}

std::optional<Step> stepTo(ITWTimeline& engine, const TrackRow& row, Milliseconds pos, ItemEnd end)
{
    const items::Items lane = items::rowItems(engine, row).items;
    const std::int16_t seq = itemToTrim(lane, pos, end);
    const auto item = seq != -1 && lane.isSelected(seq) ? readTrimItem(engine, row, seq) : std::nullopt;
    if (!item) {
        return {};
    }
    const TrimReach reach = reachOf(engine, *item, end);
    const auto delta =
        std::clamp(std::int64_t{pos} - item->place(end), std::int64_t{reach.left}, std::int64_t{reach.right});
    return delta == 0 ? std::nullopt
                      : std::optional(Step{*item, trimmed(*item, end, static_cast<Milliseconds>(delta))});
}

void show()
{
    RenderAllBars();
    moduleScaleRenderer::AdjustScroll();
}

} // namespace

std::optional<Trim> Trim::begin(const TrackRow& row, std::int16_t seq, ItemEnd end)
{
    const auto engine = EngineAs<ITWTimeline>();
    const auto pressed = row.isLocked() ? std::nullopt : readTrimItem(*engine, row, seq);
    if (!pressed) {
        return {};
    }
    std::vector<TrimItem> all{*pressed};
    for (const TrackRow& other : items::rows()) {
        if (&other != pressed->row && items::isMade(other) && !other.isLocked()) {
            if (const auto level = levelItem(*engine, other, pressed->place(end), end)) {
                all.push_back(*level);
            }
        }
    }
    TrimReach reach = reachOf(*engine, *pressed, end);
    for (const TrimItem& item : all) {
        const TrimReach own = reachOf(*engine, item, end);
        reach = {std::max(reach.left, own.left), std::min(reach.right, own.right)};
    }
    return Trim(std::move(all), end, reach);
}

bool Trim::moves(const items::RowItems& row, std::int16_t seq) const
{
    return std::ranges::any_of(items_, [&](const TrimItem& item) {
        return item.seq == seq && item.row->kind == row.kind && items::trackOf(*item.row) == row.track;
    });
}

bool Trim::isOver() const
{
    if (command_ && !command_->isNewest()) {
        return true;
    }
    const auto engine = EngineAs<ITWTimeline>();
    return !std::ranges::all_of(
        items_, [&](const TrimItem& item) { return timesNow(*engine, *item.row, item.seq) == at(item, delta_).times; });
}

TrimItem Trim::at(const TrimItem& item, Milliseconds delta) const
{
    return delta == 0 ? item : trimmed(item, end_, delta);
}

void Trim::put(Milliseconds delta)
{
    std::vector<Step> steps;
    for (const TrimItem& item : items_) {
        steps.push_back({at(item, delta_), at(item, delta)});
    }
    putAll(*EngineAs<ITWTimeline>(), steps);
    delta_ = delta;
}

void Trim::leaveNoTrace()
{
    command_->leaveNoTrace();
    command_.reset();
}

bool Trim::moveTo(Milliseconds pos)
{
    bool isChanged = false;
    trapped("TrimTo*", [&] {
        const auto wanted =
            std::clamp(std::int64_t{pos} - origin(), std::int64_t{reach_.left}, std::int64_t{reach_.right});
        const auto delta = static_cast<Milliseconds>(wanted);
        if (delta == delta_ || isOver()) {
            return;
        }
        const bool isFirst = !command_;
        if (isFirst) {
            command_.emplace("Trim");
        }
        try {
            if (command_->isMade()) {
                put(delta);
                isChanged = true;
            }
        } catch (...) {
            if (isFirst) {
                leaveNoTrace();
            }
            throw;
        }
        if (!isChanged) {
            leaveNoTrace();
            return;
        }
        if (isFirst) {
            command_->bringIntoForce();
        }
        show();
    });
    return isChanged;
}

void Trim::takeBack()
{
    trapped("TakeTrimBack", [&] {
        if (!command_ || isOver()) {
            return;
        }
        put(0);
        leaveNoTrace();
        show();
        EnableOrDisableMenuItems();
    });
}

void Trim::keep()
{
    trapped("KeepTrim", [&] {
        history::keepNewestState();
        UpdatePreview();
        EnableOrDisableMenuItems();
    });
}

bool Trim::finish()
{
    bool stands = false;
    trapped("FinishTrim", [&] {
        if (!command_) {
            return;
        }
        if (command_->isNewest()) {
            if (delta_ == 0) {
                leaveNoTrace();
            } else {
                ModuleHistory::StoreCurrentTLImage();
                stands = true;
            }
        }
        command_.reset();
        UpdatePreview();
        EnableOrDisableMenuItems();
    });
    return stands;
}

history::Outcome trimToSlider(ItemEnd end)
{
    const auto engine = EngineAs<ITWTimeline>();
    const Milliseconds pos = moduleTimeline::GetSliderPosition();
    std::vector<Step> steps;
    for (const TrackRow& row : items::rows()) {
        if (items::isMade(row) && !row.isLocked()) {
            if (const auto step = stepTo(*engine, row, pos, end)) {
                steps.push_back(*step);
            }
        }
    }
    putAll(*engine, steps);
    return steps.empty() ? history::Outcome::kNothing : history::Outcome::kChanged;
}

} // namespace editing
