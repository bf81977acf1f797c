// Capture through the contract, from devices without hardware: what is recorded is read back.

#include "engine/ITWCapture.h"
#include "engine/ITWProfiles.h"
#include "engine/ITWStreamInfo.h"
#include "play_harness.h"
#include "support/engine_test.h"
#include "support/movie_reader.h"
#include "twcore/media/ff.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>

namespace capturetest {
namespace {

using engine::Bool16;
using engine::check;
using engine::ITWCapture;
using playtest::soon;
using testsupport::did;
using testsupport::told;

/// A person at a panel: changes what the test names, and leaves by OK or not.
class Person final : public engine::ControlPanelHost {
public:
    Person() : number(engine::surfaces().add(*this)) {}
    ~Person() override { engine::surfaces().removeHost(number); }
    bool run(engine::ControlPanel& panel) override
    {
        ++panels;
        if (meanwhile) {
            meanwhile();
        }
        names.clear();
        for (auto& control : panel.controls) {
            names.push_back(control.name);
            if (const auto wish = wishes.find(control.name); wish != wishes.end()) {
                control.value = wish->second;
                if (panel.apply) {
                    panel.controls = panel.apply(control.id, control.value);
                    break;
                }
            }
        }
        return saysOk;
    }

    const std::int32_t number;
    std::map<std::string, int> wishes;
    std::function<void()> meanwhile;
    bool saysOk = true;
    int panels = 0;
    std::vector<std::string> names;
};

class CaptureTest : public testsupport::EngineTest {
protected:
    void devices(const char* words)
    {
        ::setenv("QUILLMONT_TEST_DEVICES", words, 1);
        ::unsetenv("DISPLAY");
        ASSERT_TRUE(did(&ITWCapture::InitCapture));
    }
    void TearDown() override
    {
        (void)engine::EngineAs<ITWCapture>()->ReleaseCapture();
        engine::surfaces().remove(surface);
        ::unsetenv("QUILLMONT_TEST_DEVICES");
        EngineTest::TearDown();
    }
    void live()
    {
        ASSERT_TRUE(did(&ITWCapture::BuildGraph));
        ASSERT_TRUE(did(&ITWCapture::SetVideoWindow, surface));
        ASSERT_TRUE(did(&ITWCapture::RunGraph));
    }
    engine::Status start(std::string path, Bool16& ok, std::int16_t format = 0, std::int16_t master = 1)
    {
        return engine::EngineAs<ITWCapture>()->StartCaptureToFile(path, format, master, ok);
    }
    void record(const std::string& path, int pictures, std::int16_t format = 0)
    {
        Bool16 ok = 0;
        const engine::Status status = start(path, ok, format);
        ASSERT_FALSE(status.failed()) << status.text();
        ASSERT_TRUE(ok) << status.text();
        ASSERT_TRUE(did(&ITWCapture::RunGraph));
        ASSERT_TRUE(soon([&] { return captured() >= pictures; }));
        check(engine::EngineAs<ITWCapture>()->StopCapture());
    }
    static int captured() { return told<std::int32_t>(&ITWCapture::GetFramesCaptured); }
    static int dropped() { return told<std::int32_t>(&ITWCapture::GetFramesDropped); }
    static int videoStatus() { return told<std::int16_t>(&ITWCapture::GetVideoDeviceStatus); }
    static int audioStatus() { return told<std::int16_t>(&ITWCapture::GetAudioDeviceStatus); }
    static std::string nameOf(engine::Status (ITWCapture::*operation)(std::int16_t, engine::TextBuffer), int index)
    {
        std::string buffer(128, 'x');
        check((engine::EngineAs<ITWCapture>().get()->*operation)(std::int16_t(index), buffer));
        return testsupport::trimmed(buffer);
    }
    static std::pair<int, int> size()
    {
        std::int32_t width = 0, height = 0;
        check(engine::EngineAs<ITWCapture>()->GetCaptureSize(width, height));
        return {width, height};
    }

    playtest::ReadingSink sink;
    const std::int32_t surface = engine::surfaces().add(sink, {320, 240, 1});
};

TEST_F(CaptureTest, RecordsWhatTheLivePictureShowsAndGoesOnShowingIt)
{
    devices("camera,microphone");
    EXPECT_EQ(nameOf(&ITWCapture::GetVideoDeviceName, 0), "Test Camera");
    EXPECT_EQ(nameOf(&ITWCapture::GetVideoDeviceName, 99), "");
    EXPECT_EQ(nameOf(&ITWCapture::GetAudioDeviceName, 0), "Test Microphone");
    EXPECT_EQ(std::pair(videoStatus(), audioStatus()), std::pair(0, 0));
    live();
    EXPECT_EQ(size(), std::pair(640, 480));
    ASSERT_TRUE(soon([&] { return sink.last() > 3; }));

    check(engine::EngineAs<ITWCapture>()->SetCaptureVideoCompressor("Motion JPEG"));
    const auto path = folder / "made.avi";
    record(path.string(), 60);
    EXPECT_EQ(dropped(), 0);
    const auto movie = testmedia::readMovie(path);
    EXPECT_EQ(static_cast<int>(movie.frames.size()), captured());
    EXPECT_EQ(std::pair(movie.codedWidthPx, movie.codedHeightPx), std::pair(640, 480));
    EXPECT_EQ(movie.frameRate, 30);
    const auto numbers = movie.numbers();
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        ASSERT_EQ(numbers[i], numbers[i - 1] + 1) << i; // none twice, none left out
    }
    // The higher tone stands where the number of a picture is a multiple of its rate.
    for (const auto& frame : movie.frames) {
        const bool isMark = *frame.number % 30 == 0;
        if (frame.seconds < movie.soundSeconds() - 0.1) {
            const double heard =
                testmedia::dominantFrequency(movie.soundView(0, frame.seconds + 0.005, 0.02), 300, 2000);
            EXPECT_NEAR(heard, isMark ? 1760 : *frame.number % 30 == 1 ? heard : 440, 60) << *frame.number;
        }
    }
    EXPECT_NEAR(movie.soundSeconds(), movie.frames.back().seconds, 0.1);

    live(); // the same reader goes on
    const int before = sink.last();
    EXPECT_TRUE(soon([&] { return sink.last() > before + 2; }));
    EXPECT_GT(before, numbers.back() - 5);
}

TEST_F(CaptureTest, OnlyWhatWasSetTakesPart)
{
    devices("camera,microphone");
    check(engine::EngineAs<ITWCapture>()->SetAudioDevice("Test Microphone"));
    ASSERT_TRUE(did(&ITWCapture::BuildGraph));
    EXPECT_EQ(videoStatus(), 1);
    EXPECT_EQ(size(), std::pair(320, 240));
    Bool16 ok = 0;
    const auto sound = (folder / "sound.avi").string();
    check(start(sound, ok));
    ASSERT_TRUE(ok && did(&ITWCapture::RunGraph));
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    check(engine::EngineAs<ITWCapture>()->StopCapture());
    const auto heard = testmedia::readMovie(sound);
    EXPECT_EQ(heard.videoCodec, "");
    EXPECT_GT(heard.soundSeconds(), 0.5);

    ASSERT_TRUE(did(&ITWCapture::InitCapture));
    check(engine::EngineAs<ITWCapture>()->SetVideoDevice("Test Camera"));
    live();
    const auto silent = (folder / "silent.avi").string();
    record(silent, 5);
    EXPECT_EQ(testmedia::readMovie(silent).soundCodec, "");
    for (const char* none : {"", "no such device"}) {
        check(engine::EngineAs<ITWCapture>()->SetVideoDevice(none));
        EXPECT_FALSE(did(&ITWCapture::BuildGraph)) << none;
    }
}

TEST_F(CaptureTest, WindowsMediaTakesTheOpenProfileAndBothItsStreams)
{
    devices("camera,microphone");
    live();
    const auto path = (folder / "made.asf").string();
    Bool16 ok = 7;
    check(start(path, ok, 1));
    EXPECT_FALSE(ok); // no profile is open
    ASSERT_TRUE(did(&engine::ITWProfiles::OpenSystemProfile, std::int16_t{0}));
    record(path, 20, 1);
    const auto movie = testmedia::readMovie(path);
    EXPECT_FALSE(movie.videoCodec.empty() || movie.soundCodec.empty());
    EXPECT_GT(movie.frames.size(), 10u);

    check(engine::EngineAs<ITWCapture>()->SetVideoDevice("Test Camera"));
    live();
    const auto lone = folder / "lone.asf";
    check(start(lone.string(), ok, 1));
    EXPECT_TRUE(ok);
    EXPECT_FALSE(did(&ITWCapture::RunGraph));
    EXPECT_FALSE(std::filesystem::exists(lone));
    EXPECT_TRUE(did(&ITWCapture::BuildGraph) && did(&ITWCapture::RunGraph));
}

TEST_F(CaptureTest, DevicesThatAreBusyAbsentOrPulledOut)
{
    devices("busy,deaf");
    EXPECT_EQ(std::pair(videoStatus(), audioStatus()), std::pair(2, 2));
    EXPECT_FALSE(did(&ITWCapture::BuildGraph));
    devices("busy,microphone");
    EXPECT_EQ(std::pair(videoStatus(), audioStatus()), std::pair(2, 0));
    EXPECT_TRUE(did(&ITWCapture::BuildGraph)); // the one that is there
    check(engine::EngineAs<ITWCapture>()->SetVideoDevice("Test Camera"));
    EXPECT_FALSE(did(&ITWCapture::BuildGraph)); // it was asked for

    devices("leaves=40,microphone");
    live();
    const auto path = folder / "pulled.avi";
    Bool16 ok = 0;
    check(start(path.string(), ok));
    ASSERT_TRUE(ok && did(&ITWCapture::RunGraph));
    ASSERT_TRUE(soon([] { return videoStatus() == 1; }));
    check(engine::EngineAs<ITWCapture>()->StopCapture());
    const auto movie = testmedia::readMovie(path);
    ASSERT_GT(movie.frames.size(), 20u);
    EXPECT_EQ(movie.frames.back().number, 39);
    EXPECT_TRUE(soon([&] { return !sink.said().empty(); }));
}

TEST_F(CaptureTest, WhatCannotBeWrittenIsToldAndLeavesTheGraphRunning)
{
    devices("camera,microphone");
    live();
    Bool16 ok = 7;
    const engine::Status status = start((folder / "no/such/folder.avi").string(), ok);
    EXPECT_TRUE(status.failed());
    EXPECT_NE(status.text().find("Choose a folder that exists"), std::string::npos) << status.text();
    check(engine::EngineAs<ITWCapture>()->SetCaptureVideoCompressor("DV"));
    check(start((folder / "dv.avi").string(), ok)); // takes no 640 x 480
    EXPECT_FALSE(ok);
    EXPECT_FALSE(std::filesystem::exists(folder / "dv.avi"));
    EXPECT_TRUE(engine::EngineAs<ITWCapture>()->TakeSnap((folder / "none/Snap.bmp").string(), -1, -1).failed());
    check(engine::EngineAs<ITWCapture>()->SetCaptureVideoCompressor("Motion JPEG"));
    {
        const testmedia::FullDisk full(1 << 20);
        check(start((folder / "full.avi").string(), ok));
        ASSERT_TRUE(ok && did(&ITWCapture::RunGraph));
        EXPECT_TRUE(soon([] { // told while it runs, ahead of its end
            std::int32_t count = 0;
            return !engine::EngineAs<ITWCapture>()->GetFramesCaptured(count).text().empty();
        }));
    }
    const int before = sink.last();
    EXPECT_TRUE(soon([&] { return sink.last() > before; }));
}

TEST_F(CaptureTest, SettingsChangeThePictureAndSnapsShowIt)
{
    devices("camera,microphone");
    live();
    Person person;
    person.wishes = {{"Size", 0}, {"Frames a second", 15}};
    person.saysOk = false;
    EXPECT_EQ(told<std::int16_t>(&ITWCapture::ShowVideoSettings, person.number), 0);
    EXPECT_TRUE(did(&ITWCapture::BuildGraph));
    EXPECT_EQ(size(), std::pair(640, 480));
    person.saysOk = true;
    EXPECT_EQ(told<std::int16_t>(&ITWCapture::ShowVideoSettings, person.number), 1);
    live();
    EXPECT_EQ(size(), std::pair(320, 240));

    const auto levelOf = [&](const std::string& name, int width, int height) {
        EXPECT_TRUE(soon([&] {
            return !engine::EngineAs<ITWCapture>()
                        ->TakeSnap((folder / name).string(), std::int16_t(width), std::int16_t(height))
                        .failed();
        }));
        const auto snap = testmedia::readMovie(folder / name, {.keepRgb = true});
        EXPECT_EQ(std::pair(snap.codedWidthPx, snap.codedHeightPx),
                  width > 0 ? std::pair(width, height) : std::pair(320, 240));
        EXPECT_TRUE(snap.frames.front().number);
        return snap.frames.front().meanColour({2, 2, 30, 30})[1];
    };
    const double usual = levelOf("usual.bmp", -1, -1);
    person.wishes = {{"Brightness", 100}};
    check(engine::EngineAs<ITWCapture>()->ShowCameraSettings(person.number));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_GT(levelOf("bright.bmp", 640, 480), usual + 20);
    person.saysOk = false; // cancelled: what was applied is put back
    person.wishes = {{"Brightness", 0}};
    check(engine::EngineAs<ITWCapture>()->ShowCameraSettings(person.number));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_GT(levelOf("still.bmp", -1, -1), usual + 20);

    person.saysOk = true;
    person.wishes = {{"Samples a second", 22050}, {"Channels", 1}};
    check(engine::EngineAs<ITWCapture>()->ShowAudioFormats(person.number));
    person.wishes = {{"Mute", 1}};
    check(engine::EngineAs<ITWCapture>()->ShowAudioSettings(person.number));
    record((folder / "mono.avi").string(), 10);
    const auto movie = testmedia::readMovie(folder / "mono.avi");
    EXPECT_EQ(std::pair(movie.rateHz, movie.channels), std::pair(22050, 1));
    EXPECT_EQ(testmedia::loudest(movie.soundView(0, 0, 1)), 0);
    EXPECT_EQ(movie.frameRate, 15);
}

TEST_F(CaptureTest, CallsOutOfOrderDoNoHarm)
{
    devices("camera,microphone");
    live();
    const auto path = folder / "made.avi";
    Bool16 ok = 0;
    check(start(path.string(), ok));
    check(engine::EngineAs<ITWCapture>()->StopCapture());
    EXPECT_FALSE(std::filesystem::exists(path)); // it was never run
    check(start(path.string(), ok));
    for (int i = 0; i < 3; ++i) { // one file has one writer
        ASSERT_TRUE(did(&ITWCapture::RunGraph));
    }
    ASSERT_TRUE(soon([] { return captured() >= 10; }));
    check(engine::EngineAs<ITWCapture>()->StopCapture());
    EXPECT_EQ(testmedia::readMovie(path).frames.size(), static_cast<std::size_t>(captured()));

    check(start(path.string(), ok));
    ASSERT_TRUE(did(&ITWCapture::RunGraph));
    std::filesystem::remove(path);
    EXPECT_NE(engine::EngineAs<ITWCapture>()->StopCapture().text().find("removed"), std::string::npos);
    check(engine::EngineAs<ITWCapture>()->SetAudioDevice(""));
    check(engine::EngineAs<ITWCapture>()->SetVideoDevice(""));
    check(start(path.string(), ok));
    EXPECT_TRUE(ok) << "the path is good";
    EXPECT_FALSE(did(&ITWCapture::RunGraph));
    EXPECT_FALSE(std::filesystem::exists(path));

    Person person; // whose window is closed below the panel
    person.meanwhile = [] { check(engine::EngineAs<ITWCapture>()->ReleaseCapture()); };
    person.wishes = {{"Level", 50}, {"Brightness", 10}};
    (void)told<std::int16_t>(&ITWCapture::ShowVideoSettings, person.number);
    for (const auto show :
         {&ITWCapture::ShowCameraSettings, &ITWCapture::ShowAudioSettings, &ITWCapture::ShowAudioFormats}) {
        devices("camera,microphone");
        live();
        check((engine::EngineAs<ITWCapture>().get()->*show)(person.number));
        EXPECT_EQ(videoStatus(), 1); // there is no session
    }
}

TEST_F(CaptureTest, PreviewGoesDarkWhenItIsOffAndRecordingGoesOn)
{
    devices("camera");
    live();
    ASSERT_TRUE(soon([&] { return sink.last() >= 0; }));
    Bool16 off = engine::kFalse;
    check(engine::EngineAs<ITWCapture>()->SetPreviewing(off));
    ASSERT_TRUE(soon([&] { return sink.last() == -1; }));
    record((folder / "dark.avi").string(), 10);
    EXPECT_EQ(sink.last(), -1);
    EXPECT_GE(testmedia::readMovie(folder / "dark.avi").frames.size(), 10u);
}

TEST_F(CaptureTest, AKilledCaptureOpensAsFarAsItGot)
{
    devices("camera,microphone");
    live();
    for (const std::int16_t format : {std::int16_t{0}, std::int16_t{1}}) {
        const auto path = folder / (format == 0 ? "killed.avi" : "killed.asf");
        Bool16 ok = 0;
        ASSERT_TRUE(did(&engine::ITWProfiles::OpenSystemProfile, std::int16_t{0}));
        check(start(path.string(), ok, format));
        ASSERT_TRUE(ok && did(&ITWCapture::RunGraph));
        std::this_thread::sleep_for(std::chrono::milliseconds(2200));
        const auto left = folder / ("left" + path.extension().string()); // what a kill would leave now
        std::filesystem::copy_file(path, left);
        check(engine::EngineAs<ITWCapture>()->StopCapture());
        const engine::Handle file = testsupport::openFile(left.string());
        ASSERT_NE(file, 0) << left;
        for (const std::int16_t index : {std::int16_t{0}, std::int16_t{1}}) {
            EXPECT_TRUE(did(&engine::ITWMediaFiles::SelectStream, testsupport::openStream(file, index)));
            const auto seconds = told<double>(&engine::ITWStreamInfo::GetDuration);
            EXPECT_GT(seconds, 0.8) << left << index;
            EXPECT_LT(seconds, 2.6) << left << index;
        }
    }
}

} // namespace
} // namespace capturetest
