// High dynamic range brought down: light up to nearly diffuse white keeps its brightness, more is compressed, grey
// stays grey.

#include "twcore/render/tone_map.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

using namespace twcore;

namespace {

/// ST 2084 the other way round: nits to code 0 to 1.
double pqCode(double nits)
{
    const double power = std::pow(nits / 10000, 2610.0 / 16384);
    return std::pow((3424.0 / 4096 + 2413.0 / 128 * power) / (1 + 2392.0 / 128 * power), 2523.0 / 32);
}

FramePtr flatPicture(double code, AVColorTransferCharacteristic curve, int cbOffset = 0, int crOffset = 0)
{
    auto frame = makeFrame();
    frame->format = AV_PIX_FMT_YUV420P10;
    frame->width = 32;
    frame->height = 32;
    frame->color_trc = curve;
    frame->colorspace = AVCOL_SPC_BT2020_NCL;
    frame->color_range = AVCOL_RANGE_MPEG;
    EXPECT_GE(av_frame_get_buffer(frame.get(), 0), 0);
    for (int plane = 0; plane < 3; ++plane) {
        const int value =
            plane == 0 ? static_cast<int>(std::lround(64 + 876 * code)) : 512 + (plane == 1 ? cbOffset : crOffset);
        for (int y = 0; y < (plane == 0 ? 32 : 16); ++y) {
            auto* const line = reinterpret_cast<std::uint16_t*>(frame->data[plane] + y * frame->linesize[plane]);
            std::fill_n(line, plane == 0 ? 32 : 16, static_cast<std::uint16_t>(value));
        }
    }
    return frame;
}

} // namespace

TEST(ToneMap, KeepsBrightnessUpToWhiteAndCompressesTheRest)
{
    ToneMapper mapper;
    int before = -1;
    for (const double nits : {0.0, 1.0, 10.0, 40.0, 100.0, 150.0, 203.0, 400.0, 1000.0, 4000.0}) {
        const auto frame = flatPicture(pqCode(nits), AVCOL_TRC_SMPTE2084);
        ASSERT_TRUE(isHighDynamicRange(*frame));
        const AVFrame* const mapped = mapper.map(*frame, {16, 16});
        ASSERT_TRUE(mapped);
        const int luma = mapped->data[0][5];
        SCOPED_TRACE(testing::Message() << nits << " nits give " << luma);
        if (nits <= 150) { // the table's steps are coarse in the darkest parts
            EXPECT_NEAR(luma, 16 + 219 * std::pow(nits / 203, 1 / 2.4), nits < 20 ? 5 : 2);
        }
        EXPECT_GE(luma, before) << "brighter is never darker";
        EXPECT_NEAR(mapped->data[1][5], 128, 1);
        EXPECT_NEAR(mapped->data[2][5], 128, 1);
        before = luma;
    }
    EXPECT_NEAR(before, 235, 1) << "the peak is white";
}

TEST(ToneMap, TakesTheNumbersForWhatTheFrameSays)
{
    // 100, 60 and 30 nits, by the matrix and the primaries of BT.709: below the knee only the curve changes.
    const double code[3] = {pqCode(100), pqCode(60), pqCode(30)};
    const auto differences = [](const double(&part)[3]) {
        const double luma = 0.2126 * part[0] + 0.7152 * part[1] + 0.0722 * part[2];
        return std::array{luma, (part[2] - luma) / 1.8556, (part[0] - luma) / 1.5748};
    };
    const auto [luma, blue, red] = differences(code);
    auto frame = flatPicture(luma, AVCOL_TRC_SMPTE2084, static_cast<int>(std::lround(896 * blue)),
                             static_cast<int>(std::lround(896 * red)));
    frame->colorspace = AVCOL_SPC_BT709;
    frame->color_primaries = AVCOL_PRI_BT709;
    const auto shown = [](double nits) { return std::pow(nits / 203, 1 / 2.4); };
    const auto [toLuma, toBlue, toRed] = differences({shown(100), shown(60), shown(30)});
    ToneMapper mapper;
    const AVFrame* const mapped = mapper.map(*frame, {16, 16});
    EXPECT_NEAR(mapped->data[0][5], 16 + 219 * toLuma, 2);
    EXPECT_NEAR(mapped->data[1][5], 128 + 224 * toBlue, 2);
    EXPECT_NEAR(mapped->data[2][5], 128 + 224 * toRed, 2);
}

TEST(ToneMap, KnowsHlgAndLeavesStandardPicturesAlone)
{
    // Three quarters of the signal is diffuse white.
    ToneMapper mapper;
    const int mapped = mapper.map(*flatPicture(0.75, AVCOL_TRC_ARIB_STD_B67), {16, 16})->data[0][5];
    const int white = mapper.map(*flatPicture(pqCode(203), AVCOL_TRC_SMPTE2084), {16, 16})->data[0][5];
    EXPECT_NEAR(mapped, white, 4);
    // In its own size nothing is scaled; odd sides have no pair for their last line.
    const auto deep = flatPicture(0.75, AVCOL_TRC_ARIB_STD_B67);
    EXPECT_NEAR(mapper.map(*deep, {32, 32})->data[0][5], mapped, 1);
    EXPECT_NEAR(mapper.map(*deep, {15, 13})->data[0][14], mapped, 1);
    const AVFrame* const blue = mapper.map(*flatPicture(0.4, AVCOL_TRC_ARIB_STD_B67, 150), {16, 16});
    EXPECT_GT(blue->data[1][5], 150) << "colour stays colour";
    EXPECT_FALSE(isHighDynamicRange(*flatPicture(0.5, AVCOL_TRC_BT709)));
}
