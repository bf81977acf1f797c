// Film keyed in its own colours: clear where the key is, untouched inside, no fringe between.

#include "twcore/render/plane_key.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

using namespace twcore;

namespace {

constexpr int kWidth = 96;
constexpr int kHeight = 48;
constexpr Colour kColour{Matrix::kBt601, false};

using Rgb = std::array<double, 3>;

std::array<double, 3> valuesOf(const Rgb& c)
{
    const double luma = 0.299 * c[0] + 0.587 * c[1] + 0.114 * c[2];
    return {16 + luma * 219 / 255, 128 + (c[2] - luma) / 1.772 * 224 / 255, 128 + (c[0] - luma) / 1.402 * 224 / 255};
}

/// Each sample is the mean of its pixels, as film is made.
FramePtr film(AVPixelFormat pixels, const std::function<Rgb(int, int)>& colourAt)
{
    auto frame = makeFrame();
    frame->format = pixels;
    frame->width = kWidth;
    frame->height = kHeight;
    EXPECT_GE(av_frame_get_buffer(frame.get(), 0), 0);
    const Planes planes = planesOf(*frame, kColour);
    for (int plane = 0; plane < 3; ++plane) {
        const int stepX = kWidth / planes.planeWidth(plane);
        const int stepY = kHeight / planes.planeHeight(plane);
        for (int y = 0; y < planes.planeHeight(plane); ++y) {
            for (int x = 0; x < planes.planeWidth(plane); ++x) {
                double sum = 0;
                for (int i = 0; i < stepX * stepY; ++i) {
                    sum += valuesOf(colourAt(x * stepX + i % stepX, y * stepY + i / stepX))[std::size_t(plane)];
                }
                planes.line(plane, y)[x] = static_cast<std::uint8_t>(std::lround(sum / (stepX * stepY)));
            }
        }
    }
    return frame;
}

double greenAt(const Planes& planes, int x, int y)
{
    const double cb = planes.line(1, y >> planes.shiftY)[x >> planes.shiftX] - 128;
    const double cr = planes.line(2, y >> planes.shiftY)[x >> planes.shiftX] - 128;
    return 1.164 * (planes.line(0, y)[x] - 16) - 0.392 * cb - 0.813 * cr;
}

} // namespace

TEST(PlaneKey, IsClearInTheKeyWholeInsideAndLeavesNoFringe)
{
    // A red bar with odd edges on green that is as uneven as compressed film, over grey.
    const auto inside = [](int x, int y, int margin) {
        return x >= 21 + margin && x < 59 - margin && y >= 9 + margin && y < 37 - margin;
    };
    const Rgb red{220, 30, 40};
    const Rgb grey{126, 126, 126};
    for (const auto pixels : {AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV422P, AV_PIX_FMT_YUV444P, AV_PIX_FMT_YUV411P}) {
        SCOPED_TRACE(av_get_pix_fmt_name(pixels));
        const SharedFrame overlay = shareFrame(film(pixels, [&](int x, int y) {
            const double uneven = (x * 7 + y * 13) % 11 - 5;
            return inside(x, y, 0) ? red : Rgb{10 + uneven, 245 - std::abs(uneven), 10 - uneven};
        }));
        auto below = film(pixels, [&](int, int) { return grey; });
        const Planes planes = planesOf(*below, kColour);
        const Planes shown = planesOf(const_cast<AVFrame&>(*overlay), kColour);
        PlaneKey key;
        key.prepare(overlay, kColour, {0, 255, 0});
        key.lay(planes, 0, 0);
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const int luma = planes.line(0, y)[x];
                if (!inside(x, y, -4)) {
                    ASSERT_EQ(luma, std::lround(valuesOf(grey)[0])) << x << ", " << y;
                    ASSERT_EQ(planes.line(1, y >> planes.shiftY)[x >> planes.shiftX], 128) << x << ", " << y;
                } else if (inside(x, y, 4)) {
                    ASSERT_EQ(luma, shown.line(0, y)[x]) << x << ", " << y;
                }
                ASSERT_LT(greenAt(planes, x, y), 126 + 12) << "a fringe at " << x << ", " << y;
            }
        }
    }
}

TEST(PlaneKey, TakesTheKeyOutOfMixturesWithIt)
{
    // A bar whose edges are half red and half green, two pixels wide, so that their samples are too.
    const Rgb red{220, 30, 40};
    const Rgb green{0, 255, 0};
    const Rgb grey{126, 126, 126};
    const auto isEdge = [](int x) { return x == 20 || x == 21 || x == 58 || x == 59; };
    const auto mixed = [](const Rgb& a, const Rgb& b) {
        return Rgb{(a[0] + b[0]) / 2, (a[1] + b[1]) / 2, (a[2] + b[2]) / 2};
    };
    for (const auto pixels : {AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV444P}) {
        SCOPED_TRACE(av_get_pix_fmt_name(pixels));
        auto below = film(pixels, [&](int, int) { return grey; });
        const Planes planes = planesOf(*below, kColour);
        PlaneKey key;
        key.prepare(shareFrame(film(pixels,
                                    [&](int x, int) {
                                        return isEdge(x) ? mixed(red, green) : x > 21 && x < 58 ? red : green;
                                    })),
                    kColour, {0, 255, 0});
        key.lay(planes, 0, 0);
        const auto expected = valuesOf(mixed(red, grey));
        for (const int x : {20, 21, 58, 59}) {
            for (int plane = 0; plane < 3; ++plane) {
                const int shiftX = plane == 0 ? 0 : planes.shiftX;
                EXPECT_NEAR(planes.line(plane, 10)[x >> shiftX], expected[std::size_t(plane)], 8)
                    << "column " << x << ", plane " << plane;
            }
        }
    }
}

TEST(PlaneKey, IsCutOffAtTheEdgesOfThePicture)
{
    const SharedFrame overlay = shareFrame(film(AV_PIX_FMT_YUV420P, [](int, int) { return Rgb{220, 30, 40}; }));
    auto below = film(AV_PIX_FMT_YUV420P, [](int, int) { return Rgb{126, 126, 126}; });
    const Planes planes = planesOf(*below, kColour);
    const int before = planes.line(0, 0)[0];
    PlaneKey key;
    key.prepare(overlay, kColour, {0, 0, 255});
    key.lay(planes, 64, 32);
    EXPECT_EQ(planes.line(0, 31)[95], before);
    EXPECT_EQ(planes.line(0, 32)[63], before);
    EXPECT_EQ(planes.line(0, 32)[64], overlay->data[0][0]);
    EXPECT_EQ(planes.line(2, 23)[47], overlay->data[2][0]);
}
