// Captures written from devices that are played by the test: their clocks run as it likes, and faster than time.

#include "engine/status.h"
#include "support/files.h"
#include "support/movie_reader.h"
#include "support/patterns.h"
#include "twcore/capture/capture_recorder.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <thread>

using namespace twcore;

namespace {

constexpr int kWidth = 160, kHeight = 120;

SharedFrame numbered(int number)
{
    std::vector<std::uint8_t> grey(kWidth * kHeight);
    testmedia::drawBarcode({grey.data(), kWidth, kWidth, kHeight, testmedia::PixelLayout::gray8}, number);
    FramePtr frame = makeFrame();
    frame->format = AV_PIX_FMT_GRAY8;
    frame->width = kWidth;
    frame->height = kHeight;
    frame->color_range = AVCOL_RANGE_JPEG;
    EXPECT_GE(av_frame_get_buffer(frame.get(), 0), 0);
    for (int y = 0; y < kHeight; ++y) {
        std::copy_n(grey.begin() + y * kWidth, kWidth, frame->data[0] + std::ptrdiff_t{y} * frame->linesize[0]);
    }
    return shareFrame(std::move(frame));
}

/// A camera whose picture k shows k, and a microphone that hears the sound pattern of true time. Shares are how much
/// quicker than told each runs.
struct Devices {
    double seconds = 10;
    double fps = 30;
    int rate = 8000;
    double cameraShare = 0;
    double microphoneShare = 0;
    double silentFrom = -1; // the microphone gives nothing in between
    double silentTo = -1;
    int lostFrom = -1; // pictures that the camera loses
    int lostTo = -1;
    bool isNumber = true; // what the microphone hears

    double pictureTime(int number) const { return number / (fps * (1 + cameraShare)); }

    void play(CaptureRecorder& recorder) const
    {
        constexpr CaptureTime kStart = 5'000'000'000;
        constexpr int kBlock = 160;
        std::mt19937 dice(7);
        std::uniform_real_distribution<double> late(0, 0.004);
        const auto stamp = [&](double at) { return kStart + std::llround((at + late(dice)) * kCaptureSecond); };
        const SharedFrame plain = numbered(0);
        std::int64_t sample = 0;
        for (int number = 0; pictureTime(number) < seconds; ++number) {
            const double at = pictureTime(number);
            if (number < lostFrom || number >= lostTo) {
                recorder.picture(isMarked(at) ? numbered(number) : plain, stamp(at));
            }
            for (double heard = 0; (heard = double(sample) / (rate * (1 + microphoneShare))) < at; sample += kBlock) {
                if (heard >= silentFrom && heard < silentTo) {
                    continue;
                }
                std::vector<float> block(kBlock * 2);
                for (int i = 0; i < kBlock && (isMarked(heard) || isMarked(heard + 0.02)); ++i) {
                    const double moment = double(sample + i) / (rate * (1 + microphoneShare));
                    for (int c = 0; c < 2; ++c) {
                        block[std::size_t(2 * i + c)] =
                            isNumber ? static_cast<float>(testmedia::soundAtTime(moment, c)) : NAN;
                    }
                }
                recorder.sound(std::move(block), stamp(heard));
            }
            while (recorder.waiting() > 40) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        }
    }

    /// Patterns are drawn where the test looks: in a few seconds at the start, about every hundred, and at the end.
    bool isMarked(double at) const { return seconds < 60 || std::fmod(at, 100) < 3 || at > seconds - 6; }
};

CaptureOrder orderFor(const std::filesystem::path& path, const Devices& devices, SyncMaster master)
{
    CaptureOrder order;
    order.path = path.string();
    order.picture.emplace();
    order.picture->compressor = videoCompressors()[std::size_t(videoCompressorIndex("Motion JPEG"))];
    order.picture->size = {kWidth, kHeight};
    order.picture->fps = {static_cast<int>(devices.fps), 1};
    order.deviceRate = order.soundRate = devices.rate;
    order.master = master;
    return order;
}

struct Captured {
    testmedia::Movie movie;
    int captured = 0;
    int dropped = 0;
};

Captured capture(const Devices& devices, CaptureOrder order)
{
    WriteError error;
    const auto recorder = CaptureRecorder::prepare(order, error);
    EXPECT_TRUE(recorder) << error.text;
    recorder->start();
    devices.play(*recorder);
    EXPECT_TRUE(recorder->finish(std::chrono::seconds(30)));
    EXPECT_FALSE(recorder->hasFailed()) << recorder->error().text;
    return {testmedia::readMovie(order.path), recorder->captured(), recorder->dropped()};
}

/// By how much the sound is ahead of the picture about a movie time, in true time; NaN when either cannot be read.
double offsetAt(const Captured& made, const Devices& devices, double seconds)
{
    for (const auto& frame : made.movie.frames) {
        if (frame.seconds >= seconds && frame.number && *frame.number > 0) {
            const auto shift = made.movie.soundShift(0, frame.seconds, 1.5);
            return shift ? frame.seconds + *shift - devices.pictureTime(*frame.number) : std::nan("");
        }
    }
    return std::nan("");
}

} // namespace

TEST(CaptureSync, PictureAndSoundStayTogetherForTenMinutesWhileTheirClocksDrift)
{
    const testmedia::TempFolder folder;
    const Devices devices{.seconds = 600, .cameraShare = -0.0002, .microphoneShare = 0.0005};
    for (const auto master : {SyncMaster::kSound, SyncMaster::kPicture}) {
        const auto made = capture(devices, orderFor(folder / "long.avi", devices, master));
        for (const double at : {0.5, 101.0, 301.0, 595.0, 598.5}) {
            EXPECT_NEAR(offsetAt(made, devices, at), 0, 0.03) << int(master) << " at " << at;
        }
        EXPECT_LE(made.dropped, master == SyncMaster::kSound ? 15 : 0); // seven ten-thousandths of the pictures
        RecordProperty(master == SyncMaster::kSound ? "sound" : "picture",
                       std::to_string(offsetAt(made, devices, 598.5)));
    }
    const auto loose = capture(devices, orderFor(folder / "loose.avi", devices, SyncMaster::kNone));
    EXPECT_GT(std::abs(offsetAt(loose, devices, 598.5)), 0.2);
}

TEST(CaptureSync, WhatADeviceLosesStaysAHole)
{
    const testmedia::TempFolder folder;
    const Devices devices{.silentFrom = 3, .silentTo = 5.5, .lostFrom = 200, .lostTo = 230};
    for (const auto master : {SyncMaster::kSound, SyncMaster::kPicture, SyncMaster::kNone}) {
        const auto made = capture(devices, orderFor(folder / "holes.avi", devices, master));
        for (const double at : {1.0, 6.2, 9.0}) {
            EXPECT_NEAR(offsetAt(made, devices, at), 0, 0.03) << int(master) << " at " << at;
        }
        EXPECT_LT(testmedia::loudest(made.movie.soundView(0, 3.5, 1.5)), 0.001f);
        EXPECT_NEAR(made.movie.soundSeconds(), 10, 0.1);
        EXPECT_NEAR(made.movie.frames.back().seconds, 10, 0.1);
        EXPECT_EQ(made.captured, 270);
        EXPECT_EQ(made.dropped, 0);
    }
}

TEST(CaptureRecorder, WindowsMediaTakesLateSoundAndAnEncoderWithADelay)
{
    const testmedia::TempFolder folder;
    const Devices devices{.rate = 44100, .silentFrom = 2, .silentTo = 4.2};
    auto order = orderFor(folder / "made.asf", devices, SyncMaster::kSound);
    order.format = MovieFormat::kWindowsMedia;
    order.picture->compressor = windowsMediaVideo();
    order.picture->bitRate = 1'000'000;
    order.audioCompressor = windowsMediaAudio(128'000, 2);
    order.cameraRate = order.picture->fps;
    for (const int fps : {30, 15}) { // what a quicker camera gives in between is not wanted, and so not lost
        order.picture->fps = {fps, 1};
        const auto made = capture(devices, order);
        EXPECT_NEAR(made.captured, fps * 10, 1);
        EXPECT_EQ(made.dropped, 0);
        for (const double at : {1.0, 5.5, 9.0}) {
            EXPECT_NEAR(offsetAt(made, devices, at), 0, 0.05) << at;
        }
    }
}

TEST(CaptureRecorder, ASlowCompressorDropsCountsAndEndsInTime)
{
    const testmedia::TempFolder folder;
    const Devices devices{.seconds = 20};
    auto order = orderFor(folder / "slow.avi", devices, SyncMaster::kSound);
    order.picture->compressor = videoCompressors()[std::size_t(videoCompressorIndex("Cinepak"))];
    WriteError error;
    const auto recorder = CaptureRecorder::prepare(order, error);
    ASSERT_TRUE(recorder) << error.text;
    recorder->start();
    for (int number = 0; number < 600; ++number) { // as quick as it goes
        recorder->sound(std::vector<float>(800 * 2), 1000 + kCaptureSecond * number / 10);
        recorder->picture(numbered(number), 1000 + kCaptureSecond * number / 10);
    }
    const auto before = std::chrono::steady_clock::now();
    ASSERT_TRUE(recorder->finish(std::chrono::milliseconds(300)));
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(3));
    EXPECT_EQ(recorder->captured() + recorder->dropped(), 600);
    EXPECT_GT(recorder->dropped(), 100);
    const auto movie = testmedia::readMovie(order.path);
    for (const auto& frame : movie.frames) { // each where it was taken
        ASSERT_TRUE(frame.number);
        EXPECT_NEAR(frame.seconds, *frame.number / 10.0, 0.04);
    }
}

TEST(CaptureRecorder, ACameraThatGivesNothingCostsNoSound)
{
    const testmedia::TempFolder folder;
    for (const double seconds : {1.0, 10.0}) {
        const Devices devices{.seconds = seconds, .rate = 48000, .lostFrom = 0, .lostTo = 1000};
        const auto made = capture(devices, orderFor(folder / "blind.avi", devices, SyncMaster::kSound));
        EXPECT_NEAR(made.movie.soundSeconds(), seconds, 0.1);
    }
}

TEST(CaptureRecorder, SoundThatIsNoNumberIsSilence)
{
    const testmedia::TempFolder folder;
    const Devices devices{.seconds = 1, .rate = 48000, .isNumber = false};
    auto order = orderFor(folder / "none.avi", devices, SyncMaster::kSound);
    order.audioCompressor = audioCompressors()[std::size_t(audioCompressorIndex("MP3"))];
    EXPECT_NEAR(capture(devices, order).movie.soundSeconds(), 1, 0.2);
}

TEST(CaptureRecorder, AFullDiskEndsItAndLeavesWhatPlays)
{
    const testmedia::TempFolder folder;
    const Devices devices{.rate = 48000};
    const auto order = orderFor(folder / "full.avi", devices, SyncMaster::kSound);
    WriteError error;
    const auto recorder = CaptureRecorder::prepare(order, error);
    ASSERT_TRUE(recorder) << error.text;
    {
        const testmedia::FullDisk full(1 << 20);
        recorder->start();
        devices.play(*recorder);
        ASSERT_TRUE(recorder->finish(std::chrono::seconds(20)));
    }
    EXPECT_TRUE(recorder->hasFailed());
    EXPECT_EQ(recorder->error().code, engine::kDiskFull.code());
    EXPECT_GT(testmedia::readMovie(order.path).frames.size(), 30u);
}
