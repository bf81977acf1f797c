// quillmont-measure: how long single things of the engine take, for comparison with other programs.
//
//   quillmont-measure open FILE     trying, opening and its streams, through the engine's contract: "open_ms"
//   quillmont-measure walk FILE     10,000 sources walked by GetSourceTimes: "walk_ms"
//   quillmont-measure seek FILE [--dump FOLDER]
//   quillmont-measure play FILE     ms from Play to the first sample that the sound device is given: at the beginning,
//                                   and at places sought before: "first_ms", "sought_ms" each. Without SDL_AUDIODRIVER
//                                   in the environment the device is SDL's dummy. Then how many pictures of the first
//                                   4 s were shown at 640x360
//   quillmont-measure show FILE     reads times in ms, and writes "asked_ms latency_ms" for each: from Seek of the
//                                   small player to the picture on a surface of 640x360
//   quillmont-measure first-picture FILE [MS]
//                                   a file that is not in memory (its disk permitting): from trying it to its first
//                                   picture, or that at a time: "first_ms", and "first_bytes" that were read for it
//
// "seek" reads times in ms from standard input, one a line, and writes "asked_ms frame_ms latency_ms" for each once
// the exact frame lies decoded as BGRA: the time that was asked for, the time at which that frame begins, and how long
// it took. With --dump each frame is also written as a bitmap.

#include "engine/ITWMediaFiles.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "engine/surfaces.h"
#include "twcore/media/picture_reader.h"
#include "twcore/play/file_preview_interface.h"
#include "twcore/tarnwick_timeline.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>
#include <unistd.h>

using namespace twcore;

namespace {

/// A picture converted to BGRA, at its own size.
class BgraPicture {
public:
    ~BgraPicture() { sws_freeContext(scaler_); }

    bool take(const AVFrame& frame)
    {
        scaler_ = sws_getCachedContext(scaler_, frame.width, frame.height, static_cast<AVPixelFormat>(frame.format),
                                       frame.width, frame.height, AV_PIX_FMT_BGRA, SWS_FAST_BILINEAR, nullptr, nullptr,
                                       nullptr);
        width_ = frame.width;
        height_ = frame.height;
        bytes_.resize(std::size_t(width_) * std::size_t(height_) * 4);
        std::uint8_t* planes[4] = {bytes_.data()};
        const int strides[4] = {width_ * 4};
        return scaler_ != nullptr && sws_scale(scaler_, frame.data, frame.linesize, 0, height_, planes, strides) > 0;
    }

    bool write(const std::string& path) const
    {
        std::ofstream file(path, std::ios::binary);
        const auto number = [&](std::uint32_t value, int count) {
            for (int i = 0; i < count; ++i) {
                file.put(static_cast<char>(value >> (8 * i)));
            }
        };
        file << "BM";
        number(static_cast<std::uint32_t>(54 + bytes_.size()), 4);
        number(0, 4);
        number(54, 4);
        number(40, 4);
        number(static_cast<std::uint32_t>(width_), 4);
        number(static_cast<std::uint32_t>(-height_), 4); // from the top line on
        number(1, 2);
        number(32, 2);
        number(0, 24);
        file.write(reinterpret_cast<const char*>(bytes_.data()), static_cast<std::streamsize>(bytes_.size()));
        return static_cast<bool>(file);
    }

private:
    SwsContext* scaler_ = nullptr;
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint8_t> bytes_;
};

class Stopwatch {
public:
    double ms() const
    {
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin_).count();
    }

private:
    std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

/// Opens a file with all its streams; the picture's handle, or the sound's when it has none.
engine::Handle openAll(const std::string& path)
{
    const auto core = engine::EngineAs<engine::ITWCoreRoot>();
    std::uint32_t code = 0;
    engine::Handle file = 0;
    engine::Handle first = 0;
    engine::check(core->GetFileError(path, code));
    engine::check(core->OpenFile(path, file));
    for (std::int16_t index = 0;; ++index) {
        engine::Handle stream = 0;
        engine::check(engine::EngineAs<engine::ITWMediaFiles>()->OpenStream(file, index, stream));
        if (stream == 0) {
            return first;
        }
        first = first == 0 ? stream : first;
    }
}

int open(const std::string& path)
{
    const Stopwatch watch;
    const bool isOpen = openAll(path) != 0;
    std::printf("open_ms %.3f\n", isOpen ? watch.ms() : -1.0);
    return isOpen ? 0 : 1;
}

int walk(const std::string& path)
{
    constexpr int kSources = 10000;
    const auto timeline = engine::EngineAs<engine::ITWTimeline>();
    const engine::Handle stream = openAll(path);
    engine::Handle track = 0;
    engine::Bool16 ok = engine::kTrue;
    engine::check(timeline->CreateTrack(engine::kTrue, track));
    for (int i = 0; i < kSources && ok != engine::kFalse; ++i) {
        engine::check(timeline->AppendSource(track, stream, -1, ok));
    }
    engine::Milliseconds startMs = 0;
    engine::Milliseconds stopMs = 0;
    engine::check(timeline->GetSourceTimes(track, 0, startMs, stopMs, ok)); // settles the track
    const Stopwatch watch;
    int count = 0;
    for (; ok != engine::kFalse; ++count) {
        engine::check(timeline->GetSourceTimes(track, static_cast<std::int16_t>(count), startMs, stopMs, ok));
    }
    std::printf("walk_ms %.3f sources %d\n", watch.ms(), count - 1);
    return count - 1 == kSources ? 0 : 1;
}

int seek(const std::string& path, const std::string& folder)
{
    const Trial trial = tryMediaFile(path, {});
    if (!trial.file || !trial.file->picture) {
        std::cerr << "quillmont-measure: \"" << path << "\" has no picture that can be decoded.\n";
        return 1;
    }
    PictureReader reader(trial.file, static_cast<int>(std::thread::hardware_concurrency()));
    BgraPicture picture;
    for (double askedMs = 0; std::cin >> askedMs;) {
        const Stopwatch watch;
        const SharedFrame frame = reader.at(askedMs / 1000);
        const bool isThere = frame && picture.take(*frame);
        const double latencyMs = watch.ms();
        std::printf("%.3f %.3f %.3f\n", askedMs, isThere ? reader.frameStart() * 1000 : -1.0, latencyMs);
        if (isThere && !folder.empty()
            && !picture.write(folder + "/" + std::to_string(static_cast<long long>(askedMs)) + ".bmp")) {
            std::cerr << "quillmont-measure: cannot write to \"" << folder << "\".\n";
            return 1;
        }
    }
    return 0;
}

/// All that this process has read so far.
long long bytesRead()
{
    std::ifstream counts("/proc/self/io");
    std::string name;
    long long bytes = 0;
    counts >> name >> bytes;
    return name == "rchar:" ? bytes : -1;
}

int firstPicture(const std::string& path, double atMs)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        std::cerr << "quillmont-measure: \"" << path << "\" cannot be opened.\n";
        return 1;
    }
    (void)::fsync(file); // only what is on the disk can be forgotten
    (void)::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
    ::close(file);
    const long long before = bytesRead();
    const Stopwatch watch;
    const Trial trial = tryMediaFile(path, {});
    const bool hasPicture = trial.file && trial.file->picture;
    const SharedFrame frame = hasPicture ? PictureReader(trial.file, 1).at(atMs / 1000) : nullptr;
    std::printf("first_ms %.1f first_bytes %lld\n", frame ? watch.ms() : -1.0, bytesRead() - before);
    return frame ? 0 : 1;
}

class CountingSink final : public engine::FrameSink {
public:
    void show(const engine::SurfacePicture&) noexcept override
    {
        ++count;
        count.notify_all();
    }
    void say(engine::Text) noexcept override {}
    std::atomic<int> count = 0;
};

/// Between the player and its device: notes when the first sample passes.
class NotedSource final : public AudioSource {
public:
    std::int64_t pull(std::span<float> out) noexcept override
    {
        const std::int64_t count = source->pull(out);
        if (count > 0) {
            passed = true;
            passed.notify_all();
        }
        return count;
    }
    AudioSource* source = nullptr;
    std::atomic<bool> passed = false;
};

int play(const std::string& path)
{
    ::setenv("SDL_AUDIODRIVER", "dummy", 0);
    const Trial trial = tryMediaFile(path, {});
    if (!trial.file) {
        std::cerr << "quillmont-measure: \"" << path << "\" cannot be played.\n";
        return 1;
    }
    NotedSource noted;
    Player player(1, [&](AudioSource& source) {
        noted.source = &source;
        return openAudio(noted);
    });
    player.load(planOfFile(trial.file));
    for (int i = 0; i < 10; ++i) {
        if (i > 0) {
            player.stop();
            player.seek(std::int64_t{player.durationMs()} * ((i * 7) % 10) / 10);
            // The device has stopped, and nothing has been mixed ahead yet.
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
        }
        noted.passed = false;
        const Stopwatch watch;
        player.play();
        noted.passed.wait(false);
        std::printf("%s_ms %.1f\n", i == 0 ? "first" : "sought", watch.ms());
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    if (trial.file->picture) {
        constexpr int kSeconds = 4;
        CountingSink sink;
        const std::int32_t surface = engine::surfaces().add(sink, {640, 360});
        player.setSurface(surface);
        player.seek(0);
        player.play();
        std::this_thread::sleep_for(std::chrono::seconds(kSeconds));
        std::printf("pictures %d of %.0f\n", sink.count.load(), kSeconds * av_q2d(trial.file->picture->frameRate));
        engine::surfaces().remove(surface);
    }
    return 0;
}

int show(const std::string& path)
{
    const auto preview = engine::EngineAs<engine::ITWFilePreview>();
    CountingSink sink;
    const std::int32_t surface = engine::surfaces().add(sink, {640, 360});
    engine::Bool16 ok = engine::kFalse;
    engine::check(preview->SetOwnerWindow(surface));
    engine::check(preview->OpenFile(path, ok));
    for (double askedMs = 0; ok != engine::kFalse && std::cin >> askedMs;) {
        const int before = sink.count;
        const Stopwatch watch;
        engine::check(preview->Seek(static_cast<std::int32_t>(askedMs), ok));
        sink.count.wait(before);
        std::printf("%.3f %.3f\n", askedMs, watch.ms());
    }
    engine::check(preview->Close());
    engine::surfaces().remove(surface);
    return ok != engine::kFalse ? 0 : 1;
}

} // namespace

int main(int count, char** words)
{
    twcore::registerTarnwickTimeline();
    engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    const std::string what = count > 1 ? words[1] : "";
    int status = 2;
    if (what == "open" && count == 3) {
        status = open(words[2]);
    } else if (what == "walk" && count == 3) {
        status = walk(words[2]);
    } else if (what == "seek" && (count == 3 || (count == 5 && std::strcmp(words[3], "--dump") == 0))) {
        status = seek(words[2], count == 5 ? words[4] : "");
    } else if (what == "first-picture" && (count == 3 || count == 4)) {
        status = firstPicture(words[2], count == 4 ? std::atof(words[3]) : 0);
    } else if (what == "play" && count == 3) {
        status = play(words[2]);
    } else if (what == "show" && count == 3) {
        status = show(words[2]);
    } else {
        std::cerr << "usage: quillmont-measure open FILE | walk FILE | seek FILE [--dump FOLDER] < TIMES | play FILE\n"
                     "       | show FILE < TIMES | first-picture FILE [MS]\n";
    }
    engine::Engine.reset();
    return status;
}
