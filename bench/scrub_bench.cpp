// A hand on the slider: what it sees of a clip whose pictures carry their number, while it sweeps over a minute in
// three seconds, when it then rests, and when it steps.
//
//     quillmont-scrub-bench FILE [ROUNDS]
//     quillmont-scrub-bench PROJECT.qpj [ROUNDS]
//
// The number stands in eleven cells of a black bar along the top, the lowest bit first (bench/scrub.py makes such
// clips, at 25 frames a second). Of a project, what lies uppermost shows it.

#include "bench/open_project.h"
#include "engine/ITWFilePreview.h"
#include "engine/ITWPreview.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "engine/surfaces.h"
#include "measures.h"
#include "twcore/tarnwick_timeline.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWFilePreview;

constexpr int kCells = 11;
constexpr double kFps = 25;

struct Seen {
    Clock::time_point when;
    int number = -1;
};

class Screen final : public engine::FrameSink {
public:
    void show(const engine::SurfacePicture& picture) noexcept override
    {
        int number = 0;
        for (int bit = 0; bit < kCells; ++bit) {
            const int x = static_cast<int>(picture.width * (bit + 1.5) / 16);
            const int y = picture.height / 24;
            number |= (picture.pixels.get()[y * picture.strideBytes + x * 4 + 1] > 128 ? 1 : 0) << bit;
        }
        const std::lock_guard lock(mutex_);
        if (seen_.empty() || seen_.back().number != number) {
            seen_.push_back({Clock::now(), number});
            changed_.notify_all();
        }
    }
    void say(engine::Text text) noexcept override { std::fprintf(stderr, "%.*s\n", int(text.size()), text.data()); }

    std::vector<Seen> take()
    {
        const std::lock_guard lock(mutex_);
        return std::exchange(seen_, {});
    }
    /// When that picture stands; false after 20 s.
    bool waitFor(int number)
    {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, std::chrono::seconds(20),
                                 [&] { return !seen_.empty() && seen_.back().number == number; });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Seen> seen_;
};

double since(Clock::time_point begin)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

class Hand {
public:
    explicit Hand(const std::string& path)
        : number_(engine::surfaces().add(screen_, {640, 360, 1})), path_(path), isFilm_(path.ends_with(".qpj"))
    {
        open();
    }
    ~Hand() { engine::surfaces().remove(number_); }

    /// Everything cold again, and the first picture on the screen.
    void open()
    {
        Bool16 ok = 0;
        engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
        if (isFilm_) {
            const auto preview = EngineAs<engine::ITWPreview>();
            if (!bench::openProject(path_)) {
                std::exit(1);
            }
            check(preview->SetOwnerWindow(number_));
            check(preview->BuildPreview(ok));
            check(preview->GetDuration(lengthMs_));
        } else {
            const auto preview = EngineAs<ITWFilePreview>();
            check(preview->SetOwnerWindow(number_));
            check(preview->OpenFile(path_, ok));
            check(preview->GetDuration(lengthMs_));
        }
        wish(0);
        screen_.waitFor(0);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        screen_.take();
    }

    double seek(double ms)
    {
        const auto begin = Clock::now();
        wish(ms);
        return screen_.waitFor(numberAt(ms)) ? since(begin) : -1;
    }

    /// A wish every 16 ms for 3 s; `place` maps 0 to 1 onto 0 to 1 of the film.
    void sweep(const char* name, const std::function<double(double)>& place)
    {
        constexpr double kSweepMs = 3000;
        screen_.take();
        std::vector<std::pair<Clock::time_point, double>> wishes;
        const auto begin = Clock::now();
        double at = 0;
        for (int i = 0; since(begin) < kSweepMs; ++i) {
            std::this_thread::sleep_until(begin + std::chrono::milliseconds(16 * i));
            at = std::clamp(place(std::min(1.0, since(begin) / kSweepMs)), 0.0, 1.0) * (lengthMs_ - 200);
            wishes.emplace_back(Clock::now(), at);
            wish(at);
        }
        const auto rest = Clock::now();
        const bool isThere = screen_.waitFor(numberAt(at));
        const double restMs = since(rest);
        const auto seen = screen_.take();
        std::vector<double> off;
        double gap = 0;
        double gapAt = 0;
        auto last = begin;
        int count = 0;
        for (const auto& picture : seen) {
            if (picture.when > rest) {
                break;
            }
            ++count;
            const double stood = std::chrono::duration<double, std::milli>(picture.when - last).count();
            if (stood > gap) {
                gap = stood;
                gapAt = std::chrono::duration<double, std::milli>(last - begin).count();
            }
            last = picture.when;
            const auto wished = std::prev(
                std::ranges::upper_bound(wishes, picture.when, {}, &std::pair<Clock::time_point, double>::first));
            off.push_back(std::abs(wished->second / 1000 - picture.number / kFps));
        }
        gap = std::max(gap, std::chrono::duration<double, std::milli>(rest - last).count());
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        const double farthest = off.empty() ? 0 : *std::ranges::max_element(off);
        std::printf("%-16s %4d pictures  longest gap %4.0f ms (from %4.0f)  off by %.2f s (median) %.2f s (most)  "
                    "exact after %5.0f ms%s",
                    name, count, gap, gapAt, bench::median(off), farthest, restMs, isThere ? "" : " NEVER");
        open();
        std::printf("  (a lone seek there %.0f ms)\n", seek(at));
    }

    void steps()
    {
        open();
        const double middle = std::floor(lengthMs_ / 2000.0) * 1000 + 8040;
        std::printf("%-16s %.1f ms\n", "a lone seek", seek(middle));
        std::vector<double> back;
        for (int i = 1; i <= 20; ++i) {
            back.push_back(seek(middle - i * 40));
        }
        std::printf("%-16s first %.1f ms, median of 20 %.1f ms, worst of the others %.1f ms\n", "a frame back",
                    back.front(), bench::median(back), *std::max_element(back.begin() + 1, back.end()));
        for (int round = 0; round < 2; ++round) {
            std::vector<double> walk;
            for (int i = 0; i < 50; ++i) {
                const int step = i < 25 ? i : 50 - i;
                walk.push_back(seek(20000 + step * 40));
            }
            std::printf("%-16s median %.1f ms, worst %.1f ms\n", round == 0 ? "a second walked" : "and again",
                        bench::median(walk), *std::ranges::max_element(walk));
        }
    }

private:
    static int numberAt(double ms) { return static_cast<int>(std::floor(std::floor(ms) * kFps / 1000 + 1e-6)); }
    void wish(double ms)
    {
        Bool16 ok = 0;
        const auto place = static_cast<std::int32_t>(ms);
        check(isFilm_ ? EngineAs<engine::ITWPreview>()->Seek(place, ok) : EngineAs<ITWFilePreview>()->Seek(place, ok));
    }

    Screen screen_;
    std::int32_t number_;
    std::string path_;
    bool isFilm_;
    std::int32_t lengthMs_ = 0;
};

} // namespace

int main(int count, char** words)
{
    if (count < 2) {
        std::fprintf(stderr, "usage: quillmont-scrub-bench FILE|PROJECT.qpj [ROUNDS]\n");
        return 2;
    }
    ::setenv("SDL_AUDIODRIVER", "dummy", 0);
    twcore::registerTarnwickTimeline();
    engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    Hand hand(words[1]);
    for (int round = 0; round < (count > 2 ? std::atoi(words[2]) : 1); ++round) {
        hand.open();
        hand.sweep("forwards", [](double share) { return share; });
        hand.open();
        hand.sweep("backwards", [](double share) { return 1 - share; });
        hand.open();
        hand.sweep("back and forth", [](double share) { return share < 0.5 ? 2 * share : 2 - 2 * share; });
        hand.steps();
    }
    engine::Engine.reset();
    return 0;
}
