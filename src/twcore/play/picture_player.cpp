#include "twcore/play/picture_player.h"

#include "twcore/play/picture_room.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace twcore {

namespace {

// How long it may take until a change of the clock is noticed.
constexpr std::chrono::milliseconds kPoll{10};

} // namespace

void PicturePlayer::Room::wishFor(PlanPtr plan, std::int64_t at, bool running)
{
    {
        const std::lock_guard lock(mutex);
        wishStep = at - wish.at;
        wishedBefore = std::exchange(wishedAt, Clock::now());
        const double passed = std::max(0.001, std::chrono::duration<double>(wishedAt - wishedBefore).count());
        handSpeed += (std::abs(static_cast<double>(wishStep)) / kPlayRate / passed - handSpeed) / 4;
        wish = {std::move(plan), at, running, wish.serial + 1};
        interrupt();
        if (running) {
            ahead.clear();
        }
        lastDue = -1;
    }
    changed.notify_all();
}

void PicturePlayer::Room::interrupt()
{
    pause.isAsked = true;
    watch.ask();
}

void PicturePlayer::Room::showAgain()
{
    ahead.clear();
    shown.reset();
    lastDue = -1;
    interrupt();
    if (wish.isRunning) {
        nextDue = std::max(nextDue, clock->position());
    } else {
        ++wish.serial;
    }
}

void PicturePlayer::Room::present() noexcept
{
    Lock lock(mutex);
    presentLoop(lock);
}

void PicturePlayer::Room::presentLoop(Lock& lock)
{
    while (!isClosing) {
        if (!wish.isRunning) {
            if (!ahead.empty()) {
                const Made made = ahead.back();
                ahead.clear();
                show(lock, made);
            } else if (watch.isLate(wish.serial)) {
                changed.wait_for(lock, WorkWatch::kPatience);
                watch.hurry(wish.serial);
            } else {
                changed.wait(lock);
            }
            continue;
        }
        const std::int64_t now = clock->position();
        while (ahead.size() > 1 && ahead[1].due <= now) {
            ahead.pop_front();
        }
        if (ahead.empty() || ahead.front().due > now) {
            waitForDue(lock);
            continue;
        }
        const Made made = ahead.front();
        ahead.pop_front();
        lastDue = made.due;
        lastIsNear = made.isNear;
        changed.notify_all();
        if (made.picture.pixels != shown) {
            show(lock, made);
        }
    }
}

void PicturePlayer::Room::waitForDue(Lock& lock)
{
    watch.hurry(wish.serial);
    if (!clock->isPlaying() && ahead.empty() && !watch.isLate(wish.serial)) {
        changed.wait(lock);
        return;
    }
    auto wait = std::chrono::microseconds(kPoll);
    if (!ahead.empty()) {
        const std::int64_t samples = ahead.front().due - clock->position();
        wait = std::clamp(std::chrono::microseconds(samples * 1'000'000 / kPlayRate), std::chrono::microseconds(500),
                          wait);
    }
    changed.wait_for(lock, wait);
}

void PicturePlayer::Room::show(Lock& lock, const Made& made)
{
    shown = made.picture.pixels;
    isShowing = true;
    const std::int32_t number = surface;
    lock.unlock();
    engine::surfaces().show(number, made.picture);
    if (!made.lack.empty()) {
        engine::surfaces().say(number, made.lack);
    }
    lock.lock();
    isShowing = false;
    changed.notify_all();
}

PicturePlayer::PicturePlayer(std::shared_ptr<PlayClock> clock, std::size_t storeBytes)
    : room_(std::make_shared<Room>(std::move(clock), storeBytes))
{
    maker_.emplace([room = room_] { room->make(); });
    presenter_.emplace([room = room_] { room->present(); });
}

PicturePlayer::~PicturePlayer()
{
    {
        const std::lock_guard lock(room_->mutex);
        room_->isClosing = true;
        room_->pause.isAsked = true;
        room_->watch.close();
    }
    room_->changed.notify_all();
    presenter_.reset();
    maker_.reset();
}

void PicturePlayer::setSurface(std::int32_t number)
{
    engine::surfaces().watch(number, [room = std::weak_ptr(room_)] {
        if (const auto held = room.lock()) {
            {
                const std::lock_guard lock(held->mutex);
                held->showAgain();
            }
            held->changed.notify_all();
        }
    });
    {
        const std::lock_guard lock(room_->mutex);
        room_->surface = number;
        room_->showAgain();
    }
    room_->changed.notify_all();
}

void PicturePlayer::setArea(std::optional<PictureRect> area)
{
    {
        const std::lock_guard lock(room_->mutex);
        room_->area = area;
        room_->showAgain();
    }
    room_->changed.notify_all();
}

void PicturePlayer::show(PlanPtr plan, std::int64_t at) { room_->wishFor(std::move(plan), at, false); }

void PicturePlayer::run(PlanPtr plan, std::int64_t from) { room_->wishFor(std::move(plan), from, true); }

void PicturePlayer::swap(PlanPtr plan, std::int64_t at)
{
    {
        const std::lock_guard lock(room_->mutex);
        room_->wish.plan = std::move(plan);
        room_->wish.at = room_->wish.isRunning ? room_->wish.at : at;
        room_->showAgain();
        if (room_->wish.isRunning) {
            room_->nextDue = at;
        }
    }
    room_->changed.notify_all();
}

void PicturePlayer::hold(std::int64_t at)
{
    {
        const std::lock_guard lock(room_->mutex);
        auto& room = *room_;
        if (!room.wish.isRunning) {
            return;
        }
        while (!room.ahead.empty() && room.ahead.back().due > at) {
            room.ahead.pop_back();
        }
        const std::int64_t last = room.ahead.empty() ? room.lastDue : room.ahead.back().due;
        const bool isLastNear = room.ahead.empty() ? room.lastIsNear : room.ahead.back().isNear;
        const bool isExact = last >= 0 && !isLastNear && PictureGrid(*room.wish.plan).after(last) > at;
        room.wish = {room.wish.plan, at, false, room.wish.serial + 1};
        room.interrupt();
        room.servedSerial = isExact ? room.wish.serial : room.servedSerial;
    }
    room_->changed.notify_all();
}

void PicturePlayer::clear()
{
    std::unique_lock lock(room_->mutex);
    room_->wish = {nullptr, 0, false, room_->wish.serial + 1};
    room_->interrupt();
    room_->ahead.clear();
    room_->changed.notify_all();
    room_->changed.wait(lock, [&] { return !room_->isShowing; });
}

bool PicturePlayer::hasFailed() const
{
    const std::lock_guard lock(room_->mutex);
    return room_->hasFailed;
}

} // namespace twcore
