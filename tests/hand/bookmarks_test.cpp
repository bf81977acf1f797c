// Markers on the scale: setting, removing, dragging, following the view.

#include "support/logic_harness.h"

#include "hand/bookmark_events.h"
#include "hand/slider_keys.h"
#include "timeline/moduleBookmarks.h"

#include <limits>

namespace logic_test {
namespace {

class BookmarksTest : public LogicTest {
protected:
    void addAt(Milliseconds pos)
    {
        moduleTimeline::SetSliderPosition(pos, false);
        frmTimeline::cmdAddBookmark_Click();
    }
    /// Left and time of each marker, "*" behind the selected picture, in brackets when hidden: "(-4=0) 96=1000*
    /// (196=2000)".
    std::string markers() const
    {
        EXPECT_EQ(form.imgBookmark.size(), form.BookmarkTimes.size());
        EXPECT_EQ(form.imgBookmark.size(), static_cast<std::size_t>(form.BookmarkCount));
        std::string all;
        for (std::size_t i = 0; i < form.imgBookmark.size(); ++i) {
            const ImageBox& image = form.imgBookmark[i];
            const std::string one = std::to_string(image.Left) + "=" + std::to_string(form.BookmarkTimes[i])
                                    + (image.Picture.get() == "BOOKMARKSEL" ? "*" : "");
            all += (i > 0 ? " " : "") + (image.Visible ? one : "(" + one + ")");
        }
        return all;
    }
};

TEST_F(BookmarksTest, SetAndRemoved)
{
    EXPECT_EQ(markers(), "(-4=0)"); // the pattern
    addAt(1000);
    addAt(2000);
    addAt(500);
    EXPECT_EQ(markers(), "(-4=0) 96=1000 196=2000 46=500");
    EXPECT_EQ(form.imgBookmark[2].ToolTipText.get(), "0:00:02.000");
    EXPECT_TRUE(std::exchange(state::ProjectModified, false));
    frmTimeline::cmdRemoveBookmark_Click(); // none is selected
    EXPECT_EQ(markers(), "(-4=0) 96=1000 196=2000 46=500");
    EXPECT_FALSE(state::ProjectModified);
    frmTimeline::imgBookmark_MouseDown(3, 1, 2, 5);
    frmTimeline::imgBookmark_MouseDown(2, 1, 2, 5);
    EXPECT_EQ(markers(), "(-4=0) 96=1000 196=2000* 46=500");
    frmTimeline::cmdRemoveBookmark_Click();
    EXPECT_TRUE(std::exchange(state::ProjectModified, false));
    EXPECT_EQ(markers(), "(-4=0) 96=1000* (196=2000*) 46=500");
    frmTimeline::cmdRemoveBookmark_Click();
    frmTimeline::cmdRemoveBookmark_Click();
    EXPECT_EQ(markers(), "(-4=0*) (96=1000*) (196=2000*) 46=500");
    addAt(3000);
    EXPECT_EQ(markers(), "(-4=0*) (96=1000*) (196=2000*) 46=500 296=3000");
    frmTimeline::mnueditclearmarkers_Click();
    EXPECT_EQ(markers(), "(-4=0)");
    addAt(100);
    EXPECT_EQ(markers(), "(-4=0) 6=100");
}

TEST_F(BookmarksTest, AreSelectedAndRemovedByKeysAlone)
{
    addAt(1000);
    addAt(2000);
    addAt(500);
    moduleTimeline::SetSliderPosition(0, false);
    frmTimeline::GoToNextMarker();
    EXPECT_EQ(markers(), "(-4=0) 96=1000 196=2000 46=500*");
    moduleTimeline::SetSliderPosition(2000, false);
    frmTimeline::GoToPreviousMarker();
    EXPECT_EQ(markers(), "(-4=0) 96=1000* 196=2000 46=500");
    frmTimeline::GoToPreviousCut(); // a cut or a marker: it selects nothing
    frmTimeline::cmdRemoveBookmark_Click();
    EXPECT_EQ(markers(), "(-4=0*) (96=1000*) 196=2000 46=500");
}

TEST_F(BookmarksTest, OfAProjectBeginWithTheFirstElement)
{
    using namespace frmTimeline;
    using moduleBookmarks::takeBookmarks;
    using Times = std::vector<Milliseconds>;
    const std::function<void()> remove = cmdRemoveBookmark_Click;
    const auto press = [](std::int16_t index) {
        return [=] {
            imgBookmark_MouseDown(index, 1, 2, 0);
            imgBookmark_MouseUp(index, 1, 2, 0);
        };
    };
    struct Step {
        const char* what;
        std::function<void()> act;
        const char* after;
        bool modifies = false;
    };
    const Step steps[] = {{"load",
                           [] {
                               takeBookmarks({500, 1000, 2000});
                           },
                           "46=500 96=1000 196=2000"},
                          {"none is marked", remove, "46=500 96=1000 196=2000"},
                          {"the first", press(0), "46=500* 96=1000 196=2000"},
                          {"another", press(2), "46=500 96=1000 196=2000*"},
                          {"the first again", press(0), "46=500* 96=1000 196=2000"},
                          {"drag", [] { imgBookmark_MouseDown(0, 1, 2, 0), imgBookmark_MouseMove(0, 1, 12, 0); },
                           "56=600* 96=1000 196=2000", true},
                          {"remove it", remove, "(56=600*) 96=1000 196=2000", true},
                          {"no more", remove, "(56=600*) 96=1000 196=2000"},
                          {"load anew",
                           [] {
                               takeBookmarks({500, 1000});
                           },
                           "46=500 96=1000"},
                          {"the second", press(1), "46=500 96=1000*"},
                          {"the one below", remove, "46=500* (96=1000*)", true},
                          {"add", [this] { addAt(3000); }, "46=500* (96=1000*) 296=3000", true},
                          {"remove the first", remove, "(46=500*) (96=1000*) 296=3000", true},
                          {"remove all", mnueditclearmarkers_Click, "(-4=0)", true},
                          {"one", [] { takeBookmarks({700}); }, "66=700"},
                          {"zoom out", moduleScaleRenderer::ZoomOut, "31=700", true},
                          {"zoom in", moduleScaleRenderer::ZoomIn, "66=700", true},
                          {"scroll", [this] { form.hsb.SetValue(5); }, "16=700"},
                          {"back", [this] { form.hsb.SetValue(0); }, "66=700"},
                          {"mark it", press(0), "66=700*"},
                          {"none", [] { takeBookmarks({}); }, "(-4=0)"},
                          {"remove none", remove, "(-4=0)"},
                          {"add the first", [this] { addAt(1000); }, "(-4=0) 96=1000", true}};
    put("V 0-60000");
    moduleScaleRenderer::AdjustScroll();
    for (const Step& step : steps) {
        state::ProjectModified = false;
        step.act();
        EXPECT_EQ(markers(), step.after) << step.what;
        EXPECT_EQ(state::ProjectModified, step.modifies) << step.what;
    }
    takeBookmarks({1, std::numeric_limits<Milliseconds>::min(), 3});
    form.hsb.SetValue(5);
    EXPECT_EQ(form.imgBookmark[2].Left, -54) << "behind one that is out of reach";
    press(1)();
    remove();
    EXPECT_EQ(moduleBookmarks::bookmarkTimesToStore(), (Times{1, 3}));
    EXPECT_THROW(takeBookmarks(Times(32768)), engine::RuntimeError);
    EXPECT_EQ(moduleBookmarks::bookmarkTimesToStore(), (Times{1, 3}));
}

TEST_F(BookmarksTest, FollowZoomAndScroll)
{
    put("V 0-60000");
    moduleScaleRenderer::AdjustScroll();
    addAt(1000);
    addAt(2000);
    frmTimeline::imgBookmark_MouseDown(2, 2, 0, 0);
    frmTimeline::cmdRemoveBookmark_Click();
    form.hsb.SetValue(5);
    EXPECT_EQ(markers(), "(-54=0) 46=1000* (146=2000*)");
    moduleScaleRenderer::ZoomOut();
    EXPECT_EQ(markers(), "(-54=0) -4=1000* (46=2000*)");
    moduleBookmarks::UpdateBookmarks(1, true);
    EXPECT_EQ(markers(), "-54=0 -4=1000* 46=2000*");
}

TEST_F(BookmarksTest, DragStaysOnTheScale)
{
    addAt(1000);
    const struct {
        float x;
        const char* after;
    } steps[] = {
        {12, "(-4=0) 106=1100*"}, {-500, "(-4=0) -4=0*"}, {900, "(-4=0) 396=4000*"}, {-98, "(-4=0) 296=3000*"}};
    frmTimeline::imgBookmark_MouseMove(1, 1, 50, 0); // not pressed yet
    EXPECT_EQ(panel(""), "Reposition the marker slider");
    state::ProjectModified = false;
    frmTimeline::imgBookmark_MouseDown(1, 1, 2, 0);
    EXPECT_FALSE(state::ProjectModified);
    for (const auto& [x, after] : steps) {
        frmTimeline::imgBookmark_MouseMove(1, 1, x, 0);
        EXPECT_EQ(markers(), after);
    }
    EXPECT_TRUE(state::ProjectModified);
    frmTimeline::imgBookmark_MouseUp(1, 1, 2, 0);
    frmTimeline::imgBookmark_MouseMove(1, 1, 40, 0);
    EXPECT_EQ(markers(), "(-4=0) 296=3000*");
    expectsErrors = true;
    frmTimeline::imgBookmark_MouseDown(7, 1, 2, 1.5F); // there is none
    EXPECT_NE(error_log::read().find("imgBookmark_MouseDown - Index: 7, X: 2, Y: 1.5"), std::string::npos);
}

} // namespace
} // namespace logic_test
