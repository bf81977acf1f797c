// Movies saved and read back: every frame by its number, every sound by its moment.

#include "twcore/save/save_harness.h"

#include <cmath>
#include <fstream>
#include <iterator>

using namespace savetest;
using testmedia::Movie;

namespace {

constexpr int kBlack = -1;

/// What frame n shows when the sources of a 25 fps file stand so, for a movie at fps from startMs on. The file's first
/// picture stands lateMs behind media time 0, and is held until then.
std::vector<int> expectedNumbers(const std::vector<Place>& places, double fps, int startMs, int stopMs,
                                 double lateMs = 0)
{
    std::vector<int> numbers;
    const auto count = static_cast<int>(std::ceil((stopMs - startMs) * fps / 1000 - 1e-9));
    for (int n = 0; n < count; ++n) {
        const double time = startMs + n * 1000 / fps;
        int number = kBlack;
        for (const auto& place : places) {
            if (time >= place.start - 1e-9 && time < place.stop - 1e-9) {
                const double speed = double(place.mediaStop - place.mediaStart) / (place.stop - place.start);
                const double media = place.mediaStart + (time - place.start) * speed - lateMs;
                number = std::max(0, static_cast<int>(std::floor(media / 40 + 1e-6)));
            }
        }
        numbers.push_back(number);
    }
    return numbers;
}

double loudest(const Movie& movie, double from, double length)
{
    const auto view = movie.soundView(0, from, length);
    double most = 0;
    for (std::size_t i = 0; i < view.count; ++i) {
        most = std::max(most, std::abs(double{view.samples[i * view.stride]}));
    }
    return most;
}

std::string bytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

// A 1.0-2.2 | black | B 0.5-1.5 | touching cut of A | A again from a frame's middle
const std::vector<Place> kCuts{
    {0, 1200, 1000, 2200}, {1600, 2600, 500, 1500}, {2600, 3100, 0, 500}, {3100, 4000, 1517, 2417}};

TEST_F(SaveTest, ShowsTheFrameOfEachTimeAndItsSound)
{
    for (const char* name : {"h264.mp4", "mpeg2-open-gop.mpg", "vp8.webm", "wmv2.wmv", "mpeg4-b.avi"}) {
        SCOPED_TRACE(name);
        SetUp();
        for (const auto& place : kCuts) {
            layBoth(name, place);
        }
        const Movie movie = saved({});
        const auto entry = testmedia::mediaEntry(name);
        EXPECT_EQ(movie.frames.size(), 100u);
        EXPECT_EQ(movie.soundCount(), 4u * 48000);
        EXPECT_EQ(loudest(movie, 1.2, 0.4), 0) << "the gap is silent";
        const Movie source = testmedia::readMovie(testmedia::mediaFolder() / name);
        const double first = source.frames.front().seconds;
        const double pictureLate = source.format == "avi" ? 0 : first - std::min(first, source.soundStartSeconds);
        EXPECT_EQ(testing::PrintToString(movie.numbers()),
                  testing::PrintToString(expectedNumbers(kCuts, 25, 0, 4000, pictureLate * 1000)));
        for (const auto& place : kCuts) {
            const double at = place.start / 1000.0 + 0.02;
            const double offset =
                (place.mediaStart - place.start) / 1000.0 + entry.noteNumber("sound-lag") - pictureLate;
            const auto shift = movie.soundShift(0, at, 3);
            ASSERT_TRUE(shift) << at;
            EXPECT_NEAR(*shift, offset, 0.001) << at;
        }
    }
}

TEST_F(SaveTest, CutsAndMixesPcmToTheSample)
{
    const Handle wave = stream("stereo-48k.wav", false);
    lay(audio1, wave, {0, 1001, 500, 1501});
    lay(audio1, wave, {1001, 2000, 3000, 3999});
    lay(audio2, wave, {500, 1500, 0, 1000});
    const Movie movie = saved({});
    ASSERT_EQ(movie.soundCount(), 2u * 48000);
    EXPECT_TRUE(movie.frames.empty()) << "a movie of sound alone";
    for (int i = 0; i < 2 * 48000; i += 7) {
        for (int channel = 0; channel < 2; ++channel) {
            double expected = i < 1001 * 48 ? testmedia::soundAt(i + 500 * 48, 48000, channel)
                                            : testmedia::soundAt(i - 1001 * 48 + 3000 * 48, 48000, channel);
            expected += i >= 500 * 48 && i < 1500 * 48 ? testmedia::soundAt(i - 500 * 48, 48000, channel) : 0;
            ASSERT_NEAR(movie.sound[static_cast<std::size_t>(2 * i + channel)], std::clamp(expected, -1.0, 1.0), 1e-4)
                << "sample " << i << " channel " << channel;
        }
    }
}

TEST_F(SaveTest, KeepsThePitchAtAnotherSpeed)
{
    struct Case {
        Place place;
        bool silent;
    };
    for (const auto& [place, silent] : {Case{{0, 1000, 1000, 3000}, false}, Case{{0, 2000, 1000, 2000}, false},
                                        Case{{0, 3000, 2000, 2600}, false}, Case{{0, 200, 0, 4000}, true}}) {
        SCOPED_TRACE(testing::Message() << place.mediaStart << "-" << place.mediaStop << " in " << place.stop);
        SetUp();
        layBoth("mjpeg.avi", place);
        const Movie movie = saved({});
        EXPECT_EQ(testing::PrintToString(movie.numbers()),
                  testing::PrintToString(expectedNumbers({place}, 25, 0, place.stop)));
        if (silent) {
            EXPECT_EQ(loudest(movie, 0, 0.2), 0);
            continue;
        }
        const double speed = double(place.mediaStop - place.mediaStart) / place.stop;
        // In the middle of a step of the staircase, where the tone is one.
        for (double media = std::ceil(place.mediaStart / 100.0) / 10 + 0.15; media < place.mediaStop / 1000.0 - 0.1;
             media += 0.3) {
            const double at = (media - place.mediaStart / 1000.0) / speed;
            const double half = 0.03 / speed;
            const auto view = movie.soundView(0, at - half, 2 * half);
            EXPECT_NEAR(testmedia::dominantFrequency(view), testmedia::toneHz(media, 0), 25) << "media " << media;
        }
    }
}

TEST_F(SaveTest, HasExactlyTheFramesAndSamplesOfItsRange)
{
    layBoth("mjpeg.avi", {0, 4000, 0, 4000});
    for (const int fps : {15, 24, 25, 30, 60}) {
        for (const auto& [start, stop] : {std::pair{-1, -1}, std::pair{333, 1334}, std::pair{3500, 5000}}) {
            SCOPED_TRACE(testing::Message() << fps << " fps, " << start << " to " << stop);
            SaveWords words;
            words.fps = fps;
            words.rangeStart = start;
            words.rangeStop = stop;
            words.soundRate = 44100;
            const int from = stop < 0 ? 0 : start;
            const int to = stop < 0 ? 4000 : stop;
            const Movie movie = saved(words);
            EXPECT_EQ(testing::PrintToString(movie.numbers()),
                      testing::PrintToString(expectedNumbers({{0, 4000, 0, 4000}}, fps, from, to)));
            EXPECT_EQ(movie.rateHz, 44100);
            EXPECT_EQ(movie.soundCount(), static_cast<std::size_t>(std::lround((to - from) * 44.1)));
            EXPECT_NEAR(*movie.soundShift(0, 0.1, 4), from / 1000.0, 0.0002);
        }
    }
}

TEST_F(SaveTest, TakesTheRateOfTheFirstVideo)
{
    for (const char* name : {"24p.mp4", "30p.mp4", "50p.mp4"}) {
        SetUp();
        layBoth(name, {0, 2000, 0, 2000});
        SaveWords words;
        words.fps = -1;
        const Movie movie = saved(words);
        EXPECT_NEAR(movie.frameRate, testmedia::mediaEntry(name).framesPerSecond(), 1e-3) << name;
        for (std::size_t i = 0; i < movie.frames.size(); ++i) {
            ASSERT_EQ(movie.frames[i].number, static_cast<int>(i)) << name;
        }
    }
}

TEST_F(SaveTest, WritesEveryCompressorWithNothingLostOrLate)
{
    layBoth("mjpeg.avi", {0, 2000, 1000, 3000});
    for (const char* name : {"Uncompressed", "Motion JPEG", "MPEG-4", "Xvid MPEG-4", "H.264", "MS-MPEG4 V3", "HuffYUV",
                             "FFV1", "Ut Video"}) {
        const Movie movie = saved({.video = name});
        EXPECT_EQ(testing::PrintToString(movie.numbers()),
                  testing::PrintToString(expectedNumbers({{0, 2000, 1000, 3000}}, 25, 0, 2000)))
            << name;
    }
    for (const char* audio : {"Uncompressed", "PCM", "MP3", "MP2", "AC-3", "IMA ADPCM"}) {
        SCOPED_TRACE(audio);
        const Movie movie = saved({.audio = audio});
        // At most the last packet is longer than the movie.
        EXPECT_GE(movie.soundSeconds(), 2.0 - 1e-9);
        EXPECT_LT(movie.soundSeconds(), 2.0 + 0.05);
        for (const double at : {0.03, 1.0, 1.7}) {
            const auto shift = movie.soundShift(0, at, 1.5);
            ASSERT_TRUE(shift) << at;
            EXPECT_NEAR(*shift, 1.0, 0.001) << at;
        }
        // A length of whole packets: what the encoder holds at its end is one too many.
        const Movie whole = saved({.audio = audio, .rangeStart = 0, .rangeStop = 1920});
        EXPECT_GE(whole.soundSeconds(), 1.92 - 1e-9);
        EXPECT_LT(whole.soundSeconds(), 1.92 + 0.05);
    }
}

TEST_F(SaveTest, GivesTheSameBytesTwice)
{
    for (const auto& place : kCuts) {
        layBoth("h264.mp4", place);
    }
    for (const char* name : {"Motion JPEG", "MPEG-4", "FFV1"}) {
        saved({.video = name, .audio = "MP3"}, "first.avi");
        saved({.video = name, .audio = "MP3"}, "second.avi");
        EXPECT_TRUE(bytesOf(folder / "first.avi") == bytesOf(folder / "second.avi")) << name;
    }
}

TEST_F(SaveTest, StopsAtOnceAndLeavesWhatPlays)
{
    for (int i = 0; i < 40; ++i) {
        layBoth("h264.mp4", {i * 4000, (i + 1) * 4000, 0, 4000});
    }
    const auto save = EngineAs<engine::ITWSave>();
    ASSERT_TRUE(prepare({}, folder / "part.avi"));
    engine::Bool16 ok = engine::kFalse;
    std::int32_t positionMs = 0;
    std::int32_t durationMs = 0;
    check(save->StartSave(ok));
    EXPECT_EQ(ok, engine::kTrue);
    check(save->GetSaveDuration(durationMs));
    EXPECT_EQ(durationMs, 160000);
    while (positionMs < 2000) {
        check(save->GetSavePosition(positionMs));
    }
    check(save->StopSave(ok));
    check(save->StopSave(ok)); // a second one does nothing and is ok
    EXPECT_EQ(ok, engine::kTrue);
    std::int32_t state = 0;
    check(save->GetSaveState(state));
    EXPECT_NE(state, engine::save_state::kComplete);
    check(save->CloseSave());
    check(save->WaitForStopped(10000, ok));
    EXPECT_EQ(ok, engine::kTrue);
    const Movie movie = testmedia::readMovie(folder / "part.avi");
    EXPECT_GE(movie.frames.size(), 50u);
    EXPECT_LT(movie.frames.size(), 4000u);
    for (std::size_t i = 0; i < movie.frames.size(); ++i) {
        ASSERT_EQ(movie.frames[i].number, static_cast<int>(i % 100));
    }
}

TEST_F(SaveTest, APictureThatIsLongInTheEncoderHoldsUpNobody)
{
    // A save is stopped while such a picture is in hand, and another one takes its name meanwhile.
    layBoth("h264.mp4", {0, 4000, 0, 4000});
    const auto save = EngineAs<engine::ITWSave>();
    ASSERT_TRUE(prepare({.video = "Cinepak", .width = 480, .height = 272}, folder / "movie.avi"));
    std::filesystem::create_hard_link(folder / "movie.avi", folder / "old.avi");
    engine::Bool16 ok = engine::kFalse;
    check(save->StartSave(ok));
    for (std::int32_t positionMs = 0; positionMs == 0;) {
        check(save->GetSavePosition(positionMs));
    }
    check(save->StopSave(ok));
    check(save->CloseSave());
    check(save->WaitForStopped(0, ok));
    EXPECT_EQ(ok, engine::kFalse) << "the picture was waited for";
    EXPECT_EQ(saved({.rangeStart = 0, .rangeStop = 400}).numbers().size(), 10u);
    check(save->WaitForStopped(60000, ok));
    EXPECT_EQ(ok, engine::kTrue);
    EXPECT_EQ(testmedia::readMovie(folder / "movie.avi").numbers().size(), 10u) << "the old save wrote into it";
    EXPECT_GE(testmedia::readMovie(folder / "old.avi").frames.size(), 1u) << "left without its index";
}

TEST_F(SaveTest, RunsNothingThatIsNotPrepared)
{
    const auto save = EngineAs<engine::ITWSave>();
    EXPECT_FALSE(prepare({}, folder / "movie.avi")) << "an empty timeline";
    check(save->RunSaveToEnd());
    std::int32_t state = -1;
    check(save->GetSaveState(state));
    EXPECT_EQ(state, engine::save_state::kIdle);
    EXPECT_FALSE(std::filesystem::exists(folder / "movie.avi"));
}

TEST_F(SaveTest, LeavesOutDisabledTracksAndDrawsOverlaysAbove)
{
    layBoth("mjpeg.avi", {0, 1000, 0, 1000});
    lay(overlay, stream("still.png", true), {400, 800, 0, 400});
    EXPECT_EQ(saved({}).numbers()[12], 16) << "the still above";
    const auto timeline = EngineAs<engine::ITWTimeline>();
    check(timeline->SetTrackDisabled(overlay, engine::kTrue));
    EXPECT_EQ(saved({}).numbers()[12], 12);
    check(timeline->SetTrackDisabled(video, engine::kTrue));
    check(timeline->SetTrackDisabled(audio1, engine::kTrue));
    const Movie movie = saved({});
    EXPECT_EQ(movie.numbers(), std::vector<int>(25, kBlack));
    EXPECT_EQ(loudest(movie, 0, 1), 0);
}

TEST_F(SaveTest, RefusesWhatCannotBe)
{
    const auto save = EngineAs<engine::ITWSave>();
    EXPECT_FALSE(prepare({}, folder / "empty.avi")) << "an empty timeline";
    layBoth("mjpeg.avi", {0, 1000, 0, 1000});
    EXPECT_FALSE(prepare({.video = "No such compressor"}, folder / "none.avi"));
    SaveWords odd{.video = "H.264"};
    odd.width = 321;
    EXPECT_FALSE(prepare(odd, folder / "odd.avi")) << "an encoder that wants even sides";
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "nothing is made when nothing can be saved";
    EXPECT_THROW(prepare({}, folder / "missing" / "movie.avi"), engine::RuntimeError);
    std::ofstream(folder / "old.avi") << "precious";
    EXPECT_FALSE(prepare(odd, folder / "old.avi"));
    EXPECT_EQ(bytesOf(folder / "old.avi"), "precious");
    std::int32_t index = 0;
    engine::Bool16 can = engine::kTrue;
    check(save->SetVideoCompressor("Uncompressed"));
    check(save->GetVideoCompressorIndex(index));
    check(save->CanSetQuality(index, can));
    EXPECT_EQ(index, -1);
    EXPECT_EQ(can, engine::kFalse);
}
