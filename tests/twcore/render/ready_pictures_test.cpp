// Pictures that stand ready: they look as those that are made anew, and make room for each other.

#include "twcore/media/media_harness.h"
#include "twcore/render/picture_renderer.h"

#include <gtest/gtest.h>

using namespace testmedia;
using namespace twcore;

namespace {

constexpr std::size_t kPlenty = std::size_t{64} << 20;
constexpr PictureFormat kSurface{{320, 180}, AV_PIX_FMT_YUV420P, {Matrix::kBt601, false}};

/// One source on each of two tracks, the upper one from 1 s on, in a frame of 4:3.
PlanPtr planOf(const MediaFilePtr& below, std::int16_t stretchMode, const MediaFilePtr& above, bool isKeyed)
{
    TimelineSnapshot timeline;
    timeline.frameWidth = 640;
    timeline.frameHeight = 480;
    for (const int layer : {0, 1}) {
        TrackSnapshot track;
        track.handle = layer + 1;
        track.isVideo = true;
        const int startMs = layer * 1000;
        track.sources.push_back({.stream = layer + 1,
                                 .startMs = startMs,
                                 .stopMs = 3000,
                                 .mediaStartMs = 0,
                                 .mediaStopMs = 3000 - startMs,
                                 .stretchMode = stretchMode,
                                 .selected = false});
        if (layer == 1 && isKeyed) {
            auto& transition = track.transitions.emplace_back();
            transition.name = "DxtKey";
            transition.red = 200;
        }
        timeline.tracks.push_back(std::move(track));
    }
    return compilePlan(timeline, {1, 2}, true, [&](engine::Handle stream) {
        return StreamTarget{stream == 1 ? below : above, true};
    });
}

std::vector<std::uint8_t> bytesOfFrame(const SharedFrame& frame)
{
    std::vector<std::uint8_t> bytes;
    for (int plane = 0; plane < 3; ++plane) {
        const int shift = plane == 0 ? 0 : 1;
        for (int y = 0; y < frame->height >> shift; ++y) {
            const auto* const line = frame->data[plane] + std::ptrdiff_t{y} * frame->linesize[plane];
            bytes.insert(bytes.end(), line, line + (frame->width >> shift));
        }
    }
    return bytes;
}

} // namespace

TEST(ReadyPictures, LookAsThoseThatAreMadeAnew)
{
    struct Case {
        const char* below;
        const char* above;
        std::int16_t stretchMode;
        bool isKeyed;
    };
    for (const Case& c : {Case{"h264.mp4", "mpeg4-b.avi", stretch_mode::kPreserve, false},
                          Case{"vfr.mp4", "long-gop.mp4", stretch_mode::kFill, true},
                          Case{"rotated-90.mp4", "alpha.png", stretch_mode::kPreserve, false},
                          Case{"dv-pal.avi", "still.bmp", stretch_mode::kCrop, true},
                          Case{"interlaced-tff-h264.mp4", "still.jpg", stretch_mode::kStretch, false},
                          Case{"colour-709-full.mp4", "uncompressed.avi", stretch_mode::kPreserve, true}}) {
        SCOPED_TRACE(std::string(c.below) + " " + c.above);
        const PlanPtr plan = planOf(opened(c.below), c.stretchMode, opened(c.above), c.isKeyed);
        const MovieClock clock{{1000, 1}, 0, 3000};
        PictureStore store(kPlenty);
        PictureRenderer anew(plan, clock, kSurface, 2, {});
        PictureRenderer ready(plan, clock, kSurface, 2, {}, &store);
        for (const int ms : {2700, 500, 1500, 2700, 1460, 500, 2980, 1420}) { // some twice
            EXPECT_EQ(bytesOfFrame(ready.frame(ms)), bytesOfFrame(anew.frame(ms))) << ms;
        }
        EXPECT_TRUE(ready.nearestFrame(1400)); // also of a layer that cannot be kept as it is shown
        EXPECT_LT(ready.nearestOff(1400), 0.1);
        // Another renderer, as after an edit, finds them without a file.
        PictureRenderer later(plan, clock, kSurface, 2, {}, &store);
        const bool isStored =
            c.above != std::string("alpha.png") && !(c.isKeyed && c.above == std::string("still.bmp"));
        EXPECT_EQ(later.isReady(2700), isStored && !(c.isKeyed && c.above == std::string("uncompressed.avi")));
        EXPECT_TRUE(later.isReady(500));
        EXPECT_FALSE(later.isReady(900));
        EXPECT_TRUE(later.nearestFrame(900));
        EXPECT_NEAR(later.nearestOff(900), 0.4, 0.05);
    }
}

TEST(ReadyPictures, NothingIsKeptOfWorkThatIsGivenUp)
{
    const PlanPtr plan = planOf(opened("long-gop.mp4"), stretch_mode::kPreserve, opened("h264.mp4"), false);
    const MovieClock clock{{1000, 1}, 0, 3000};
    PictureStore store(kPlenty);
    std::atomic<bool> isCancelled = false;
    PictureRenderer renderer(plan, clock, kSurface, 2, {.cancelled = &isCancelled}, &store);
    EXPECT_TRUE(renderer.frame(200));
    isCancelled = true;
    (void)renderer.frame(900);
    EXPECT_FALSE(renderer.isReady(900));
}

TEST(ReadyPictures, TheOnesUsedLongestAgoMakeRoom)
{
    const PictureFit fit{opened("h264.mp4"), {}, {{0, 0, 320, 180}}, kSurface};
    PictureFit other = fit;
    other.place.target.width = 318;
    PictureFitter fitter(kSurface);
    PictureStore store(10 * 320 * 180 * 2);
    for (int i = 0; i < 40; ++i) {
        store.put(i % 2 == 0 ? fit : other, {fitter.black(), i * 0.1, i * 0.1 + 0.1});
        EXPECT_TRUE(store.at(fit, 0.05)); // in use
        EXPECT_LE(store.bytes(), 10u * 320 * 180 * 2);
    }
    EXPECT_FALSE(store.at(fit, 0.25));
    EXPECT_FALSE(store.at(fit, 3.95)); // it is the other's
    EXPECT_TRUE(store.at(other, 3.95));
    EXPECT_FALSE(store.at(other, 4.05)); // behind its end
    EXPECT_NEAR(store.nearest(fit, 3.0)->start, 3.0, 0.11);
}
