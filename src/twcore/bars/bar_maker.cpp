#include "twcore/bars/bar_maker.h"

#include "twcore/play/players_at_work.h"
#include "twcore/save/save_run.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <pthread.h>
#include <sched.h>
#include <semaphore.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace twcore {

namespace {

using std::chrono::milliseconds;

// Behind the last work of a player.
constexpr milliseconds kQuiet{200};
// When it is looked again whether there is quiet, or whether a file has been listed.
constexpr milliseconds kLookAgain{100};
// Without work for so long, the files are closed.
constexpr milliseconds kRest{5000};
// Chunks of sound that are made between two pictures: two minutes, so that neither waits for all of the other.
constexpr int kPeaksInARow = 8;

/// Handed from one thread to another without a lock; the newest takes the place of one that nobody has taken.
template <class Value>
class Handed {
public:
    ~Handed() { (void)take(); }
    void put(std::unique_ptr<Value> value) { delete value_.exchange(value.release()); }
    std::unique_ptr<Value> take() { return std::unique_ptr<Value>(value_.exchange(nullptr)); }

private:
    std::atomic<Value*> value_ = nullptr;
};

/// What one thread adds and another takes, all at once, without a lock.
class NewsLine {
public:
    ~NewsLine() { (void)take(); }
    void add(BarNews news)
    {
        auto* const link = new Link{std::move(news), newest_.load(std::memory_order_relaxed)};
        while (!newest_.compare_exchange_weak(link->before, link, std::memory_order_release)) {
        }
    }
    std::vector<BarNews> take()
    {
        std::vector<BarNews> all;
        for (Link* link = newest_.exchange(nullptr, std::memory_order_acquire); link != nullptr;) {
            const std::unique_ptr<Link> taken(link);
            link = taken->before;
            all.push_back(std::move(taken->news));
        }
        std::ranges::reverse(all);
        return all;
    }

private:
    struct Link {
        BarNews news;
        Link* before;
    };
    std::atomic<Link*> newest_ = nullptr;
};

/// To be rung by anybody, also when nobody waits.
class Bell {
public:
    Bell() { ::sem_init(&semaphore_, 0, 0); }
    ~Bell() { ::sem_destroy(&semaphore_); }
    Bell(const Bell&) = delete;
    Bell& operator=(const Bell&) = delete;

    void ring() { ::sem_post(&semaphore_); }
    /// False when it was not rung in that time.
    bool waitFor(milliseconds longest)
    {
        timespec until{};
        ::clock_gettime(CLOCK_MONOTONIC, &until);
        const std::int64_t nanoseconds = until.tv_nsec + longest.count() % 1000 * 1'000'000;
        until.tv_sec += longest.count() / 1000 + nanoseconds / 1'000'000'000;
        until.tv_nsec = nanoseconds % 1'000'000'000;
        int result = 0;
        while ((result = ::sem_clockwait(&semaphore_, CLOCK_MONOTONIC, &until)) != 0 && errno == EINTR) {
        }
        while (::sem_trywait(&semaphore_) == 0) { // rung more than once
        }
        return result == 0;
    }

private:
    sem_t semaphore_;
};

/// This thread gets what nobody else wants, of the processor and of the disk.
void beIdle()
{
    const sched_param none{};
    if (::pthread_setschedparam(::pthread_self(), SCHED_IDLE, &none) != 0) {
        constexpr int kNicest = 19;
        (void)::setpriority(PRIO_PROCESS, static_cast<id_t>(::syscall(SYS_gettid)), kNicest);
    }
    constexpr int kThisThread = 1;
    constexpr int kIdleClass = 3 << 13;
    (void)::syscall(SYS_ioprio_set, kThisThread, 0, kIdleClass);
}

} // namespace

struct BarMaker::Room {
    Bell bell;
    std::atomic<bool> isClosing = false;
    std::atomic<std::int32_t> sink = 0;
    Handed<BarWishes> wishes;
    NewsLine news;

    void make(bool isIdle) noexcept;

private:
    void takeWishes();
    bool makeOne();
    bool makePicture();
    void makePeaks();
    void tell(BarNews piece);

    // The maker's thread.
    struct Done {
        MediaFilePtr media;
        std::int32_t ms;
        int height;
    };
    BarWork work{isClosing};
    BarWishes now;
    std::size_t picturesMade = 0;
    std::size_t peaksMade = 0;
    int peaksInARow = 0;
    std::vector<Done> done; // of the pictures: several wishes may mean the same
};

void BarMaker::Room::make(bool isIdle) noexcept
{
    if (isIdle) {
        beIdle();
    }
    bool isResting = true;
    while (!isClosing) {
        try {
            takeWishes();
            const bool isQuiet = savesAtWork == 0 && !hasPlayerWorked(kQuiet);
            if (isQuiet && makeOne()) {
                isResting = false;
                continue;
            }
            const bool isDone = picturesMade >= now.pictures.size() && peaksMade >= now.peaks.size();
            if (!isDone) {
                (void)bell.waitFor(kLookAgain);
            } else if (!bell.waitFor(isResting ? std::chrono::hours(1) : kRest) && !isResting) {
                isResting = true;
                work.rest();
            }
        } catch (const std::exception&) { // for want of memory: what was asked for is asked for again
            now = {};
            picturesMade = peaksMade = 0;
            (void)bell.waitFor(kRest);
        }
    }
}

void BarMaker::Room::takeWishes()
{
    auto newest = wishes.take();
    if (!newest) {
        return;
    }
    now = std::move(*newest);
    picturesMade = peaksMade = 0;
    peaksInARow = 0;
    done.clear();
    work.useCache(now.cacheFolder, now.cacheBytes);
    for (const MediaFilePtr& media : now.seen) {
        if (!work.isSame(media)) {
            tell({.kind = BarNews::Kind::kChanged, .media = media});
        }
    }
}

void BarMaker::Room::tell(BarNews piece)
{
    news.add(std::move(piece));
    engine::surfaces().tell(sink);
}

/// One piece, or none. False when there is nothing to be made now.
bool BarMaker::Room::makeOne()
{
    const bool hasPeaks = peaksMade < now.peaks.size();
    if (hasPeaks && (peaksInARow < kPeaksInARow || picturesMade >= now.pictures.size())) {
        ++peaksInARow;
        makePeaks();
        return true;
    }
    peaksInARow = 0;
    return picturesMade < now.pictures.size() ? makePicture() || hasPeaks : false;
}

void BarMaker::Room::makePeaks()
{
    const BarWish& wish = now.peaks[peaksMade++];
    if (wish.kind == BarWish::Kind::kSamples) {
        BarNews piece{.kind = BarNews::Kind::kSamples, .media = wish.media, .milliseconds = wish.milliseconds};
        piece.samples = work.samples(wish.media, wish.milliseconds);
        isClosing ? void() : tell(std::move(piece));
        return;
    }
    std::vector<Peak> peaks = work.peaks(wish.media, wish.number);
    if (!isClosing) {
        tell({.kind = BarNews::Kind::kPeaks, .media = wish.media, .number = wish.number, .peaks = std::move(peaks)});
    }
}

/// False when the file is still being listed; those of other files come first.
bool BarMaker::Room::makePicture()
{
    const auto begin = now.pictures.begin() + static_cast<std::ptrdiff_t>(picturesMade);
    const auto next = std::find_if(begin, now.pictures.end(),
                                   [&](const BarWish& wish) { return work.timesOf(wish.media) != nullptr; });
    if (next == now.pictures.end()) {
        return false;
    }
    std::iter_swap(begin, next);
    const BarWish wish = now.pictures[picturesMade++];
    const PictureTimes times = work.timesOf(wish.media);
    const auto behind = std::ranges::upper_bound(*times, wish.number);
    const std::int32_t ms = behind == times->begin() ? times->front() : *(behind - 1);
    const bool isDone = std::ranges::any_of(done, [&](const Done& made) {
        return made.media == wish.media && made.ms == ms && made.height == wish.height;
    });
    if (isDone || isClosing) {
        return true;
    }
    done.push_back({wish.media, ms, wish.height});
    BarNews piece{.kind = BarNews::Kind::kPicture, .media = wish.media, .number = ms, .height = wish.height};
    piece.times = times;
    try {
        piece.picture = work.picture(wish.media, ms, wish.height);
    } catch (const std::runtime_error&) { // it cannot be converted: there is none
    }
    if (!isClosing) {
        tell(std::move(piece));
    }
    return true;
}

BarMaker::BarMaker(bool isIdle) : room_(std::make_shared<Room>()), isIdle_(isIdle) {}

BarMaker::~BarMaker()
{
    room_->isClosing = true;
    room_->bell.ring();
}

void BarMaker::makeFor(BarWishes wishes)
{
    if (!thread_) {
        thread_.emplace([room = room_, isIdle = isIdle_] { room->make(isIdle); });
    }
    room_->wishes.put(std::make_unique<BarWishes>(std::move(wishes)));
    room_->bell.ring();
}

std::vector<BarNews> BarMaker::take() { return room_->news.take(); }

void BarMaker::tellTo(std::int32_t sink) { room_->sink = sink; }

} // namespace twcore
