// Pictures at rest: a hand that moves sees pictures pass, whatever lies on the way to the exact ones, and has the exact
// one as soon as it rests.

#include "twcore/play/picture_room.h"
#include "twcore/save/save_run.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace twcore {

namespace {

using std::chrono::milliseconds;

// Where a file is still being listed: when its picture is asked for again.
constexpr milliseconds kLookAgain{50};
// Wishes that follow each other so closely are those of a hand that moves, until none has come for as long as kRest.
constexpr milliseconds kStroke{120};
constexpr milliseconds kRest{35};
// What is no longer away than this is made at once, also for a moving hand.
constexpr double kShortWayMs = 40;
// Decoding on the way between two looks at the hand, and between two pictures of the way to where it rests.
constexpr milliseconds kTurn{25};
constexpr milliseconds kRestTurn{150};
// How often a picture is kept on the way, by the clock of the hand.
constexpr double kKeptEvery = 0.02;
// How long a picture may stand while the hand moves, and how far from the wish one may be that comes in its place.
constexpr milliseconds kStanding{90};
constexpr double kFarthest = 8; // seconds
// The same for one that was there before a hand came to rest.
constexpr double kFarthestAtRest = 2;
// How often one is kept on the long way of a hand that rests: it sees how far that has come.
constexpr double kKeptAtRest = 0.4;
// What the interruption of a short way shows a picture to take, at most.
constexpr double kLongestMs = 200;
// Of the neighbourhood that is made ready, and of quiet ahead of that.
constexpr double kAround = 1.0;
constexpr milliseconds kQuiet{150};

} // namespace

bool PicturePlayer::Room::isHandMoving() const
{
    return wishedAt - wishedBefore < kStroke && Clock::now() - wishedAt < kRest;
}

void PicturePlayer::Room::stillLoop(Lock& lock, const Job& job)
{
    lock.unlock();
    Turn turn;
    std::optional<engine::SurfacePicture> picture;
    try {
        fitRenderer(job);
        turn = stillTurn(job);
        if (turn.frame) {
            stillFrame = turn.frame;
            stillChanged = Clock::now();
            picture = painter->paint(turn.frame);
        }
    } catch (const std::runtime_error&) {
        engine::surfaces().say(job.surface, "This picture cannot be shown.");
        turn = {nullptr, true};
    }
    lock.lock();
    if (watch.end()) {
        renderer.reset(); // a reader that was stopped in the middle is worth nothing
        return;
    }
    finishStill(job, turn, picture);
    changed.notify_all();
    if (turn.isIdle && wish.serial == job.wish.serial && !isClosing) {
        changed.wait_until(lock, wishedAt + kRest);
    }
}

PicturePlayer::Room::Turn PicturePlayer::Room::stillTurn(const Job& job)
{
    const double wayMs = renderer->picturesTo(job.wish.at) * pictureMs;
    if (job.isHandMoving && (wayMs > kShortWayMs || isReaderAhead(job))) {
        return movingTurn(job);
    }
    if (wayMs <= kShortWayMs) {
        Turn turn = exactTurn(job);
        if (!turn.frame) { // another wish has come
            pictureMs = std::min(2 * pictureMs, kLongestMs);
            turn.frame = nearestFor(job, kFarthest);
        }
        return turn;
    }
    if (nearSerial != job.wish.serial) {
        nearSerial = job.wish.serial;
        if (SharedFrame near = nearestFor(job, kFarthestAtRest)) {
            return {std::move(near)};
        }
    }
    pause.end = Clock::now() + kRestTurn;
    renderer->keepEvery(kKeptAtRest);
    Turn turn = exactTurn(job);
    renderer->keepEvery(0);
    if (!turn.frame) {
        turn.frame = nearestFor(job, kFarthest);
    }
    return turn;
}

/// The reader has gone ahead of a hand that comes after it.
bool PicturePlayer::Room::isReaderAhead(const Job& job)
{
    const auto position = renderer->landmarks(job.wish.at).position;
    return job.step > 0 && position && *position > job.wish.at && !renderer->isReady(job.wish.at);
}

/// The picture nearest to the wish of those that stand ready, when it is another than that on the screen, and no
/// farther off than so many seconds.
SharedFrame PicturePlayer::Room::nearestFor(const Job& job, double farthest)
{
    if (renderer->nearestOff(job.wish.at) > farthest) {
        return nullptr;
    }
    SharedFrame near = renderer->nearestFrame(job.wish.at);
    return near != stillFrame ? near : nullptr;
}

/// Does some decoding, and notes what a picture on the way takes, by how far the reader has come.
template <class Work>
void PicturePlayer::Room::measured(const Job& job, const Work& work)
{
    const auto begin = Clock::now();
    const auto from = renderer->landmarks(job.wish.at).position;
    work();
    const auto to = renderer->landmarks(job.wish.at).position;
    constexpr double kFew = 3;
    constexpr double kMany = 300; // it has jumped
    const double pictures = from && to ? PictureGrid(*job.wish.plan).picturesIn(*to - *from) : 0;
    if (pictures >= kFew && pictures <= kMany) {
        const double ms = std::chrono::duration<double, std::milli>(Clock::now() - begin).count() / pictures;
        pictureMs += (std::clamp(ms, 0.1, kLongestMs) - pictureMs) / 4;
    }
}

PicturePlayer::Room::Turn PicturePlayer::Room::exactTurn(const Job& job)
{
    // Who steps back goes on stepping back: what is passed just ahead of the picture is kept.
    const bool isStepBack = job.step < 0 && -job.step < kPlayRate * 2;
    renderer->keepFromAhead(isStepBack ? kAround : 0);
    SharedFrame frame;
    measured(job, [&] { frame = renderer->frame(job.wish.at); });
    renderer->keepFromAhead(0);
    if (!frame) {
        return {};
    }
    madeNear = renderer->isNear();
    return {std::move(frame), true, false, renderer->lack(job.wish.at)};
}

/// Where a moving hand's pictures are looked for next. One that goes on more quickly than pictures are decoded is met
/// at the beginning of the next group as soon as that is nearer than the reader; nothing is decoded behind its back.
std::optional<std::int64_t> PicturePlayer::Room::nextForHand(const Job& job, double off, double every)
{
    constexpr std::int64_t kLead = 2 * kPlayRate;
    const std::int64_t at = job.wish.at;
    const std::int64_t last = endOf(*job.wish.plan) - 1;
    const auto marks = renderer->landmarks(at);
    if (job.step < 0) {
        return off > every ? std::optional(at) : marks.groupBefore;
    }
    if (marks.position && *marks.position > at) {
        return std::min({*marks.position + kLead, at + 4 * kLead, last});
    }
    const bool isLost =
        off > every && marks.position && marks.groupBehind && *marks.groupBehind - at < at - *marks.position;
    return isLost ? *marks.groupBehind : off > every ? at : std::min(at + kLead, last);
}

PicturePlayer::Room::Turn PicturePlayer::Room::movingTurn(const Job& job)
{
    Turn turn;
    turn.frame = nearestFor(job, kFarthest);
    if (!turn.frame && Clock::now() - stillChanged > kStanding) {
        // Better one from where the reader is at work than one that stands.
        const auto position = renderer->landmarks(job.wish.at).position;
        if (position && std::abs(*position - job.wish.at) < static_cast<std::int64_t>(kFarthest * kPlayRate)) {
            Job there = job;
            there.wish.at = *position;
            turn.frame = nearestFor(there, kFarthest);
        }
    }
    const double off = renderer->nearestOff(job.wish.at);
    const double every = std::clamp(job.speed * kKeptEvery, 0.04, 0.5);
    const auto next = nextForHand(job, off, every);
    turn.isIdle = !next || renderer->isReady(*next);
    if (!turn.isIdle) {
        pause.end = Clock::now() + kTurn;
        renderer->keepEvery(every);
        measured(job, [&] { (void)renderer->workTowards(*next); });
        renderer->keepEvery(0);
    }
    return turn;
}

void PicturePlayer::Room::finishStill(const Job& job, const Turn& turn,
                                      const std::optional<engine::SurfacePicture>& picture)
{
    if (job.surface != surface || job.wish.plan != wish.plan || wish.isRunning) {
        return;
    }
    const auto now = jobAt(job.wish.at);
    if (!now || now->layout != job.layout) {
        return; // the surface has another size
    }
    if (turn.isServed) {
        // What was near before is shown again only when it has become the exact one.
        const bool isSame = isNear && madeNear && servedSerial == job.wish.serial;
        servedSerial = job.wish.serial;
        isNear = madeNear;
        lookAgain = Clock::now() + kLookAgain;
        if (isSame) {
            return;
        }
    }
    if (picture) {
        ahead.assign(1, {job.wish.at, *picture, false, turn.lack});
    }
}

/// Makes some of the neighbourhood ready, while nothing else is to be done: a turn, behind which it looks about again,
/// as a thread that has taken the lowest priority may not take its own back. False when there is nothing to make.
bool PicturePlayer::Room::workAhead(Lock& lock)
{
    if (!wish.plan || wish.isRunning || isNear || !renderer || rendererPlan != wish.plan || servedSerial != wish.serial
        || aheadSerial == wish.serial || isClosing) {
        return false;
    }
    const auto quiet = savesAtWork > 0 ? Clock::now() + kQuiet : wishedAt + kQuiet;
    if (Clock::now() < quiet) {
        changed.wait_until(lock, quiet);
        return true;
    }
    const Wish now = wish;
    pause.begin();
    pause.end = Clock::now() + kTurn;
    watch.begin(now.serial);
    lock.unlock();
    bool isDone = true;
    renderer->leaveHeld(true);
    try {
        isDone = makeAround(now);
    } catch (const std::runtime_error&) { // told when somebody wants to see it
    }
    renderer->leaveHeld(false);
    lock.lock();
    if (watch.end()) {
        renderer.reset();
        return true;
    }
    aheadSerial = isDone ? now.serial : aheadSerial;
    return true;
}

/// What does not stand ready around a place, as far as a turn goes. True when all does that the store has room for.
bool PicturePlayer::Room::makeAround(const Wish& at)
{
    if (!renderer->hold(at.at)) {
        return false;
    }
    const PictureGrid grid(*at.plan);
    // A third of the store for either side: the second one must not take the room of the first.
    const auto sidePictures =
        static_cast<std::int64_t>(store.mostBytes() / 3 / std::max<std::size_t>(1, renderer->bytesOf(at.at)));
    const std::int64_t reach =
        std::min(static_cast<std::int64_t>(kAround * kPlayRate), sidePictures * grid.frameSamples());
    if (std::exchange(triedSerial, at.serial) != at.serial) {
        triedAhead = at.at;
        nextBefore = at.at - grid.frameSamples();
    }
    return makeBehind(std::min(at.at + reach, endOf(*at.plan) - 1))
           && makeBefore(std::max<std::int64_t>(0, at.at - reach));
}

/// The pictures up to a place, one by one. Each is tried once: one may not come, or may not be kept.
bool PicturePlayer::Room::makeBehind(std::int64_t last)
{
    const PictureGrid grid(*rendererPlan);
    for (std::int64_t next = grid.after(triedAhead); next <= last; next = grid.after(next)) {
        if (!renderer->isReady(next) && !renderer->workTowards(next)) {
            return false;
        }
        triedAhead = next;
    }
    return true;
}

/// The pictures down to a place: of each stretch those that are passed on the way to its last one.
bool PicturePlayer::Room::makeBefore(std::int64_t first)
{
    while (nextBefore >= first) {
        const std::int64_t begin = renderer->stretchBegin(nextBefore);
        const std::int64_t from = std::max(first, begin);
        if (!renderer->isReady(nextBefore) || !renderer->isReady(from)) {
            renderer->keepFromAhead(static_cast<double>(nextBefore - from) / kPlayRate);
            const bool isThere = renderer->workTowards(nextBefore);
            renderer->keepFromAhead(0);
            if (!isThere) {
                return false;
            }
        }
        nextBefore = begin - 1;
    }
    return true;
}

} // namespace twcore
