#include "twcore/play/picture_room.h"
#include "twcore/play/players_at_work.h"

#include <algorithm>
#include <thread>

namespace twcore {

namespace {

// Pictures that wait for their moment, beside the one that is being made.
constexpr std::size_t kAhead = 4;

/// Of a picture on the screen: what most sources have, so that it need not be changed.
Colour colourFor(const Plan& plan)
{
    for (const auto& track : plan.pictureTracks) {
        for (const auto& source : track) {
            if (source.media) {
                return {untoldMatrix(source.media->picture->width, source.media->picture->height, false), false};
            }
        }
    }
    return {};
}

int decoderThreads() { return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 4); }

} // namespace

std::optional<PicturePlayer::Room::Job> PicturePlayer::Room::jobAt(std::int64_t at) const
{
    const auto size = engine::surfaces().sizeOf(surface);
    if (!size) {
        return std::nullopt;
    }
    Job job{wish, surface, layOut(*size, area, wish.plan->frame), wishStep, handSpeed, isHandMoving()};
    job.wish.at = std::clamp<std::int64_t>(at, 0, std::max<std::int64_t>(0, endOf(*wish.plan) - 1));
    return job.layout.isEmpty() ? std::nullopt : std::optional(std::move(job));
}

std::optional<PicturePlayer::Room::Job> PicturePlayer::Room::nextJob()
{
    if (!wish.plan) {
        return std::nullopt;
    }
    if (!wish.isRunning) {
        return servedSerial != wish.serial || (isNear && Clock::now() >= lookAgain) ? jobAt(wish.at) : std::nullopt;
    }
    if (servedSerial != wish.serial) {
        servedSerial = wish.serial;
        nextDue = wish.at;
        costSamples = 0;
        shown.reset();
    }
    if (ahead.size() >= kAhead || nextDue >= endOf(*wish.plan)) {
        return std::nullopt;
    }
    const PictureGrid grid(*wish.plan);
    const std::int64_t now = clock->position();
    if (nextDue + grid.frameSamples() < now) {
        // Late by more than a frame: on to the one that can be there in time.
        const std::int64_t next = grid.after(now + std::min<std::int64_t>(costSamples, kPlayRate / 2));
        nextDue = std::min(next, endOf(*wish.plan) - 1);
    }
    return jobAt(nextDue);
}

void PicturePlayer::Room::finish(const Job& job, std::optional<Made> made, Clock::duration cost)
{
    if (job.surface != surface || job.wish.plan != wish.plan || job.wish.isRunning != wish.isRunning) {
        return;
    }
    const auto now = jobAt(job.wish.at);
    if (!now || now->layout != job.layout) {
        return; // the surface has another size
    }
    if (job.wish.serial != wish.serial) {
        return;
    }
    const auto samples = std::chrono::duration<double>(cost).count() * kPlayRate;
    costSamples = (costSamples * 3 + static_cast<std::int64_t>(samples)) / 4;
    if (nextDue == job.wish.at) {
        nextDue = PictureGrid(*wish.plan).after(nextDue);
    }
    if (made) {
        ahead.push_back(std::move(*made));
    }
}

void PicturePlayer::Room::make() noexcept
{
    Lock lock(mutex, std::defer_lock);
    try {
        lock.lock();
        makeLoop(lock);
    } catch (const std::exception&) {
        if (!lock.owns_lock()) {
            lock.lock();
        }
        hasFailed = true;
    }
}

void PicturePlayer::Room::makeLoop(Lock& lock)
{
    while (!isClosing) {
        const auto job = nextJob();
        if (!job) {
            if (!wish.plan) {
                renderer.reset(); // closes the files
                store.clear();
                rendererPlan.reset();
                painter.reset();
                stillFrame.reset();
            }
            if (!workAhead(lock)) {
                // Without a surface nothing comes of looking again.
                const bool isAwaited = isNear && wish.plan && !wish.isRunning && jobAt(wish.at);
                isAwaited ? void(changed.wait_until(lock, lookAgain)) : changed.wait(lock);
            }
            continue;
        }
        notePlayerWork();
        watch.begin(job->wish.serial);
        pause.begin(); // also a hand's short turns end where playing begins
        if (!job->wish.isRunning) {
            stillLoop(lock, *job);
            continue;
        }
        const auto begin = Clock::now();
        stillFrame.reset(); // it does not stand any more
        lock.unlock();
        auto made = pictureOf(*job);
        lock.lock();
        if (watch.end()) {
            renderer.reset(); // a reader that was stopped in the middle is worth nothing
            continue;
        }
        finish(*job, std::move(made), Clock::now() - begin);
        changed.notify_all();
    }
}

/// Takes the renderer along to another plan, or another size, with its files open.
void PicturePlayer::Room::fitRenderer(const Job& job)
{
    const PlanPtr& plan = job.wish.plan;
    const Colour colour = colourFor(*plan);
    if (renderer && rendererPlan == plan && painter->layout() == job.layout) {
        return;
    }
    const PictureSize size{job.layout.picture.width, job.layout.picture.height};
    auto next = std::make_unique<PictureRenderer>(
        plan, MovieClock{{kPlayRate, 1}, 0, plan->durationMs}, PictureFormat{size, AV_PIX_FMT_YUV420P, colour},
        decoderThreads(), Patience{.cancelled = watch.flag(), .takesNear = true, .pause = &pause}, &store);
    if (renderer) {
        next->takeReaders(*renderer);
    }
    painter = std::make_unique<SurfacePainter>(job.layout, colour);
    renderer = std::move(next);
    rendererPlan = plan;
}

std::optional<PicturePlayer::Room::Made> PicturePlayer::Room::pictureOf(const Job& job)
{
    try {
        fitRenderer(job);
        const SharedFrame frame = renderer->frame(job.wish.at);
        if (!frame) {
            return std::nullopt; // another wish has come
        }
        return Made{job.wish.at, painter->paint(frame), renderer->isNear(), renderer->lack(job.wish.at)};
    } catch (const std::runtime_error&) {
        engine::surfaces().say(job.surface, "This picture cannot be shown.");
        return std::nullopt;
    }
}

} // namespace twcore
