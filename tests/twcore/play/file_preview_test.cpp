// The small player: every kind of file, in its part of the surface.

#include "engine/waiting.h"
#include "play_harness.h"

#include <utility>

namespace playtest {
namespace {

using twcore::FilePreviewInterface;

class FilePreviewTest : public PlayTest {
protected:
    void open(const std::string& name)
    {
        expectOk(filePreview, &FilePreviewInterface::ResetPlayer);
        Bool16 ok = engine::kFalse;
        check(filePreview.OpenFile(medium(name), ok));
        EXPECT_EQ(ok, engine::kTrue) << name;
    }
    std::int32_t duration() { return told(filePreview, &FilePreviewInterface::GetDuration); }
    std::int32_t at() { return told(filePreview, &FilePreviewInterface::GetPosition); }
};

TEST_F(FilePreviewTest, PlaysEveryKindToItsEnd)
{
    struct Case {
        std::string name;
        int durationMs;
        int first; // number of its picture; -3: nothing is shown
        int last;
    };
    for (const Case& c : {Case{"no-sound.mp4", 2000, 0, 49},
                          {"rotated-90.mp4", 2000, 0, 49},
                          {"stereo-44k.wav", 5000, -3, -3},
                          {"tune.mid", 6000, -3, -3},
                          {"still.jpg", 5000, 12, 12}}) {
        SCOPED_TRACE(c.name);
        open(c.name);
        EXPECT_NEAR(duration(), c.durationMs, 60);
        EXPECT_EQ(at(), 0);
        if (c.first >= 0) {
            expectOk(filePreview, &FilePreviewInterface::ShowFirstFrame);
            EXPECT_TRUE(shows(c.first));
        }
        const auto shown = screen.numbers().size();
        const auto heard = device.heard().size();
        expectOk(filePreview, &FilePreviewInterface::Play);
        EXPECT_TRUE(soon([&] { return device.isRunning(); }));
        device.playOut();
        EXPECT_EQ(at(), duration());
        EXPECT_EQ(device.heard().size() - heard, static_cast<std::size_t>(duration()) * 96);
        if (c.last >= 0) {
            EXPECT_TRUE(shows(c.last));
        } else {
            EXPECT_EQ(screen.numbers().size(), shown);
        }
        expectOk(filePreview, &FilePreviewInterface::Stop);
        EXPECT_EQ(at(), duration());
        expectOk(filePreview, &FilePreviewInterface::Rewind);
        EXPECT_EQ(at(), 0);
    }
    open("stereo-44k.wav");
    expectOk(filePreview, &FilePreviewInterface::Seek, 2000);
    expectOk(filePreview, &FilePreviewInterface::Play);
    ASSERT_TRUE(device.advance(100));
    EXPECT_NEAR(heardMoment(2.0), 2.0, 0.001);
}

TEST_F(FilePreviewTest, NothingThatCanBePlayed)
{
    Bool16 ok = engine::kTrue;
    check(filePreview.OpenFile(medium("bad/text.avi"), ok));
    EXPECT_EQ(ok, engine::kFalse);
    EXPECT_NE(screen.said(), "");
    EXPECT_EQ(duration(), 0);
    check(filePreview.Play(ok));
    EXPECT_EQ(ok, engine::kFalse);
    open("h264.mp4");
    check(filePreview.Close());
    EXPECT_EQ(duration(), 0);
    const auto count = screen.numbers().size();
    check(filePreview.ShowFirstFrame(ok));
    EXPECT_EQ(ok, engine::kFalse);
    EXPECT_EQ(screen.numbers().size(), count);
}

TEST_F(FilePreviewTest, OfTwoLoadsTheNewerStands)
{
    // Its trial takes long enough for events to be let run: there is a hole behind the film.
    const testmedia::TempFolder folder;
    const std::string slow = folder / "slow";
    std::filesystem::copy_file(medium("mpeg2-open-gop.mpg"), slow);
    std::filesystem::resize_file(slow, std::uintmax_t{40} << 20);
    enum class Meanwhile { kLoad, kClose };
    for (const auto meanwhile : {Meanwhile::kLoad, Meanwhile::kClose}) {
        bool came = false;
        engine::whileWaiting = [&] {
            if (!std::exchange(came, true)) {
                meanwhile == Meanwhile::kLoad ? open("no-sound.mp4") : check(filePreview.Close());
            }
            return true;
        };
        Bool16 ok = engine::kTrue;
        check(filePreview.OpenFile(slow, ok));
        engine::whileWaiting = nullptr;
        EXPECT_TRUE(came);
        EXPECT_EQ(ok, engine::kFalse);
        EXPECT_NEAR(duration(), meanwhile == Meanwhile::kLoad ? 2000 : 0, 60);
        std::filesystem::last_write_time(slow, std::filesystem::file_time_type::clock::now()); // to be tried again
    }
}

TEST_F(FilePreviewTest, PicturesKeepTheirProportionsInTheirArea)
{
    open("h264.mp4"); // 4 to 3
    check(filePreview.SetVideoWindow(10, 20, 300, 160));
    expectOk(filePreview, &FilePreviewInterface::Seek, 1000);
    EXPECT_TRUE(shows(25));
    const auto area = screen.area();
    EXPECT_NEAR(area.left, 10 + (300 - 214) / 2, 2);
    EXPECT_NEAR(area.right - area.left, 214, 2);
    EXPECT_NEAR(area.top, 20, 1);
    EXPECT_NEAR(area.bottom, 180, 1);
    EXPECT_EQ(screen.picture().width, 320);
    // Odd sizes and the far end of a line: nothing is drawn beside the picture.
    engine::surfaces().resize(surface, {319, 201, 1});
    check(filePreview.SetVideoWindow(3, 5, 313, 181));
    EXPECT_TRUE(soon([&] { return screen.picture().height == 201 && screen.area().top == 5; }));
    const auto picture = screen.picture();
    const auto drawn = screen.area();
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const bool isInside = x >= drawn.left && x < drawn.right && y >= drawn.top && y < drawn.bottom;
            const std::uint8_t* const pixel = picture.pixels.get() + y * picture.strideBytes + x * 4;
            ASSERT_TRUE(isInside || pixel[0] + pixel[1] + pixel[2] == 0) << x << ", " << y;
        }
    }
}

} // namespace
} // namespace playtest
