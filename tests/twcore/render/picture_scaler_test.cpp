// Scaling in one pass, held against the same kernel in floating point and against the library's bicubic scaler.

#include "twcore/render/picture_scaler.h"
#include "twcore/render/screen_pixels.h"

#include <gtest/gtest.h>

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <cmath>
#include <cstring>
#include <random>
#include <string>

using namespace twcore;

namespace {

FramePtr frameOf(AVPixelFormat layout, PictureSize size)
{
    auto frame = makeFrame();
    frame->format = layout;
    frame->width = size.width;
    frame->height = size.height;
    EXPECT_GE(av_frame_get_buffer(frame.get(), 0), 0);
    return frame;
}

PictureSize planeSize(const AVFrame& frame, int plane)
{
    const auto* const shape = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    return plane == 0 ? PictureSize{frame.width, frame.height}
                      : PictureSize{-(-frame.width >> shape->log2_chroma_w), -(-frame.height >> shape->log2_chroma_h)};
}

int depthOf(const AVFrame& frame)
{
    return av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format))->comp[0].depth;
}

/// On the scale of 8 bits.
double sample(const AVFrame& frame, int plane, int x, int y)
{
    const auto* const line = frame.data[plane] + std::ptrdiff_t{y} * frame.linesize[plane];
    const int depth = depthOf(frame);
    return depth == 8 ? line[x] : reinterpret_cast<const std::uint16_t*>(line)[x] / std::pow(2.0, depth - 8);
}

/// Smooth ground, hard edges and grain, from black to white.
FramePtr busyPicture(AVPixelFormat layout, PictureSize size)
{
    auto frame = frameOf(layout, size);
    std::mt19937 random(7);
    const int depth = depthOf(*frame);
    for (int plane = 0; plane < 3; ++plane) {
        const PictureSize own = planeSize(*frame, plane);
        for (int y = 0; y < own.height; ++y) {
            auto* const line = frame->data[plane] + std::ptrdiff_t{y} * frame->linesize[plane];
            for (int x = 0; x < own.width; ++x) {
                const bool isEdge = (x / 23 + y / 17) % 3 == 0;
                const double ground = 128 + 90 * std::sin(x * 0.03) * std::cos(y * 0.05);
                const double value = isEdge ? (x + y) % 2 * 255.0 : ground + double(random() % 1000) / 100;
                const auto stored = static_cast<unsigned>(std::clamp(value, 0.0, 255.0) * std::pow(2.0, depth - 8));
                if (depth == 8) {
                    line[x] = static_cast<std::uint8_t>(stored);
                } else {
                    reinterpret_cast<std::uint16_t*>(line)[x] = static_cast<std::uint16_t>(stored);
                }
            }
        }
    }
    return frame;
}

double kernel(double distance)
{
    const double x = std::abs(distance);
    return x < 1 ? 1.4 * x * x * x - 2.4 * x * x + 1 : x < 2 ? -0.6 * (x * x * x - 5 * x * x + 8 * x - 4) : 0;
}

/// What one length becomes of another, in floating point.
std::vector<double> stretched(const std::vector<double>& line, std::size_t length)
{
    const double step = double(line.size()) / double(length);
    const double widening = std::max(1.0, step);
    std::vector<double> result;
    for (std::size_t i = 0; i < length; ++i) {
        const double centre = (double(i) + 0.5) * step - 0.5;
        double sum = 0;
        double weights = 0;
        for (auto k = std::lround(std::floor(centre - 2 * widening)); double(k) <= centre + 2 * widening; ++k) {
            const double weight = kernel((double(k) - centre) / widening);
            sum += weight * line[std::size_t(std::clamp(k, 0L, long(line.size()) - 1))];
            weights += weight;
        }
        result.push_back(sum / weights);
    }
    return result;
}

struct Errors {
    double own = 0;
    double rounding = 0; // of the picture in floating point itself
};

/// Square errors of a plane against the picture in floating point, by sample.
Errors errorsOf(const AVFrame& result, const AVFrame& source, int plane)
{
    const PictureSize from = planeSize(source, plane);
    const PictureSize to = planeSize(result, plane);
    std::vector<std::vector<double>> columns;
    for (int x = 0; x < from.width; ++x) {
        std::vector<double> column;
        for (int y = 0; y < from.height; ++y) {
            column.push_back(sample(source, plane, x, y));
        }
        columns.push_back(stretched(column, std::size_t(to.height)));
    }
    Errors sum;
    for (int y = 0; y < to.height; ++y) {
        std::vector<double> line;
        for (const auto& column : columns) {
            line.push_back(column[std::size_t(y)]);
        }
        line = stretched(line, std::size_t(to.width));
        for (int x = 0; x < to.width; ++x) {
            const double exact = std::clamp(line[std::size_t(x)], 0.0, 255.0);
            sum.own += std::pow(exact - sample(result, plane, x, y), 2) / to.width / to.height;
            sum.rounding += std::pow(exact - std::round(exact), 2) / to.width / to.height;
        }
    }
    return sum;
}

FramePtr drawn(const AVFrame& source, AVPixelFormat layout, PictureSize size, Vectors vectors, const Colour& from = {},
               const Colour& to = {})
{
    auto frame = frameOf(layout, size);
    const auto target = planarPart(*frame, {0, 0, size.width, size.height}, to);
    const auto picture = planarPart(source, {0, 0, source.width, source.height}, from);
    EXPECT_TRUE(PictureScaler::draws(target, picture));
    PictureScaler(vectors).draw(target, picture);
    return frame;
}

FramePtr drawnByLibrary(const AVFrame& source, AVPixelFormat layout, PictureSize size)
{
    auto frame = frameOf(layout, size);
    SwsContext* const scaler = sws_getContext(source.width, source.height, static_cast<AVPixelFormat>(source.format),
                                              size.width, size.height, layout, SWS_BICUBIC, nullptr, nullptr, nullptr);
    sws_scale(scaler, source.data, source.linesize, 0, source.height, frame->data, frame->linesize);
    sws_freeContext(scaler);
    return frame;
}

bool isSame(const AVFrame& a, const AVFrame& b)
{
    for (int plane = 0; plane < 3; ++plane) {
        const PictureSize size = planeSize(a, plane);
        for (int y = 0; y < size.height; ++y) {
            if (std::memcmp(a.data[plane] + std::ptrdiff_t{y} * a.linesize[plane],
                            b.data[plane] + std::ptrdiff_t{y} * b.linesize[plane], std::size_t(size.width))
                != 0) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

TEST(PictureScaler, IsAsGoodAsTheKernelAllowsAndTheSameOnEveryProcessor)
{
    struct Case {
        AVPixelFormat from;
        PictureSize stored;
        AVPixelFormat to;
        PictureSize size;
    };
    for (const Case& c : {Case{AV_PIX_FMT_YUV420P, {268, 148}, AV_PIX_FMT_YUV420P, {134, 74}},
                          Case{AV_PIX_FMT_YUV420P, {254, 142}, AV_PIX_FMT_YUV420P, {190, 118}},
                          Case{AV_PIX_FMT_YUV420P, {130, 70}, AV_PIX_FMT_YUV420P, {322, 182}},
                          Case{AV_PIX_FMT_YUV420P, {255, 143}, AV_PIX_FMT_YUV420P, {66, 34}},
                          Case{AV_PIX_FMT_YUV422P, {256, 144}, AV_PIX_FMT_YUV420P, {128, 72}},
                          Case{AV_PIX_FMT_YUV444P, {180, 100}, AV_PIX_FMT_YUV422P, {180, 100}},
                          Case{AV_PIX_FMT_YUV420P10, {256, 144}, AV_PIX_FMT_YUV420P, {170, 96}},
                          Case{AV_PIX_FMT_YUV422P12, {200, 120}, AV_PIX_FMT_YUV420P, {260, 160}},
                          Case{AV_PIX_FMT_YUV420P, {512, 288}, AV_PIX_FMT_YUV420P, {32, 18}}}) {
        SCOPED_TRACE(std::string(av_get_pix_fmt_name(c.from)) + " " + std::to_string(c.stored.width) + " to "
                     + std::to_string(c.size.width));
        const auto source = busyPicture(c.from, c.stored);
        const auto ours = drawn(*source, c.to, c.size, vectorsHere());
        EXPECT_TRUE(isSame(*ours, *drawn(*source, c.to, c.size, Vectors::kNone)));
        const auto theirs = drawnByLibrary(*source, c.to, c.size);
        for (const int plane : {0, 1, 2}) {
            const Errors errors = errorsOf(*ours, *source, plane);
            EXPECT_LE(errors.own, errors.rounding + 0.03);
            EXPECT_LE(errors.own, errorsOf(*theirs, *source, plane).own * 1.001);
        }
    }
}

TEST(PictureScaler, RecoloursBeforeItRounds)
{
    const Colour wide{Matrix::kBt709, true};
    const Colour narrow{Matrix::kBt601, false};
    auto source = frameOf(AV_PIX_FMT_YUV420P10, {64, 32});
    for (int plane = 0; plane < 3; ++plane) {
        const int value = plane == 0 ? 602 : plane == 1 ? 431 : 570;
        for (int y = 0; y < planeSize(*source, plane).height; ++y) {
            auto* const line =
                reinterpret_cast<std::uint16_t*>(source->data[plane] + std::ptrdiff_t{y} * source->linesize[plane]);
            std::fill_n(line, planeSize(*source, plane).width, static_cast<std::uint16_t>(value));
        }
    }
    const auto plain = drawn(*source, AV_PIX_FMT_YUV420P, {96, 48}, Vectors::kNone, wide, narrow);
    EXPECT_TRUE(isSame(*plain, *drawn(*source, AV_PIX_FMT_YUV420P, {96, 48}, vectorsHere(), wide, narrow)));
    // By hand: Y' = Y + 0.1016 Cb + 0.1960 Cr, Cb' = 0.9899 Cb - 0.1107 Cr, Cr' = -0.0725 Cb + 0.9834 Cr; then the
    // range.
    const double blue = 431 / 4.0 - 128;
    const double red = 570 / 4.0 - 128;
    const double luma = 16 + (602 / 4.0 + 0.1016 * blue + 0.1960 * red) * 219 / 255;
    EXPECT_NEAR(sample(*plain, 0, 50, 20), luma, 0.51);
    EXPECT_NEAR(sample(*plain, 1, 20, 10), 128 + (0.9899 * blue - 0.1107 * red) * 224 / 255, 0.51);
    EXPECT_NEAR(sample(*plain, 2, 20, 10), 128 + (-0.0725 * blue + 0.9834 * red) * 224 / 255, 0.51);
}

TEST(ScreenPixels, AreRoundedOnceAndTheSameOnEveryProcessor)
{
    const auto picture = busyPicture(AV_PIX_FMT_YUV420P, {202, 91});
    for (const Colour& colour : {Colour{Matrix::kBt601, false}, Colour{Matrix::kBt709, true}}) {
        std::vector<std::uint8_t> pixels[2];
        for (const Vectors vectors : {Vectors::kNone, vectorsHere()}) {
            auto& own = pixels[vectors == Vectors::kNone ? 0 : 1];
            own.resize(202 * 91 * 4);
            ScreenPixels(colour, vectors)
                .paint({{picture->data[0], picture->data[1], picture->data[2]},
                        {picture->linesize[0], picture->linesize[1], picture->linesize[2]},
                        202,
                        91,
                        own.data(),
                        202 * 4});
        }
        EXPECT_TRUE(vectorsHere() == Vectors::kNone || pixels[0] == pixels[1]);
        const auto weights = lumaWeightsOf(colour.matrix);
        const double range = colour.isFullRange ? 1 : 255.0 / 224;
        for (int y = 1; y < 90; ++y) {
            for (int x = 1; x < 201; ++x) {
                const auto chroma = [&](int plane) {
                    const int besideX = x / 2 + (x % 2 == 0 ? -1 : 1);
                    const int besideY = std::min(y / 2 + (y % 2 == 0 ? -1 : 1), 45);
                    const auto at = [&](int column, int row) { return sample(*picture, plane, column, row) - 128; };
                    return range
                           * (9 * at(x / 2, y / 2) + 3 * at(besideX, y / 2) + 3 * at(x / 2, besideY)
                              + at(besideX, besideY))
                           / 16;
                };
                const double luma =
                    colour.isFullRange ? sample(*picture, 0, x, y) : (sample(*picture, 0, x, y) - 16) * 255 / 219;
                const double blue = luma + 2 * (1 - weights.blue) * chroma(1);
                const double red = luma + 2 * (1 - weights.red) * chroma(2);
                const double green =
                    (luma - weights.red * red - weights.blue * blue) / (1 - weights.red - weights.blue);
                const std::uint8_t* const pixel = &pixels[0][std::size_t(y * 202 + x) * 4];
                ASSERT_NEAR(pixel[0], std::clamp(blue, 0.0, 255.0), 0.6) << x << ", " << y;
                ASSERT_NEAR(pixel[1], std::clamp(green, 0.0, 255.0), 0.6) << x << ", " << y;
                ASSERT_NEAR(pixel[2], std::clamp(red, 0.0, 255.0), 0.6) << x << ", " << y;
                ASSERT_EQ(pixel[3], 255);
            }
        }
    }
}
