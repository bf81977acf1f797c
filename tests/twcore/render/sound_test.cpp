// Sound at another speed: in pitch, and in step over an hour.

#include "support/patterns.h"
#include "twcore/render/time_stretcher.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace twcore;

namespace {

constexpr int kRate = 48000;

/// The pattern without a file: endless, and quick to jump in.
class Pattern final : public SoundSource {
public:
    bool isBroken() const noexcept override { return false; }
    void read(std::int64_t first, std::span<float> out) override
    {
        for (std::size_t i = 0; i < out.size(); ++i) {
            out[i] = testmedia::soundAt(first + static_cast<std::int64_t>(i / 2), kRate, static_cast<int>(i % 2));
        }
    }
};

} // namespace

TEST(TimeStretcher, KeepsPitchAndStepOverAnHour)
{
    for (const double speed : {0.1, 0.5, 0.8, 1.25, 2.0, 10.0}) {
        for (const double outSeconds : {0.5, 3599.7}) {
            SCOPED_TRACE(testing::Message() << "speed " << speed << " at " << outSeconds);
            Pattern pattern;
            constexpr double kMediaStart = 2.0;
            TimeStretcher stretcher(pattern, kRate, speed, kMediaStart * kRate);
            // The middle of a step of the tone staircase.
            const double media = std::floor((kMediaStart + outSeconds * speed) * 10) / 10 + 0.05;
            const double at = (media - kMediaStart) / speed;
            const auto half = static_cast<std::int64_t>(std::min(0.03 / speed, 0.1) * kRate);
            std::vector<float> block(static_cast<std::size_t>(2 * half) * 2);
            stretcher.read(std::llround(at * kRate) - half, block);
            if (speed <= 2) {
                const testmedia::SoundView view{block.data(), block.size() / 2, kRate, 2};
                EXPECT_NEAR(testmedia::dominantFrequency(view), testmedia::toneHz(media, 0), 30);
            }
            // A piece of a window is the media itself, never further from its place than the search width.
            const auto piece = static_cast<std::int64_t>(0.05 * kRate);
            block.resize(static_cast<std::size_t>(piece) * 2);
            stretcher.read(std::llround(at * kRate), block);
            if (speed >= 0.8 && speed <= 1.25) {
                const auto match =
                    testmedia::locate({block.data(), block.size() / 2, kRate, 2}, 0, media - 0.05, media + 0.05);
                EXPECT_NEAR(match.seconds, media, 0.02);
            }
        }
    }
}

TEST(TimeStretcher, BeginsWithTheMediaItself)
{
    Pattern pattern;
    TimeStretcher stretcher(pattern, kRate, 1.5, 1.0 * kRate);
    std::vector<float> block(900 * 2);
    stretcher.read(0, block);
    for (int i = 0; i < 900; ++i) {
        ASSERT_NEAR(block[static_cast<std::size_t>(2 * i)], testmedia::soundAt(kRate + i, kRate, 0), 1e-5);
    }
}
