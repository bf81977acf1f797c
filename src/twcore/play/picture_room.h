#pragma once

// What the two threads of a picture player share with it, and what each of them does.

#include "twcore/play/picture_player.h"
#include "twcore/play/surface_painter.h"
#include "twcore/play/work_watch.h"
#include "twcore/render/picture_renderer.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace twcore {

/// The moments at which pictures change: those of the first source's frames, as a movie has them.
struct PictureGrid {
    static constexpr int kMostPerSecond = 60;
    AVRational fps{25, 1};

    explicit PictureGrid(const Plan& plan)
    {
        if (plan.frameRate.num > 0 && plan.frameRate.den > 0 && av_q2d(plan.frameRate) >= 1) {
            fps = av_q2d(plan.frameRate) > kMostPerSecond ? AVRational{kMostPerSecond, 1} : plan.frameRate;
        }
        av_reduce(&fps.num, &fps.den, fps.num, fps.den, 1'000'000); // so that an hour times it stays a number
    }
    /// The first moment behind a place.
    std::int64_t after(std::int64_t sample) const
    {
        const std::int64_t perFrame = std::int64_t{kPlayRate} * fps.den; // in samples by fps.num
        const std::int64_t number = sample * fps.num / perFrame + 1;
        return (number * perFrame + fps.num - 1) / fps.num;
    }
    double picturesIn(std::int64_t samples) const { return static_cast<double>(samples) * av_q2d(fps) / kPlayRate; }
    std::int64_t frameSamples() const { return std::int64_t{kPlayRate} * fps.den / fps.num; }
};

inline std::int64_t endOf(const Plan& plan) { return std::int64_t{plan.durationMs} * (kPlayRate / 1000); }

struct PicturePlayer::Room {
    using Lock = std::unique_lock<std::mutex>;
    using Clock = WorkWatch::Clock;

    struct Wish {
        PlanPtr plan;
        std::int64_t at = 0;
        bool isRunning = false;
        std::uint64_t serial = 0; // of place and running, and of the look while nothing runs
    };
    struct Job {
        Wish wish; // `at` is the picture's own place
        std::int32_t surface = 0;
        SurfaceLayout layout;
        std::int64_t step = 0; // at rest: from the wish before to this one
        double speed = 0;      // of the hand, in seconds a second
        bool isHandMoving = false;
    };
    /// What came of a turn at a picture at rest.
    struct Turn {
        SharedFrame frame; // to be shown; nullptr: nothing new
        bool isServed = false;
        bool isIdle = false; // there is nothing to do until the wish changes
        std::string lack{};  // what is to be said of the frame; empty: nothing
    };
    struct Made {
        std::int64_t due = 0;
        engine::SurfacePicture picture;
        bool isNear = false; // see PictureRenderer::isNear
        std::string lack{};  // what is to be said of it; empty: nothing
    };

    Room(std::shared_ptr<PlayClock> playClock, std::size_t storeBytes) : clock(std::move(playClock)), store(storeBytes)
    {}

    void wishFor(PlanPtr plan, std::int64_t at, bool running);
    /// The same picture again, for a look that has changed. Under the lock.
    void showAgain();
    /// Has what is under way pause as soon as it can. Under the lock.
    void interrupt();

    // The maker's thread.
    void make() noexcept;
    void makeLoop(Lock& lock);
    std::optional<Job> nextJob();
    std::optional<Job> jobAt(std::int64_t at) const;
    void finish(const Job& job, std::optional<Made> made, Clock::duration cost);
    std::optional<Made> pictureOf(const Job& job);
    void fitRenderer(const Job& job);

    // The same thread, while nothing plays.
    bool isHandMoving() const;
    void stillLoop(Lock& lock, const Job& job);
    Turn stillTurn(const Job& job);
    Turn exactTurn(const Job& job);
    Turn movingTurn(const Job& job);
    template <class Work>
    void measured(const Job& job, const Work& work);
    std::optional<std::int64_t> nextForHand(const Job& job, double off, double every);
    SharedFrame nearestFor(const Job& job, double farthest);
    bool isReaderAhead(const Job& job);
    void finishStill(const Job& job, const Turn& turn, const std::optional<engine::SurfacePicture>& picture);
    bool workAhead(Lock& lock);
    bool makeAround(const Wish& at);
    bool makeBehind(std::int64_t last);
    bool makeBefore(std::int64_t first);

    // The presenter's thread.
    void present() noexcept;
    void presentLoop(Lock& lock);
    void show(Lock& lock, const Made& made);
    void waitForDue(Lock& lock);

    const std::shared_ptr<PlayClock> clock;

    mutable std::mutex mutex; // guards what follows
    std::condition_variable changed;
    Wish wish;
    std::int32_t surface = 0;
    std::optional<PictureRect> area;
    bool isClosing = false;
    bool hasFailed = false;
    bool isShowing = false; // the sink is being called
    WorkWatch watch;
    std::uint64_t servedSerial = 0; // the wish whose picture has been made, or whose run has begun
    bool isNear = false;            // at rest: the picture that was made is not the exact one yet
    Clock::time_point lookAgain;    // at rest: when it is tried again
    std::int64_t nextDue = 0;       // running: the place of the picture to be made next
    std::int64_t lastDue = -1;      // running: that of the picture shown last
    bool lastIsNear = false;        // running: which was a near one
    std::int64_t costSamples = 0;   // running: what a picture takes, as playing time
    std::deque<Made> ahead;
    std::shared_ptr<const std::uint8_t> shown; // the pixels shown last in this run
    Clock::time_point wishedAt;                // at rest: when the wish came
    Clock::time_point wishedBefore;            // and the one before it
    std::int64_t wishStep = 0;                 // from that one to it
    double handSpeed = 0;                      // seconds a second, evened out
    Pause pause;                               // `isAsked` by any thread

    // The maker's thread.
    bool madeNear = false; // the last picture was, see PictureRenderer::isNear
    PlanPtr rendererPlan;
    std::unique_ptr<PictureRenderer> renderer;
    std::unique_ptr<SurfacePainter> painter;
    PictureStore store;
    double pictureMs = 1;   // what a picture takes on the way to another
    SharedFrame stillFrame; // shown last at rest
    Clock::time_point stillChanged;
    std::uint64_t nearSerial = 0;  // the wish for which a near picture was looked for
    std::uint64_t aheadSerial = 0; // the wish whose neighbourhood stands ready
    std::uint64_t triedSerial = 0; // the one whose neighbourhood is being made
    std::int64_t triedAhead = 0;   // the place of it that was made last
    std::int64_t nextBefore = 0;   // and that of the stretch before it that is made next
};

} // namespace twcore
