#include "support/patterns.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace testmedia;

namespace {

struct Gray {
    int widthPx, heightPx;
    std::vector<std::uint8_t> data =
        std::vector<std::uint8_t>(static_cast<std::size_t>(widthPx) * static_cast<std::size_t>(heightPx), 16);
    std::uint8_t& at(int x, int y)
    {
        return data[static_cast<std::size_t>(y) * static_cast<std::size_t>(widthPx) + static_cast<std::size_t>(x)];
    }
    GrayView view() const { return {data.data(), static_cast<std::size_t>(widthPx), widthPx, heightPx}; }
};

Gray drawn(int widthPx, int heightPx, int number)
{
    Gray gray{widthPx, heightPx};
    drawBarcode({gray.data.data(), static_cast<std::size_t>(widthPx), widthPx, heightPx, PixelLayout::gray8}, number);
    return gray;
}

std::vector<float> soundFrom(double seconds, int rateHz, std::size_t count, int channel)
{
    std::vector<float> sound(count);
    for (std::size_t i = 0; i < count; ++i)
        sound[i] = static_cast<float>(soundAtTime(seconds + static_cast<double>(i) / rateHz, channel));
    return sound;
}

} // namespace

TEST(Barcode, NeverMisreadsWhatIsNotOnePicture)
{
    EXPECT_TRUE(isBlack(Gray{320, 240}.view()));
    EXPECT_FALSE(readBarcode(Gray{320, 240}.view()));
    EXPECT_FALSE(isBlack(drawn(320, 240, 7).view()));
    for (int number = 0; number < 200; ++number) {
        Gray one = drawn(320, 240, number), next = drawn(320, 240, number + 1), mirrored = one, halves = one;
        Gray mixed = one;
        for (int y = 0; y < 240; ++y)
            for (int x = 0; x < 320; ++x) {
                mixed.at(x, y) = static_cast<std::uint8_t>((one.at(x, y) + next.at(x, y)) / 2);
                mirrored.at(x, y) = one.at(319 - x, y);
                halves.at(x, y) = y < 130 ? one.at(x, y) : next.at(x, y); // torn
            }
        EXPECT_FALSE(readBarcode(mixed.view())) << number;
        EXPECT_FALSE(readBarcode(mirrored.view())) << number;
        EXPECT_FALSE(readBarcode(halves.view())) << number;
    }
}

TEST(SoundPattern, TellsStrangeSoundAndItsTone)
{
    const auto left = soundFrom(2.0, 48000, 4800, 0);
    EXPECT_LT(locate({left.data(), left.size()}, 1, 0, 6).score, 0.4);
    const std::vector<float> silence(4800);
    EXPECT_EQ(locate({silence.data(), silence.size()}, 0, 0, 1).score, 0);
    for (int step = 0; step < kToneSteps; ++step) {
        const double start = step * kToneStepSeconds;
        const auto sound = soundFrom(start, 8000, 800, 1);
        EXPECT_NEAR(dominantFrequency({sound.data(), sound.size(), 8000}), toneHz(start, 1), 3) << step;
    }
    float peak = 0;
    for (const float sample : soundFrom(0, 8000, 80000, 0))
        peak = std::max(peak, std::abs(sample));
    EXPECT_LT(peak, 0.8F);
    EXPECT_GT(peak, 0.3F);
}
