// Movies saved and read back: every frame by its number, every sound by its moment.

#include "twcore/save/save_harness.h"

#include <sched.h>

using namespace savetest;
using testmedia::Movie;

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
        EXPECT_EQ(loudest(movie.soundView(0, 1.2, 0.4)), 0) << "the gap is silent";
        const Movie source = testmedia::readMovie(testmedia::mediaFolder() / name);
        const double first = source.frames.front().seconds;
        const double pictureLate = source.format == "avi" ? 0 : first - std::min(first, source.soundStartSeconds);
        EXPECT_EQ(numbersOf(movie), expectedNumbers(kCuts, 25, 0, 4000, pictureLate * 1000));
        for (const auto& place : kCuts) {
            expectShift(movie, place.start / 1000.0 + 0.02,
                        (place.mediaStart - place.start) / 1000.0 + entry.noteNumber("sound-lag") - pictureLate);
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
        EXPECT_EQ(numbersOf(movie), expectedNumbers({place}, 25, 0, place.stop));
        if (silent) {
            EXPECT_EQ(loudest(movie.soundView(0, 0, 0.2)), 0);
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
            const int from = stop < 0 ? 0 : start;
            const int to = stop < 0 ? 4000 : stop;
            const Movie movie = saved({.fps = fps, .rangeStart = start, .rangeStop = stop, .soundRate = 44100});
            EXPECT_EQ(numbersOf(movie), expectedNumbers({{0, 4000, 0, 4000}}, fps, from, to));
            EXPECT_EQ(movie.rateHz, 44100);
            EXPECT_EQ(movie.soundCount(), static_cast<std::size_t>(std::lround((to - from) * 44.1)));
            EXPECT_NEAR(*movie.soundShift(0, 0.1, 4), from / 1000.0, 0.0002);
        }
    }
}

namespace {

/// As on a machine with a single core: one worker makes all.
class OneCore {
public:
    OneCore()
    {
        ::sched_getaffinity(0, sizeof all_, &all_);
        cpu_set_t one;
        CPU_ZERO(&one);
        for (int i = 0; i < CPU_SETSIZE && CPU_COUNT(&one) == 0; ++i) {
            if (CPU_ISSET(i, &all_)) {
                CPU_SET(i, &one);
            }
        }
        ::sched_setaffinity(0, sizeof one, &one);
    }
    ~OneCore() { ::sched_setaffinity(0, sizeof all_, &all_); }
    OneCore(const OneCore&) = delete;
    OneCore& operator=(const OneCore&) = delete;

private:
    cpu_set_t all_{};
};

} // namespace

TEST_F(SaveTest, GivesTheSameBytesWhoeverMakesThem)
{
    for (const auto& place : kCuts) {
        layBoth("h264.mp4", place);
    }
    const std::string profile = "Video for broadband PAL (384 Kbps)";
    for (const SaveWords& words : {SaveWords{.audio = "MP3"},
                                   {.video = "MPEG-4", .audio = "MP3"},
                                   {.video = "H.264", .audio = "MP3"},
                                   {.video = "FFV1", .audio = "MP3"},
                                   {.profile = profile}}) {
        const Movie movie = saved(words, "first.movie");
        const OneCore one;
        saved(words, "second.movie");
        EXPECT_TRUE(bytesOf(folder / "first.movie") == bytesOf(folder / "second.movie")) << words.video;
        EXPECT_EQ(numbersOf(movie), expectedNumbers(kCuts, 25, 0, 4000)) << words.video;
        expectShift(movie, 0.3, 1);
        expectShift(movie, 3.3, -1.583);
    }
}

TEST_F(SaveTest, WhatIsMadeAheadOfItsTurnStandsInItsPlace)
{
    // Three that go back in a group of ten seconds, and one of the next.
    const std::vector<Place> turned{
        {0, 1000, 6000, 7000}, {1000, 2000, 4000, 5000}, {2000, 3000, 2000, 3000}, {3000, 3600, 10200, 10800}};
    for (const auto& place : turned) {
        lay(video, stream("long-gop.mp4", true), place);
    }
    for (const char* compressor : {"Motion JPEG", "MPEG-4", "Windows Media Video 8"}) {
        EXPECT_EQ(numbersOf(saved({.video = compressor})), expectedNumbers(turned, 25, 0, 3600)) << compressor;
        const OneCore one;
        EXPECT_EQ(numbersOf(saved({.video = compressor})), expectedNumbers(turned, 25, 0, 3600)) << compressor;
    }
}

TEST_F(SaveTest, StopsAtOnceAndLeavesWhatPlays)
{
    for (const std::string profile : {"", "Video for broadband PAL (700 Kbps)"}) {
        SCOPED_TRACE(profile);
        SetUp();
        for (int i = 0; i < 60; ++i) {
            layBoth("mjpeg.avi", {i * 4000, (i + 1) * 4000, 0, 4000});
        }
        ASSERT_TRUE(prepare({.profile = profile}, folder / "part"));
        EXPECT_TRUE(did(&ITWSave::StartSave));
        EXPECT_EQ(told<std::int32_t>(&ITWSave::GetSaveDuration), 240000);
        while (told<std::int32_t>(&ITWSave::GetSavePosition) < 2000) {
        }
        EXPECT_TRUE(did(&ITWSave::StopSave));
        EXPECT_TRUE(did(&ITWSave::StopSave)) << "a second one does nothing";
        EXPECT_NE(told<std::int32_t>(&ITWSave::GetSaveState), engine::save_state::kComplete);
        check(EngineAs<ITWSave>()->CloseSave());
        EXPECT_TRUE(did(&ITWSave::WaitForStopped, 10000));
        const Movie movie = testmedia::readMovie(folder / "part");
        EXPECT_GE(movie.frames.size(), 50u);
        EXPECT_LT(movie.frames.size(), 6000u);
        EXPECT_NEAR(movie.durationSeconds, static_cast<double>(movie.frames.size()) / 25, 0.3);
        for (std::size_t i = 0; i < movie.frames.size(); ++i) {
            ASSERT_EQ(movie.frames[i].number, static_cast<int>(i % 100));
        }
    }
}

TEST_F(SaveTest, APictureThatIsLongInTheEncoderHoldsUpNobody)
{
    // A save is stopped while such a picture is in hand, and another one takes its name meanwhile.
    layBoth("h264.mp4", {0, 4000, 0, 4000});
    bool isInHand = false;
    for (int attempt = 0; attempt < 5 && !isInHand; ++attempt) { // on a busy machine it may be done by chance
        std::filesystem::remove(folder / "movie.avi");
        std::filesystem::remove(folder / "old.avi");
        ASSERT_TRUE(prepare({.video = "Cinepak", .width = 480, .height = 272}, folder / "movie.avi"));
        std::filesystem::create_hard_link(folder / "movie.avi", folder / "old.avi");
        did(&ITWSave::StartSave);
        while (told<std::int32_t>(&ITWSave::GetSavePosition) == 0) {
        }
        did(&ITWSave::StopSave);
        check(EngineAs<ITWSave>()->CloseSave());
        isInHand = !did(&ITWSave::WaitForStopped, 0);
    }
    EXPECT_TRUE(isInHand) << "the picture was waited for";
    EXPECT_EQ(saved({.rangeStart = 0, .rangeStop = 400}).numbers().size(), 10u);
    EXPECT_TRUE(did(&ITWSave::WaitForStopped, 60000));
    EXPECT_EQ(testmedia::readMovie(folder / "movie.avi").numbers().size(), 10u) << "the old save wrote into it";
    EXPECT_GE(testmedia::readMovie(folder / "old.avi").frames.size(), 1u) << "left without its index";
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
    EXPECT_EQ(movie.numbers(), std::vector<int>(25, -1));
    EXPECT_EQ(loudest(movie.soundView(0, 0, 1)), 0);
}

TEST_F(SaveTest, RefusesWhatCannotBe)
{
    EXPECT_FALSE(prepare({}, folder / "empty.avi")) << "an empty timeline";
    check(EngineAs<ITWSave>()->RunSaveToEnd());
    EXPECT_EQ(told<std::int32_t>(&ITWSave::GetSaveState), engine::save_state::kIdle) << "it ran unprepared";
    layBoth("mjpeg.avi", {0, 1000, 0, 1000});
    EXPECT_FALSE(prepare({.video = "No such compressor"}, folder / "none.avi"));
    const SaveWords odd{.video = "H.264", .width = 321};
    EXPECT_FALSE(prepare(odd, folder / "odd.avi")) << "an encoder that wants even sides";
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "nothing is made when nothing can be saved";
    EXPECT_THROW(prepare({}, folder / "missing" / "movie.avi"), engine::RuntimeError);
    testmedia::writeBytes(folder / "old.avi", "precious");
    EXPECT_FALSE(prepare(odd, folder / "old.avi"));
    EXPECT_EQ(bytesOf(folder / "old.avi"), "precious");
    check(EngineAs<ITWSave>()->SetVideoCompressor("Uncompressed"));
    EXPECT_EQ(told<std::int32_t>(&ITWSave::GetVideoCompressorIndex), -1);
    EXPECT_FALSE(did(&ITWSave::CanSetQuality, -1));
}
