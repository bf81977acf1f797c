#include "walk/pieces.h"

#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <cmath>
#include <ranges>

namespace walk_test {

namespace {

std::int32_t mediaAt(const Piece& piece, Ms time)
{
    const double part = static_cast<double>(time - piece.times.start) / static_cast<double>(lengthOf(piece));
    return static_cast<std::int32_t>(
        std::lround(piece.media.start + part * static_cast<double>(lengthOf(piece.media))));
}

} // namespace

Piece seen(Piece piece, Ms start, Ms stop)
{
    piece.media = hasRate(piece) ? Range{mediaAt(piece, start), mediaAt(piece, stop)} : piece.media;
    piece.times = rangeOf(start, stop);
    return piece;
}

void shift(Pieces& pieces, std::size_t from, Ms by)
{
    by = from < pieces.size() ? std::max(by, -std::max<Ms>(gapAhead(pieces, from), 0)) : 0;
    for (std::size_t seq = from; seq < pieces.size(); ++seq) {
        move(pieces[seq], pieces[seq].times.start + by);
    }
}

void makeRoom(Pieces& pieces)
{
    for (Ms end = 0; Piece & piece : pieces) {
        move(piece, std::max<Ms>(piece.times.start, end));
        end = piece.times.stop;
    }
}

void cutAt(Pieces& pieces, Ms time)
{
    const auto whole = std::ranges::find_if(pieces, [&](const Piece& piece) { return isAcross(piece, time); });
    if (whole != pieces.end()) {
        const Piece right = seen(*whole, time, whole->times.stop);
        *whole = seen(*whole, whole->times.start, time);
        pieces.insert(whole + 1, right);
    }
}

void splitAt(Pieces& pieces, Ms time)
{
    for (Piece& piece : pieces) {
        const bool isOpen = isAcross(piece, time) && !isEffect(piece) && lengthOf(piece.media) != lengthOf(piece);
        piece.stream = isOpen && hasRate(piece) ? kAnyMedia : piece.stream;
    }
    cutAt(pieces, time);
}

std::ptrdiff_t Timeline::count() const { return std::ranges::distance(laid.rows | std::views::join); }

Timeline readNow(const app::EditSession& session)
{
    Timeline now;
    now.laid = app::readTimeline(session);
    for (const Row row : kRows) {
        now.isLocked[row] = app::rowOf(app::kEditTracks[row]).chkLock.Value == 1;
        now.isLinked[row] = app::rowOf(app::kEditTracks[row]).chkLink.Value == 1;
    }
    now.slider = moduleTimeline::GetSliderPosition();
    if (timeline::isSelectionShown()) {
        now.range = Range{moduleTimeline::GetSelSliderPosition(true), moduleTimeline::GetSelSliderPosition(false)};
    }
    return now;
}

} // namespace walk_test
