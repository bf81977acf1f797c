// Single frames on canvases, bitmap files, and the numbers of surfaces.

#include "play_harness.h"
#include "twcore/play/sound_ring.h"

namespace playtest {
namespace {

class CanvasTest : public PlayTest {
protected:
    void SetUp() override
    {
        PlayTest::SetUp();
        number = engine::surfaces().add(canvas);
    }
    void TearDown() override
    {
        engine::surfaces().removeCanvas(number);
        PlayTest::TearDown();
    }

    int canvasNumber() const
    {
        std::vector<std::uint8_t> gray;
        for (int y = 0; y < canvas.height(); ++y) {
            for (int x = 0; x < canvas.width(); ++x) {
                gray.push_back(static_cast<std::uint8_t>(canvas.at(x, y) >> 8));
            }
        }
        return testmedia::readBarcode(
                   {gray.data(), static_cast<std::size_t>(canvas.width()), canvas.width(), canvas.height()})
            .value_or(-2);
    }
    testmedia::Rgb pixel(int x, int y)
    {
        std::int32_t red = -1;
        std::int32_t green = -1;
        std::int32_t blue = -1;
        check(preview.GetFramePixel(number, x, y, red, green, blue));
        return {static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green), static_cast<std::uint8_t>(blue)};
    }
    bool save(const std::filesystem::path& file, int width, int height)
    {
        Bool16 ok = engine::kFalse;
        check(preview.SaveSnapFrame(number, file.string(), width, height, ok));
        return ok != engine::kFalse;
    }
    engine::PixelCanvas canvas;
    std::int32_t number = 0;
    testmedia::TempFolder folder;
};

TEST_F(CanvasTest, DrawsTheFrameInTheSizeAsked)
{
    check(preview.DrawKeyFrame(stream("mpeg4-b.avi", true), 2.0, number, 320, 240));
    EXPECT_EQ(canvasNumber(), 50);
    check(preview.DrawSnapFrame(medium("h264.mp4"), 3.0, number, 401, 233));
    EXPECT_EQ(canvas.width(), 401);
    EXPECT_EQ(canvas.height(), 233);
    EXPECT_EQ(canvasNumber(), 75);
    // Without a frame, the canvas stays as it is.
    check(preview.DrawSnapFrame(medium("h264.mp4"), 60, number, 320, 240));
    check(preview.DrawSnapFrame(medium("h264.mp4"), 0, number, 0, 240));
    check(preview.DrawKeyFrame(stream("h264.mp4", false), 0, number, 320, 240));
    check(preview.DrawKeyFrame(123456, 0, number, 320, 240));
    check(preview.DrawKeyFrame(stream("h264.mp4", true), 0, number + 1000, 320, 240));
    EXPECT_EQ(canvas.width(), 401);
    EXPECT_EQ(canvasNumber(), 75);
    // A snap of nothing is an empty picture, not the one before.
    for (const std::string& nothing : {medium("no such file"), medium("tone.flac")}) {
        canvas.take(1, 1, {0xFFFFFFFF});
        check(preview.DrawSnapFrame(nothing, 0, number, 320, 240));
        EXPECT_EQ(canvas.width(), 320);
        EXPECT_EQ(pixel(160, 120), (testmedia::Rgb{0, 0, 0}));
    }
}

TEST_F(CanvasTest, ColoursAreThoseOfTheFile)
{
    for (const std::string name : {"colour-601-limited.mp4", "colour-709-full.mp4"}) {
        check(preview.DrawKeyFrame(stream(name, true), 0.4, number, 320, 240));
        for (int i = 0; i < 8; ++i) {
            const auto rect = testmedia::patchRect(i, 320, 240);
            const auto found = pixel((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
            for (std::size_t part = 0; part < 3; ++part) {
                EXPECT_NEAR(found[part], testmedia::kPatchColours[static_cast<std::size_t>(i)][part], 6) << name << i;
            }
        }
    }
    EXPECT_EQ(pixel(-1, 0), (testmedia::Rgb{0, 0, 0}));
    EXPECT_EQ(pixel(320, 0), (testmedia::Rgb{0, 0, 0}));
}

TEST_F(CanvasTest, BitmapsHoldWhatWasDrawn)
{
    canvas.resize(5, 3);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x) {
            canvas.line(y)[x] = 0xFF000000u | static_cast<std::uint32_t>(y * 16 + x) << 16 | 0x3400u | 0x56u;
        }
    }
    const auto file = folder / "a picture.bmp";
    ASSERT_TRUE(save(file, 5, 3));
    const std::string bytes = testmedia::bytesOf(file);
    ASSERT_EQ(bytes.size(), 54u + 3 * 16);
    const std::string head = bytes.substr(0, 30);
    EXPECT_EQ(head, std::string("BM\x66\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x05\0\0\0\x03\0\0\0\x01\0\x18\0", 30));
    EXPECT_EQ(bytes.substr(54, 6), std::string("\x56\x34\x20\x56\x34\x21")); // the lowest line comes first
    EXPECT_EQ(bytes.substr(54 + 32, 3), std::string("\x56\x34\0", 3));
    // Read back as a picture, in another size than the canvas.
    check(preview.DrawSnapFrame(medium("h264.mp4"), 1.0, number, 320, 240));
    ASSERT_TRUE(save(file, 320, 240));
    canvas.resize(1, 1);
    check(preview.DrawSnapFrame(file.string(), 0, number, 320, 240));
    EXPECT_EQ(canvasNumber(), 25);

    EXPECT_FALSE(save(folder / "no folder" / "a.bmp", 320, 240));
    EXPECT_FALSE(save(folder.path(), 320, 240));
    EXPECT_FALSE(save("", 320, 240));
    EXPECT_FALSE(save("/dev/null", 320, 240));
    EXPECT_FALSE(save(folder / "b.bmp", 0, 240));
    // No room: the old file stays, and no half one.
    {
        const testmedia::FullDisk full(1000);
        EXPECT_FALSE(save(file, 320, 240));
        EXPECT_FALSE(save(folder / "c.bmp", 320, 240));
    }
    EXPECT_EQ(folder.names().size(), 1u);
    EXPECT_EQ(testmedia::bytesOf(file).size(), 54u + 320 * 240 * 3);

    namespace fs = std::filesystem;
    fs::create_symlink("later.bmp", folder / "link.bmp");
    EXPECT_TRUE(save(folder / "link.bmp", 1, 1));
    EXPECT_TRUE(fs::is_symlink(folder / "link.bmp"));
    EXPECT_EQ(fs::file_size(folder / "later.bmp"), 58u);
    fs::permissions(file, fs::perms(0600));
    EXPECT_TRUE(save(file, 1, 1));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600));
    fs::permissions(file, fs::perms(0400));
    EXPECT_FALSE(save(file, 2, 1)) << "somebody wants to keep it";
    EXPECT_EQ(fs::file_size(file), 58u);
}

TEST(Surfaces, ASinkThatIsRemovedIsCalledNoMore)
{
    struct SlowSink final : engine::FrameSink {
        void show(const engine::SurfacePicture&) noexcept override
        {
            isInside = true;
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            ++count;
            isInside = false;
        }
        void say(engine::Text) noexcept override {}
        std::atomic<int> count = 0;
        std::atomic<bool> isInside = false;
    };
    engine::surfaces().show(-1, {}); // names nothing
    for (int i = 0; i < 20; ++i) {
        SlowSink sink;
        const auto number = engine::surfaces().add(sink, {10, 10});
        std::atomic<bool> isDone = false;
        std::thread caller([&] {
            while (!isDone) {
                engine::surfaces().show(number, {});
            }
        });
        EXPECT_TRUE(soon([&] { return sink.isInside.load(); }));
        engine::surfaces().remove(number);
        EXPECT_FALSE(sink.isInside);
        const int count = sink.count;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        EXPECT_EQ(sink.count, count);
        isDone = true;
        caller.join();
        EXPECT_FALSE(engine::surfaces().sizeOf(number));
    }
}

// A writer that again and again takes back what it wrote and writes it anew: the reader gets every place once, in
// order, and never a torn one.
TEST(SoundRing, CutBackNeverTouchesWhatIsBeingRead)
{
    twcore::SoundRing ring(16384);
    std::atomic<bool> isDone = false;
    std::thread reader([&] {
        std::vector<float> block(2048);
        for (std::int64_t at = 0; at < 4'000'000;) {
            const std::int64_t got = ring.read(block);
            for (std::int64_t i = 0; i < got; ++i, ++at) {
                // Left tells the place, right the version of it, which only rises.
                ASSERT_EQ(block[static_cast<std::size_t>(i) * 2], static_cast<float>(at % 1'000'003));
            }
        }
        isDone = true;
    });
    std::vector<float> block;
    for (int round = 0; !isDone; ++round) {
        const std::int64_t count = std::min<std::int64_t>(ring.writable(), 700);
        block.clear();
        for (std::int64_t i = 0; i < count; ++i) {
            block.push_back(static_cast<float>((ring.written() + i) % 1'000'003));
            block.push_back(static_cast<float>(round));
        }
        ring.write(block);
        if (round % 5 == 0) {
            ring.cutBack(2 * twcore::SoundRing::kMaxPull);
        }
    }
    reader.join();
}

} // namespace
} // namespace playtest
