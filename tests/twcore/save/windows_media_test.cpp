// Windows Media files saved and read back: what the profile says, every frame by its number, every sound by its moment.

#include "engine/ITWProfiles.h"
#include "twcore/save/save_harness.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>

using namespace savetest;
using testmedia::Movie;

namespace {

constexpr int kMovieMs = 2000;
constexpr int kMediaStartMs = 1000;

std::string trimmed(std::string text)
{
    text.erase(text.find_last_not_of(' ') + 1);
    if (!text.empty()) {
        text.pop_back(); // the terminator
    }
    return text;
}

std::string bytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What a profile says, asked as the screens ask.
struct Told {
    std::string name;
    bool hasVideo = false;
    std::int16_t width = 0;
    std::int16_t height = 0;
    std::int16_t fps = 0;
    std::int32_t videoRate = 0;
    std::int32_t audioRate = 0;
    std::int32_t hertz = 0;
    std::int16_t channels = 0;
};

Told told(std::int16_t systemIndex)
{
    const auto profiles = EngineAs<engine::ITWProfiles>();
    Told all;
    engine::Bool16 ok = engine::kFalse;
    std::int16_t count = 0;
    check(profiles->OpenSystemProfile(systemIndex, ok));
    std::string name(500, ' ');
    check(profiles->GetProfileName(name));
    all.name = trimmed(name);
    check(profiles->GetStreamCount(count));
    for (std::int16_t i = 0; i < count; ++i) {
        std::int16_t type = -1;
        check(profiles->SelectStream(i, ok));
        EXPECT_EQ(ok, engine::kTrue);
        check(profiles->GetStreamType(type));
        if (type == 0) {
            all.hasVideo = true;
            check(profiles->GetVideoWidth(all.width));
            check(profiles->GetVideoHeight(all.height));
            check(profiles->GetVideoFps(all.fps));
            check(profiles->GetStreamBitRate(all.videoRate));
        } else {
            check(profiles->GetAudioSampleRate(all.hertz));
            check(profiles->GetAudioChannels(all.channels));
            check(profiles->GetStreamBitRate(all.audioRate));
        }
        check(profiles->CloseStream());
    }
    check(profiles->CloseProfile());
    return all;
}

std::vector<int> numbersAt(double fps, int mediaStartMs, int lengthMs)
{
    std::vector<int> numbers;
    for (int n = 0; n < static_cast<int>(std::ceil(lengthMs * fps / 1000 - 1e-9)); ++n) {
        numbers.push_back(static_cast<int>(std::floor((mediaStartMs + n * 1000 / fps) / 40 + 1e-6)));
    }
    return numbers;
}

class WindowsMediaTest : public SaveTest {
protected:
    void SetUp() override
    {
        SaveTest::SetUp();
        ::setenv("QUILLMONT_PROFILES", folder.c_str(), 1);
    }
    void TearDown() override
    {
        ::unsetenv("QUILLMONT_PROFILES");
        SaveTest::TearDown();
    }

    /// A profile of the user's own, and its name.
    std::string profile(const std::string& streams)
    {
        std::ofstream(folder / "own.xml")
            << "<quillmont-profile version=\"1\" name=\"Own\">" << streams << "</quillmont-profile>";
        return "Own";
    }

    bool prepareProfile(const std::string& name, const std::filesystem::path& path, int width = 0, int height = 0)
    {
        const auto save = EngineAs<engine::ITWSave>();
        engine::Bool16 ok = engine::kFalse;
        check(save->ResetSave());
        check(save->SetVideoProfile(name));
        check(save->SetAudioProfile(name));
        check(save->SetFrameRate(7)); // of AVI movies
        check(save->SetWindowsMediaVideoSize(static_cast<std::int16_t>(width), static_cast<std::int16_t>(height)));
        for (const Handle track : {video, audio1}) {
            std::int16_t count = 0;
            check(EngineAs<engine::ITWTimeline>()->GetSourceCount(track, count));
            if (count > 0) {
                check(save->AddSaveTrack(track, ok));
            }
        }
        check(save->PrepareWindowsMediaFile(path.string(), ok));
        return ok != engine::kFalse;
    }

    Movie savedProfile(const std::string& name, int width = 0, int height = 0, const std::string& file = "movie.wmv")
    {
        const auto save = EngineAs<engine::ITWSave>();
        EXPECT_TRUE(prepareProfile(name, folder / file, width, height)) << name;
        check(save->RunSaveToEnd());
        std::int32_t state = 0;
        check(save->GetSaveState(state));
        EXPECT_EQ(state, engine::save_state::kComplete);
        check(save->CloseSave());
        return testmedia::readMovie(folder / file);
    }

    void expectSoundInStep(const Movie& movie, double seconds, double shift, int channels)
    {
        EXPECT_EQ(movie.soundStartSeconds, 0);
        EXPECT_LT(movie.largestGapSeconds, 0.001);
        EXPECT_GE(movie.soundSeconds(), seconds);
        EXPECT_LT(movie.soundSeconds(), seconds + 0.2);
        for (const double at : {0.0, 0.3, seconds / 2, seconds - 0.3}) {
            const auto found = movie.soundShift(0, at, 1.5);
            ASSERT_TRUE(found) << at << " of " << channels;
            EXPECT_NEAR(*found, shift, 0.001) << at;
        }
    }
};

} // namespace

TEST_F(WindowsMediaTest, WritesWhatEachSystemProfileSays)
{
    std::int16_t count = 0;
    check(EngineAs<engine::ITWProfiles>()->GetSystemProfileCount(count));
    ASSERT_GE(count, 12);
    for (std::int16_t i = 0; i < count; ++i) {
        SetUp();
        const Told profile = told(i);
        SCOPED_TRACE(profile.name);
        const Place place{0, kMovieMs, kMediaStartMs, kMediaStartMs + kMovieMs};
        lay(audio1, stream(profile.channels == 1 ? "mono-8k-u8.wav" : "mjpeg.avi", false), place);
        if (profile.hasVideo) {
            lay(video, stream("mjpeg.avi", true), place);
        }
        const Movie movie = savedProfile(profile.name);
        EXPECT_EQ(movie.format, "asf");
        EXPECT_EQ(movie.decodeErrors, 0);
        EXPECT_EQ(movie.soundCodec, "wmav2");
        EXPECT_EQ(movie.rateHz, profile.hertz);
        EXPECT_EQ(movie.channels, profile.channels);
        EXPECT_EQ(movie.soundBitRate, profile.audioRate);
        expectSoundInStep(movie, kMovieMs / 1000.0, kMediaStartMs / 1000.0, profile.channels);
        if (!profile.hasVideo) {
            EXPECT_TRUE(movie.videoCodec.empty());
            continue;
        }
        const double fps = profile.fps == 30 ? 30000.0 / 1001 : profile.fps;
        EXPECT_EQ(movie.videoCodec, "wmv2");
        EXPECT_EQ(movie.codedWidthPx, profile.width);
        EXPECT_EQ(movie.codedHeightPx, profile.height);
        EXPECT_NEAR(movie.frameRate, fps, 0.01);
        EXPECT_EQ(testing::PrintToString(movie.numbers()),
                  testing::PrintToString(numbersAt(fps, kMediaStartMs, kMovieMs)));
        for (std::size_t n = 0; n < movie.frames.size(); ++n) {
            ASSERT_NEAR(movie.frames[n].seconds, static_cast<double>(n) / fps, 0.00051) << n;
        }
        // Three seconds of the rate may be spent ahead.
        const double most = (profile.videoRate * (kMovieMs / 1000.0 + 3) + profile.audioRate * 2.3) / 8 + 40000;
        EXPECT_LT(static_cast<double>(std::filesystem::file_size(folder / "movie.wmv")), most);
    }
}

TEST_F(WindowsMediaTest, TakesSizeRateQualityAndKeyFramesFromTheProfileOfTheUser)
{
    struct Case {
        std::string streams;
        int width;
        int height;
        int expectedWidth;
        int expectedHeight;
        double fps;
        int keyEvery;
        bool hasSound;
    };
    const std::string sound = "<audio rate=\"32000\" channels=\"1\" bitrate=\"32000\"/>";
    for (const auto& [streams, width, height, expectedWidth, expectedHeight, fps, keyEvery, hasSound] : {
             Case{"<video/>" + sound, 0, 0, 640, 480, 30000.0 / 1001, 240, true}, // the timeline's frame and rate
             Case{"<video width=\"320\" height=\"180\" fps=\"12\" key-frame-seconds=\"1\"/>" + sound, 0, 0, 320, 180,
                  12, 12, true},
             Case{"<video width=\"320\" height=\"180\" fps=\"24000/1001\" key-frame-seconds=\"2\"/>", 403, 303, 402,
                  302, 24000.0 / 1001, 48, false},
         }) {
        SCOPED_TRACE(streams);
        SetUp();
        check(EngineAs<engine::ITWTimeline>()->SetFrameSize(640, 480));
        layBoth("30p.mp4", {0, 4000, 0, 4000});
        const Movie movie = savedProfile(profile(streams), width, height);
        EXPECT_EQ(movie.codedWidthPx, expectedWidth);
        EXPECT_EQ(movie.codedHeightPx, expectedHeight);
        EXPECT_NEAR(movie.frameRate, fps, 0.02);
        ASSERT_EQ(movie.frames.size(), static_cast<std::size_t>(std::ceil(4 * fps - 1e-9)));
        for (std::size_t n = 0; n < movie.frames.size(); ++n) {
            const double shown = std::floor(static_cast<double>(n) / fps * 30000 / 1001 + 1e-6);
            ASSERT_EQ(movie.frames[n].number, static_cast<int>(shown)) << n;
            ASSERT_EQ(movie.frames[n].keyFrame, n % static_cast<std::size_t>(keyEvery) == 0) << n;
        }
        EXPECT_EQ(movie.soundCodec.empty(), !hasSound);
    }
    const auto bytesAt = [&](const std::string& picture) {
        savedProfile(profile(picture + sound));
        return std::filesystem::file_size(folder / "movie.wmv");
    };
    EXPECT_LT(2 * bytesAt("<video quality=\"20\"/>"), bytesAt("<video quality=\"95\"/>"));
    EXPECT_LT(bytesAt("<video bitrate=\"5000000\" quality=\"40\"/>"), bytesAt("<video bitrate=\"5000000\"/>"))
        << "no picture is finer than the quality, however many bits are left";
}

TEST_F(WindowsMediaTest, ShowsCutsExactlyAndGivesTheSameBytesTwice)
{
    for (const auto& place : {Place{0, 1200, 1000, 2200}, {1600, 2600, 500, 1500}, {2600, 4000, 1040, 2440}}) {
        layBoth("h264.mp4", place);
    }
    const std::string name = "Video for broadband PAL (384 Kbps)";
    const Movie movie = savedProfile(name, 0, 0, "first.wmv");
    savedProfile(name, 0, 0, "second.wmv");
    EXPECT_TRUE(bytesOf(folder / "first.wmv") == bytesOf(folder / "second.wmv"));
    for (int n = 0; n < 100; ++n) {
        const int expected = n < 30 ? n + 25 : n < 40 ? -1 : n < 65 ? n - 40 + 12 : n - 65 + 26;
        ASSERT_EQ(movie.numbers()[static_cast<std::size_t>(n)], expected) << n;
    }
    EXPECT_NEAR(*movie.soundShift(0, 0.3, 3), 1.0, 0.001);
    EXPECT_NEAR(*movie.soundShift(0, 3.3, 3), -1.56, 0.001);
}

TEST_F(WindowsMediaTest, RefusesWhatNoProfileSays)
{
    const auto path = folder / "old.wmv";
    std::ofstream(path) << "precious";
    const std::string good = "Video for broadband PAL (384 Kbps)";
    EXPECT_FALSE(prepareProfile(good, path)) << "an empty timeline";
    layBoth("mjpeg.avi", {0, 1000, 0, 1000});
    EXPECT_FALSE(prepareProfile("No such profile", path));
    EXPECT_FALSE(prepareProfile("Audio for CD-quality (96 Kbps stereo)", path)) << "no picture in it";
    EXPECT_TRUE(EngineAs<twcore::EngineOptions>()->setSoundRate(96000));
    EXPECT_FALSE(prepareProfile(good, path)) << "a rate that the encoder does not have";
    EXPECT_TRUE(EngineAs<twcore::EngineOptions>()->setSoundRate(48000));
    EXPECT_TRUE(bytesOf(path) == "precious");
    EXPECT_THROW(prepareProfile(good, folder / "missing" / "movie.wmv"), engine::RuntimeError);
    EXPECT_TRUE(prepareProfile(good, path));

    std::string name(260, 'x');
    check(EngineAs<engine::ITWSave>()->GetVideoProfile(name));
    EXPECT_EQ(trimmed(name), good);
    check(EngineAs<engine::ITWSave>()->ResetSave());
    check(EngineAs<engine::ITWSave>()->GetAudioProfile(name));
    EXPECT_EQ(trimmed(name), "Audio for CD-quality (96 Kbps stereo)");
}

TEST_F(WindowsMediaTest, StopsAtOnceAndLeavesWhatPlays)
{
    for (int i = 0; i < 60; ++i) {
        layBoth("mjpeg.avi", {i * 4000, (i + 1) * 4000, 0, 4000});
    }
    const auto save = EngineAs<engine::ITWSave>();
    ASSERT_TRUE(prepareProfile("Video for broadband PAL (700 Kbps)", folder / "part.wmv"));
    engine::Bool16 ok = engine::kFalse;
    std::int32_t positionMs = 0;
    check(save->StartSave(ok));
    while (positionMs < 2000) {
        check(save->GetSavePosition(positionMs));
    }
    check(save->StopSave(ok));
    check(save->StopSave(ok));
    EXPECT_EQ(ok, engine::kTrue);
    std::int32_t state = 0;
    check(save->GetSaveState(state));
    EXPECT_NE(state, engine::save_state::kComplete);
    check(save->CloseSave());
    check(save->WaitForStopped(10000, ok));
    const Movie movie = testmedia::readMovie(folder / "part.wmv");
    EXPECT_GE(movie.frames.size(), 50u);
    EXPECT_LT(movie.frames.size(), 6000u);
    EXPECT_NEAR(movie.durationSeconds, static_cast<double>(movie.frames.size()) / 25, 0.3);
    for (std::size_t i = 0; i < movie.frames.size(); ++i) {
        ASSERT_EQ(movie.frames[i].number, static_cast<int>(i % 100));
    }
}
