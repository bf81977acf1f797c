// A long film of many files, played on a clock that runs faster than time: whether picture and sound come apart, what
// memory grows, and how many files are open at once.
//
//     quillmont-long-play-bench FILE [COUNT [SECONDS [SPEED]]]
//
// COUNT links to FILE, a clip with numbers (bench/scrub.py), lie one behind the other, SECONDS of each.

#include "engine/check.h"
#include "engine/surfaces.h"
#include "measures.h"
#include "twcore/model/timeline_interface.h"
#include "twcore/play/preview_interface.h"
#include "twcore/tarnwick_timeline.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using engine::Bool16;
using engine::check;
using twcore::kPlayRate;

/// Takes sound so many times faster than it would be heard.
class FastSink final : public twcore::AudioSink {
public:
    FastSink(twcore::AudioSource& source, double speed) : source_(source), speed_(speed) {}
    ~FastSink() override { stop(); }
    void start() override
    {
        taken_ = 0;
        isRunning_ = true;
        thread_ = std::thread([this] { take(); });
    }
    void stop() override
    {
        isRunning_ = false;
        if (thread_.joinable()) {
            thread_.join();
        }
    }
    double heard() const override { return static_cast<double>(taken_); }
    bool isAlive() const override { return true; }

private:
    void take()
    {
        std::vector<float> block(std::size_t{twcore::kAudioBlock} * 2);
        const auto begin = Clock::now();
        while (isRunning_) {
            const double due = std::chrono::duration<double>(Clock::now() - begin).count() * speed_ * kPlayRate;
            while (isRunning_ && static_cast<double>(taken_) < due) {
                const auto got = source_.pull(block);
                if (got == 0) {
                    break;
                }
                taken_ += static_cast<std::int64_t>(got);
            }
            std::this_thread::sleep_for(std::chrono::microseconds(500));
        }
    }

    twcore::AudioSource& source_;
    double speed_;
    std::atomic<bool> isRunning_ = false;
    std::atomic<std::int64_t> taken_ = 0;
    std::thread thread_;
};

class Screen final : public engine::FrameSink {
public:
    void show(const engine::SurfacePicture& picture) noexcept override
    {
        constexpr int kCells = 11;
        int value = 0;
        for (int bit = 0; bit < kCells; ++bit) {
            const int x = static_cast<int>(picture.width * (bit + 1.5) / 16);
            const int y = picture.height / 24;
            value |= (picture.pixels.get()[y * picture.strideBytes + x * 4 + 1] > 128 ? 1 : 0) << bit;
        }
        number = value;
        ++count;
    }
    void say(engine::Text text) noexcept override { std::fprintf(stderr, "%.*s\n", int(text.size()), text.data()); }

    std::atomic<int> number = -1;
    std::atomic<int> count = 0;
};

double megabytes()
{
    long pages = 0;
    if (std::FILE* const file = std::fopen("/proc/self/statm", "r")) {
        (void)!std::fscanf(file, "%*d %ld", &pages);
        std::fclose(file);
    }
    return static_cast<double>(pages) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

long openFiles()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
}

} // namespace

int main(int count, char** words)
{
    if (count < 2) {
        std::fprintf(stderr, "usage: quillmont-long-play-bench FILE [COUNT [SECONDS [SPEED]]]\n");
        return 2;
    }
    const int files = count > 2 ? std::atoi(words[2]) : 300;
    const int seconds = count > 3 ? std::atoi(words[3]) : 12;
    const double speed = count > 4 ? std::atof(words[4]) : 20;
    twcore::registerTarnwickTimeline();
    const auto folder = std::filesystem::temp_directory_path() / ("long-play-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    {
        Screen screen;
        const auto surface = engine::surfaces().add(screen, {640, 360, 1});
        twcore::HandleCounter handles;
        twcore::FileRegistry registry{handles};
        twcore::Timeline timeline{registry, handles};
        twcore::PreviewInterface preview{
            timeline, registry, [&](twcore::AudioSource& source) { return std::make_unique<FastSink>(source, speed); }};
        twcore::TimelineInterface calls{timeline, [] {}};
        check(preview.SetOwnerWindow(surface));
        check(calls.SetFrameSize(1280, 720));
        engine::Handle track = 0;
        check(calls.CreateTrack(engine::kTrue, track));
        Bool16 ok = 0;
        for (int i = 0; i < files; ++i) {
            const auto link = folder / (std::to_string(i) + std::filesystem::path(words[1]).extension().string());
            std::filesystem::create_symlink(std::filesystem::absolute(words[1]), link);
            const auto file = registry.openFile(link.string());
            check(calls.AppendSource(track, registry.streamOfKind(file, true), -1, ok));
            const auto number = static_cast<std::int16_t>(i);
            check(calls.SetSourceTimes(track, number, i * seconds * 1000, (i + 1) * seconds * 1000, ok));
            check(calls.SetSourceMediaTimes(track, number, 0, seconds * 1000, ok));
        }
        check(preview.BuildPreview(ok));
        std::this_thread::sleep_for(std::chrono::seconds(2));
        const std::int32_t lengthMs = files * seconds * 1000;
        std::printf("%d files, %.0f min: %.0f MB, %ld descriptors before it plays\n", files, lengthMs / 60000.0,
                    megabytes(), openFiles());
        check(preview.Play(ok));
        std::vector<double> off[2];
        double early = 0;
        long mostOpen = 0;
        int shown = screen.count;
        std::int32_t position = 0;
        while (position < lengthMs) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            const std::int32_t before = position;
            check(preview.GetPosition(position));
            if (before < lengthMs / 10 && position >= lengthMs / 10) {
                early = megabytes();
            }
            if (screen.count != shown) {
                shown = screen.count;
                mostOpen = std::max(mostOpen, openFiles());
                const double at = position % (seconds * 1000) - screen.number * 40.0;
                if (position < lengthMs / 10 || position > lengthMs * 9LL / 10) {
                    off[position < lengthMs / 2 ? 0 : 1].push_back(at);
                }
            }
        }
        std::printf("%d pictures at %.0f times the speed; the picture is %.0f ms behind the sound in the first tenth, "
                    "%.0f ms in the last (medians)\n",
                    shown, speed, bench::median(off[0]), bench::median(off[1]));
        std::printf("%.0f MB after a tenth, %.0f MB at the end; %ld descriptors at most\n", early, megabytes(),
                    mostOpen);
        engine::surfaces().remove(surface);
    }
    std::filesystem::remove_all(folder);
    return 0;
}
