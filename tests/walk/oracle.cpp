#include "walk/oracle.h"

#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <cmath>
#include <ranges>
#include <set>
#include <tuple>

namespace walk_test {

namespace {

constexpr engine::Handle kAnyMedia = -1; // as the stream of a piece

Ms lengthOf(const Range& times) { return Ms{times.stop} - times.start; }
Ms lengthOf(const Piece& piece) { return lengthOf(piece.times); }
bool isEffect(const Piece& piece) { return piece.stream == 0; }
/// Nothing can be worked out for one without, and no edit over a range touches it.
bool hasRate(const Piece& piece) { return isEffect(piece) || piece.media.stop > piece.media.start; }
Ms naturalLength(const Piece& piece)
{
    return isEffect(piece) || !hasRate(piece) ? lengthOf(piece) : lengthOf(piece.media);
}
bool isAcross(const Piece& piece, Ms time) { return piece.times.start < time && time < piece.times.stop; }
bool meets(const Piece& piece, const Range& range)
{
    return piece.times.stop > range.start && piece.times.start < range.stop;
}

Range rangeOf(Ms start, Ms stop) { return {static_cast<std::int32_t>(start), static_cast<std::int32_t>(stop)}; }

std::int32_t mediaAt(const Piece& piece, Ms time)
{
    const double part = static_cast<double>(time - piece.times.start) / static_cast<double>(lengthOf(piece));
    return static_cast<std::int32_t>(
        std::lround(piece.media.start + part * static_cast<double>(lengthOf(piece.media))));
}

/// The same piece seen from start to stop.
Piece seen(Piece piece, Ms start, Ms stop)
{
    piece.media = {mediaAt(piece, start), mediaAt(piece, stop)};
    piece.times = rangeOf(start, stop);
    return piece;
}
Piece within(const Piece& piece, const Range& range)
{
    return seen(piece, std::max(piece.times.start, range.start), std::min(piece.times.stop, range.stop));
}

void lay(Piece& piece, Ms start, Ms length) { piece.times = rangeOf(start, start + length); }
void move(Piece& piece, Ms start) { lay(piece, start, lengthOf(piece)); }

Ms gapAhead(const Pieces& pieces, std::size_t seq)
{
    return pieces[seq].times.start - (seq > 0 ? pieces[seq - 1].times.stop : 0);
}
/// What lies from there on goes by that much; to the left as far as the gap ahead lets it.
void shift(Pieces& pieces, std::size_t from, Ms by)
{
    by = from < pieces.size() ? std::max(by, -std::max<Ms>(gapAhead(pieces, from), 0)) : 0;
    for (std::size_t seq = from; seq < pieces.size(); ++seq) {
        move(pieces[seq], pieces[seq].times.start + by);
    }
}
/// Whoever overlaps the one ahead moves to its end.
void makeRoom(Pieces& pieces)
{
    for (Ms end = 0; Piece & piece : pieces) {
        move(piece, std::max<Ms>(piece.times.start, end));
        end = piece.times.stop;
    }
}
std::size_t firstSelected(const Pieces& pieces)
{
    return static_cast<std::size_t>(std::ranges::find(pieces, true, &Piece::isSelected) - pieces.begin());
}
bool hasSelected(const Pieces& pieces) { return firstSelected(pieces) < pieces.size(); }

/// Two of the one that lies across the time, if any. False when it has no rate. Which media one at another speed than
/// its own is divided at is left open.
bool splitAt(Pieces& pieces, Ms time)
{
    const auto whole = std::ranges::find_if(pieces, [&](const Piece& piece) { return isAcross(piece, time); });
    if (whole == pieces.end()) {
        return true;
    }
    const bool isPossible = hasRate(*whole);
    whole->stream = !isEffect(*whole) && lengthOf(whole->media) != lengthOf(*whole) ? kAnyMedia : whole->stream;
    const Piece right = seen(*whole, time, whole->times.stop);
    *whole = seen(*whole, whole->times.start, time);
    pieces.insert(whole + 1, right);
    return isPossible;
}

/// One command.
struct Command {
    const Words& words;
    const Timeline& before;
    const Timeline& now;
    std::array<Clip, kRows.size()>& clips;
    Timeline t{before}; // as the command asks for it

    bool is(std::string_view word) const { return words.front() == word; }
    Ms number(std::size_t at) const { return std::stoi(words.at(at)); }
    std::ptrdiff_t seq(std::size_t at) const { return number(at); }
    Row row(std::size_t at) const { return static_cast<Row>(app::trackNamed(words.at(at)).value()); }
    bool isClipping() const { return is("cut") || is("copy"); }
    bool isCrop() const { return is("crop") || is("crop-sources"); }
};

/// Pieces without their places: the name, how it is fitted to the movie, and an overlay's key.
using Looks = std::multiset<std::tuple<std::string, std::int16_t, std::array<std::int16_t, 3>>>;
Looks looksOf(const Timeline& timeline)
{
    Looks looks;
    for (const Piece& piece : timeline.laid.rows | std::views::join) {
        looks.emplace(piece.name, piece.mode, piece.key);
    }
    return looks;
}

/// Where it goes is left open.
void rearrange(Command& c) { c.t.laid = looksOf(c.now) == looksOf(c.before) ? c.now.laid : c.t.laid; }

// --- Cut, copy, delete, crop, paste --------------------------------------------------------------------------------

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
            if (!meets(piece, range) || !hasRate(piece)) {
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

/// What lay ahead stays, then comes what was copied, then what lay behind, all of it later by as much. False where a
/// piece cannot be divided.
bool pasteOn(Command& c, Row row, Ms at)
{
    Pieces& pieces = c.t.on(row);
    const Pieces& now = c.now.on(row);
    const auto& [clip, span, isOpen] = c.clips[row];
    if (isOpen || (c.t.isLocked[row] && !pieces.empty())) {
        pieces = isOpen ? now : pieces;
        return true;
    }
    if (const Pieces whole = pieces; !clip.empty() && !splitAt(pieces, at)) {
        pieces = whole;
        return false;
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
    return true;
}

void paste(Command& c)
{
    const Ms at = c.before.range ? c.before.range->start : c.before.slider;
    c.before.range ? editRange(c) : void();
    pasteOn(c, kVideo, at) && pasteOn(c, kAudio1, at) && pasteOn(c, kAudio2, at);
    pasteOn(c, kEffects, at);
    pasteOn(c, kOverlay, at);
}

/// Nothing that is seen changes. No piece of a source is shorter than 11 ms; one without rate undoes it all.
void split(Command& c)
{
    const Ms at = c.before.slider;
    for (const Row row : kRows) {
        const Ms least = row == kEffects ? 1 : 11;
        const bool isShort = std::ranges::any_of(c.t.on(row), [&](const Piece& piece) {
            return isAcross(piece, at) && std::min(at - piece.times.start, piece.times.stop - at) < least;
        });
        if (!c.t.isLocked[row] && !isShort && !splitAt(c.t.on(row), at)) {
            c.t = c.before;
            return;
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

// --- How it looks --------------------------------------------------------------------------------------------------

void keyColour(Command& c)
{
    if (Pieces& overlays = c.t.on(kOverlay); c.seq(1) < std::ssize(overlays)) {
        for (std::size_t part = 0; part < 3; ++part) {
            overlays[static_cast<std::size_t>(c.seq(1))].key[part] = static_cast<std::int16_t>(c.number(part + 2));
        }
    }
}

/// Sounds bear a mode too. The fourth is never set.
void stretchMode(Command& c)
{
    const auto mode = static_cast<std::int16_t>(std::stoi(c.words.back()));
    for (const Row row : kRows) {
        Pieces& pieces = c.t.on(row);
        for (std::ptrdiff_t seq = 0; seq < std::ssize(pieces) && row != kEffects && mode != 3; ++seq) {
            Piece& piece = pieces[static_cast<std::size_t>(seq)];
            const bool isMeant = c.words[1] == "selected" ? piece.isSelected
                                 : c.words[1] == "tracks" ? hasSelected(c.t.on(row == kOverlay ? kOverlay : kVideo))
                                                          : c.words[1] == nameOf(row) && c.seq(2) == seq;
            piece.mode = isMeant ? mode : piece.mode;
        }
    }
}

/// Black on white stands on blue.
void title(Command& c)
{
    constexpr Ms kStillMs = 5000;
    Piece piece;
    piece.name = c.words[1];
    piece.key = {0, 0, 255};
    lay(piece, c.t.end(kOverlay), kStillMs);
    piece.media = rangeOf(0, kStillMs);
    c.t.on(kOverlay).push_back(piece);
}

// --- By hand -------------------------------------------------------------------------------------------------------

void moveSelected(Command& c, Ms by)
{
    for (const Row row : kRows) {
        shift(c.t.on(row), firstSelected(c.t.on(row)), c.t.isLocked[row] ? 0 : by);
    }
}

void nudge(Command& c) { moveSelected(c, c.number(1)); }

/// One that is not selected becomes the only one. False when there is nothing to take, or it is locked.
bool press(Command& c)
{
    const Row row = c.row(1);
    if (c.seq(2) >= std::ssize(c.t.on(row))) {
        return false;
    }
    const auto seq = static_cast<std::size_t>(c.seq(2));
    if (!c.t.on(row)[seq].isSelected) {
        for (Pieces& pieces : c.t.laid.rows) {
            std::ranges::for_each(pieces, [](Piece& piece) { piece.isSelected = false; });
        }
        c.t.on(row)[seq].isSelected = true;
    }
    return !c.t.isLocked[row];
}

/// The least room ahead of them is for all, that on locked rows too.
void drag(Command& c)
{
    Ms by = press(c) ? c.number(3) : 0;
    for (const Pieces& pieces : c.t.laid.rows) {
        by = hasSelected(pieces) ? std::max(by, -gapAhead(pieces, firstSelected(pieces))) : by;
    }
    moveSelected(c, by);
}

/// Locked rows too, but for the one that is pressed.
void resize(Command& c)
{
    constexpr Ms kTooShort = 10;
    const Ms by = press(c) ? c.number(3) : 0;
    for (Pieces& pieces : c.t.laid.rows) {
        for (std::size_t seq = 0; seq < pieces.size(); ++seq) {
            if (pieces[seq].isSelected && lengthOf(pieces[seq]) + by > kTooShort) {
                lay(pieces[seq], pieces[seq].times.start, lengthOf(pieces[seq]) + by);
                shift(pieces, seq + 1, by);
            }
        }
    }
}

/// What the others leave is left open: the rooms' own tests and the scripts hold them to it.
constexpr std::pair<std::string_view, void (*)(Command&)> kRules[] = {
    {"cut", edit},
    {"copy", edit},
    {"delete", edit},
    {"crop", edit},
    {"crop-sources", edit},
    {"paste", paste},
    {"split", split},
    {"pack", pack},
    {"restore", restore},
    {"drag", drag},
    {"resize", resize},
    {"nudge", nudge},
    {"shuffle", rearrange},
    {"change-track", rearrange},
    {"title", title},
    {"key-color", keyColour},
    {"stretch", stretchMode},
};

bool isAsTold(const Piece& is, const Piece& told)
{
    const bool hasMedia =
        std::abs(is.media.start - told.media.start) <= 1 && std::abs(is.media.stop - told.media.stop) <= 1;
    return is.name == told.name && is.times == told.times && is.mode == told.mode && is.key == told.key
           && (hasMedia || told.stream == kAnyMedia);
}

/// What there is has been there before, or is new and plain.
bool keepsLooks(const Timeline& before, const Timeline& now)
{
    Looks had = looksOf(before);
    return std::ranges::all_of(looksOf(now), [&](const auto& look) {
        const auto found = had.find(look);
        const bool isOld = found != had.end();
        isOld ? void(had.erase(found)) : void();
        return isOld || (std::get<1>(look) == 0 && std::get<2>(look) == std::array<std::int16_t, 3>{});
    });
}

} // namespace

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

std::string Oracle::wrongBehind(const Words& words, const Timeline& before, const Timeline& now)
{
    const auto* const rule = std::ranges::find(kRules, words.front(), [](const auto& each) { return each.first; });
    if (rule == std::end(kRules)) {
        return keepsLooks(before, now) ? "" : "a stretch mode or a key is another one:\n" + app::asText(now.laid);
    }
    Command command{words, before, now, clips_};
    rule->second(command);
    for (const Row row : kRows) {
        if (!std::ranges::equal(now.on(row), command.t.on(row), isAsTold)) {
            return nameOf(row) + " does not hold what it must:\n" + app::asText(now.laid) + "  instead of\n"
                   + app::asText(command.t.laid);
        }
    }
    return {};
}

} // namespace walk_test
