// Interlaced pictures in the movie's frame: whole where they are scaled, field by field where they are not.

#include "twcore/media/ff_versions.h"
#include "twcore/render/picture_fitter.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

using namespace twcore;

namespace {

/// A white bar that stands 24 pixels further right in the lower field, and colour differences that are 90 in the upper
/// field's lines and 170 in the lower's.
SharedFrame interlaced(AVPixelFormat pixels, PictureSize size, int chromaWidth, int chromaHeight)
{
    auto frame = makeFrame();
    frame->format = pixels;
    frame->width = size.width;
    frame->height = size.height;
    setFields(*frame, true, true);
    EXPECT_GE(av_frame_get_buffer(frame.get(), 0), 0);
    for (int y = 0; y < size.height; ++y) {
        auto* const line = frame->data[0] + std::ptrdiff_t{y} * frame->linesize[0];
        std::memset(line, 40, static_cast<std::size_t>(size.width));
        std::memset(line + 300 + 24 * (y % 2), 200, 48);
    }
    for (const int plane : {1, 2}) {
        for (int y = 0; y < chromaHeight; ++y) {
            std::memset(frame->data[plane] + std::ptrdiff_t{y} * frame->linesize[plane], y % 2 == 0 ? 90 : 170,
                        static_cast<std::size_t>(chromaWidth));
        }
    }
    return shareFrame(std::move(frame));
}

SharedFrame fitted(const SharedFrame& frame, AVPixelFormat pixels, PictureSize size)
{
    PictureFitter fitter({size, pixels, {Matrix::kBt601, false}});
    PictureFacts facts;
    facts.width = size.width;
    facts.height = size.height;
    return fitter.fit(frame, facts, {{0, 0, size.width, size.height}});
}

/// Pixels that differ from both lines around them, which are alike.
int combs(const AVFrame& frame)
{
    int count = 0;
    for (int y = 1; y + 1 < frame.height; ++y) {
        const auto* const own = frame.data[0] + std::ptrdiff_t{y} * frame.linesize[0];
        const auto* const above = own - frame.linesize[0];
        const auto* const below = own + frame.linesize[0];
        for (int x = 0; x < frame.width; ++x) {
            count += std::abs(above[x] - below[x]) < 20 && std::abs(own[x] - above[x]) > 60 ? 1 : 0;
        }
    }
    return count;
}

} // namespace

TEST(PictureFitter, LeavesNoCombsInTapeFormatsWhoseWidthAloneIsScaled)
{
    struct Case {
        AVPixelFormat pixels;
        PictureSize stored;
        PictureSize movie;
        int chromaWidth;
        int chromaHeight;
    };
    for (const auto& c : {Case{AV_PIX_FMT_YUV420P, {720, 480}, {640, 480}, 360, 240},
                          Case{AV_PIX_FMT_YUV411P, {720, 480}, {640, 480}, 180, 480},
                          Case{AV_PIX_FMT_YUV420P, {720, 576}, {768, 576}, 360, 288},
                          Case{AV_PIX_FMT_YUV420P, {720, 576}, {720, 432}, 360, 288}}) {
        const auto frame = interlaced(c.pixels, c.stored, c.chromaWidth, c.chromaHeight);
        EXPECT_GT(combs(*frame), 10000) << "nothing to take away";
        const auto whole = fitted(frame, AV_PIX_FMT_YUV420P, c.movie);
        EXPECT_EQ(combs(*whole), 0) << c.movie.width << " x " << c.movie.height;
        for (int y = 0; y < c.movie.height / 2; ++y) {
            ASSERT_NEAR(whole->data[1][std::ptrdiff_t{y} * whole->linesize[1] + 100], 90, 1) << "of one field, " << y;
        }
    }
}

TEST(PictureFitter, KeepsTheColourOfEachFieldWhereNothingIsScaled)
{
    const auto frame = interlaced(AV_PIX_FMT_YUV420P, {720, 576}, 360, 288);
    const auto plain = fitted(frame, AV_PIX_FMT_YUV422P, {720, 576});
    for (int y = 0; y < 576; ++y) {
        for (const int plane : {1, 2}) {
            ASSERT_NEAR(plain->data[plane][std::ptrdiff_t{y} * plain->linesize[plane] + 100], y % 2 == 0 ? 90 : 170, 1)
                << "line " << y;
        }
        ASSERT_EQ(std::memcmp(plain->data[0] + std::ptrdiff_t{y} * plain->linesize[0],
                              frame->data[0] + std::ptrdiff_t{y} * frame->linesize[0], 720),
                  0);
    }
}
