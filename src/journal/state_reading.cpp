// Objects to an image. Nothing that stands in them is believed.

#include "journal/bytes.h"
#include "journal/object_numbers.h"
#include "journal/state_coding.h"
#include "preview/frame_offer.h"
#include "timeline/moduleScaleRenderer.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

namespace journal {

namespace {

using ModuleHistory::ImageRecords;

constexpr std::size_t kMostItems = std::numeric_limits<std::int16_t>::max(); // of a kind in an image
constexpr std::size_t kMostEntries = 64;

void require(bool condition)
{
    if (!condition) {
        throw Broken();
    }
}

const std::string& objectOf(const Objects& objects, ObjectNumber number)
{
    const std::string* const found = objects.find(number);
    require(found != nullptr);
    return *found;
}

void takeSources(const std::string& bytes, engine::Handle track, std::vector<ModuleHistory::SourceImage>& images)
{
    ByteReader reader(bytes);
    for (std::int16_t seq = 0; !reader.isAtEnd(); ++seq) {
        require(images.size() < kMostItems);
        ModuleHistory::SourceImage image{.Track = track, .Seq = seq};
        image.Stream = reader.take<std::int32_t>();
        image.Start = reader.take<std::int32_t>();
        image.Stop = reader.take<std::int32_t>();
        image.MediaStart = reader.take<std::int32_t>();
        image.MediaStop = reader.take<std::int32_t>();
        image.StretchMode = reader.take<std::int16_t>();
        images.push_back(image);
    }
}

void takeEffects(const std::string& bytes, std::vector<ModuleHistory::EffectImage>& images)
{
    ByteReader reader(bytes);
    while (!reader.isAtEnd()) {
        require(images.size() < kMostItems);
        ModuleHistory::EffectImage image;
        image.Track = 1;
        image.Start = reader.take<std::int32_t>();
        image.Stop = reader.take<std::int32_t>();
        image.Name = ModuleHistory::ShortName(reader.takeText());
        images.push_back(image);
    }
}

void takeTransitions(const std::string& bytes, std::vector<ModuleHistory::TransitionImage>& images)
{
    ByteReader reader(bytes);
    while (!reader.isAtEnd()) {
        require(images.size() < kMostItems);
        ModuleHistory::TransitionImage image;
        image.Track = kOverlayLane + 1;
        image.Start = reader.take<std::int32_t>();
        image.Stop = reader.take<std::int32_t>();
        for (std::int16_t* const part : {&image.KeyRed, &image.KeyGreen, &image.KeyBlue}) {
            *part = std::clamp<std::int16_t>(reader.take<std::int16_t>(), 0, 255);
        }
        image.Name = ModuleHistory::ShortName(reader.takeText());
        images.push_back(image);
    }
}

/// Images by the numbers of their rows, each read once.
class ImageReader {
public:
    explicit ImageReader(const Objects& objects) : objects_(objects) {}

    Records take(ByteReader& root)
    {
        std::array<ObjectNumber, kTransitionLane + 1> lanes{};
        for (ObjectNumber& lane : lanes) {
            lane = root.take<ObjectNumber>();
        }
        Records& known = read_[lanes];
        if (!known) {
            auto records = std::make_shared<ImageRecords>();
            for (std::size_t lane = 0; lane < kSourceLanes; ++lane) {
                takeSources(objectOf(objects_, lanes[lane]), static_cast<engine::Handle>(lane) + 1, records->Sources);
            }
            takeSources(objectOf(objects_, lanes[kOverlayLane]), kOverlayLane + 1, records->OverlaySources);
            takeEffects(objectOf(objects_, lanes[kEffectLane]), records->Effects);
            takeTransitions(objectOf(objects_, lanes[kTransitionLane]), records->Transitions);
            require(records->Transitions.size() == records->OverlaySources.size());
            known = std::move(records);
        }
        return known;
    }

private:
    const Objects& objects_;
    std::map<std::array<ObjectNumber, kTransitionLane + 1>, Records> read_;
};

void takeRows(ByteReader& root, Desk& desk)
{
    for (project::RowOptions& row : desk.rows) {
        row.isLinked = root.take<bool>();
        row.isLocked = root.take<bool>();
        row.isDisabled = root.take<bool>();
    }
    desk.bookmarks.resize(root.takeCount(6));
    require(desk.bookmarks.size() < kMostItems);
    for (BookmarkImage& bookmark : desk.bookmarks) {
        bookmark.time = root.take<std::int32_t>();
        bookmark.isVisible = root.take<bool>();
        bookmark.isMarked = root.take<bool>();
    }
    const auto count = static_cast<std::int16_t>(desk.bookmarks.size());
    require(count > 0);
    desk.bookmarkCount = std::clamp<std::int16_t>(root.take<std::int16_t>(), 0, count);
    desk.selectedBookmark =
        std::clamp<std::int16_t>(root.take<std::int16_t>(), 0, static_cast<std::int16_t>(count - 1));
    desk.historyIndex = root.take<std::int16_t>();
    desk.historyRows.resize(root.takeCount(16));
    for (forms::HistoryRow& row : desk.historyRows) {
        row.Key = root.takeText();
        row.Text = root.takeText();
        row.Picture = root.takeText();
        row.ForeColor = root.take<std::int32_t>();
    }
}

void takeDesk(ByteReader& root, Desk& desk)
{
    desk.projectPath = root.takeText();
    desk.isSaved = root.take<bool>();
    desk.isModified = root.take<bool>();
    desk.isListDirty = root.take<bool>();
    for (std::int16_t* const number : {&desk.savedFileCount, &desk.width, &desk.height, &desk.zoom}) {
        *number = root.take<std::int16_t>();
    }
    desk.width = std::clamp(desk.width, frmPreview::kLeastFrameSide, frmPreview::kMostFrameSide);
    desk.height = std::clamp(desk.height, frmPreview::kLeastFrameSide, frmPreview::kMostFrameSide);
    desk.zoom = std::clamp<std::int16_t>(desk.zoom, 0, moduleScaleRenderer::kFurthestZoom);
    desk.isFrameSizeChosen = root.take<bool>();
    desk.isStartShown = root.take<bool>();
    desk.isEndShown = root.take<bool>();
    desk.selectionStart = root.take<std::int32_t>();
    desk.selectionEnd = root.take<std::int32_t>();
    takeRows(root, desk);
}

std::shared_ptr<const MediaTable> takeMedia(const std::string& bytes)
{
    ByteReader reader(bytes);
    auto media = std::make_shared<MediaTable>();
    media->listed = reader.take<std::uint32_t>();
    media->files.resize(reader.takeCount(12));
    require(media->listed <= media->files.size());
    for (MediaFile& file : media->files) {
        file.path = reader.takeText();
        file.picture = reader.take<engine::Handle>();
        file.sound = reader.take<engine::Handle>();
    }
    return media;
}

Origin takeOrigin(const std::string& bytes)
{
    ByteReader reader(bytes);
    Origin origin;
    origin.isThere = reader.take<bool>();
    origin.byteCount = reader.take<std::uint64_t>();
    origin.hash = reader.take<std::uint64_t>();
    return origin;
}

} // namespace

StateImage readState(const Objects& objects, Origin& origin)
{
    StateImage image;
    origin = takeOrigin(objectOf(objects, kOrigin));
    image.media = takeMedia(objectOf(objects, kMedia));
    image.tracks = {1, 2, 3, kOverlayLane + 1};
    ByteReader root(objectOf(objects, kRoot));
    image.view = {root.take<std::int32_t>(), root.take<std::int32_t>(), root.take<std::int32_t>()};
    takeDesk(root, image.desk);
    image.entries.resize(root.takeCount(4));
    require(image.entries.size() <= kMostEntries && image.desk.historyIndex >= 0
            && std::cmp_less_equal(image.desk.historyIndex, image.entries.size()));
    ImageReader images(objects);
    for (EntryImage& entry : image.entries) {
        entry.type = root.takeText();
        entry.scroll = root.take<std::int32_t>();
        entry.isWhole = root.take<bool>();
        entry.records = images.take(root);
    }
    image.timeline = images.take(root);
    image.isNewestWhole = root.take<bool>();
    image.newest = images.take(root);
    return image;
}

} // namespace journal
