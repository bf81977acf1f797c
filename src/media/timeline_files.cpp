#include "media/timeline_files.h"

#include "core/forms/frmMediaList.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/adding.h"
#include "editing/insert.h"
#include "engine/ITWMediaFiles.h"
#include "engine/engine_access.h"
#include "items/row_items.h"
#include "items/whole_item.h"
#include "media/frmMediaList_events.h"
#include "media/opening.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/slider_places.h"

namespace moduleTarnwick {

using engine::Milliseconds;
using items::TrackRow;

namespace {

constexpr const char* kModule = "moduleTarnwick";

/// What lies there of which file.
struct FilePlace {
    std::int32_t listPlace; // from 1
    Milliseconds media;
};

std::optional<FilePlace> filePlaceAt(const TrackRow& row, float x)
{
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    const items::RowItems lane = items::rowItems(*engine, row);
    const auto px = numbers::added(numbers::rounded<std::int32_t>(x), timeline::viewLeft());
    const Milliseconds pos = moduleScaleRenderer::PixelsToMs(px);
    const std::int16_t seq = lane.items.at(pos);
    const auto source =
        row.kind == items::RowKind::kEffect || seq == -1 ? std::nullopt : items::readSource({*engine, lane.track, seq});
    if (!source) {
        return {};
    }
    engine::Handle file = 0;
    engine::check(engine::EngineAs<engine::ITWMediaFiles>()->GetStreamFile(source->stream, file));
    for (std::int32_t place = 1; place <= state::FileCollection.Count(); ++place) {
        if (state::FileCollection.Item(place) == file) {
            return FilePlace{place, source->times.mediaAt(pos)};
        }
    }
    return {};
}

void showFile(const FilePlace& at)
{
    auto& form = forms::frmMediaList;
    frmMediaList::ClearMediaListSelections();
    form.lvwMediaList.Change(at.listPlace).Selected = true;
    form.lvwMediaList.SelectedItem = at.listPlace;
    frmMediaList::lvwMediaList_Click();
    if (form.sldFilePreview.Visible && form.cmdPlay.Enabled) { // a still has no place, a missing file nothing to show
        form.sldFilePreview.SetValue(at.media);
        frmMediaList::sldFilePreview_Scroll();
    }
}

} // namespace

void AddDroppedFiles(const std::vector<std::string>& paths, const TrackRow& row, std::optional<Milliseconds> pos)
{
    if (state::BusyOpening) {
        return;
    }
    ListView& list = forms::frmMediaList.lvwMediaList;
    const std::int32_t before = list.Count();
    OpenDroppedFiles(paths);
    if (list.Count() == before || state::OpeningCancelled) {
        return;
    }
    for (std::int32_t place = before + 1; place <= list.Count(); ++place) {
        list.Change(place).Selected = true; // besides the last one, which the opening has selected
    }
    if (pos) {
        moduleTimeline::InsertSelectedFiles(row, *pos);
    } else {
        moduleTimeline::OnEditAddToTimelineClick();
    }
    EnableOrDisableMenuItems();
}

bool ShowFileOfBar(const TrackRow& row, float x)
{
    bool isShown = false;
    Trapped(kModule, "ShowFileOfBar", [&] {
        if (state::BusyOpening || state::InSelectionUpdate) {
            return;
        }
        if (const auto at = filePlaceAt(row, x)) {
            showFile(*at);
            isShown = true;
        }
    });
    return isShown;
}

} // namespace moduleTarnwick
