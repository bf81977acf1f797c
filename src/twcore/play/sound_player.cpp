#include "twcore/play/sound_player.h"

#include "twcore/play/players_at_work.h"
#include "twcore/play/sound_ring.h"
#include "twcore/play/work_watch.h"
#include "twcore/render/sound_mixer.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>

namespace twcore {

namespace {

// Over which loudness changes, and sound begins and ends: 5 ms.
constexpr std::int64_t kSlope = kPlayRate / 200;
// How long a device may take to come down; its blocks take 21 ms.
constexpr std::chrono::milliseconds kLeaving{50};
constexpr std::int64_t kRingSamples = 16384;
// What lies in the ring before the device is started, and what it goes on with while a plan is swapped.
constexpr std::int64_t kPrimeSamples = 2 * kAudioBlock;
constexpr std::int64_t kKeepSamples = 4 * SoundRing::kMaxPull;
// A hand on a slider has come to rest.
constexpr std::chrono::milliseconds kRest{80};
// How long the device stays open for nobody.
constexpr std::chrono::seconds kKeepOpen{10};
// The device tells nobody that it has taken something.
constexpr std::chrono::milliseconds kPoll{10};

std::int64_t endOf(const Plan& plan) { return sampleAt(plan.durationMs, kPlayRate); }

} // namespace

struct SoundPlayer::Room final : AudioSource, PlayClock {
    using Lock = std::unique_lock<std::mutex>;

    struct Wish {
        PlanPtr plan;
        std::int64_t from = 0;
        bool isPlaying = false;
        std::uint64_t serial = 0; // of place and playing; a swapped plan keeps it
    };

    explicit Room(AudioMaker maker) : makeAudio(std::move(maker)) {}

    void wishFor(PlanPtr plan, std::int64_t at, bool playing);
    void work() noexcept;
    std::int64_t pull(std::span<float> out) noexcept override;
    std::int64_t position() override;
    bool isPlaying() override;

    // The sound thread.
    void loop(Lock& lock);
    void begin(Lock& lock);
    void silence();
    void leaveSoftly(Lock& lock);
    void keepUp(Lock& lock);
    void rest(Lock& lock);
    void closeDevice(Lock& lock);
    template <class Body>
    bool apart(Lock& lock, Body&& body);
    bool isPrimed() const { return primedAt == wish.from && mixerPlan == wish.plan; }
    void prime(const Wish& wanted);
    void openMixer(const PlanPtr& plan);
    void mixOn(std::int64_t count);
    std::int64_t heardPosition();

    const AudioMaker makeAudio;

    std::mutex mutex; // guards what follows
    std::condition_variable changed;
    Wish wish;
    bool isClosing = false;
    bool hasFailed = false;
    WorkWatch watch;
    bool isLive = false; // the device runs for the wish `liveSerial`
    std::uint64_t liveSerial = 0;
    std::int64_t base = 0;           // timeline sample at the ring's place 0
    std::int64_t told = 0;           // position answered last
    std::unique_ptr<AudioSink> sink; // changed by the sound thread alone, and not while live

    // The sound thread.
    PlanPtr mixerPlan;
    std::unique_ptr<SoundMixer> mixer;
    std::optional<std::int64_t> primedAt; // the ring holds the first samples from there, by the mixer's plan
    std::int64_t mixedTo = 0;             // timeline sample
    std::vector<float> block;

    // The sound thread writes, the device reads.
    SoundRing ring{kRingSamples};
    std::atomic<float> gain = 1;
    std::atomic<bool> leaves = false;  // the device is to be silent from its next block on
    std::atomic<bool> hasLeft = false; // and is
    float heardGain = 0;               // the device's thread
};

std::int64_t SoundPlayer::Room::pull(std::span<float> out) noexcept
{
    const std::int64_t count = ring.read(out);
    const bool isLeaving = leaves.load(std::memory_order_relaxed);
    const float wanted = isLeaving ? 0.0f : gain.load(std::memory_order_relaxed);
    const auto floats = static_cast<std::size_t>(count) * 2;
    // From the gain that was heard last to the one that is wanted, so that nothing clicks.
    const std::int64_t slope = std::min(count, kSlope);
    const float step = slope > 0 ? (wanted - heardGain) / static_cast<float>(slope) : 0;
    for (std::size_t i = 0; i < floats; ++i) {
        const auto sample = static_cast<std::int64_t>(i / 2);
        const float now = sample < slope ? heardGain + step * static_cast<float>(sample) : wanted;
        out[i] = std::clamp(out[i] * now, -1.0f, 1.0f);
    }
    heardGain = floats > 0 ? wanted : heardGain;
    hasLeft = isLeaving;
    std::fill(out.begin() + static_cast<std::ptrdiff_t>(floats), out.end(), 0.0f);
    return count;
}

void SoundPlayer::Room::wishFor(PlanPtr plan, std::int64_t at, bool playing)
{
    {
        const std::lock_guard lock(mutex);
        wish = {std::move(plan), at, playing, wish.serial + 1};
        watch.hurry(wish.serial);
    }
    changed.notify_all();
}

std::int64_t SoundPlayer::Room::heardPosition()
{
    if (!isLive || liveSerial != wish.serial) {
        return wish.plan ? std::min(wish.from, endOf(*wish.plan)) : wish.from;
    }
    told = std::max(told, base + static_cast<std::int64_t>(sink->heard()));
    return std::min(told, endOf(*wish.plan));
}

std::int64_t SoundPlayer::Room::position()
{
    const std::lock_guard lock(mutex);
    watch.hurry(wish.serial);
    return heardPosition();
}

bool SoundPlayer::Room::isPlaying()
{
    const std::lock_guard lock(mutex);
    return wish.isPlaying && !hasFailed;
}

void SoundPlayer::Room::work() noexcept
{
    Lock lock(mutex, std::defer_lock);
    try {
        lock.lock();
        loop(lock);
    } catch (const std::exception&) {
        if (!lock.owns_lock()) {
            lock.lock();
        }
        hasFailed = true;
    }
    if (sink) {
        sink->stop();
    }
}

void SoundPlayer::Room::loop(Lock& lock)
{
    while (!isClosing) {
        if (isLive && (!wish.isPlaying || wish.serial != liveSerial)) {
            leaveSoftly(lock);
            silence();
        } else if (isLive) {
            keepUp(lock);
        } else if (wish.isPlaying) {
            begin(lock);
        } else {
            rest(lock);
        }
    }
}

/// Works without the lock. False when the work was given up.
template <class Body>
bool SoundPlayer::Room::apart(Lock& lock, Body&& body)
{
    watch.begin(wish.serial);
    lock.unlock();
    body();
    lock.lock();
    if (!watch.end()) {
        return true;
    }
    mixer.reset(); // a reader that was stopped in the middle is worth nothing
    mixerPlan.reset();
    primedAt.reset();
    return false;
}

/// Lets the device come down from what it plays, a block or two at most.
void SoundPlayer::Room::leaveSoftly(Lock& lock)
{
    const auto longest = std::chrono::steady_clock::now() + kLeaving;
    for (leaves = true; !hasLeft && !isClosing && std::chrono::steady_clock::now() < longest;) {
        changed.wait_for(lock, std::chrono::milliseconds(2));
    }
}

void SoundPlayer::Room::silence()
{
    sink->stop();
    isLive = false;
}

void SoundPlayer::Room::openMixer(const PlanPtr& plan)
{
    if (!mixer || mixerPlan != plan) {
        auto made = std::make_unique<SoundMixer>(plan, kPlayRate, Patience{.cancelled = watch.flag()});
        if (mixer) {
            made->takeReaders(*mixer);
        }
        mixer = std::move(made);
        mixerPlan = plan;
    }
}

void SoundPlayer::Room::mixOn(std::int64_t count)
{
    count = std::min({count, ring.writable(), endOf(*mixerPlan) - mixedTo});
    if (count > 0) {
        notePlayerWork();
        block.resize(static_cast<std::size_t>(count) * 2);
        mixer->read(mixedTo, block);
        ring.write(block);
        mixedTo += count;
    }
}

void SoundPlayer::Room::prime(const Wish& wanted)
{
    ring.clear();
    openMixer(wanted.plan);
    mixedTo = wanted.from;
    mixOn(kPrimeSamples);
    primedAt = wanted.from;
}

void SoundPlayer::Room::begin(Lock& lock)
{
    const Wish wanted = wish;
    if (wanted.from >= endOf(*wanted.plan)) {
        wish.isPlaying = false;
        return;
    }
    const bool isReady = isPrimed();
    const bool isWhole = apart(lock, [&] {
        if (sink && !sink->isAlive()) {
            sink.reset();
        }
        if (!sink) {
            sink = makeAudio(*this);
        }
        if (!isReady) {
            prime(wanted);
        }
    });
    if (isWhole && !isClosing && wish.serial == wanted.serial && wish.plan == wanted.plan) {
        base = told = wanted.from;
        liveSerial = wanted.serial;
        isLive = true;
        primedAt.reset();
        leaves = hasLeft = false;
        heardGain = 0; // no device asks yet: it rises from silence
        sink->start();
    }
}

void SoundPlayer::Room::keepUp(Lock& lock)
{
    const PlanPtr plan = wish.plan;
    if (plan != mixerPlan) {
        // The new mix opens its files while the device goes on with the old one.
        const std::int64_t from = heardPosition() + kKeepSamples;
        apart(lock, [&] {
            openMixer(plan);
            block.resize(static_cast<std::size_t>(kAudioBlock) * 2);
            mixer->read(from, block);
            ring.cutBack(kKeepSamples);
            mixedTo = base + ring.written();
        });
        return;
    }
    const std::int64_t end = endOf(*plan);
    if (heardPosition() >= end) {
        silence();
        wish.from = end;
        wish.isPlaying = false;
    } else if (mixedTo < end && ring.writable() >= kAudioBlock) {
        apart(lock, [&] { mixOn(kAudioBlock); });
    } else {
        changed.wait_for(lock, kPoll);
    }
}

void SoundPlayer::Room::rest(Lock& lock)
{
    const auto isOther = [&, serial = wish.serial, plan = wish.plan] {
        return isClosing || wish.serial != serial || wish.plan != plan;
    };
    if (!wish.plan && mixer) {
        mixer.reset();
        mixerPlan.reset();
        primedAt.reset();
    }
    if (wish.plan && !isPrimed()) {
        if (!changed.wait_for(lock, kRest, isOther)) {
            const Wish wanted = wish;
            apart(lock, [&] { prime(wanted); });
        }
    } else if (!sink) {
        changed.wait(lock, isOther);
    } else if (!changed.wait_for(lock, kKeepOpen, isOther)) {
        closeDevice(lock);
    }
}

void SoundPlayer::Room::closeDevice(Lock& lock)
{
    apart(lock, [&] { sink.reset(); });
}

SoundPlayer::SoundPlayer(AudioMaker makeAudio) : room_(std::make_shared<Room>(std::move(makeAudio)))
{
    thread_.emplace([room = room_] { room->work(); });
}

SoundPlayer::~SoundPlayer()
{
    {
        const std::lock_guard lock(room_->mutex);
        room_->isClosing = true;
        room_->watch.close();
    }
    room_->changed.notify_all();
    thread_.reset();
}

void SoundPlayer::stand(PlanPtr plan, std::int64_t at) { room_->wishFor(std::move(plan), at, false); }

void SoundPlayer::play(PlanPtr plan, std::int64_t from) { room_->wishFor(std::move(plan), from, true); }

void SoundPlayer::swap(PlanPtr plan)
{
    {
        const std::lock_guard lock(room_->mutex);
        room_->wish.plan = std::move(plan);
    }
    room_->changed.notify_all();
}

void SoundPlayer::setGain(float gain) { room_->gain.store(gain, std::memory_order_relaxed); }

std::shared_ptr<PlayClock> SoundPlayer::clock() const { return room_; }

bool SoundPlayer::hasFailed() const
{
    const std::lock_guard lock(room_->mutex);
    return room_->hasFailed;
}

} // namespace twcore
