#include "journal/bring_back.h"

#include "core/forms/frmTimeline.h"
#include "core/forms/frmTools.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"
#include "journal/media_back.h"
#include "preview/frame_offer.h"
#include "project/ModuleProject.h"
#include "project/row_options.h"
#include "timeline/moduleBookmarks.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"

#include <utility>

namespace journal {

using engine::Handle;
using ModuleHistory::ImageRecords;
using ModuleHistory::TimelineImage;

namespace {

/// Images of the old process in the handles of this one.
class Translation {
public:
    explicit Translation(const StreamMap& streams) : streams_(streams) {}

    TimelineImage of(const Records& records)
    {
        TimelineImage image;
        static_cast<ImageRecords&>(image) = *records;
        for (auto* const sources : {&image.Sources, &image.OverlaySources}) {
            for (auto& source : *sources) {
                source.Track = track(source.Track);
                const auto stream = streams_.find(source.Stream);
                source.Stream = stream == streams_.end() ? 0 : stream->second; // 0: a step leaves it out
            }
        }
        for (auto& effect : image.Effects) {
            effect.Track = track(effect.Track);
        }
        for (auto& transition : image.Transitions) {
            transition.Track = track(transition.Track);
        }
        image.SourceCount = static_cast<std::int16_t>(image.Sources.size());
        image.EffectCount = static_cast<std::int16_t>(image.Effects.size());
        image.TransitionCount = static_cast<std::int16_t>(image.Transitions.size());
        return image;
    }

private:
    static Handle track(Handle place)
    {
        constexpr Handle kOverlay = 4;
        return place == kOverlay                         ? state::OverlayTrack
               : place <= state::TrackCollection.Count() ? state::TrackCollection.Item(place)
                                                         : 0;
    }

    const StreamMap& streams_;
};

cHistoryData entryOf(const EntryImage& image, TimelineImage records)
{
    cHistoryData entry;
    entry.SetOperationType(image.type);
    entry.SetScrollValue(image.scroll);
    entry.SetWhole(image.isWhole);
    entry.SetSrcCount(records.SourceCount);
    entry.SetEffectCount(records.EffectCount);
    entry.SetTransitionCount(records.TransitionCount);
    ModuleHistory::WorkingImage = std::move(records);
    entry.SetEditOperationData();
    entry.SetEffectOperationData();
    entry.SetTransitionOperationData();
    ModuleHistory::WorkingImage = {};
    return entry;
}

/// False when the tracks hold something else then.
bool bringBackTimeline(const StateImage& image, const StreamMap& streams)
{
    Translation translation(streams);
    const TimelineImage timeline = translation.of(image.timeline);
    ModuleHistory::LastImage = timeline;
    ModuleHistory::RestoreLastTLImage();
    const bool isWhole = ModuleHistory::ReadTimeline() == timeline;
    ModuleHistory::EmptyHistory();
    for (const EntryImage& entry : image.entries) {
        ModuleHistory::HistoryCollection.Add(entryOf(entry, translation.of(entry.records)));
    }
    ModuleHistory::HistoryIndex = image.desk.historyIndex;
    ModuleHistory::LastImage = translation.of(image.newest);
    ModuleHistory::LastImage.IsWhole = image.isNewestWhole;
    forms::frmTools.lvwHistory = image.desk.historyRows;
    forms::frmTools.lvwHistorySelected = image.view.historyRow;
    return isWhole;
}

void bringBackBookmarks(const Desk& desk)
{
    auto& form = forms::frmTimeline;
    moduleBookmarks::RemoveBookmarks();
    form.imgBookmark.resize(desk.bookmarks.size(), form.imgBookmark.front());
    form.BookmarkTimes.resize(desk.bookmarks.size());
    for (std::size_t i = 0; i < desk.bookmarks.size(); ++i) {
        const BookmarkImage& bookmark = desk.bookmarks[i];
        form.BookmarkTimes[i] = bookmark.time;
        form.imgBookmark[i].Visible = bookmark.isVisible;
        form.imgBookmark[i].Picture =
            std::string(bookmark.isMarked ? moduleBookmarks::kSelectedLook : moduleBookmarks::kPlain);
    }
    form.BookmarkCount = desk.bookmarkCount;
    form.SelectedBookmark = desk.selectedBookmark;
    moduleBookmarks::UpdateBookmarks();
}

void bringBackSelection(const Desk& desk)
{
    moduleTimeline::SetSelSliderPosition(desk.selectionStart, true);
    moduleTimeline::SetSelSliderPosition(desk.selectionEnd, false);
    moduleTimeline::ShowSelSliders(desk.isStartShown && desk.isEndShown);
    if (desk.isStartShown != desk.isEndShown) {
        moduleTimeline::ShowStartSelSlider(desk.isStartShown);
        moduleTimeline::ShowEndSelSlider(desk.isEndShown);
    }
    state::SelStartPosition = desk.selectionStart;
    state::SelEndPosition = desk.selectionEnd;
}

void bringBackProject(const Desk& desk)
{
    state::ProjectFilePath = desk.projectPath;
    state::ProjectSaved = desk.isSaved;
    state::MediaListDirty = desk.isListDirty;
    state::SavedFileCount = desk.savedFileCount;
    state::ProjectOpenFailed = false;
    state::BusyOpening = false;
    state::ProjectLoadLock = false;
    state::markModified();
    forms::mdiTarnwick.ProjectStarted = true;
    ModuleProject::ShowProjectName(desk.projectPath);
}

void bringBackFrame(const Desk& desk)
{
    frmPreview::SetFrameSize(desk.width, desk.height);
    state::FrameSizeChosen = desk.isFrameSizeChosen;
}

void showAll(const View& view)
{
    moduleScaleRenderer::RenderScale();
    moduleScaleRenderer::AdjustScroll();
    moduleScaleRenderer::ScrollTo(view.scroll);
    moduleTimeline::SetSliderPosition(view.slider, false);
    RenderAllBars();
    UpdateTreeView();
    UpdatePreview();
    EnableOrDisableMenuItems();
}

} // namespace

Back bringBack(const StateImage& image, Capture& capture)
{
    MediaBack media = bringMediaBack(image, capture);
    bringBackFrame(image.desk);
    const bool isWhole = bringBackTimeline(image, media.streams);
    project::bringRowOptions(image.desk.rows);
    moduleScaleRenderer::SetZoomFactor(image.desk.zoom);
    moduleScaleRenderer::AdjustScroll();
    bringBackBookmarks(image.desk);
    bringBackSelection(image.desk);
    bringBackProject(image.desk);
    showAll(image.view);
    return {std::move(media.missing), isWhole};
}

} // namespace journal
