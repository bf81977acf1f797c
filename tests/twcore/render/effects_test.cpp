// Effects, keys and places on small pictures, each by a property that it must have.

#include "twcore/render/effects.h"
#include "twcore/render/overlay_key.h"
#include "twcore/render/picture_place.h"
#include "twcore/render/plan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

using namespace twcore;

namespace {

/// A picture that owns its planes; colour halved both ways, or green, blue and red.
struct Picture {
    Picture(int width, int height, bool rgb)
    {
        shape.width = width;
        shape.height = height;
        shape.shiftX = shape.shiftY = rgb ? 0 : 1;
        shape.colour = rgb ? Colour{Matrix::kRgb, true} : Colour{Matrix::kBt601, false};
        for (int plane = 0; plane < 3; ++plane) {
            bytes[plane].resize(std::size_t(shape.planeWidth(plane)) * std::size_t(shape.planeHeight(plane)));
        }
    }
    Planes planes()
    {
        Planes all = shape;
        for (int plane = 0; plane < 3; ++plane) {
            all.data[std::size_t(plane)] = bytes[plane].data();
            all.strides[std::size_t(plane)] = shape.planeWidth(plane);
        }
        return all;
    }
    int at(int plane, int x, int y) const { return bytes[plane][std::size_t(y * shape.planeWidth(plane) + x)]; }

    Planes shape;
    std::vector<std::uint8_t> bytes[3];
};

Picture textured(bool rgb = false)
{
    Picture picture(96, 64, rgb);
    unsigned seed = 1;
    for (auto& plane : picture.bytes) {
        for (auto& byte : plane) {
            seed = seed * 1664525u + 1013904223u;
            byte = static_cast<std::uint8_t>(16 + (seed >> 24) % 220);
        }
    }
    return picture;
}

Picture with(const char* effect, const EffectMoment& moment, const Picture& original)
{
    Picture worked = original;
    applyEffect(effectKindOf(effect), moment, worked.planes());
    return worked;
}

MediaFilePtr someVideo()
{
    auto media = std::make_shared<MediaFile>();
    media->picture.emplace();
    media->picture->width = 320;
    media->picture->height = 240;
    return media;
}

} // namespace

TEST(Effects, FadeGoesToBlackByItsLevel)
{
    for (const bool rgb : {false, true}) {
        const Picture original = textured(rgb);
        for (const double level : {0.0, 0.25, 1.0}) {
            const Picture faded = with("Fade", {.level = level}, original);
            for (int plane = 0; plane < 3; ++plane) {
                const int black = original.shape.black(plane);
                for (std::size_t i = 0; i < original.bytes[plane].size(); ++i) {
                    ASSERT_NEAR(faded.bytes[plane][i], black + level * (original.bytes[plane][i] - black), 1);
                }
            }
        }
    }
}

TEST(Effects, PixelateMakesEachBlockItsMean)
{
    const Picture original = textured();
    EXPECT_EQ(with("pixelate", {.progress = 0.5}, original).bytes[0], original.bytes[0]) << "an unknown name";
    const Picture blocks = with("Pixelate", {.progress = 0.5}, original);
    const int size = pixelateBlock(0.5, 64);
    ASSERT_GE(size, 4);
    EXPECT_LT(pixelateBlock(0.1, 64), size) << "they grow to the middle";
    EXPECT_EQ(pixelateBlock(0.9, 64), pixelateBlock(0.1, 64));
    EXPECT_EQ(with("Pixelate", {.progress = 0}, original).bytes[0], original.bytes[0]);
    for (int top = 0; top < 64; top += size) {
        for (int left = 0; left < 96; left += size) {
            double sum = 0;
            int count = 0;
            for (int y = top; y < std::min(top + size, 64); ++y) {
                for (int x = left; x < std::min(left + size, 96); ++x, ++count) {
                    sum += original.at(0, x, y);
                    ASSERT_EQ(blocks.at(0, x, y), blocks.at(0, left, top));
                }
            }
            ASSERT_NEAR(blocks.at(0, left, top), sum / count, 0.51);
        }
    }
}

TEST(Effects, BlurSpreadsAPointEvenlyAndKeepsTheMean)
{
    Picture point(200, 150, false);
    std::ranges::fill(point.bytes[0], std::uint8_t{16});
    for (int y = 70; y < 80; ++y) {
        std::fill_n(point.planes().line(0, y) + 95, 10, std::uint8_t{235});
    }
    const Picture blurred = with("Blur", {.progress = 0.5}, point);
    const auto sumOf = [](const Picture& picture) {
        double sum = 0;
        for (const int byte : picture.bytes[0]) {
            sum += byte - 16;
        }
        return sum;
    };
    EXPECT_NEAR(sumOf(blurred) / sumOf(point), 1, 0.05);
    EXPECT_LT(blurred.at(0, 99, 75), 235);
    EXPECT_GT(blurred.at(0, 93, 75), 30);
    EXPECT_EQ(blurred.at(0, 93, 75), blurred.at(0, 106, 75)) << "to both sides alike";
    EXPECT_EQ(blurred.at(0, 20, 20), 16) << "and no further";
}

TEST(Effects, WaveShiftsWholeLinesAndMovesWithTime)
{
    const Picture original = textured();
    const auto shiftOf = [&](const Picture& waved, int y) {
        for (int shift = -20; shift <= 20; ++shift) {
            bool same = true;
            for (int x = 25; x < 70 && same; ++x) {
                same = waved.at(0, x, y) == original.at(0, x - shift, y);
            }
            if (same) {
                return shift;
            }
        }
        return 99;
    };
    std::set<std::vector<int>> moments;
    for (const double seconds : {0.0, 0.3}) {
        const Picture waved = with("Wave", {.progress = 0.5, .seconds = seconds}, original);
        std::vector<int> shifts;
        for (int y = 0; y < 64; ++y) {
            shifts.push_back(shiftOf(waved, y));
            ASSERT_NE(shifts.back(), 99) << "line " << y;
        }
        EXPECT_LT(std::ranges::min(shifts), 0) << "lines go to both sides";
        EXPECT_GT(std::ranges::max(shifts), 0);
        moments.insert(shifts);
    }
    EXPECT_EQ(moments.size(), 2u);
}

TEST(Effects, EmbossAndEngraveAreOppositeGreyReliefs)
{
    for (const bool rgb : {false, true}) {
        Picture step(96, 64, rgb);
        for (int y = 0; y < 64; ++y) { // bright on the left, dark on the right
            for (int x = 0; x < 96; ++x) {
                step.planes().line(0, y)[x] = x < 48 ? 150 : 110;
            }
        }
        const Picture raised = with("Emboss", {}, step);
        const Picture pressed = with("Engrave", {}, step);
        EXPECT_EQ(raised.at(0, 20, 30), 128) << "flat parts are grey";
        EXPECT_GT(raised.at(0, 47, 30), 180) << "brightness falls to the right";
        for (std::size_t i = 0; i < step.bytes[0].size(); ++i) {
            ASSERT_EQ(raised.bytes[0][i] + pressed.bytes[0][i], 256);
        }
        EXPECT_EQ(raised.at(1, 10, 10), rgb ? raised.at(0, 10, 10) : 128);
    }
}

TEST(OverlayKey, IsExactForCleanColoursAndLeavesNoFringe)
{
    // White text with a soft edge on blue, over green: edge pixels are a mixture of white and what is below.
    for (const bool rgb : {true, false}) {
        Picture overlay(64, 32, true);
        Picture below(64, 32, rgb);
        const auto paint = [](Picture& picture, int plane, int x, int y, double value) {
            picture.planes().line(plane, y)[x] = static_cast<std::uint8_t>(std::lround(value));
        };
        const auto coverage = [](int x) { return x < 20 || x > 44 ? 0.0 : x == 20 || x == 44 ? 0.4 : 1.0; };
        for (int y = 0; y < 32; ++y) {
            for (int x = 0; x < 64; ++x) {
                const double share = coverage(x);
                paint(overlay, 0, x, y, 255 * share);
                paint(overlay, 1, x, y, 255);
                paint(overlay, 2, x, y, 255 * share);
            }
        }
        for (int plane = 0; plane < 3; ++plane) {
            std::ranges::fill(below.bytes[plane], std::uint8_t(rgb ? (plane == 0 ? 180 : 20) : plane == 0 ? 120 : 90));
        }
        const Picture before = below;
        OverlayKey key;
        key.blend(overlay.planes(), {0, 0, 255}, below.planes(), 0, 0);
        const int white = rgb ? 255 : 235;
        for (int x = 0; x < 64; ++x) {
            const double expected = before.at(0, x, 16) * (1 - coverage(x)) + white * coverage(x);
            const bool isEdge = coverage(x) == 0.4;
            ASSERT_NEAR(below.at(0, x, 16), expected, isEdge ? 12 : coverage(x) > 0 ? 1 : 0) << "column " << x;
        }
    }
}

TEST(OverlayKey, KeysCompressedColoursAndKeepsTheInsideOpaque)
{
    Picture overlay(64, 32, true);
    Picture below(64, 32, true);
    unsigned seed = 7;
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 64; ++x) {
            seed = seed * 1664525u + 1013904223u;
            const int noise = static_cast<int>((seed >> 24) % 17) - 8;
            const bool inside = x >= 24 && x < 56 && y >= 8 && y < 28;
            // The inside runs from a dark to a bright colour, all of it away from the key.
            overlay.planes().line(0, y)[x] = std::uint8_t(inside ? 60 + 4 * (x - 24) : 200 + noise);
            overlay.planes().line(1, y)[x] = std::uint8_t(inside ? 60 : 30 + noise);
            overlay.planes().line(2, y)[x] = std::uint8_t(inside ? 120 : 40 + noise);
        }
    }
    const Picture shown = overlay;
    OverlayKey key;
    key.blend(overlay.planes(), {40, 200, 30}, below.planes(), 0, 0);
    EXPECT_EQ(below.at(0, 5, 5), 0) << "noise around the key is transparent";
    EXPECT_EQ(below.at(2, 60, 30), 0);
    for (int x = 28; x < 52; ++x) {
        ASSERT_EQ(below.at(0, x, 16), shown.at(0, x, 16)) << "column " << x;
    }
}

TEST(PicturePlace, FollowsTheStretchMode)
{
    struct Case {
        std::int16_t mode;
        PictureSize picture;
        PictureRect target;
        double cropLeft, cropWidth, cropTop, cropHeight;
    };
    const PictureSize frame{640, 480};
    for (const auto& c : {Case{0, {320, 480}, {0, 0, 640, 480}, 0, 1, 0, 1},         // stretched
                          Case{1, {320, 240}, {160, 120, 320, 240}, 0, 1, 0, 1},     // own size, smaller
                          Case{1, {1280, 240}, {0, 120, 640, 240}, 0.25, 0.5, 0, 1}, // own size, cut at two sides
                          Case{2, {320, 480}, {160, 0, 320, 480}, 0, 1, 0, 1},       // whole, bars beside
                          Case{2, {1280, 720}, {0, 60, 640, 360}, 0, 1, 0, 1},       // whole, bars above and below
                          Case{3, {1280, 720}, {0, 0, 640, 480}, 0.125, 0.75, 0, 1}, // filling
                          Case{9, {320, 480}, {160, 0, 320, 480}, 0, 1, 0, 1}}) {    // unknown: whole
        SCOPED_TRACE(testing::Message() << "mode " << c.mode << ", " << c.picture.width << "x" << c.picture.height);
        for (const int scale : {1, 2}) { // the movie may be larger than the project's frame
            const auto place = placed(c.mode, c.picture, frame, {640 * scale, 480 * scale});
            EXPECT_EQ(place.target, (PictureRect{c.target.left * scale, c.target.top * scale, c.target.width * scale,
                                                 c.target.height * scale}));
            EXPECT_NEAR(place.cropLeft, c.cropLeft, 1e-9);
            EXPECT_NEAR(place.cropWidth, c.cropWidth, 1e-9);
            EXPECT_NEAR(place.cropTop, c.cropTop, 1e-9);
            EXPECT_NEAR(place.cropHeight, c.cropHeight, 1e-9);
        }
    }
}

TEST(Plan, FadesByWhatStandsAtTheEdges)
{
    // A 0-4 s | B 4-8 | nothing
    TimelineSnapshot timeline;
    timeline.frameWidth = 320;
    timeline.frameHeight = 240;
    TrackSnapshot track;
    track.handle = 1;
    track.isVideo = true;
    SourceItem a;
    a.stream = 7;
    a.stopMs = a.mediaStopMs = 4000;
    SourceItem b = a;
    b.startMs = 4000;
    b.stopMs = 8000;
    track.sources = {a, b};
    track.effects = {{"Fade", 0, 1000, false}, {"Fade", 3500, 5000, false}, {"Fade", 7000, 9000, false}};
    timeline.tracks = {track};
    const auto media = someVideo();
    const auto plan = compilePlan(timeline, {1}, true, [&](engine::Handle) { return StreamTarget{media, true}; });
    const auto level = [&](double ms) {
        const auto stretch = std::ranges::find_if(plan->stretches, [&](auto& s) { return ms < s.stopMs; });
        return stretch->effect == nullptr ? 1.0 : stretch->effect->momentAt(ms).level;
    };
    EXPECT_NEAR(level(0), 0, 1e-9) << "in from black where picture begins";
    EXPECT_NEAR(level(500), 0.5, 1e-9);
    EXPECT_NEAR(level(2000), 1, 1e-9);
    EXPECT_NEAR(level(4000), 0, 1e-9) << "darkest at the cut";
    EXPECT_NEAR(level(3750), 0.5, 1e-9);
    EXPECT_NEAR(level(7000), 1, 1e-9);
    EXPECT_NEAR(level(7999), 0, 0.01) << "out to black where it ends, though the effect goes on";
    const auto plain = compilePlan(timeline, {1}, false, [&](engine::Handle) { return StreamTarget{media, true}; });
    EXPECT_TRUE(std::ranges::all_of(plain->stretches, [](auto& s) { return s.effect == nullptr; }));
}
