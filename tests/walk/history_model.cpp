#include "walk/history_model.h"

#include <algorithm>
#include <array>

namespace walk_test {

namespace {

constexpr int kLimit = 25;

struct Face {
    std::string_view word;
    std::string_view onAdding;
    std::string_view onRedo; // empty: no row
};

constexpr std::array<Face, 19> kFaces{{
    {"AddToTimeline", "Add to Timeline/ADD_TO_TIMELINE", "Add to Timeline/ADD_TO_TIMELINE"},
    {"Cut", "Cut/CUT", "Cut/CUT"},
    {"Copy", "Copy/COPY", "Copy/COPY"},
    {"Paste", "Paste/PASTE", "Paste/PASTE"},
    {"Effect", "Add Effect to Timeline/ADD_EFFECT", "Add Effect to Timeline/ADD_EFFECT"},
    {"Overlay", "Add to Overlay/ADD_TO_OVERLAY", "Add to Overlay/ADD_TO_OVERLAY"},
    {"Delete", "Delete/CLEAR", "Delete/DELETE"},
    {"Move", "Move/MOVE", "Move/MOVE"},
    {"Resize", "Resize/RESIZE", "Resize/RESIZE"},
    {"Shuffle", "Shuffle Sources/SHUFFLE_SOURCES", "Shuffle Sources/SHUFFLE_SOURCES"},
    {"Split", "Split Timeline Tracks/SPLIT_TIMELINE", "Split Timeline Tracks/SPLIT_TIMELINE"},
    {"Pack", "Pack Timeline Tracks/PACK_TIMELINE", "Pack Timeline Tracks/PACK_TIMELINE"},
    {"Repeat", "Repeat Audio/REPEAT_AUDIO", "Repeat Audio/REPEAT_AUDIO"},
    {"Clear", "Clear Timeline/CLEAR_TIMELINE", "Clear Timeline/CLEAR_TIMELINE"},
    {"Clear Effects", "Clear Effect Track/CLEAR_EFFECT", ""},
    {"Clear Overlays", "Clear Overlay Track/CLEAR_OVERLAY", ""},
    {"Restore", "Restore Size/RESTORE_SIZE", "Restore Size/RESTORE_SIZE"},
    {"CropSources", "Crop Sources/CROP_SOURCES", "Crop Sources/CROP_SOURCES"},
    {"Crop", "Crop/CROP", "Crop/CROP"},
}};

const Face& faceOf(std::string_view word) { return *std::ranges::find(kFaces, word, &Face::word); }

} // namespace

void HistoryModel::begin(std::string_view word, const std::string& image)
{
    removeDisabled();
    if (index_ > kLimit) {
        entries_.erase(entries_.begin());
        index_ = entryCount();
        if (!rows_.empty()) {
            rows_.erase(rows_.begin());
        }
    }
    dropBehindIndex();
    if (rowCount() > index_) { // of commands that came to nothing
        rows_.resize(static_cast<std::size_t>(index_));
    }
    rows_.push_back({std::string(faceOf(word).onAdding)});
    entries_.push_back({std::string(word), image});
}

void HistoryModel::bringIntoForce()
{
    ++index_;
    dropBehindIndex();
}

void HistoryModel::takeBack()
{
    entries_.pop_back();
    rows_.pop_back();
}

std::optional<std::string> HistoryModel::undoFromMenu()
{
    const auto image = undo();
    if (!image) {
        return {};
    }
    if (isUndone(rowCount())) {
        setUndone(index_ + 1, index_ + 1, true);
    } else if (!rows_.empty()) {
        rows_.pop_back();
    }
    return image;
}

std::optional<std::string> HistoryModel::redoFromMenu() { return redo(); }

std::optional<std::string> HistoryModel::click(int row)
{
    if (row < 1 || row > rowCount() || row > entryCount()) {
        return {};
    }
    if (!isUndone(row)) {
        setUndone(row, rowCount(), true);
        index_ = row;
        return undo();
    }
    setUndone(1, row, false);
    index_ = row - 1;
    return redo();
}

std::string HistoryModel::text() const
{
    std::string all = std::to_string(index_) + " of " + std::to_string(entryCount()) + ":";
    for (const Row& row : rows_) {
        all += row.isUndone ? " (" + row.face + ")" : " " + row.face;
    }
    return all;
}

void HistoryModel::setUndone(int first, int last, bool isUndone)
{
    for (int row = first; row <= std::min(last, rowCount()); ++row) {
        rows_[static_cast<std::size_t>(row) - 1].isUndone = isUndone;
    }
}

void HistoryModel::removeDisabled()
{
    if (index_ > kLimit) {
        return;
    }
    while (isUndone(rowCount())) {
        rows_.pop_back();
        if (rows_.empty() || rowCount() > entryCount()) {
            return; // the removal of an entry that is not there ends it
        }
        entries_.erase(entries_.begin() + rowCount() - 1); // one below the row that went
    }
}

void HistoryModel::dropBehindIndex()
{
    if (entryCount() > index_) {
        entries_.resize(static_cast<std::size_t>(index_));
    }
}

std::optional<std::string> HistoryModel::undo()
{
    if (index_ == 0 || index_ > entryCount()) {
        return {};
    }
    return entries_[static_cast<std::size_t>(index_--) - 1].image;
}

std::optional<std::string> HistoryModel::redo()
{
    if (index_ >= entryCount()) {
        return {};
    }
    std::string image = newest_;
    if (index_ + 1 < entryCount()) {
        const int place = rows_.empty() ? 1 : index_ + 2;
        image = entries_[static_cast<std::size_t>(place) - 1].image;
    }
    const bool hasRow = isUndone(index_ + 1);
    setUndone(index_ + 1, index_ + 1, false);
    const std::string_view face = faceOf(entries_[static_cast<std::size_t>(index_)].word).onRedo;
    if (index_ == rowCount() && !hasRow && !face.empty()) {
        rows_.push_back({std::string(face)});
    }
    ++index_;
    return image;
}

} // namespace walk_test
