// Pictures and peaks of bars: that they are the right ones, and what becomes of them when a file, the cache or the work
// of others comes in between.

#include "play_harness.h"
#include "twcore/bars/bar_pictures_interface.h"
#include "twcore/play/players_at_work.h"
#include "twcore/save/save_run.h"

#include <cmath>
#include <random>

namespace {

namespace fs = std::filesystem;
using engine::Peak;
using playtest::soon;

constexpr int kRate = 44100;

/// Two channels of 16 bits.
std::string wave(const std::vector<std::int16_t>& samples)
{
    using testmedia::littleEndian;
    std::string data;
    for (const std::int16_t sample : samples) {
        data += littleEndian(static_cast<std::uint16_t>(sample), 2);
    }
    const std::string format = littleEndian(1, 2) + littleEndian(2, 2) + littleEndian(kRate) + littleEndian(kRate * 4)
                               + littleEndian(4, 2) + littleEndian(16, 2);
    return testmedia::chunk("RIFF", "WAVE" + testmedia::chunk("fmt ", format) + testmedia::chunk("data", data));
}

std::vector<std::int16_t> noise(int seconds)
{
    std::mt19937 random(7);
    std::vector<std::int16_t> samples(static_cast<std::size_t>(seconds) * kRate * 2);
    for (std::int16_t& sample : samples) { // mostly quiet, so that a peak is one sample's
        const auto drawn = random();
        sample = static_cast<std::int16_t>(static_cast<int>(drawn % 65536) - 32768);
        sample = static_cast<std::int16_t>(drawn % 97 == 0 ? sample : sample / 64);
    }
    return samples;
}

Peak peakIn(const std::vector<std::int16_t>& samples, double fromMs, double toMs)
{
    const auto place = [](double ms) { return std::lround(std::ceil(ms * kRate / 1000 - 1e-6)) * 2; };
    const auto first = samples.begin() + place(fromMs);
    const auto [low, high] = std::minmax_element(first, std::max(first + 2, samples.begin() + place(toMs)));
    return {static_cast<std::int8_t>(std::floor(*low / 32768.0 * 127)),
            static_cast<std::int8_t>(std::ceil(*high / 32768.0 * 127))};
}

class BarsTest : public testing::Test, protected engine::NewsSink {
protected:
    void SetUp() override
    {
        twcore::registerTarnwickTimeline(); // silences the media libraries
        number = engine::surfaces().add(*this);
        restart();
    }
    void TearDown() override
    {
        engine::surfaces().remove(number);
        bars.reset();
    }
    void hear() noexcept override { hasHeard = true; }

    /// As the program's next run would: only what is on the disk is left.
    void restart(const fs::path& cache = {}, std::int64_t mostBytes = 1 << 26)
    {
        bars.emplace(files, false); // a test does not wait until nobody else works
        engine::check(bars->SetNewsSink(number));
        engine::check(bars->SetCacheFolder(cache.string(), mostBytes));
    }
    engine::Handle stream(const fs::path& path, bool picture)
    {
        const engine::Handle file = files.openFile(path.string());
        EXPECT_NE(file, 0) << path;
        return files.streamOfKind(file, picture);
    }
    /// Asks in view after view until all is there. Empty: it never was.
    std::vector<Peak> peaks(engine::Handle sound, double from, double step, std::size_t count,
                            std::chrono::milliseconds patience = std::chrono::seconds(20))
    {
        std::vector<Peak> all(count);
        const bool came = soon(
            [&] {
                engine::Bool16 ok = engine::kFalse;
                engine::check(bars->BeginView());
                engine::check(bars->GetPeaks(sound, from, step, all, ok));
                engine::check(bars->EndView());
                return ok != engine::kFalse;
            },
            patience);
        return came ? all : std::vector<Peak>();
    }
    /// The number in the first picture that comes for that time.
    int pictureAt(engine::Handle video, int ms)
    {
        engine::SurfacePicture picture;
        soon([&] {
            engine::Bool16 ok = engine::kFalse;
            engine::check(bars->BeginView());
            engine::check(bars->GetPicture(video, ms, 128, picture, ok));
            engine::check(bars->EndView());
            return ok != engine::kFalse;
        });
        playtest::ReadingSink reader;
        reader.show(picture);
        return picture.height == 128 ? reader.last() : -4;
    }

    twcore::HandleCounter handles;
    twcore::FileRegistry files{handles};
    std::optional<twcore::BarPicturesInterface> bars;
    std::int32_t number = 0;
    std::atomic<bool> hasHeard = false;
    testmedia::TempFolder folder;
};

TEST_F(BarsTest, PeaksAreThoseOfTheSamplesAtEveryZoom)
{
    const auto samples = noise(40);
    testmedia::writeBytes(folder / "noise.wav", wave(samples));
    const auto sound = stream(folder / "noise.wav", false);
    const std::pair<double, double> cases[] = {{0, 1},         {16300, 1},   {3, 5},       {16383, 10}, {7, 64},
                                               {1, 499},       {0, 20480},   {16300, 0.3}, {3.3, 5.7},  {9.99, 20},
                                               {16383.2, 1.1}, {0.5, 499.5}, {5, 0.01}};
    for (const auto& [from, step] : cases) {
        const auto count = static_cast<std::size_t>(std::min(500.0, 40000 / step));
        const auto got = peaks(sound, from, step, count);
        EXPECT_TRUE(hasHeard);
        ASSERT_EQ(got.size(), count);
        for (std::size_t i = 0; i < count; ++i) {
            const double begin = from + static_cast<double>(i) * step;
            const double end = std::min(begin + step, 40000.0);
            const Peak want = begin < 40000 ? peakIn(samples, begin, end) : Peak{};
            ASSERT_TRUE(got[i] == want) << step << " ms a pixel, at " << begin << ": " << int{got[i].low} << " to "
                                        << int{got[i].high} << ", should be " << int{want.low} << " to "
                                        << int{want.high};
        }
    }
}

TEST_F(BarsTest, PicturesAreTheKeyFramesAheadOfTheirTimes)
{
    struct Case {
        const char* name;
        int ms;
        int number;
    };
    for (const Case& c : std::vector<Case>{{"h264.mp4", 0, 0},        // a key frame every 12 frames of 40 ms
                                           {"h264.mp4", 1000, 24},    // thinned to half a second
                                           {"long-gop.mp4", 9900, 0}, // the next one is at 10 s
                                           {"long-gop.mp4", 10100, 250},
                                           {"mjpeg.avi", 2000, 39},
                                           {"mpeg2.ts", 0, 0}}) {
        restart();
        EXPECT_EQ(pictureAt(stream(testmedia::medium(c.name), true), c.ms), c.number) << c.name << " at " << c.ms;
    }
}

TEST_F(BarsTest, AnotherHeightStandsInUntilThePictureIsThere)
{
    const auto video = stream(testmedia::medium("h264.mp4"), true);
    ASSERT_EQ(pictureAt(video, 1000), 24);
    engine::SurfacePicture picture;
    const auto ask = [&](int height) {
        engine::Bool16 ok = engine::kFalse;
        engine::check(bars->BeginView());
        engine::check(bars->GetPicture(video, 1000, height, picture, ok));
        engine::check(bars->EndView());
        return ok != engine::kFalse;
    };
    ASSERT_TRUE(ask(60));
    EXPECT_EQ(picture.height, 128);
    EXPECT_TRUE(soon([&] { return ask(60) && picture.height == 60; }));
    ASSERT_TRUE(ask(50));
    EXPECT_EQ(picture.height, 60) << "the nearest one";
}

TEST_F(BarsTest, APictureThatAPlayerHasReadyIsTaken)
{
    const std::string path = testmedia::medium("h264.mp4");
    const auto video = stream(path, true);
    const twcore::MediaFilePtr media = files.targetOf(video).media;
    // Another picture than that of the time, so that it is known again.
    twcore::SharedFrame other = twcore::PictureReader(media, 1).at(1.21);
    std::optional<twcore::PictureStore> player;
    const auto shownWith = [&](double cropWidth, const twcore::FileStamp& stamp) {
        player.emplace(1 << 24);
        player->put({media, stamp, {{0, 0, other->width, other->height}, 0, 0, cropWidth}, {}}, {other, 0.96, 1});
        restart();
        return pictureAt(video, 1000);
    };
    const auto now = twcore::FileStamp::of(path);
    EXPECT_EQ(shownWith(0.5, now), 24) << "a part of it";
    EXPECT_EQ(shownWith(1, {true, 1, 2}), 24) << "of the file that was there before";
    EXPECT_EQ(shownWith(1, now), 30);
    player.reset();
    other.reset();
    restart();
    EXPECT_EQ(pictureAt(video, 1000), 24) << "with its player it is gone";
}

TEST_F(BarsTest, TheCacheGivesWhatWasMadeAndNothingOfAnotherFile)
{
    const auto samples = noise(2);
    const fs::path file = folder / "noise.wav";
    const fs::path cache = folder / "cache";
    testmedia::writeBytes(file, wave(samples));
    const auto sound = stream(file, false);
    restart(cache);
    const auto first = peaks(sound, 0, 2, 1000);
    ASSERT_EQ(first.size(), 1000u);
    const auto changed = fs::last_write_time(file);

    // Nothing but the cache can tell what was in the file.
    testmedia::writeBytes(file, std::string(fs::file_size(file), '\0'));
    fs::last_write_time(file, changed);
    restart(cache);
    EXPECT_EQ(peaks(sound, 0, 2, 1000), first);

    // The file has changed while it was shown: what stood ready is made anew.
    testmedia::writeBytes(file, wave(std::vector<std::int16_t>(samples.size())));
    fs::last_write_time(file, changed + std::chrono::seconds(1));
    EXPECT_TRUE(soon([&] { return peaks(sound, 0, 2, 1000).at(0) == (Peak{0, 0}); }));
}

TEST_F(BarsTest, ADamagedOrClosedCacheCostsNothingButSpeed)
{
    const auto samples = noise(2);
    const fs::path file = folder / "noise.wav";
    testmedia::writeBytes(file, wave(samples));
    const auto sound = stream(file, false);
    const fs::path cache = folder / "cache";
    restart(cache);
    const auto first = peaks(sound, 0, 2, 1000);
    ASSERT_EQ(first.size(), 1000u);
    const fs::path kept = fs::directory_iterator(cache)->path();
    const std::string whole = testmedia::bytesOf(kept);
    std::string flipped = whole;
    flipped[whole.size() - 500] ^= 0x40;
    for (const std::string& damaged : {flipped, whole.substr(0, whole.size() - 9), whole.substr(0, 11),
                                       std::string(whole.size(), '\xFF'), whole + "torn", std::string()}) {
        testmedia::writeBytes(kept, damaged);
        restart(cache);
        EXPECT_EQ(peaks(sound, 0, 2, 1000), first);
        bars.reset(); // lets go of the file
        EXPECT_EQ(testmedia::bytesOf(kept), whole) << "it is made anew";
    }
    testmedia::writeBytes(kept, "torn");
    fs::permissions(cache, fs::perms::owner_read | fs::perms::owner_exec); // it cannot be taken away
    restart(cache);
    EXPECT_EQ(peaks(sound, 0, 2, 1000), first);
    fs::permissions(cache, fs::perms::owner_all);
    testmedia::writeBytes(folder / "a file", "");
    for (const fs::path& closed : {folder / "a file", folder / "a file" / "below", fs::path("/proc/none")}) {
        restart(closed);
        EXPECT_EQ(peaks(sound, 0, 2, 1000), first) << closed;
    }
    bars.reset();
    const testmedia::FullDisk full(whole.size() / 2);
    restart(folder / "full");
    EXPECT_EQ(peaks(sound, 0, 2, 1000), first);
}

TEST_F(BarsTest, TheCacheStaysWithinItsBounds)
{
    constexpr std::int64_t kMost = 40000;
    restart(folder / "cache", kMost);
    for (int i = 0; i < 12; ++i) {
        const fs::path file = folder / ("noise " + std::to_string(i) + ".wav");
        testmedia::writeBytes(file, wave(noise(4))); // 8,000 bytes of peaks
        ASSERT_FALSE(peaks(stream(file, false), 0, 2, 10).empty());
    }
    bars.reset();
    std::int64_t bytes = 0;
    for (const auto& entry : fs::directory_iterator(folder / "cache")) {
        bytes += static_cast<std::int64_t>(entry.file_size());
    }
    EXPECT_LE(bytes, kMost);
    EXPECT_GT(bytes, 16000);
}

TEST_F(BarsTest, NothingIsMadeWhileAMovieIsSavedOrAPlayerWorks)
{
    const auto sound = stream(testmedia::medium("stereo-44k.wav"), false);
    ++twcore::savesAtWork;
    EXPECT_TRUE(peaks(sound, 0, 5, 100, std::chrono::milliseconds(300)).empty());
    --twcore::savesAtWork;
    const bool isMade = soon(
        [&] {
            twcore::notePlayerWork();
            return !peaks(sound, 0, 5, 100, std::chrono::milliseconds(10)).empty();
        },
        std::chrono::milliseconds(300));
    EXPECT_FALSE(isMade);
    EXPECT_FALSE(peaks(sound, 0, 5, 100).empty());
}

} // namespace
