// Images to objects.

#include "journal/state_coding.h"

#include "journal/bytes.h"
#include "journal/object_numbers.h"

#include <algorithm>
#include <utility>

namespace journal {

namespace {

using ModuleHistory::ImageRecords;

void put(ByteWriter& out, const ModuleHistory::SourceImage& image)
{
    const std::int32_t numbers[] = {image.Stream, image.Start, image.Stop, image.MediaStart, image.MediaStop};
    out.bytes.append(reinterpret_cast<const char*>(numbers), sizeof numbers);
    out.put(image.StretchMode);
}

void put(ByteWriter& out, const ModuleHistory::EffectImage& image)
{
    out.put(image.Start);
    out.put(image.Stop);
    out.put(image.Name.text());
}

void put(ByteWriter& out, const ModuleHistory::TransitionImage& image)
{
    out.put(image.Start);
    out.put(image.Stop);
    out.put(image.KeyRed);
    out.put(image.KeyGreen);
    out.put(image.KeyBlue);
    out.put(image.Name.text());
}

std::string bytesOf(const auto& images)
{
    ByteWriter out;
    out.bytes.reserve(images.size() * kSourceBytes);
    for (const auto& image : images) {
        put(out, image);
    }
    return std::move(out.bytes);
}

std::string bytesOfTrack(const std::vector<ModuleHistory::SourceImage>& images, engine::Handle track)
{
    ByteWriter out;
    out.bytes.reserve(images.size() * kSourceBytes);
    for (const auto& image : images) {
        if (image.Track == track) {
            put(out, image);
        }
    }
    return std::move(out.bytes);
}

std::string bytesOf(const MediaTable& media)
{
    ByteWriter out;
    out.put(media.listed);
    out.put(static_cast<std::uint32_t>(media.files.size()));
    for (const MediaFile& file : media.files) {
        out.put(std::string_view(file.path));
        out.put(file.picture);
        out.put(file.sound);
    }
    return std::move(out.bytes);
}

void putRows(ByteWriter& out, const Desk& desk)
{
    for (const project::RowOptions& row : desk.rows) {
        out.put(row.isLinked);
        out.put(row.isLocked);
        out.put(row.isDisabled);
    }
    out.put(static_cast<std::uint32_t>(desk.bookmarks.size()));
    for (const BookmarkImage& bookmark : desk.bookmarks) {
        out.put(bookmark.time);
        out.put(bookmark.isVisible);
        out.put(bookmark.isMarked);
    }
    out.put(desk.bookmarkCount);
    out.put(desk.selectedBookmark);
    out.put(desk.historyIndex);
    out.put(static_cast<std::uint32_t>(desk.historyRows.size()));
    for (const forms::HistoryRow& row : desk.historyRows) {
        out.put(std::string_view(row.Key));
        out.put(std::string_view(row.Text));
        out.put(std::string_view(row.Picture));
        out.put(row.ForeColor);
    }
}

void putDesk(ByteWriter& out, const Desk& desk)
{
    out.put(std::string_view(desk.projectPath));
    out.put(desk.isSaved);
    out.put(desk.isModified);
    out.put(desk.isListDirty);
    for (const std::int16_t number : {desk.savedFileCount, desk.width, desk.height, desk.zoom}) {
        out.put(number);
    }
    out.put(desk.isFrameSizeChosen);
    out.put(desk.isStartShown);
    out.put(desk.isEndShown);
    out.put(desk.selectionStart);
    out.put(desk.selectionEnd);
    putRows(out, desk);
}

} // namespace

void StateWriter::forget()
{
    objects_.clear();
    before_.clear();
    pieces_.clear();
    media_.reset();
    origin_.reset();
    isNew_ = true;
}

ObjectNumber StateWriter::numberOf(std::size_t lane, std::string bytes, ByteWriter& changes)
{
    ObjectNumber base = 0;
    for (const auto* pieces : {&pieces_, &before_}) {
        for (auto piece = pieces->rbegin(); piece != pieces->rend(); ++piece) {
            const std::string* const known = objects_.find(piece->lanes[lane]);
            if (known != nullptr && *known == bytes) {
                return piece->lanes[lane];
            }
            base = base == 0 && known != nullptr ? piece->lanes[lane] : base;
        }
    }
    objects_.set(next_, base, std::move(bytes), changes);
    return next_++;
}

const StateWriter::Piece& StateWriter::pieceOf(const Records& records, const Tracks& tracks, ByteWriter& changes)
{
    if (const auto known = std::ranges::find(pieces_, records, &Piece::records); known != pieces_.end()) {
        return *known;
    }
    if (const auto known = std::ranges::find(before_, records, &Piece::records); known != before_.end()) {
        return pieces_.emplace_back(*known);
    }
    Piece piece{records, {}};
    for (std::size_t lane = 0; lane < kSourceLanes; ++lane) {
        piece.lanes[lane] = numberOf(lane, bytesOfTrack(records->Sources, tracks[lane]), changes);
    }
    piece.lanes[kOverlayLane] = numberOf(kOverlayLane, bytesOf(records->OverlaySources), changes);
    piece.lanes[kEffectLane] = numberOf(kEffectLane, bytesOf(records->Effects), changes);
    piece.lanes[kTransitionLane] = numberOf(kTransitionLane, bytesOf(records->Transitions), changes);
    return pieces_.emplace_back(std::move(piece));
}

void StateWriter::putLanes(const Records& records, const Tracks& tracks, ByteWriter& root, ByteWriter& changes)
{
    for (const ObjectNumber number : pieceOf(records, tracks, changes).lanes) {
        root.put(number);
    }
}

void StateWriter::putRoot(const StateImage& image, ByteWriter& changes)
{
    ByteWriter root;
    root.put(image.view.slider);
    root.put(image.view.scroll);
    root.put(image.view.historyRow);
    putDesk(root, image.desk);
    root.put(static_cast<std::uint32_t>(image.entries.size()));
    for (const EntryImage& entry : image.entries) {
        root.put(std::string_view(entry.type));
        root.put(entry.scroll);
        root.put(entry.isWhole);
        putLanes(entry.records, image.tracks, root, changes);
    }
    putLanes(image.timeline, image.tracks, root, changes);
    root.put(image.isNewestWhole);
    putLanes(image.newest, image.tracks, root, changes);
    objects_.set(kRoot, kRoot, std::move(root.bytes), changes);
}

/// A row that the images before had, and none of these has any more.
void StateWriter::dropUnused(ByteWriter& changes)
{
    const auto isUsed = [&](ObjectNumber number) {
        return std::ranges::any_of(
            pieces_, [&](const Piece& piece) { return std::ranges::find(piece.lanes, number) != piece.lanes.end(); });
    };
    for (const Piece& piece : before_) {
        for (const ObjectNumber number : piece.lanes) {
            if (objects_.find(number) != nullptr && !isUsed(number)) {
                objects_.drop(number, changes);
            }
        }
    }
}

std::string StateWriter::difference(const StateImage& image, const Origin& origin, std::int64_t time)
{
    ByteWriter changes;
    changes.put(time);
    changes.put(std::exchange(isNew_, false));
    before_ = std::exchange(pieces_, {});
    if (media_ != image.media) {
        media_ = image.media;
        objects_.set(kMedia, kMedia, bytesOf(*media_), changes);
    }
    if (origin_ != origin) {
        origin_ = origin;
        ByteWriter out;
        out.put(origin.isThere);
        out.put(origin.byteCount);
        out.put(origin.hash);
        objects_.set(kOrigin, kOrigin, std::move(out.bytes), changes);
    }
    putRoot(image, changes);
    dropUnused(changes);
    before_.clear();
    return std::move(changes.bytes);
}

} // namespace journal
