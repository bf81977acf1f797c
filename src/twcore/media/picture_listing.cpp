#include "twcore/media/picture_listing.h"

#include <cerrno>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace twcore {

namespace {

using Clock = std::chrono::steady_clock;

// A change of patience is noticed after this.
constexpr std::chrono::milliseconds kSlice{10};
// What is called at once: the file's own list, and a first piece of others, are there by then.
constexpr std::chrono::milliseconds kAtOnce{120};

} // namespace

struct PictureListing::Shared {
    enum class State { kIdle, kComing, kDone };

    void work(const MediaFile& media, bool believesFile) noexcept;
    void take(Index list, State now, std::optional<ReadFault> fault = {});

    std::atomic<bool> isLeft = false; // nobody needs the list any more

    std::mutex mutex;
    std::condition_variable changed;
    struct UnderLock {
        State state = State::kIdle;
        bool believesFile = true;
        Clock::time_point begun;
        Index index;                    // the newest
        std::optional<ReadFault> fault; // there is no list, since the disk failed
    } locked;
};

void PictureListing::Shared::take(Index list, State now, std::optional<ReadFault> fault)
{
    {
        const std::lock_guard lock(mutex);
        locked.state = now;
        locked.index = std::move(list);
        locked.fault = std::move(fault);
    }
    changed.notify_all();
}

void PictureListing::Shared::work(const MediaFile& media, bool believesFile) noexcept
{
    ReadFaults faults;
    faults.expect({}); // whether a missing file is a failure is for those to say who wait
    const Patience patience{.cancelled = &isLeft, .faults = &faults};
    try {
        Index index = believesFile ? PictureIndex::fromFile(media, patience) : nullptr;
        if (!index) {
            index = PictureIndex::build(media, patience, [&](Index part) { take(std::move(part), State::kComing); });
        }
        // What a failing disk has given is no list. Where there is none, the file may be back when it is asked for
        // again.
        const bool isWhole = index && !faults.any();
        take(isWhole ? std::move(index) : nullptr, isWhole ? State::kDone : State::kIdle, faults.first());
    } catch (const std::exception&) {
        take(nullptr, State::kIdle, ReadFault{media.path, ENOMEM});
    }
}

PictureListing::PictureListing() : shared_(std::make_shared<Shared>()) {}

PictureListing::~PictureListing() { shared_->isLeft = true; }

void PictureListing::keep(Index whole) { shared_->take(std::move(whole), Shared::State::kDone); }

PictureListing::Index PictureListing::upTo(double seconds, const MediaFile& media, const Patience& patience)
{
    std::unique_lock lock(shared_->mutex);
    auto& locked = shared_->locked;
    if (locked.state == Shared::State::kIdle) {
        // The thread may hang on a disk that does not answer: it owns what it works on.
        MediaFile facts = media;
        facts.listing.reset();
        std::thread([shared = shared_, facts = std::move(facts), believes = locked.believesFile] {
            shared->work(facts, believes);
        }).detach();
        locked.state = Shared::State::kComing; // the thread can say nothing before the lock is free
        locked.begun = Clock::now();
    }
    while (locked.state == Shared::State::kComing && !(locked.index && seconds < locked.index->knownUpTo())) {
        const bool isLate = patience.takesNear && (locked.index || Clock::now() - locked.begun > kAtOnce);
        if (isLate || patience.over()) {
            return nullptr;
        }
        shared_->changed.wait_for(lock, kSlice);
    }
    if (locked.fault && patience.faults != nullptr) {
        patience.faults->note(locked.fault->path, locked.fault->cause);
    }
    return locked.index;
}

PictureListing::Index PictureListing::whole(const MediaFile& media, const Patience& patience)
{
    return upTo(std::numeric_limits<double>::max(), media, patience);
}

bool PictureListing::isComing() const
{
    const std::lock_guard lock(shared_->mutex);
    return shared_->locked.state == Shared::State::kComing;
}

void PictureListing::distrust(const Index& wrong)
{
    const std::lock_guard lock(shared_->mutex);
    if (wrong && shared_->locked.index == wrong) {
        shared_->locked = {};
        shared_->locked.believesFile = false;
    }
}

std::shared_ptr<PictureListing> listingFor(const MediaFile& media)
{
    const bool isListed = media.picture && !media.picture->isStill && media.timeStamps == TimeStamps::kIndexed;
    return isListed ? std::make_shared<PictureListing>() : nullptr;
}

} // namespace twcore
