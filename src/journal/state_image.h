#pragma once

// The program's state as a plain value: what a crash must not take away.
//
// The large parts are shared and never changed, so that an image is made, compared and handed to another thread at the
// cost of a few pointers. Handles are those of the process that made the image; the tables say what they stand for.

#include "core/forms/frmTools.h"
#include "engine/types.h"
#include "history/image_records.h"
#include "project/project_file.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace journal {

struct MediaFile {
    std::string path;
    engine::Handle picture = 0; // 0: none, or never opened
    engine::Handle sound = 0;

    bool operator==(const MediaFile&) const = default;
};

/// The files of the media list, in its order; behind them those that were closed, which images may name still.
struct MediaTable {
    std::vector<MediaFile> files;
    std::uint32_t listed = 0; // how many of them are in the list

    bool operator==(const MediaTable&) const = default;
};

struct BookmarkImage {
    engine::Milliseconds time = 0;
    bool isVisible = false;
    bool isMarked = false; // it looks like the selected one

    bool operator==(const BookmarkImage&) const = default;
};

/// The small things.
struct Desk {
    std::string projectPath;
    bool isSaved = false;
    bool isModified = false;
    bool isListDirty = false;
    std::int16_t savedFileCount = 0;

    std::int16_t width = 320; // of the frame, pixels
    std::int16_t height = 240;
    bool isFrameSizeChosen = false;
    std::int16_t zoom = 10;
    bool isStartShown = false; // the sliders of the selection
    bool isEndShown = false;
    engine::Milliseconds selectionStart = 0;
    engine::Milliseconds selectionEnd = 0;
    project::AllRowOptions rows;
    std::vector<BookmarkImage> bookmarks; // with the pattern, which is a marker itself in a project that was opened
    std::int16_t bookmarkCount = 1;
    std::int16_t selectedBookmark = 0;

    std::int16_t historyIndex = 0;
    std::vector<forms::HistoryRow> historyRows;

    bool operator==(const Desk&) const = default;
};

/// What moves by itself while a film plays, or is only looked at. It goes along with the next change.
struct View {
    engine::Milliseconds slider = 0;
    std::int32_t scroll = 0;
    std::int32_t historyRow = 0;
};

using Records = std::shared_ptr<const ModuleHistory::ImageRecords>;

struct EntryImage {
    std::string type;
    std::int32_t scroll = 0;
    bool isWhole = false;
    Records records;

    bool operator==(const EntryImage&) const = default; // of the same records, not of alike ones
};

/// Video, Audio 1, Audio 2, Overlay.
using Tracks = std::array<engine::Handle, 4>;

struct StateImage {
    Desk desk;
    View view;
    std::shared_ptr<const MediaTable> media;
    Tracks tracks{};
    Records timeline;
    Records newest; // for a redo of the last step
    bool isNewestWhole = false;
    std::vector<EntryImage> entries;

    /// There is work in it that a save would write.
    bool hasUnsavedWork() const;
};

} // namespace journal
