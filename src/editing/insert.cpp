#include "editing/insert.h"

#include "core/numbers.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/upcalls.h"
#include "editing/adding_files.h"
#include "editing/moduleTWState.h"
#include "editing/row_cuts.h"
#include "editing/stream_facts.h"
#include "engine/engine_access.h"
#include "history/command.h"
#include "items/put_back.h"
#include "items/whole_item.h"

#include <algorithm>
#include <vector>

namespace moduleTimeline {

using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::Milliseconds;
using history::Outcome;
using items::RowItems;
using items::RowKind;
using items::TrackRow;

namespace {

/// A stream as it will lie.
struct Piece {
    Handle track;
    Handle stream;
    items::SourceTimes times;
};

struct Pieces {
    std::vector<Piece> all; // of one track in order
    Milliseconds stop = 0;
    bool hasPicture = false;
};

/// The files one behind the other, each as long as its longest stream.
Pieces piecesOf(ITWTimeline& engine, const std::vector<Handle>& files, bool isOverlay, Milliseconds pos)
{
    Pieces pieces{{}, pos, false};
    for (const Handle file : files) {
        const Milliseconds start = pieces.stop;
        for (const Handle stream : editing::streamsOf(file)) {
            const bool isPicture = editing::isVideoStream(stream);
            if (isOverlay && !isPicture) {
                continue;
            }
            const Handle track = isOverlay ? state::OverlayTrack : editing::targetTrack(engine, isPicture);
            const Milliseconds length = std::max(editing::factsOf(stream).length, Milliseconds{1});
            const Milliseconds stop = numbers::added(start, length);
            pieces.all.push_back({track, stream, {start, stop, 0, length}});
            pieces.stop = std::max(pieces.stop, stop);
            pieces.hasPicture = pieces.hasPicture || isPicture;
        }
    }
    return pieces;
}

bool takesPiece(const Pieces& pieces, const RowItems& row)
{
    return row.kind != RowKind::kEffect
           && std::ranges::any_of(pieces.all, [&](const Piece& piece) { return piece.track == row.track; });
}

void moveOn(ITWTimeline& engine, const RowItems& row, Milliseconds pos, Milliseconds by)
{
    const auto last = row.items.times(static_cast<std::int16_t>(row.items.count() - 1));
    numbers::added(last.value_or(items::ItemTimes{}).stop, by); // what does not fit would be drawn together
    editing::cutRow(row, engine, pos);
    row.shift(editing::firstFrom(row, pos), by);
}

void lay(ITWTimeline& engine, const RowItems& row, const Piece& piece)
{
    const items::ItemPlace at{engine, row.track, editing::firstFrom(row, piece.times.start)};
    items::PutBack putBack;
    if (!items::insertSource(at, piece.stream, piece.times, putBack)
        || (row.isOverlay() && !items::insertKey(at, {"DxtKey"}, piece.times.onTimeline(), putBack))) {
        throw engine::RuntimeError(engine::error_number::kInvalidCall, "There is no room for another item.");
    }
    putBack.done();
}

void insertPieces(ITWTimeline& engine, const Pieces& pieces, Milliseconds pos)
{
    for (const TrackRow& row : items::rows()) {
        if (!items::isMade(row)) {
            continue;
        }
        const RowItems lane = items::rowItems(engine, row);
        const bool isTarget = takesPiece(pieces, lane);
        if (isTarget || editing::followsEdits(engine, row)) {
            moveOn(engine, lane, pos, pieces.stop - pos);
        }
        for (const Piece& piece : pieces.all) {
            if (isTarget && piece.track == lane.track) {
                lay(engine, lane, piece);
            }
        }
    }
}

bool isAnyMediaRowLocked()
{
    return std::ranges::any_of(items::rows(),
                               [](const TrackRow& row) { return items::isMediaRow(row.kind) && row.isLocked(); });
}

Outcome insert(const TrackRow& row, Milliseconds pos, bool& hasPicture)
{
    const auto engine = EngineAs<ITWTimeline>();
    const Pieces pieces = piecesOf(*engine, editing::selectedFiles(), row.kind == RowKind::kOverlay, pos);
    if (pieces.all.empty()) {
        return Outcome::kNothing;
    }
    insertPieces(*engine, pieces, pos);
    hasPicture = pieces.hasPicture;
    return Outcome::kChanged;
}

void show(bool hasPicture)
{
    editing::showFilmGrown(hasPicture);
    history::keepNewestState(); // overlays may have their keys elsewhere now
    UpdateTreeView();
    EnableOrDisableMenuItems();
}

} // namespace

std::string_view InsertRefusal(const TrackRow& row)
{
    if (row.kind == RowKind::kVideo && isAnyMediaRowLocked()) {
        return "Please unlock the audio and / or video track(s) before attempting to add this file to the timeline.";
    }
    if (row.kind == RowKind::kAudio ? isAnyMediaRowLocked() : row.isLocked()) {
        return "Track is locked";
    }
    if (row.kind == RowKind::kOverlay && moduleTWState::IsVideoTrackEmpty()) {
        return "Unable to add to overlay as the video track is empty.";
    }
    return {};
}

std::vector<Landing> LandingsOfSelectedFiles(const TrackRow& row, Milliseconds pos)
{
    const auto engine = EngineAs<ITWTimeline>();
    const Pieces pieces = piecesOf(*engine, editing::selectedFiles(), row.kind == RowKind::kOverlay, pos);
    std::vector<Landing> landings;
    for (const TrackRow& each : items::rows()) {
        std::optional<items::ItemTimes> times;
        for (const Piece& piece : pieces.all) {
            if (items::isMediaRow(each.kind) || each.kind == RowKind::kOverlay) {
                const bool liesHere = items::isMade(each) && piece.track == items::trackOf(each);
                times = liesHere ? items::ItemTimes{times ? times->start : piece.times.start, piece.times.stop} : times;
            }
        }
        if (times) {
            landings.push_back({each, *times});
        }
    }
    return landings;
}

bool InsertSelectedFiles(const TrackRow& row, Milliseconds pos)
{
    if (row.kind == RowKind::kEffect || (row.kind == RowKind::kAudio && row.index != 0)) {
        return false;
    }
    if (const std::string_view refusal = InsertRefusal(row); !refusal.empty()) {
        tellUser(refusal);
        return false;
    }
    if (editing::selectedFiles().empty()) {
        tellUser("Unable to add to the timeline because no file is selected. Please select a file from the media "
                 "list.");
        return false;
    }
    bool hasPicture = false;
    const Milliseconds from = std::max(pos, Milliseconds{0});
    return history::runTrapped(
        "moduleTimeline", "InsertSelectedFiles", "Insert", [&] { return insert(row, from, hasPicture); },
        [&] { show(hasPicture); });
}

} // namespace moduleTimeline
