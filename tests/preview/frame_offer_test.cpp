// The line that offers the size of the first picture for the movie: when it comes, what it says, what takes it away.

#include "editing/adding.h"
#include "preview/frame_offer.h"
#include "support/logic_harness.h"

#include <fstream>

namespace logic_test {
namespace {

class FrameOffer : public LogicTest {
protected:
    /// Opens the media files and puts them on the timeline in one go.
    void add(std::initializer_list<const char*> names)
    {
        const std::int32_t before = forms::frmMediaList.lvwMediaList.Count();
        open(names);
        auto& list = forms::frmMediaList.lvwMediaList;
        for (std::int32_t place = 1; place <= list.Count(); ++place) {
            list.Change(place).Selected = place > before;
        }
        moduleTimeline::OnEditAddToTimelineClick();
    }
    void emptyTimeline()
    {
        ModuleHistory::EmptyTimeline();
        UpdatePreview();
    }
    /// What the line says and offers; empty when it is away.
    static std::string line()
    {
        const auto& offer = forms::frmPreview.fmeFrameOffer;
        return offer.Visible ? offer.Caption.get() + " [" + offer.cmdUseCaption.get() + "]" : "";
    }
    static std::string frame()
    {
        return std::to_string(state::ProjectWidth) + "x" + std::to_string(state::ProjectHeight);
    }

    static constexpr const char* kLarge = "The movie is 320 x 240, large.jpg is 3000 x 2000. [Use 3000 x 2000]";
};

/// A white picture of one bit a pixel.
void writeBitmap(const std::string& path, std::uint32_t width, std::uint32_t height)
{
    const std::uint32_t rows = (width + 31) / 32 * 4 * height;
    const auto words = [](std::initializer_list<std::uint32_t> values) {
        std::string bytes;
        for (const std::uint32_t value : values) {
            bytes.append({static_cast<char>(value), static_cast<char>(value >> 8), static_cast<char>(value >> 16),
                          static_cast<char>(value >> 24)});
        }
        return bytes;
    };
    std::ofstream(path, std::ios::binary)
        << "BM" << words({62 + rows, 0, 62, 40, width, height, 1 | 1 << 16, 0, rows, 0, 0, 2, 0, 0, 0xFFFFFF})
        << std::string(rows, '\xFF');
}

TEST_F(FrameOffer, SaysTheSizeThatIsShownAndOffersOneThatAMovieCanHave)
{
    writeBitmap(platform.folder + "/wide.bmp", 5000, 100);
    writeBitmap(platform.folder + "/thin.bmp", 161, 5);
    const struct {
        const char* file;
        const char* line;
    } kCases[] = {
        {"mpeg4.avi", ""},
        {"stereo-48k.wav", ""},
        {"rotated-90.mp4", ""}, // stored as 240 x 320
        {"large.jpg", kLarge},
        {"anamorphic.mp4", "The movie is 320 x 240, anamorphic.mp4 is 465 x 240. [Use 464 x 240]"},
        {"wide.bmp", "The movie is 320 x 240, wide.bmp is 5000 x 100. [Use 4096 x 82]"},
        {"thin.bmp", "The movie is 320 x 240, thin.bmp is 161 x 5. [Use 514 x 16]"},
    };
    for (const auto& [file, expected] : kCases) {
        const std::string own = platform.folder + "/" + file;
        add({std::ifstream(own).good() ? own.c_str() : file});
        EXPECT_EQ(line(), expected) << file;
        emptyTimeline();
        EXPECT_EQ(line(), "") << file;
    }
    EXPECT_EQ(frame(), "320x240");
}

TEST_F(FrameOffer, IsTakenOnceAndInStepWithTheEngine)
{
    add({"large.jpg"});
    state::ProjectModified = false;
    expectsErrors = true;
    engineCalls.failCall({"SetFrameSize"});
    frmPreview::cmdUseFrame_Click();
    EXPECT_EQ(frame(), "320x240");
    EXPECT_EQ(line(), kLarge);
    EXPECT_FALSE(state::ProjectModified);

    frmPreview::cmdUseFrame_Click();
    EXPECT_EQ(frame() + line(), "3000x2000");
    EXPECT_EQ(engineCalls.counts["SetFrameSize"], 2);
    EXPECT_TRUE(state::ProjectModified);
    const auto& place = forms::frmPreview.picDisplay.get();
    EXPECT_NEAR(place.width * 2, place.height * 3, 3);
    emptyTimeline();
    add({"mpeg4.avi"});
    EXPECT_EQ(frame() + line(), "3000x2000") << "the size was chosen";
}

TEST_F(FrameOffer, GoesWithAnAnswerAFurtherClipOrItsPicture)
{
    const struct {
        const char* what;
        std::function<void()> deed;
        bool stays;
        bool comesAgain; // with the next first picture
    } kCases[] = {
        {"a sound", [&] { add({"stereo-48k.wav"}); }, true, true},
        {"a second clip", [&] { add({"mpeg4.avi"}); }, false, true},
        {"undone", [] { ModuleHistory::OnEditUndoClick(); }, false, true},
        {"undone and redone",
         [] {
             ModuleHistory::OnEditUndoClick();
             ModuleHistory::OnEditRedoClick();
         },
         true, true},
        {"kept", [] { frmPreview::cmdKeepFrame_Click(); }, false, false},
        {"chosen elsewhere", [] { frmPreview::SetFrameSize(640, 480); }, false, false},
    };
    for (const auto& test : kCases) {
        SCOPED_TRACE(test.what);
        state::FrameSizeChosen = false;
        add({"large.jpg"});
        ASSERT_EQ(line(), kLarge);
        test.deed();
        EXPECT_EQ(line(), test.stays ? kLarge : "");
        emptyTimeline();
        EXPECT_EQ(line(), "");
        add({"large.jpg", "mpeg4.avi"}); // the first of several asks
        EXPECT_EQ(line(), test.comesAgain ? kLarge : "");
        emptyTimeline();
    }
}

} // namespace
} // namespace logic_test
