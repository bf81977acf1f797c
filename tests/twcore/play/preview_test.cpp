// The player over the timeline: exact pictures wherever it stands, sound and picture in step, nothing lost by a
// refresh, and everything as far as a damaged file goes.

#include "play_harness.h"
#include "support/engine_test.h"
#include "twcore/media/picture_listing.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace playtest {
namespace {

using twcore::PreviewInterface;

// Frames of 40 ms:  h264.mp4 from 1 s | mpeg4-b.avi from 2 s | nothing | long-gop.mp4 from 4 s
//                   0               1000                  2000    2500                 3500
class PreviewTest : public PlayTest {
protected:
    void layThree()
    {
        layBoth("h264.mp4", 0, 1000, 1000);
        layBoth("mpeg4-b.avi", 1000, 2000, 2000);
        layBoth("long-gop.mp4", 2500, 3500, 4000);
    }
    void build() { expectOk(preview, &PreviewInterface::BuildPreview); }
    void seek(int ms) { expectOk(preview, &PreviewInterface::Seek, ms); }
    void play() { expectOk(preview, &PreviewInterface::Play); }
    void stop() { expectOk(preview, &PreviewInterface::Stop); }
    int numberAt(int ms)
    {
        return ms < 1000 ? (ms + 1000) / 40 : ms < 2000 ? (ms + 1000) / 40 : ms < 2500 ? -1 : (ms + 1500) / 40;
    }
};

TEST_F(PreviewTest, ShowsTheExactFrameWherever)
{
    layThree();
    build();
    EXPECT_TRUE(shows(25));
    struct Case {
        int asked;
        int position;
        int number;
    };
    for (const Case c : {Case{39, 39, 25},
                         {40, 40, 26},
                         {999, 999, 49},
                         {1000, 1000, 50},
                         {2200, 2200, -1},
                         {2500, 2500, 100},
                         {3480, 3480, 124},
                         {-7, 0, 25},
                         {1999, 1999, 74},
                         {99999, 3500, 124}}) {
        SCOPED_TRACE(c.asked);
        seek(c.asked);
        EXPECT_EQ(position(), c.position); // at once, whatever is being decoded
        EXPECT_TRUE(shows(c.number));
    }
    // A hand on the slider: the last one counts.
    for (int ms = 3400; ms >= 20; ms -= 20) {
        seek(ms);
    }
    EXPECT_TRUE(shows(25));
    seek(1500);
    EXPECT_TRUE(shows(62));
    engine::surfaces().resize(surface, {200, 120, 2});
    EXPECT_TRUE(soon([&] { return screen.picture().width == 400; }));
    EXPECT_EQ(screen.picture().height, 240);
    EXPECT_EQ(screen.last(), 62);
    EXPECT_NEAR(screen.area().left, 40, 1); // the frame keeps its proportions
    EXPECT_NEAR(screen.area().right, 360, 1);
    EXPECT_EQ(device.starts(), 0);
}

TEST_F(PreviewTest, PlaysInStepToTheVeryEnd)
{
    layThree();
    build();
    EXPECT_EQ(told(preview, &PreviewInterface::GetDuration), 3500);
    seek(500);
    play();
    play();
    int last = position();
    EXPECT_EQ(last, 500);
    for (int step = 0; step < 13; ++step) {
        const int from = position();
        ASSERT_TRUE(device.advance(100));
        EXPECT_EQ(position(), from + 100);
        // A piece across the cut at 1 s has no one moment. AVI holds a frame of compressed sound back.
        if (from + 100 <= 1000 || from >= 1000) {
            const double moment = (from + 1000) / 1000.0;
            EXPECT_NEAR(heardMoment(moment), moment, from < 1000 ? 0.001 : 0.03) << from;
        }
        EXPECT_TRUE(isInStep([&](int ms) { return numberAt(ms); }));
    }
    const int at = position();
    stop();
    stop();
    EXPECT_EQ(position(), at);
    EXPECT_TRUE(shows(numberAt(at)));
    EXPECT_TRUE(soon([&] { return !device.isRunning(); }));

    play();
    ASSERT_TRUE(device.advance(900));
    EXPECT_TRUE(isInStep([&](int ms) { return numberAt(ms); }));
    // Most of a second gone at once: what would come late is not shown, and no sound is missing.
    const auto before = screen.numbers().size();
    ASSERT_TRUE(device.advance(500));
    EXPECT_TRUE(isInStep([&](int ms) { return numberAt(ms); }));
    EXPECT_LT(screen.numbers().size() - before, 12u);
    device.playOut();
    EXPECT_EQ(position(), 3500);
    EXPECT_TRUE(shows(124));
    EXPECT_EQ(device.heard().size() / 2,
              48u * 3000); // from 500 to the end: stopped in between, nothing twice and nothing lost
    EXPECT_EQ(device.starts(), 2);
    // At the end there is nothing to play; sought back, it plays again.
    play();
    EXPECT_EQ(position(), 3500);
    seek(3000);
    EXPECT_TRUE(shows(112));
    play();
    ASSERT_TRUE(device.advance(200));
    EXPECT_EQ(position(), 3200);
}

TEST_F(PreviewTest, AMovingHandSeesPicturesPassAndTheExactOneWhereItRests)
{
    layBoth("long-gop.mp4", 0, 12000, 0);
    build();
    ASSERT_TRUE(shows(0));
    for (const bool isForwards : {true, false}) {
        const std::size_t before = screen.numbers().size();
        for (int i = 0; i <= 75; ++i) { // over ten seconds in three quarters of one
            seek(isForwards ? 500 + i * 140 : 11000 - i * 140);
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        const int rest = isForwards ? 11000 : 500;
        EXPECT_TRUE(shows(rest / 40)); // and no other behind it
        auto passed = screen.numbers();
        passed.erase(passed.begin(), passed.begin() + static_cast<std::ptrdiff_t>(before));
        const std::set<int> different(passed.begin(), passed.end());
        EXPECT_GT(different.size(), 12u) << isForwards;
        EXPECT_GT(*different.rbegin() - *different.begin(), 200);
    }
    for (const int ms : {460, 420, 460, 500, 7000, 6960}) {
        seek(ms);
        EXPECT_TRUE(shows(ms / 40));
    }
}

TEST_F(PreviewTest, SeeksWhilePlayingAndHaltsWhereItWasSought)
{
    layThree();
    build();
    play();
    ASSERT_TRUE(device.advance(300));
    seek(2600);
    EXPECT_EQ(position(), 2600);
    EXPECT_TRUE(soon([&] { return device.starts() == 2; }));
    ASSERT_TRUE(device.advance(200));
    EXPECT_EQ(position(), 2800);
    EXPECT_NEAR(heardMoment(4.2), 4.2, 0.001);
    EXPECT_TRUE(isInStep([&](int ms) { return numberAt(ms); }));
    const int at = position();
    expectOk(preview, &PreviewInterface::Pause);
    EXPECT_EQ(position(), at);
    expectOk(preview, &PreviewInterface::Halt);
    EXPECT_EQ(position(), 2600);
    EXPECT_TRUE(shows(numberAt(2600)));
    play();
    EXPECT_TRUE(soon([&] { return device.starts() == 3; })); // the device comes down from what it played first
    ASSERT_TRUE(device.advance(200));
    seek(100);
    expectOk(preview, &PreviewInterface::Halt);
    EXPECT_EQ(position(), 100);
    EXPECT_TRUE(shows(numberAt(100)));
}

TEST_F(PreviewTest, AnEditGoesOnWithASongThatPlays)
{
    // It is not begun again, which would take as long as it has played: so it does not even miss its file.
    const testmedia::TempFolder folder;
    const auto song = folder / "song.mid";
    std::filesystem::copy_file(medium("tune.mid"), song);
    lay(audio, stream(song.string(), false), 0, 6000, 0);
    build();
    play();
    ASSERT_TRUE(device.advance(1000));
    std::filesystem::remove(song);
    Bool16 ok = engine::kFalse;
    check(timelineCalls.SetSourceTimes(audio, 0, 0, 5000, ok));
    expectOk(preview, &PreviewInterface::RefreshPreview);
    ASSERT_TRUE(device.advance(2000));
    EXPECT_GT(loudest(device.lastHeard(1000)), 0.01f);
}

TEST_F(PreviewTest, AnEditFindsAFileThatIsBack)
{
    const testmedia::TempFolder folder;
    const auto file = folder / "back.wav";
    std::filesystem::copy_file(medium("stereo-48k.wav"), file);
    lay(audio, stream(file.string(), false), 0, 5000, 0);
    std::filesystem::remove(file);
    build();
    play();
    ASSERT_TRUE(device.advance(500));
    EXPECT_EQ(loudest(device.lastHeard(300)), 0);
    std::filesystem::copy_file(medium("stereo-48k.wav"), file);
    expectOk(preview, &PreviewInterface::RefreshPreview);
    ASSERT_TRUE(device.advance(1000));
    EXPECT_GT(loudest(device.lastHeard(300)), 0.01f);
}

TEST_F(PreviewTest, AFileThatIsCutShortIsToldOfAndShownWhenItIsWholeAgain)
{
    for (const char* const name : {"h264.mp4", "mjpeg.avi"}) {
        SCOPED_TRACE(name);
        const testmedia::TempFolder folder;
        const auto file = folder / name;
        std::filesystem::copy_file(medium(name), file);
        const Handle source = stream(file.string(), true);
        std::int16_t count = 0;
        check(timelineCalls.GetSourceCount(video, count));
        lay(video, source, count * 4000, count * 4000 + 4000, 0);
        build();
        seek(count * 4000 + 200);
        ASSERT_TRUE(soon([&] { return screen.last() == 5; }));
        std::filesystem::resize_file(file, 4000);
        seek(count * 4000 + 3800);
        ASSERT_TRUE(
            soon([&] { return screen.said().find(std::string(name) + "\" has become shorter") != std::string::npos; }));
        EXPECT_EQ(screen.last(), -1);
        std::filesystem::copy_file(medium(name), file, std::filesystem::copy_options::overwrite_existing);
        seek(count * 4000 + 3600);
        EXPECT_TRUE(soon([&] { return screen.last() == 90; })) << screen.last();
    }
}

TEST_F(PreviewTest, ARefreshShowsAStillThatIsWrittenAnew)
{
    const testmedia::TempFolder folder;
    const auto file = folder / "title.png";
    std::filesystem::copy_file(medium("still.png"), file);
    lay(video, stream(file.string(), true), 0, 2000, 0);
    build();
    EXPECT_TRUE(shows(16));
    std::filesystem::copy_file(medium("alpha.png"), file, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) + std::chrono::seconds(1));
    const auto before = screen.numbers().size();
    seek(100); // what is shown ahead of the refresh is not taken for the new one
    EXPECT_TRUE(soon([&] { return screen.numbers().size() > before; }));
    expectOk(preview, &PreviewInterface::RefreshPreview);
    EXPECT_TRUE(shows(17));
}

TEST_F(PreviewTest, AFilmInPlaceOfAnotherIsSeenAtOnce)
{
    const testmedia::TempFolder folder;
    const auto file = folder / "film.mp4";
    std::filesystem::copy_file(medium("h264.mp4"), file);
    lay(video, stream(file.string(), true), 0, 4000, 0);
    build();
    seek(2000);
    EXPECT_TRUE(soon([&] { return screen.last() == 50; }));
    std::filesystem::copy_file(medium("24p.mp4"), folder / "other");
    std::filesystem::rename(folder / "other", file);
    bool isSeen = false;
    for (int i = 0; i < 10 && !isSeen; ++i) { // it is looked for now and then
        seek(0);
        EXPECT_TRUE(soon([&] { return screen.last() == 0; }));
        seek(2000);
        isSeen = soon([&] { return screen.last() == 47; }, std::chrono::milliseconds(300));
    }
    EXPECT_TRUE(isSeen) << screen.last();
}

TEST_F(PreviewTest, ARefreshWhilePlayingStopsNothing)
{
    layBoth("h264.mp4", 0, 4000, 0);
    build();
    play();
    ASSERT_TRUE(device.advance(1000));
    EXPECT_TRUE(isInStep([](int ms) { return ms / 40; }));
    // The same place now plays one second later in the file, and half as long.
    Bool16 ok = engine::kFalse;
    for (const Handle track : {video, audio}) {
        check(timelineCalls.SetSourceTimes(track, 0, 0, 2000, ok));
        check(timelineCalls.SetSourceMediaTimes(track, 0, 1000, 3000, ok));
    }
    expectOk(preview, &PreviewInterface::RefreshPreview);
    EXPECT_TRUE(isInStep([](int ms) { return (ms + 1000) / 40; }));
    ASSERT_TRUE(device.advance(500));
    EXPECT_TRUE(isInStep([](int ms) { return (ms + 1000) / 40; }));
    const double moment = position() / 1000.0 + 0.9;
    EXPECT_NEAR(heardMoment(moment), moment, 0.001);
    EXPECT_EQ(device.starts(), 1);
    // Shorter than where it plays: that is the end.
    for (const Handle track : {video, audio}) {
        check(timelineCalls.SetSourceTimes(track, 0, 0, 1200, ok));
    }
    expectOk(preview, &PreviewInterface::RefreshPreview);
    EXPECT_EQ(position(), 1200);
    EXPECT_TRUE(soon([&] { return !device.isRunning(); }));
    // Building again keeps the position too.
    seek(700);
    check(preview.ClosePreview());
    EXPECT_TRUE(shows(-1));
    EXPECT_EQ(told(preview, &PreviewInterface::IsPreviewValid), engine::kFalse);
    check(preview.Play(ok));
    EXPECT_EQ(ok, engine::kFalse);
    build();
    EXPECT_EQ(position(), 700);
    EXPECT_EQ(told(preview, &PreviewInterface::IsPreviewValid), engine::kTrue);
}

TEST_F(PreviewTest, ALookThatChangesIsSeenAtOnceAndSettlesNothing)
{
    lay(video, stream("h264.mp4", true), 0, 2000, 0);
    lay(overlay, stream("still.png", true), 1000, 2000, 0);
    build();
    seek(1200);
    EXPECT_TRUE(shows(16));
    check(timelineCalls.SetTrackDisabled(overlay, engine::kTrue));
    EXPECT_TRUE(shows(30));
    check(timelineCalls.SetTrackDisabled(video, engine::kTrue));
    EXPECT_TRUE(shows(-1));
    check(timelineCalls.SetTrackDisabled(video, engine::kFalse));
    EXPECT_TRUE(shows(30));
    Bool16 ok = engine::kFalse;
    check(timelineCalls.AddEffectAt(video, "DxtFade", 1200, 1300, ok));
    const auto before = screen.numbers().size();
    // In the middle of an insertion: two sources stand on each other, and must go on doing so.
    check(timelineCalls.InsertSource(video, stream("large.jpg", true), 0, 0, 0, ok));
    check(timelineCalls.SetSourceStretchMode(video, 0, 1));
    EXPECT_TRUE(soon([&] { return screen.numbers().size() > before; }));
    check(timelineCalls.SetSourceTimes(video, 0, 2500, 3000, ok));
    engine::Milliseconds start = 0;
    engine::Milliseconds end = 0;
    check(timelineCalls.GetSourceTimes(video, 0, start, end, ok));
    EXPECT_EQ(start, 2500);
    EXPECT_EQ(end, 3000);
}

TEST_F(PreviewTest, DamagedFilesPlayWhatTheyHave)
{
    for (const std::string name : {"bad/half.mp4", "bad/half.avi"}) {
        SCOPED_TRACE(name);
        const Handle picture = stream(name, true);
        const Handle sound = stream(name, false);
        ASSERT_NE(picture, 0);
        lay(video, picture, 0, 5000, 0);
        lay(audio, sound != 0 ? sound : stream("stereo-48k.wav", false), 0, 5000, 0);
        build();
        seek(0);
        EXPECT_TRUE(shows(0));
        play();
        ASSERT_TRUE(device.advance(1000));
        EXPECT_TRUE(isInStep([](int ms) { return ms / 40; }));
        ASSERT_TRUE(device.advance(3000));
        EXPECT_TRUE(isInStep([](int) { return -1; }));
        device.playOut();
        EXPECT_EQ(position(), 5000);
        Bool16 ok = engine::kFalse;
        check(timelineCalls.RemoveSource(video, 0, ok));
        check(timelineCalls.RemoveSource(audio, 0, ok));
    }
}

TEST_F(PreviewTest, AFileThatIsBeingListedHoldsUpNoOther)
{
    // Large, with a hole in front of the film's last pictures.
#ifdef __SANITIZE_THREAD__
    constexpr std::size_t kHole = std::size_t{80} << 20; // it reads many times slower
#else
    constexpr std::size_t kHole = std::size_t{160} << 20;
#endif
    const testmedia::TempFolder folder;
    const std::string slow = folder / "listed.mpg";
    const std::string film = testmedia::bytesOf(medium("mpeg2-open-gop.mpg"));
    const auto holeAt = film.size() * 9 / 10;
    testmedia::writeBytes(slow, film.substr(0, holeAt) + std::string(kHole, '\0') + film.substr(holeAt));
    const Handle picture = files.streamOfKind(files.openFile(slow), true);
    ASSERT_NE(picture, 0);
    lay(video, picture, 0, 1000, 3000);
    lay(video, stream("h264.mp4", true), 1000, 2000, 1000);
    build();
    const auto isComing = [&] { return files.targetOf(picture).media->listing->isComing(); };
    EXPECT_TRUE(soon(isComing)) << "for the picture at 0";
    seek(1500);
    EXPECT_TRUE(shows(37));
    EXPECT_TRUE(isComing());
    seek(500);
    EXPECT_TRUE(soon([&] { return !isComing(); }, std::chrono::minutes(2)));
    EXPECT_TRUE(shows(87)); // by itself, once it is known
}

TEST_F(PreviewTest, SoundRisesFromSilenceAndFallsToIt)
{
    layBoth("h264.mp4", 0, 4000, 0);
    build();
    seek(1000);
    play();
    ASSERT_TRUE(device.advance(200));
    stop();
    std::this_thread::sleep_for(std::chrono::milliseconds(10)); // a device asks every 21
    device.playOut();
    const auto& heard = device.heard();
    const auto loudest = [&](std::size_t from, std::size_t count) {
        return testmedia::loudest({heard.data() + from, count, twcore::kPlayRate, 2});
    };
    ASSERT_GT(heard.size(), 20000u);
    EXPECT_GT(loudest(2000, 4000), 0.2f);
    EXPECT_LT(loudest(0, 5), 0.02f); // a fiftieth of the way up
    EXPECT_EQ(loudest(heard.size() - 1000, 500), 0);
}

TEST_F(PreviewTest, VolumeFallsToSilence)
{
    lay(audio, stream("stereo-48k.wav", false), 0, 3000, 0);
    build();
    play();
    float last = 1;
    for (const int level : {7, -10, -50, -90, -100, -1000}) {
        check(preview.SetVolume(level));
        ASSERT_TRUE(device.advance(200));
        const float now = loudest(device.lastHeard(100));
        EXPECT_TRUE(level <= -100 ? now == 0 : now < last * 0.9f) << level;
        last = now;
    }
}

TEST_F(PreviewTest, WithoutSurfaceOrDeviceItPlaysOn)
{
    ::setenv("SDL_AUDIODRIVER", "there-is-no-such-driver", 1);
    lay(video, stream("h264.mp4", true), 0, 400, 0);
    PreviewInterface deaf(timeline, files);
    Bool16 ok = engine::kFalse;
    check(deaf.BuildPreview(ok));
    check(deaf.SetOwnerWindow(surface + 1000));
    const auto begin = std::chrono::steady_clock::now();
    check(deaf.Play(ok));
    engine::Milliseconds last = 0;
    EXPECT_TRUE(soon([&] {
        engine::Milliseconds now = 0;
        check(deaf.GetPosition(now));
        EXPECT_GE(now, last);
        last = now;
        return now == 400;
    }));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(380));
    ::unsetenv("SDL_AUDIODRIVER");
}

// Through the contract, in real time, on a device that is not there.
TEST_F(PreviewTest, TheEngineOffersBothPlayers)
{
    ::setenv("SDL_AUDIODRIVER", "dummy", 1);
    twcore::registerTarnwickTimeline();
    engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    const auto player = engine::EngineAs<engine::ITWPreview>();
    const auto small = engine::EngineAs<engine::ITWFilePreview>();
    const auto calls = engine::EngineAs<engine::ITWTimeline>();
    const Handle picture = testsupport::openStream(testsupport::openFile(medium("h264.mp4")), 0);
    const Handle track = testsupport::newTrack(true);
    expectOk(*calls, &engine::ITWTimeline::AppendSource, track, picture, -1);
    check(player->SetOwnerWindow(surface));
    expectOk(*player, &engine::ITWPreview::BuildPreview);
    expectOk(*player, &engine::ITWPreview::Seek, 1000);
    EXPECT_TRUE(shows(25));
    check(calls->SetTrackDisabled(track, engine::kTrue));
    EXPECT_TRUE(shows(-1));
    check(calls->SetTrackDisabled(track, engine::kFalse));
    EXPECT_TRUE(shows(25));
    // Both at once.
    expectOk(*small, &engine::ITWFilePreview::OpenFile, medium("stereo-48k.wav"));
    expectOk(*small, &engine::ITWFilePreview::Play);
    expectOk(*player, &engine::ITWPreview::Play);
    EXPECT_TRUE(soon([&] { return told(*small, &engine::ITWFilePreview::GetPosition) > 100; }));
    EXPECT_TRUE(soon([&] { return screen.last() > 27; }));
    engine::surfaces().remove(surface); // while pictures come
    engine::Engine.reset();
    ::unsetenv("SDL_AUDIODRIVER");
}

} // namespace
} // namespace playtest
