// What it looks like, what a hand does, and what lets the rest follow.

#include "walk/rules.h"

namespace walk_test {

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

namespace {

void moveSelected(Command& c, Ms by)
{
    for (const Row row : kRows) {
        shift(c.t.on(row), firstSelected(c.t.on(row)), c.t.isLocked[row] ? 0 : by);
    }
}

} // namespace

void nudge(Command& c) { moveSelected(c, c.number(1)); }

namespace {

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

} // namespace

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

// --- Trims, and what lets the rest follow --------------------------------------------------------------------------

namespace {

enum class End : std::uint8_t { kStart, kStop };
End endOf(const Command& c) { return c.is("trim-start") ? End::kStart : End::kStop; }
Ms placeOf(const Piece& piece, End end) { return end == End::kStart ? piece.times.start : piece.times.stop; }

/// Of the walk's files; a title is a still.
Ms lengthOfMedium(const Piece& piece)
{
    const std::pair<std::string_view, Ms> known[] = {
        {"clip", 3000}, {"pic", 1200}, {"song", 700}, {"tiny", 40}, {"long", 25'001}};
    const auto* const found = std::ranges::find(known, piece.name, [](const auto& each) { return each.first; });
    return found != std::end(known) ? found->second : 0;
}
bool isStill(const Piece& piece) { return isEffect(piece) || lengthOfMedium(piece) == 0; }

/// Where its end can go, both counting.
Range reachOf(const Timeline& t, Row row, std::size_t seq, End end)
{
    constexpr Ms kShortest = 11;
    const Pieces& pieces = t.on(row);
    const Piece& piece = pieces[seq];
    const Ms place = placeOf(piece, end);
    if (!isStill(piece) && !hasRate(piece)) {
        return rangeOf(place, place);
    }
    Ms spare = lengthOf(piece) - kShortest;
    Ms grows = end == End::kStart        ? gapAhead(pieces, seq)
               : seq + 1 < pieces.size() ? Ms{pieces[seq + 1].times.start} - place
                                         : 1'000'000'000;
    grows = row == kEffects && end == End::kStop ? std::min(grows, t.end(kVideo) - place) : grows;
    if (!isStill(piece)) {
        const auto lasts = [&](Ms media) { return std::max<Ms>(media, 0) * lengthOf(piece) / lengthOf(piece.media); };
        const Ms beyond = end == End::kStart ? Ms{piece.media.start} : lengthOfMedium(piece) - piece.media.stop;
        spare = std::min(spare, lasts(lengthOf(piece.media) - 1));
        grows = std::min(grows, lasts(beyond));
    }
    spare = std::max<Ms>(spare, 0);
    grows = std::max<Ms>(grows, 0);
    return end == End::kStart ? rangeOf(place - grows, place + spare) : rangeOf(place - spare, place + grows);
}

void trimTo(Piece& piece, End end, Ms place)
{
    const Range kept = piece.media;
    piece = end == End::kStart ? seen(piece, place, piece.times.stop) : seen(piece, piece.times.start, place);
    piece.media = isStill(piece) ? kept : piece.media;
}

/// On each row the one under the slider, or the one whose end faces the gap that it stands in.
void trimToSlider(Command& c)
{
    const End end = endOf(c);
    const Ms at = c.before.slider;
    for (const Row row : kRows) {
        Pieces& pieces = c.t.on(row);
        const auto under = std::ranges::find_if(pieces, [&](const Piece& piece) { return piece.times.stop > at; });
        auto seq = static_cast<std::size_t>(under - pieces.begin());
        const bool isInGap = under == pieces.end() || at <= under->times.start;
        seq -= isInGap && end == End::kStop ? 1 : 0; // none ahead: beyond all of them
        if (!c.t.isLocked[row] && seq < pieces.size() && pieces[seq].isSelected) {
            const Range reach = reachOf(c.before, row, seq, end);
            trimTo(pieces[seq], end, std::clamp<Ms>(at, reach.start, reach.stop));
        }
    }
}

} // namespace

/// The one that is pressed, and on other rows those selected ones that are level with it; as far as all of them go.
void trim(Command& c)
{
    if (c.words.size() == 1) {
        trimToSlider(c);
        return;
    }
    if (!press(c)) {
        return;
    }
    constexpr Ms kLevel = 100;
    const End end = endOf(c);
    std::vector<std::pair<Row, std::size_t>> all{{c.row(1), static_cast<std::size_t>(c.seq(2))}};
    const Ms from = placeOf(c.t.on(all[0].first)[all[0].second], end);
    for (const Row row : kRows) {
        const Pieces& pieces = c.t.on(row);
        std::optional<std::size_t> nearest;
        const auto off = [&](std::size_t seq) { return std::abs(placeOf(pieces[seq], end) - from); };
        for (std::size_t seq = 0; seq < pieces.size(); ++seq) {
            if (pieces[seq].isSelected && off(seq) <= kLevel && (!nearest || off(seq) < off(*nearest))) {
                nearest = seq;
            }
        }
        if (nearest && row != c.row(1) && !c.t.isLocked[row]) {
            all.emplace_back(row, *nearest);
        }
    }
    Ms by = c.number(3);
    for (const auto& [row, seq] : all) {
        const Ms place = placeOf(c.t.on(row)[seq], end);
        const Range reach = reachOf(c.t, row, seq, end);
        by = std::clamp(by, reach.start - place, reach.stop - place);
    }
    for (const auto& [row, seq] : all) {
        trimTo(c.t.on(row)[seq], end, placeOf(c.t.on(row)[seq], end) + by);
    }
}

namespace {

bool follows(const Command& c, Row row) { return c.t.isLinked[row] && !c.t.isLocked[row]; }

std::size_t firstFrom(const Pieces& pieces, Ms time)
{
    const auto found = std::ranges::find_if(pieces, [&](const Piece& piece) { return piece.times.start >= time; });
    return static_cast<std::size_t>(found - pieces.begin());
}

/// As long as a sound that goes with it, begins with it and is a little longer; as far as there is room.
Ms lengthToClose(const Timeline& t, Row row, std::size_t seq)
{
    constexpr Ms kTail = 100;
    constexpr Ms kUnheard = 40;
    const Piece& piece = t.on(row)[seq];
    Ms stop = piece.times.stop;
    for (const Row each : kRows) {
        for (const Piece& other : t.on(each)) {
            const bool isMate = each != row && !isEffect(other) && other.isSelected && !t.isLocked[each]
                                && other.name == piece.name && other.times.start == piece.times.start;
            const bool isLevel =
                other.times == piece.times || std::abs(other.media.start - piece.media.start) <= kUnheard;
            if (isMate && isLevel && !isEffect(piece) && other.times.stop - piece.times.stop <= kTail) {
                stop = std::max(stop, Ms{other.times.stop});
            }
        }
    }
    const Pieces& pieces = t.on(row);
    stop = seq + 1 < pieces.size() ? std::min(stop, Ms{pieces[seq + 1].times.start}) : stop;
    return stop - piece.times.start;
}

} // namespace

void closeGap(Command& c)
{
    for (const Row row : kRows) {
        Pieces& pieces = c.t.on(row);
        if (c.before.range && follows(c, row)) {
            const Range range = *c.before.range;
            cutAt(pieces, range.start);
            cutAt(pieces, range.stop);
            std::erase_if(pieces, [&](const Piece& piece) { return meets(piece, range); });
            shift(pieces, firstFrom(pieces, range.start), -lengthOf(range));
        }
        for (std::size_t seq = pieces.size(); seq-- > 0 && !c.before.range && !c.t.isLocked[row];) {
            if (pieces[seq].isSelected) {
                pieces.erase(pieces.begin() + static_cast<std::ptrdiff_t>(seq));
                shift(pieces, seq, -lengthToClose(c.before, row, seq));
            }
        }
    }
    const bool isChanged = !std::ranges::equal(c.t.laid.rows, c.before.laid.rows);
    if (isChanged && c.t.on(kVideo).empty()) {
        c.t.on(kEffects).clear();
    }
}

void insert(Command& c)
{
    const Row row = c.row(1);
    const std::string& name = c.words[2];
    const bool hasLock = row == kOverlay ? c.t.isLocked[kOverlay] || c.t.on(kVideo).empty()
                                         : c.t.isLocked[kVideo] || c.t.isLocked[kAudio1] || c.t.isLocked[kAudio2];
    std::vector<Row> targets;
    if (name != "song") {
        targets.push_back(row == kOverlay ? kOverlay : kVideo);
    }
    if (name != "pic" && row != kOverlay) {
        targets.push_back(kAudio1);
    }
    if (row == kEffects || row == kAudio2 || hasLock || targets.empty()) {
        return;
    }
    Piece piece;
    piece.name = name;
    const Ms at = c.number(3);
    const Ms length = lengthOfMedium(piece);
    lay(piece, at, length);
    piece.media = rangeOf(0, length);
    for (const Row each : kRows) {
        const bool isTarget = std::ranges::find(targets, each) != targets.end();
        Pieces& pieces = c.t.on(each);
        if (isTarget || follows(c, each)) {
            cutAt(pieces, at);
            const std::size_t seq = firstFrom(pieces, at);
            shift(pieces, seq, length);
            isTarget ? void(pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(seq), piece)) : void();
        }
    }
}

} // namespace walk_test
