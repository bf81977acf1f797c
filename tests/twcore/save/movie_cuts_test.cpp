// Where a movie is cut for several workers: from where a frame can be decoded without a run-up, over the real files.

#include "support/files.h"
#include "support/manifest.h"
#include "twcore/media/key_frames.h"
#include "twcore/save/movie_cuts.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace testmedia;
using namespace twcore;

namespace {

MediaFilePtr opened(const std::string& name) { return tryMediaFile((mediaFolder() / name).string(), {}).file; }

/// One clip after the other, each from its media start for so many milliseconds, at 25 frames a second.
struct Movie {
    struct Clip {
        MediaFilePtr media;
        std::int32_t mediaStartMs;
        std::int32_t lengthMs;
    };
    explicit Movie(const std::vector<Clip>& clips)
    {
        TrackSnapshot track;
        track.handle = 1;
        track.isVideo = true;
        for (std::size_t i = 0; i < clips.size(); ++i) {
            SourceItem item;
            item.stream = static_cast<engine::Handle>(i);
            item.startMs = clock.stopMs;
            item.stopMs = clock.stopMs += clips[i].lengthMs;
            item.mediaStartMs = clips[i].mediaStartMs;
            item.mediaStopMs = clips[i].mediaStartMs + clips[i].lengthMs;
            track.sources.push_back(item);
        }
        TimelineSnapshot timeline;
        timeline.frameWidth = 320;
        timeline.frameHeight = 240;
        timeline.tracks = {track};
        plan = compilePlan(timeline, {1}, true, [&](engine::Handle stream) {
            return StreamTarget{clips[static_cast<std::size_t>(stream)].media, true};
        });
    }

    MovieClock clock;
    PlanPtr plan;
};

} // namespace

TEST(KeyFrameTimes, AreThoseAtWhichKeyFramesAreShown)
{
    struct Case {
        const char* name;
        int distance; // frames from one to the next
        int count;
    };
    for (const auto& c : {Case{"h264.mp4", 12, 11}, Case{"long-gop.mp4", 250, 2}, Case{"h264-b.avi", 12, 11},
                          Case{"mpeg4.avi", 15, 9}}) {
        const auto times = keyFrameTimes(opened(c.name), {});
        ASSERT_EQ(times.size(), c.count) << c.name;
        const double first = times.front();
        for (int i = 0; i < c.count; ++i) {
            EXPECT_NEAR(times[static_cast<std::size_t>(i)] - first, i * c.distance / 25.0, 0.001) << c.name;
        }
        EXPECT_NEAR(first, 0, 0.03) << c.name << " shows its first picture at once";
    }
}

TEST(MovieCuts, StandAtJumpsAndKeyFramesAlone)
{
    const auto film = opened("h264.mp4");
    // The second clip plays on where the first one ends: that is no cut. Key frames stand at every twelfth frame.
    Movie movie({{film, 0, 1000}, {film, 1000, 4000}, {film, 2000, 1000}});
    EXPECT_EQ(MovieCuts(*movie.plan, movie.clock, {}).chunkStarts(), (std::vector<std::int64_t>{0, 48, 125}));
}

TEST(MovieCuts, LeaveJumpsAheadWithinAGroupToOneWorker)
{
    const auto film = opened("long-gop.mp4"); // key frames at 0 and 10 s
    Movie lecture({{film, 500, 2000}, {film, 3000, 2000}, {film, 6000, 2000}, {film, 10200, 800}, {film, 500, 1000}});
    MovieCuts cuts(*lecture.plan, lecture.clock, {});
    EXPECT_EQ(cuts.chunkStarts(), (std::vector<std::int64_t>{0, 150, 170})) << "the last two are not on the way";
    const auto handedOn = cuts.cutIn(0, 150);
    EXPECT_TRUE(!handedOn || *handedOn > 75) << "who takes over has a longer way";
}

TEST(MovieCuts, TellWhatLiesOnTheWayToAnother)
{
    const auto film = opened("long-gop.mp4"); // key frames at 0 and 10 s
    Movie turned({{film, 6000, 1000}, {film, 2000, 1000}, {film, 1500, 1000}, {film, 10200, 400}, {film, 9000, 400}});
    MovieCuts cuts(*turned.plan, turned.clock, {});
    ASSERT_EQ(cuts.chunkStarts(), (std::vector<std::int64_t>{0, 25, 50, 75, 85}));
    EXPECT_TRUE(cuts.leadsPast(0, 25, 50));
    EXPECT_FALSE(cuts.leadsPast(25, 50, 75)) << "they share pictures, which would be decoded twice all the same";
    EXPECT_FALSE(cuts.leadsPast(75, 85, 95)) << "another group";
    EXPECT_FALSE(cuts.leadsPast(0, 25, 40)) << "a part of a clip";
}

TEST(MovieCuts, HandOnWhatAnotherWorkerEndsSooner)
{
    Movie close({{opened("h264.mp4"), 0, 5000}});
    MovieCuts cuts(*close.plan, close.clock, {});
    const auto middle = cuts.cutIn(0, 125);
    ASSERT_TRUE(middle);
    EXPECT_GE(*middle, 60);
    EXPECT_LE(*middle, 66) << "near the middle, and near a key frame";
    EXPECT_FALSE(cuts.cutIn(100, 110)) << "too little is left";

    // The way from the only key frame before takes longer than the rest; the next one is worth going to.
    Movie far({{opened("long-gop.mp4"), 0, 12000}});
    MovieCuts fewCuts(*far.plan, far.clock, {});
    EXPECT_FALSE(fewCuts.cutIn(200, 240));
    EXPECT_EQ(fewCuts.cutIn(200, 300).value_or(-1) / 10, 25);
}

TEST(MovieCuts, ReadKeyFramesOnceForAllWorkers)
{
    const TempFolder folder;
    const auto path = folder / "film.mp4";
    std::filesystem::copy_file(medium("h264.mp4"), path);
    Movie movie({{tryMediaFile(path.string(), {}).file, 0, 4800}});
    MovieCuts cuts(*movie.plan, movie.clock, {});
    const auto starts = cuts.chunkStarts();
    std::filesystem::remove(path);
    EXPECT_EQ(cuts.chunkStarts(), starts);
    EXPECT_EQ(cuts.cutIn(0, 120).value_or(-1) / 12, 5);
}
