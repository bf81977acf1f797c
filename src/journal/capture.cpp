#include "journal/capture.h"

#include "core/forms/frmTimeline.h"
#include "core/shared_state.h"
#include "engine/ITWMediaFiles.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"
#include "items/track_rows.h"
#include "media/media_files.h"
#include "timeline/moduleBookmarks.h"
#include "timeline/slider_places.h"

#include <algorithm>

namespace journal {

using engine::Handle;

namespace {

const forms::FrmTimeline& form = forms::frmTimeline;

void readRows(Desk& desk)
{
    for (std::size_t i = 0; i < desk.rows.size(); ++i) {
        const items::TrackRow& row = items::rows()[i];
        desk.rows[i] = {row.chkLink.Value == 1, row.chkLock.Value == 1, row.chkDisable.Value == 1};
    }
}

void readBookmarks(Desk& desk)
{
    const std::size_t count = std::min(form.imgBookmark.size(), form.BookmarkTimes.size());
    for (std::size_t i = 0; i < count; ++i) {
        const ImageBox& image = form.imgBookmark[i];
        desk.bookmarks.push_back(
            {form.BookmarkTimes[i], image.Visible, image.Picture.get() == moduleBookmarks::kSelectedLook});
    }
    desk.bookmarkCount = form.BookmarkCount;
    desk.selectedBookmark = form.SelectedBookmark;
}

Desk readDesk()
{
    Desk desk;
    desk.projectPath = state::ProjectFilePath;
    desk.isSaved = state::ProjectSaved;
    desk.isModified = state::ProjectModified;
    desk.isListDirty = state::MediaListDirty;
    desk.savedFileCount = state::SavedFileCount;
    desk.width = state::ProjectWidth;
    desk.height = state::ProjectHeight;
    desk.isFrameSizeChosen = state::FrameSizeChosen;
    desk.zoom = state::ZoomFactor;
    desk.isStartShown = timeline::startSlider().handle.Visible;
    desk.isEndShown = timeline::endSlider().handle.Visible;
    desk.selectionStart = state::SelStartPosition;
    desk.selectionEnd = state::SelEndPosition;
    readRows(desk);
    readBookmarks(desk);
    desk.historyIndex = ModuleHistory::HistoryIndex;
    desk.historyRows = forms::frmTools.lvwHistory;
    return desk;
}

/// Of an image that was not read whole nothing is ever used.
std::vector<EntryImage> readEntries()
{
    static const Records kNone = std::make_shared<const ModuleHistory::ImageRecords>();
    std::vector<EntryImage> entries;
    entries.reserve(static_cast<std::size_t>(ModuleHistory::HistoryCollection.Count()));
    for (const cHistoryData& entry : ModuleHistory::HistoryCollection) {
        entries.push_back({entry.GetOperationType(), entry.GetScrollValue(), entry.IsWhole(),
                           entry.IsWhole() ? entry.Records() : kNone});
    }
    return entries;
}

/// The old ones when they are alike, so that alike images are the same.
Records shared(ModuleHistory::ImageRecords records, const Records& before)
{
    return before && *before == records ? before
                                        : std::make_shared<const ModuleHistory::ImageRecords>(std::move(records));
}

Tracks readTracks()
{
    Tracks tracks{};
    for (std::int32_t place = 1; place <= std::min(state::TrackCollection.Count(), 3); ++place) {
        tracks[static_cast<std::size_t>(place) - 1] = state::TrackCollection.Item(place);
    }
    tracks[3] = state::OverlayTrack;
    return tracks;
}

} // namespace

bool StateImage::hasUnsavedWork() const
{
    const bool isEmpty = media->files.empty() && entries.empty()
                         && std::ranges::none_of(desk.bookmarks, &BookmarkImage::isVisible)
                         && *timeline == ModuleHistory::ImageRecords{};
    return (desk.isModified || desk.isListDirty) && !isEmpty;
}

void Capture::learnStreams()
{
    const auto files = engine::EngineAs<engine::ITWMediaFiles>();
    for (const Handle stream : state::StreamCollection) {
        if (std::ranges::binary_search(streams_, stream)) {
            continue;
        }
        Handle file = 0;
        engine::Bool16 isPicture = engine::kFalse;
        engine::check(files->GetStreamFile(stream, file));
        engine::check(files->IsVideoStream(stream, isPicture));
        MediaFile& known = known_[file];
        (isPicture != engine::kFalse ? known.picture : known.sound) = stream;
        if (known.path.empty()) {
            known.path = media::pathOf(file);
        }
    }
    streams_.assign(state::StreamCollection.begin(), state::StreamCollection.end());
    std::ranges::sort(streams_);
}

std::shared_ptr<const MediaTable> Capture::readMedia()
{
    learnStreams();
    files_.assign(state::FileCollection.begin(), state::FileCollection.end());
    auto table = std::make_shared<MediaTable>();
    for (const Handle file : files_) {
        table->files.push_back(known_[file]);
    }
    table->listed = static_cast<std::uint32_t>(files_.size());
    for (const auto& [file, media] : known_) {
        if (!media.path.empty() && std::ranges::find(files_, file) == files_.end()) {
            table->files.push_back(media);
        }
    }
    return table;
}

std::shared_ptr<const StateImage> Capture::take()
{
    StateImage image;
    image.desk = readDesk();
    image.view = {state::SliderPosition, form.hsb.Value(), forms::frmTools.lvwHistorySelected};
    image.entries = readEntries();
    const bool isSameMedia = last_ && std::ranges::equal(files_, state::FileCollection)
                             && streams_.size() == static_cast<std::size_t>(state::StreamCollection.Count());
    if (last_ && isSameMedia && modifications_ == state::ModificationCount && last_->desk == image.desk
        && last_->entries == image.entries) {
        return nullptr;
    }
    image.media = isSameMedia ? last_->media : readMedia();
    image.tracks = readTracks();
    image.timeline = shared(ModuleHistory::ReadTimeline(), last_ ? last_->timeline : nullptr);
    image.isNewestWhole = ModuleHistory::LastImage.IsWhole;
    const ModuleHistory::ImageRecords& newest = ModuleHistory::LastImage;
    image.newest =
        shared(image.isNewestWhole ? newest : ModuleHistory::ImageRecords(), last_ ? last_->newest : nullptr);
    modifications_ = state::ModificationCount;
    const bool isSame = last_ && isSameMedia && last_->desk == image.desk && last_->entries == image.entries
                        && last_->timeline == image.timeline && last_->newest == image.newest
                        && last_->isNewestWhole == image.isNewestWhole;
    if (isSame) {
        return nullptr;
    }
    last_ = std::make_shared<const StateImage>(std::move(image));
    return last_;
}

} // namespace journal
