// The fuzzer's seeds and thousands of files that are nearly one of them, without the fuzzer.

#include "fuzz/project_fuzz.h"
#include "support/files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

void feed(const std::string& bytes)
{
    const std::string exact(bytes.data(), bytes.size()); // so that a read behind the end is one behind the allocation
    ASSERT_EQ(LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(exact.data()), exact.size()), 0);
}

TEST(ProjectSeeds, SurviveEveryCutAndManyFlips)
{
    constexpr int kFlips = 400;
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(QUILLMONT_SEEDS)) {
        const std::string seed = testmedia::bytesOf(entry.path());
        SCOPED_TRACE(entry.path().filename());
        for (std::size_t length = 0; length <= seed.size(); ++length) {
            feed(seed.substr(0, length));
        }
        std::mt19937 random(static_cast<unsigned>(seed.size()));
        for (int i = 0; i < kFlips; ++i) {
            std::string flipped = seed;
            for (unsigned flips = 1 + random() % 8; flips > 0; --flips) {
                flipped[random() % flipped.size()] = static_cast<char>(random());
            }
            feed(flipped);
        }
        ++count;
    }
    EXPECT_GE(count, 5);
}

TEST(ProjectSeeds, SurviveSizes)
{
    const auto many = [](std::size_t count, const std::string& text) {
        std::string all;
        all.reserve(count * text.size());
        for (std::size_t i = 0; i < count; ++i) {
            all += text;
        }
        return all;
    };
    constexpr std::size_t kMillion = 1000000;
    const std::string size = "<PreviewDimension Width=\"320\" Height=\"240\"/>";
    const std::string open = "<QuillmontProject>" + size;
    const std::string close = "</QuillmontProject>";
    feed(open + "<MediaList>" + many(kMillion, "<File Src=\"a\"/>") + "</MediaList><Timeline/>" + close);
    feed(open + "<Timeline>" + many(kMillion, "<Track Kind=\"Video\"/>") + "</Timeline>" + close);
    feed(open + many(kMillion, "<a>") + many(kMillion, "</a>") + close);
    feed(open + "<Timeline><Track Kind=\"Video\">" + many(kMillion, "<a>") + many(kMillion, "</a>")
         + "</Track></Timeline>" + close);
    feed(many(kMillion, "<a>"));
    feed(open + "<ZoomFactor " + many(kMillion, "a=\"1\" ") + "/>" + close);
}

} // namespace
