// Windows Media files saved and read back: what the profile says, every frame by its number, every sound by its moment.

#include "engine/ITWProfiles.h"
#include "twcore/save/save_harness.h"

#include <cstdlib>

using namespace savetest;
using engine::ITWProfiles;
using testmedia::Movie;

namespace {

constexpr int kMovieMs = 2000;
constexpr int kMediaStartMs = 1000;

/// What a profile says, asked as the screens ask.
struct Profile {
    explicit Profile(std::int16_t systemIndex)
    {
        did(&ITWProfiles::OpenSystemProfile, systemIndex);
        std::string buffer(500, ' ');
        check(EngineAs<ITWProfiles>()->GetProfileName(buffer));
        name = trimmed(buffer);
        for (std::int16_t i = 0; i < told<std::int16_t>(&ITWProfiles::GetStreamCount); ++i) {
            EXPECT_TRUE(did(&ITWProfiles::SelectStream, i));
            if (told<std::int16_t>(&ITWProfiles::GetStreamType) == 0) {
                hasVideo = true;
                width = told<std::int16_t>(&ITWProfiles::GetVideoWidth);
                height = told<std::int16_t>(&ITWProfiles::GetVideoHeight);
                fps = told<std::int16_t>(&ITWProfiles::GetVideoFps);
                videoRate = told<std::int32_t>(&ITWProfiles::GetStreamBitRate);
            } else {
                hertz = told<std::int32_t>(&ITWProfiles::GetAudioSampleRate);
                channels = told<std::int16_t>(&ITWProfiles::GetAudioChannels);
                audioRate = told<std::int32_t>(&ITWProfiles::GetStreamBitRate);
            }
            check(EngineAs<ITWProfiles>()->CloseStream());
        }
        check(EngineAs<ITWProfiles>()->CloseProfile());
    }

    std::string name;
    bool hasVideo = false;
    int width = 0, height = 0, fps = 0, videoRate = 0, hertz = 0, channels = 0, audioRate = 0;
};

class WindowsMediaTest : public SaveTest {
protected:
    void SetUp() override
    {
        SaveTest::SetUp();
        ::setenv("QUILLMONT_PROFILES", folder.path().c_str(), 1);
    }
    void TearDown() override
    {
        ::unsetenv("QUILLMONT_PROFILES");
        SaveTest::TearDown();
    }

    /// Saves by a profile of the user's own. The rate of AVI movies is none of it.
    Movie savedOwn(const std::string& streams, int width = 0, int height = 0)
    {
        testmedia::writeBytes(folder / "own.xml",
                              "<quillmont-profile version=\"1\" name=\"Own\">" + streams + "</quillmont-profile>");
        return saved({.profile = "Own", .fps = 7, .width = width, .height = height}, "movie.wmv");
    }
};

const std::string kGood = "Video for broadband PAL (384 Kbps)";

} // namespace

TEST_F(WindowsMediaTest, WritesWhatEachSystemProfileSays)
{
    const auto count = told<std::int16_t>(&ITWProfiles::GetSystemProfileCount);
    ASSERT_GE(count, 12);
    for (std::int16_t i = 0; i < count; ++i) {
        SetUp();
        const Profile profile(i);
        SCOPED_TRACE(profile.name);
        const Place place{0, kMovieMs, kMediaStartMs, kMediaStartMs + kMovieMs};
        lay(audio1, stream(profile.channels == 1 ? "mono-8k-u8.wav" : "mjpeg.avi", false), place);
        if (profile.hasVideo) {
            lay(video, stream("mjpeg.avi", true), place);
        }
        const Movie movie = saved({.profile = profile.name, .fps = 7}, "movie.wmv");
        EXPECT_EQ(movie.format, "asf");
        EXPECT_EQ(movie.decodeErrors, 0);
        EXPECT_EQ(movie.soundCodec, "wmav2");
        EXPECT_EQ(movie.rateHz, profile.hertz);
        EXPECT_EQ(movie.channels, profile.channels);
        EXPECT_EQ(movie.soundBitRate, profile.audioRate);
        EXPECT_EQ(movie.soundStartSeconds, 0);
        EXPECT_LT(movie.largestGapSeconds, 0.001);
        EXPECT_GE(movie.soundSeconds(), kMovieMs / 1000.0);
        EXPECT_LT(movie.soundSeconds(), kMovieMs / 1000.0 + 0.2);
        for (const double at : {0.0, 0.3, 1.0, 1.7}) {
            expectShift(movie, at, kMediaStartMs / 1000.0);
        }
        if (!profile.hasVideo) {
            EXPECT_TRUE(movie.videoCodec.empty());
            continue;
        }
        const double fps = profile.fps == 30 ? 30000.0 / 1001 : profile.fps;
        EXPECT_EQ(movie.videoCodec, "wmv2");
        EXPECT_EQ(movie.codedWidthPx, profile.width);
        EXPECT_EQ(movie.codedHeightPx, profile.height);
        EXPECT_NEAR(movie.frameRate, fps, 0.01);
        EXPECT_EQ(numbersOf(movie), expectedNumbers({place}, fps, 0, kMovieMs));
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
        const Movie movie = savedOwn(streams, width, height);
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
        savedOwn(picture + sound);
        return std::filesystem::file_size(folder / "movie.wmv");
    };
    EXPECT_LT(2 * bytesAt("<video quality=\"20\"/>"), bytesAt("<video quality=\"95\"/>"));
    EXPECT_LT(bytesAt("<video bitrate=\"5000000\" quality=\"40\"/>"), bytesAt("<video bitrate=\"5000000\"/>"))
        << "no picture is finer than the quality, however many bits are left";
}

TEST_F(WindowsMediaTest, RefusesWhatNoProfileSays)
{
    const auto path = folder / "old.wmv";
    testmedia::writeBytes(path, "precious");
    EXPECT_FALSE(prepare({.profile = kGood}, path)) << "an empty timeline";
    layBoth("mjpeg.avi", {0, 1000, 0, 1000});
    const std::string ofSound = "Audio for CD-quality (96 Kbps stereo)";
    EXPECT_FALSE(prepare({.profile = "No such profile"}, path));
    EXPECT_FALSE(prepare({.profile = ofSound}, path)) << "no picture in it";
    EXPECT_FALSE(prepare({.profile = kGood, .soundRate = 96000}, path)) << "a rate that the encoder does not have";
    EXPECT_EQ(bytesOf(path), "precious");
    EXPECT_THROW(prepare({.profile = kGood, .soundRate = 48000}, folder / "missing" / "movie.wmv"),
                 engine::RuntimeError);
    EXPECT_TRUE(prepare({.profile = kGood}, path));

    std::string name(260, 'x');
    check(EngineAs<ITWSave>()->GetVideoProfile(name));
    EXPECT_EQ(trimmed(name), kGood);
    check(EngineAs<ITWSave>()->ResetSave());
    check(EngineAs<ITWSave>()->GetAudioProfile(name));
    EXPECT_EQ(trimmed(name), ofSound);
}
