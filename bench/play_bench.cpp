// What a player keeps up with: a project is played for so many seconds on a device that takes sound as time goes by
// (SDL's dummy). Prints the pictures that were due, those that came, how late each came by the clock of the sound, how
// long it took from Play to the first moment that was heard, and from an edit to its picture.
//
//     quillmont-play-bench PROJECT [SECONDS [NUMBERED]]
//
// NUMBERED says that the project is one clip of scrub.py's from its start on, so that a picture tells its own time.

#include "bench/open_project.h"
#include "engine/ITWPreview.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "engine/surfaces.h"
#include "measures.h"
#include "twcore/tarnwick_timeline.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::ITWPreview;

double sinceMs(Clock::time_point begin)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

std::int32_t position()
{
    std::int32_t ms = 0;
    check(EngineAs<ITWPreview>()->GetPosition(ms));
    return ms;
}

class Screen final : public engine::FrameSink {
public:
    void show(const engine::SurfacePicture& picture) noexcept override
    {
        constexpr int kCells = 11;
        int number = 0;
        for (int bit = 0; bit < kCells; ++bit) {
            const int x = static_cast<int>(picture.width * (bit + 1.5) / 16);
            const int y = picture.height / 24;
            number |= (picture.pixels.get()[y * picture.strideBytes + x * 4 + 1] > 128 ? 1 : 0) << bit;
        }
        const std::lock_guard lock(mutex);
        shown.emplace_back(Clock::now(), number);
        ++count;
        count.notify_all();
    }
    void say(engine::Text text) noexcept override { std::fprintf(stderr, "%.*s\n", int(text.size()), text.data()); }

    std::mutex mutex;
    std::vector<std::pair<Clock::time_point, int>> shown;
    std::atomic<int> count = 0;
};

void call(engine::Status (ITWPreview::*operation)(Bool16&))
{
    Bool16 ok = 0;
    check((EngineAs<ITWPreview>().get()->*operation)(ok));
}

void play(Screen& screen, int seconds, bool isNumbered)
{
    const auto begin = Clock::now();
    call(&ITWPreview::Play);
    while (position() == 0 && sinceMs(begin) < 5000) {
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    std::printf("from Play to the first sound heard  %.0f ms\n", sinceMs(begin));
    const double before = bench::processorSeconds();
    const int startCount = screen.count;
    const std::int32_t from = position();
    // The clock of the sound, beside that of the machine.
    std::vector<std::pair<Clock::time_point, std::int32_t>> heard;
    while (sinceMs(begin) < seconds * 1000.0) {
        heard.emplace_back(Clock::now(), position());
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    const std::int32_t to = position();
    const double used = 100 * (bench::processorSeconds() - before) / seconds;
    call(&ITWPreview::Pause);
    const int due = static_cast<int>((to - from) / 40.0);
    const int came = screen.count - startCount;
    std::printf("played %.1f s: %d pictures due, %d came, %.2f %% skipped, %.0f %% of a core\n", (to - from) / 1000.0,
                due, came, due > came ? 100.0 * (due - came) / due : 0.0, used);
    if (isNumbered) {
        std::vector<double> late;
        const std::lock_guard lock(screen.mutex);
        for (const auto& [when, number] : screen.shown) {
            const auto at =
                std::ranges::lower_bound(heard, when, {}, &std::pair<Clock::time_point, std::int32_t>::first);
            if (at != heard.end() && at != heard.begin()) {
                late.push_back(at->second - number * 40.0);
            }
        }
        std::ranges::sort(late);
        std::printf("a picture comes %.0f ms behind its moment (median), %.0f ms (95 in 100), %.0f ms (worst)\n",
                    late[late.size() / 2], late[late.size() * 95 / 100], late.back());
    }
}

void edits(Screen& screen)
{
    std::vector<double> times;
    Bool16 ok = 0;
    check(EngineAs<ITWPreview>()->Seek(2000, ok));
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    for (std::int16_t round = 0; round < 10; ++round) {
        const int count = screen.count;
        const auto begin = Clock::now();
        check(EngineAs<engine::ITWTimeline>()->SetFrameSize(round % 2 == 0 ? 1000 : 640, 480)); // is seen at once
        call(&ITWPreview::RefreshPreview);
        screen.count.wait(count);
        times.push_back(sinceMs(begin));
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }
    std::ranges::sort(times);
    std::printf("from an edit to its picture  %.0f ms (median), %.0f ms (worst)\n", times[times.size() / 2],
                times.back());
}

} // namespace

int main(int count, char** words)
{
    if (count < 2) {
        std::fprintf(stderr, "usage: quillmont-play-bench PROJECT [SECONDS [NUMBERED]]\n");
        return 2;
    }
    ::setenv("SDL_AUDIODRIVER", "dummy", 0);
    twcore::registerTarnwickTimeline();
    engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    if (!bench::openProject(words[1])) {
        return 1;
    }
    Screen screen;
    const bool isNumbered = count > 3;
    const auto surface = engine::surfaces().add(screen, {640, isNumbered ? 360 : 480, 1}); // without bars
    check(EngineAs<ITWPreview>()->SetOwnerWindow(surface));
    call(&ITWPreview::BuildPreview);
    screen.count.wait(0);
    std::this_thread::sleep_for(std::chrono::seconds(1));
    play(screen, count > 2 ? std::atoi(words[2]) : 60, isNumbered);
    edits(screen);
    engine::surfaces().remove(surface);
    engine::Engine.reset();
    return 0;
}
