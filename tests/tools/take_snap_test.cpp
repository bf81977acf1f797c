// A still of the timeline: the movie's own picture, in any size, under a name of its own.

#include "support/logic_harness.h"

#include "core/forms/frmTakeSnap.h"
#include "engine/ITWPreview.h"
#include "engine/ITWSave.h"
#include "support/files.h"
#include "timeline/sliders.h"
#include "tools/frmTakeSnap.h"

#include <filesystem>

namespace logic_test {
namespace {

namespace fs = std::filesystem;
using Pixels = std::vector<std::uint32_t>;

class TakeSnapTest : public LogicTest {
protected:
    void SetUp() override
    {
        LogicTest::SetUp();
        state::WorkingFolder = platform.folder;
        frmTakeSnap::closeDialogue = [this] { ++closed; };
    }
    void TearDown() override
    {
        frmTakeSnap::showDialogue = frmTakeSnap::closeDialogue = nullptr;
        LogicTest::TearDown();
    }

    std::string path(const std::string& name) const { return platform.folder + "/" + name; }
    static void inDialogue(const std::function<void()>& deeds)
    {
        frmTakeSnap::showDialogue = deeds;
        frmTakeSnap::ShowModal();
    }
    static Pixels pixelsOf(const engine::PixelCanvas& canvas)
    {
        return canvas.width() == 0 ? Pixels{}
                                   : Pixels(canvas.line(0), canvas.line(0) + canvas.width() * canvas.height());
    }
    Pixels snapped()
    {
        Pixels pixels;
        inDialogue([&] { pixels = pixelsOf(snap.picWorkspace.canvas); });
        return pixels;
    }
    /// The picture at that time of the whole film, saved without loss.
    Pixels inMovie(double seconds)
    {
        const auto save = engine::EngineAs<engine::ITWSave>();
        engine::Bool16 ok = engine::kFalse;
        check(save->ResetSave());
        for (const Handle track : {video(), state::OverlayTrack}) {
            check(save->AddSaveTrack(track, ok));
        }
        check(save->SetVideoSize(320, 240));
        check(save->PrepareAviFile(path("movie.avi"), ok));
        check(save->RunSaveToEnd());
        check(save->StopSave(ok));
        check(save->CloseSave());
        PixelPicture frame;
        check(engine::EngineAs<engine::ITWPreview>()->DrawSnapFrame(path("movie.avi"), seconds, frame.hDC(), 320, 240));
        return pixelsOf(frame.canvas);
    }
    /// Hidden folders of the window's own.
    int leftBehind() const
    {
        int count = 0;
        for (const auto& entry : fs::directory_iterator(platform.folder)) {
            count += entry.path().filename().string().starts_with(".quillmont-snap") ? 1 : 0;
        }
        return count;
    }

    forms::FrmTakeSnap& snap = forms::frmTakeSnap;
    int closed = 0;
};

TEST_F(TakeSnapTest, TheMoviesOwnPicture)
{
    open({"h264.mp4"});
    laid.streams = {{'x', state::StreamCollection.Item(1)}};
    lay("V x0-2000 E 500-1500 O b1000-1600#30");
    moduleTimeline::SetSliderPosition(1200, false);
    state::ProjectModified = false;
    const Pixels still = snapped();
    EXPECT_EQ(leftBehind(), 0);
    EXPECT_FALSE(state::ProjectModified);
    const Pixels frame = inMovie(1.2);
    EXPECT_EQ(still.size(), 320u * 240);
    EXPECT_TRUE(still == frame);
    check(timelineCalls->SetTrackDisabled(state::OverlayTrack, engine::kTrue));
    forms::frmTimeline.chkDisableOverlay[0].Value = std::int16_t{1};
    EXPECT_FALSE(snapped() == still) << "a row that is switched off is left out";
    moduleTimeline::SetSliderPosition(0, false);
    lay("A 0-1000");
    const Pixels black = snapped();
    EXPECT_EQ(std::ranges::count(black, engine::PixelCanvas::kBlack), 320 * 240) << "an empty picture";
    EXPECT_EQ(leftBehind(), 0);
}

TEST_F(TakeSnapTest, SizesAndNames)
{
    fs::copy_file(media("still.png"), path("my.clip.png"));
    moduleTarnwick::OpenDroppedFiles({path("my.clip.png")});
    laid.streams = {{'x', state::StreamCollection.Item(1)}};
    lay("V x0-2000");
    inDialogue([&] {
        EXPECT_EQ(snap.txtSaveTo.Text.get(), path("clip.bmp"));
        snap.Dimension.txtWidth.Text = std::string("2000");
        EXPECT_EQ(snap.Dimension.txtWidth.Text.get(), "320");
        snap.Dimension.chkLockAspectRatio.Value = std::int16_t{1};
        snap.Dimension.txtWidth.Text = std::string("160");
        EXPECT_EQ(snap.Dimension.txtHeight.Text.get(), "120");
        EXPECT_EQ(snap.picWorkspace.canvas.height(), 120);
        snap.txtSaveTo.Text = std::string();
        EXPECT_FALSE(snap.cmdOK.Enabled);
        snap.txtSaveTo.Text = path("none/clip.bmp");
        frmTakeSnap::cmdOK_Click();
        EXPECT_EQ(closed, 0) << "what cannot be saved is not given up";
        EXPECT_TRUE(platform.messages.back().text.starts_with("Unable to save"));
        platform.savedFiles = {path("clip.bmp")};
        frmTakeSnap::cmdBrowse_Click();
        frmTakeSnap::cmdBrowse_Click(); // cancelled
        frmTakeSnap::cmdOK_Click();
    });
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(fs::file_size(path("clip.bmp")), 54u + 160 * 120 * 3);
    inDialogue([&] {
        EXPECT_EQ(snap.txtSaveTo.Text.get(), path("clip1.bmp"));
        EXPECT_EQ(snap.Dimension.chkLockAspectRatio.Value, 0) << "as at each opening";
        snap.Dimension.chkLockAspectRatio.Value = std::int16_t{0};
        snap.Dimension.txtWidth.Text = std::string("200");
        snap.Dimension.txtHeight.Text = std::string("100");
    });
    inDialogue([&] {
        EXPECT_EQ(snap.picWorkspace.canvas.width(), 320) << "not in the size of the last time";
        EXPECT_EQ(snap.picWorkspace.canvas.height(), 240);
        EXPECT_EQ(snap.Dimension.txtHeight.Text.get(), "240");
    });
    moduleTimeline::SetSliderPosition(0, false);
    lay("V x1000-2000");
    snap.Dimension.chkLockAspectRatio.Value = std::int16_t{0};
    state::ProjectWidth = 64;
    state::ProjectHeight = 48;
    inDialogue([&] {
        EXPECT_EQ(snap.txtSaveTo.Text.get(), path("Snap.bmp")) << "nothing under the slider";
        EXPECT_EQ(snap.picWorkspace.canvas.width(), 64) << "not the sides of the last still";
        EXPECT_EQ(snap.picWorkspace.canvas.height(), 48);
        EXPECT_EQ(snap.Dimension.txtHeight.Text.get(), "48");
    });
}

TEST_F(TakeSnapTest, ARenderingThatFails)
{
    lay("V 0-2000");
    expectsErrors = true;
    inDialogue([] { throw engine::RuntimeError(engine::error_number::kInvalidCall, "a handler that fails"); });
    EXPECT_EQ(leftBehind(), 0);
    for (const char* const call : {"ResetSave", "PrepareAviFile", "RunSaveToEnd", "StopSave"}) {
        engineCalls.failCall({call});
        const Pixels pixels = snapped();
        const bool isEmpty = std::string_view(call) != "StopSave"; // by then it was rendered
        EXPECT_EQ(std::ranges::count(pixels, engine::PixelCanvas::kBlack) == 320 * 240, isEmpty) << call;
        EXPECT_EQ(pixels.size(), 320u * 240) << call;
        EXPECT_EQ(leftBehind(), 0);
    }
}

} // namespace
} // namespace logic_test
