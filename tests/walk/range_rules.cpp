// Cut, copy, delete, crop, paste; and what is done to whole rows.

#include "walk/rules.h"

namespace walk_test {

namespace {

/// An overlay or an effect goes with a crop also when it shares an edge with the range.
bool goesWithCrop(Row row, const Piece& piece, const Range& range)
{
    const int margin = row == kOverlay || row == kEffects ? 1 : 0;
    const bool isWithin = piece.times.start >= range.start + margin && piece.times.stop <= range.stop - margin;
    return !isWithin && !isAcross(piece, range.start) && !isAcross(piece, range.stop);
}

/// What lies behind a deleted range may begin earlier, in the gap ahead of it, with what comes earlier in its media;
/// with how much is left open. Its length now tells how much; pieces may have been pasted ahead of it since.
void drawOut(Pieces& pieces, const Pieces& now, Ms from)
{
    for (std::size_t i = 0; i < pieces.size() && pieces.size() <= now.size(); ++i) {
        Piece& piece = pieces[i];
        const Ms start = piece.times.stop - lengthOf(now[i + now.size() - pieces.size()]);
        const Ms least = std::max(from, i > 0 ? Ms{pieces[i - 1].times.stop} : 0);
        if (piece.times.start > from && hasRate(piece) && start < piece.times.start && start >= least) {
            piece = seen(piece, start, piece.times.stop);
            piece.stream = kAnyMedia;
        }
    }
}

/// Inside goes or stays, outside it is the other way round; nothing moves.
void editRange(Command& c)
{
    const Range range = *c.before.range;
    for (const Row row : kRows) {
        if (!c.t.isLinked[row] || c.t.isLocked[row]) {
            continue;
        }
        Clip clip;
        Pieces left;
        Ms gaps = lengthOf(range);
        for (const Piece& piece : c.before.on(row)) {
            if (c.is("crop") && goesWithCrop(row, piece, range)) {
                continue;
            }
            if (!meets(piece, range) || (!hasRate(piece) && !c.is("paste"))) {
                clip.isOpen = clip.isOpen || meets(piece, range);
                left.push_back(piece);
                continue;
            }
            clip.pieces.push_back(within(piece, range));
            gaps -= lengthOf(clip.pieces.back());
            for (const Range& part : {Range{0, range.start}, range, Range{range.stop, piece.times.stop}}) {
                if (meets(piece, part) && c.isCrop() == (part == range)) {
                    left.push_back(within(piece, part));
                }
            }
        }
        if (c.isClipping()) {
            c.clips[row] = {clip.pieces, gaps > 0 ? lengthOf(range) : 0, clip.isOpen};
        }
        c.t.on(row) = c.is("copy") ? c.before.on(row) : left;
        if ((c.is("delete") || c.is("paste")) && row != kOverlay && row != kEffects) {
            drawOut(c.t.on(row), c.now.on(row), range.stop);
        }
    }
}

/// The selected ones, of rows that are not locked; a crop takes the others, of rows with a selected one.
void editWhole(Command& c)
{
    for (const Row row : kRows) {
        if (c.t.isLocked[row] || !hasSelected(c.t.on(row))) {
            continue;
        }
        if (c.isClipping()) {
            std::ranges::copy_if(c.t.on(row), std::back_inserter(c.clips[row].pieces), &Piece::isSelected);
        }
        std::erase_if(c.t.on(row), [&](const Piece& piece) { return !c.is("copy") && piece.isSelected != c.isCrop(); });
    }
}

} // namespace

void edit(Command& c)
{
    if (c.before.duration() == 0) {
        return;
    }
    if (c.isClipping()) {
        c.clips = {};
    }
    c.before.range ? editRange(c) : editWhole(c);
    if (!c.is("copy") && c.t.on(kVideo).empty()) {
        c.t.on(kEffects).clear();
    }
}

namespace {

/// What lay ahead stays, then comes what was copied, then what lay behind, all of it later by as much.
void pasteOn(Command& c, Row row, Ms at)
{
    Pieces& pieces = c.t.on(row);
    const Pieces& now = c.now.on(row);
    const auto& [clip, span, isOpen] = c.clips[row];
    if (isOpen || (c.t.isLocked[row] && !pieces.empty())) {
        pieces = isOpen ? now : pieces;
        return;
    }
    if (!clip.empty()) {
        splitAt(pieces, at);
    }
    const auto place = std::ranges::find_if(pieces, [&](const Piece& piece) { return piece.times.start >= at; });
    Pieces behind(place, pieces.end());
    pieces.erase(place, pieces.end());
    if (c.before.range && c.t.end(row) == at && at > 0 && !behind.empty()) {
        shift(behind, 0, at - behind.front().times.start);
    }
    const auto startNow = [&] { return pieces.size() < now.size() ? Ms{now[pieces.size()].times.start} : at; };
    Ms pasted = 0;
    for (Ms end = at; const Piece& piece : clip) {
        const Ms start = span == 0 ? end : std::clamp(startNow(), end, at + span);
        pieces.push_back(piece);
        move(pieces.back(), start);
        end = pieces.back().times.stop;
        pasted += lengthOf(piece);
    }
    if (!behind.empty()) {
        const Ms later = startNow() - behind.front().times.start;
        shift(behind, 0, span == 0 ? pasted : std::clamp(later, pasted, span));
        pieces.insert(pieces.end(), behind.begin(), behind.end());
    }
}

} // namespace

void paste(Command& c)
{
    const Ms at = c.before.range ? c.before.range->start : c.before.slider;
    c.before.range ? editRange(c) : void();
    for (const Row row : kRows) {
        pasteOn(c, row, at);
    }
}

/// Nothing that is seen changes. No piece of a source is shorter than 11 ms.
void split(Command& c)
{
    const Ms at = c.before.slider;
    for (const Row row : kRows) {
        const Ms least = row == kEffects ? 1 : 11;
        const bool isShort = std::ranges::any_of(c.t.on(row), [&](const Piece& piece) {
            return isAcross(piece, at) && std::min(at - piece.times.start, piece.times.stop - at) < least;
        });
        if (!c.t.isLocked[row] && !isShort) {
            splitAt(c.t.on(row), at);
        }
    }
}

void pack(Command& c)
{
    for (const Row row : kRows) {
        for (Ms end = 0; Piece & piece : c.t.on(row)) {
            move(piece, c.t.isLocked[row] ? Ms{piece.times.start} : end);
            end = piece.times.stop;
        }
    }
}

/// Locked rows too.
void restore(Command& c)
{
    for (Pieces& pieces : c.t.laid.rows) {
        for (Piece& piece : pieces) {
            lay(piece, piece.times.start, piece.isSelected ? naturalLength(piece) : lengthOf(piece));
            makeRoom(pieces);
        }
    }
}

} // namespace walk_test
