// A title: written, placed, saved, and put over the film. A letter is 13 pixels wide and 24 high here, at 16 points.

#include "support/logic_harness.h"

#include "core/forms/frmAddText.h"
#include "engine/ITWKeyTransition.h"
#include "engine/ITWPreview.h"
#include "support/files.h"
#include "tools/frmAddText.h"
#include "tools/text_file.h"

#include <filesystem>

namespace logic_test {
namespace {

using frmAddText::Key;

constexpr std::int32_t kBlack = 0;
constexpr std::int32_t kWhite = 0xFFFFFF;
constexpr std::int32_t kRed = 0xFF;
constexpr std::int32_t kBlue = 0xFF0000;

class AddTextTest : public LogicTest {
protected:
    void SetUp() override
    {
        LogicTest::SetUp();
        put("V 0-5000");
        frmAddText::Form_Load();
    }
    void TearDown() override
    {
        frmAddText::showDialogue = frmAddText::closeDialogue = nullptr;
        LogicTest::TearDown();
    }

    void write(const std::string& words)
    {
        title.txtText.Text = words;
        frmAddText::LeaveTyping();
    }
    void colours(std::int32_t letters, std::int32_t behind, bool isTransparent = false)
    {
        title.picColorDisplay = letters;
        title.picBackColorDisplay = behind;
        title.mnuFormatTransparentBackground.Checked = isTransparent;
        frmAddText::OnTextChange();
    }
    std::string place() const { return title.sbr.Panel("TEXT_POSITION"); }
    std::string path(const std::string& name) const { return platform.folder + "/" + name; }
    /// Ground and key of the last save, parts of red, green, blue.
    std::string key() const
    {
        const auto parts = [](int red, int green, int blue) {
            return std::to_string(red) + " " + std::to_string(green) + " " + std::to_string(blue);
        };
        const std::int32_t ground = title.TwinBackColor;
        return parts(ground & 0xFF, ground >> 8 & 0xFF, ground >> 16 & 0xFF) + ", "
               + parts(title.KeyRed, title.KeyGreen, title.KeyBlue);
    }

    forms::FrmAddText& title = forms::frmAddText;
};

TEST_F(AddTextTest, PlacedByNameByKeysAndByHand)
{
    EXPECT_EQ(std::string(title.sbr.Panel("IMAGE_DIMENSION")), "320 x 240");
    EXPECT_EQ(place(), "160 x 108") << "of an empty text";
    write("abc\r\nabcdefghij");
    EXPECT_EQ(title.imgDragWidth, 131);
    EXPECT_EQ(title.imgDragHeight, 49);
    const struct {
        frmAddText::Position position;
        const char* place;
        const char* toolTip;
    } named[] = {{frmAddText::kTopRight, "189 x 0", "Position Text - Top Right"},
                 {frmAddText::kBottomLeft, "0 x 191", "Position Text - Bottom Left"},
                 {frmAddText::kBottomRight, "189 x 191", "Position Text - Bottom Right"},
                 {frmAddText::kCenterLeft, "0 x 96", "Position Text - Center Left"},
                 {frmAddText::kCenterRight, "189 x 96", "Position Text - Center Right"},
                 {frmAddText::kTopLeft, "0 x 0", "Position Text - Top Left"}};
    for (const auto& [position, expected, toolTip] : named) {
        frmAddText::PlaceText(position);
        EXPECT_EQ(place(), expected) << toolTip;
        EXPECT_EQ(std::string(title.tbrPosition.ToolTipText), toolTip);
    }
    frmAddText::picWorkspace_KeyDown(Key::kLeft, false);
    EXPECT_EQ(place(), "0 x 0") << "at the edge";
    frmAddText::mnuFormatCenterHorizontally_Click();
    frmAddText::mnuFormatCenterVertically_Click();
    EXPECT_EQ(place(), "95 x 96");
    frmAddText::picWorkspace_KeyDown(Key::kRight, false);
    frmAddText::picWorkspace_KeyDown(Key::kDown, true);
    EXPECT_EQ(place(), "100 x 97");
    EXPECT_EQ(std::string(title.sbr.Panel("STATUS")), "Ready");
    frmAddText::imgDrag_MouseMove(10, 4);
    frmAddText::imgDrag_DragDrop(13, 4);
    EXPECT_EQ(place(), "103 x 97");
    frmAddText::picWorkspace_DragDrop(30, 20);
    EXPECT_EQ(place(), "20 x 16");
    EXPECT_FALSE(title.txtTextVisible);
    frmAddText::imgDrag_DragDrop(10, 4);
    EXPECT_TRUE(title.txtTextVisible) << "a drop where it was taken is a click";
    frmAddText::tbrPosition_Click();
    EXPECT_EQ(place(), "0 x 0") << "the last that was named";
}

TEST_F(AddTextTest, WrittenOverTheFrame)
{
    const auto at = [this](int x, int y) { return title.picWorkspace.canvas.at(x, y); };
    const auto frame = title.Picture.at(4, 4);
    frmAddText::OnFormatText();
    EXPECT_EQ(title.txtText.Text.get(), "Sample Text");
    write("ab\r\n c");
    frmAddText::PlaceText(frmAddText::kTopLeft);
    EXPECT_EQ(at(4, 4), 0xFF000000u);
    EXPECT_EQ(at(4, 28), 0xFFFFFFFFu) << "a blank on the ground";
    EXPECT_EQ(at(16, 28), 0xFF000000u) << "the second line";
    EXPECT_EQ(at(30, 4), title.Picture.at(30, 4));
    colours(kRed, kWhite, true);
    EXPECT_EQ(at(4, 4), 0xFFFF0000u);
    EXPECT_EQ(at(4, 28), title.Picture.at(4, 28));
    frmAddText::OnFormatText();
    EXPECT_EQ(at(4, 4), title.Picture.at(4, 4)) << "while it is typed, the box alone shows it";
    frmAddText::ChooseSize("32");
    frmAddText::LeaveTyping();
    EXPECT_EQ(title.imgDragHeight, 97);
    frmAddText::ChooseSize("large");
    EXPECT_EQ(title.cboSize.Text.get(), "32");
    platform.chosenColours = {"FF00"};
    platform.chosenFont = {"Block", 12, true, false, true, false};
    frmAddText::mnuFormatFont_Click();
    EXPECT_EQ(title.Font, platform.chosenFont);
    EXPECT_TRUE(title.mnuFormatFontStyleBold.Checked && title.mnuFormatFontStyleUnderline.Checked);
    EXPECT_EQ(title.picColorDisplay, 0xFF00);
    frmAddText::mnuFormatFontColor_Click(); // cancelled
    EXPECT_EQ(title.picColorDisplay, 0xFF00);
    frmAddText::mnuFileNew_Click();
    EXPECT_EQ(title.Font, (TextFont{"Arial", 16}));
    EXPECT_EQ(at(4, 4), frame);
}

TEST_F(AddTextTest, TheKeyFollowsTheColours)
{
    title.TextFile = path("title.bmp");
    write("x");
    const struct {
        std::int32_t letters;
        std::int32_t behind;
        const char* key;
    } cases[] = {{0x808080, 0x404040, "0 0 0, 0 0 0"},
                 {kBlack, kWhite, "0 0 255, 0 0 255"},
                 {0x808080, 0x404040, "0 0 255, 0 0 255"}, // as it was
                 {kBlue, kWhite, "255 0 0, 255 0 0"},
                 {kWhite, kBlue, "255 0 0, 255 0 0"},
                 {kWhite, kBlack, "0 0 255, 255 0 255"}, // meant: only the blue is set
                 {kBlue, kRed, "0 0 0, 0 0 0"},
                 {kRed, kWhite, "0 0 0, 0 0 0"}};
    for (const auto& [letters, behind, expected] : cases) {
        colours(letters, behind, true);
        ASSERT_TRUE(frmAddText::OnFileSaveClick());
        EXPECT_EQ(key(), expected) << std::hex << letters << " on " << behind;
        EXPECT_EQ(std::string(title.sbr.Panel("STATUS")).starts_with("The video will not be seen"),
                  key() == "0 0 255, 255 0 255");
    }
    EXPECT_EQ(title.picWorkspaceBack.canvas.at(0, 0), 0xFF000000u);
    colours(0x101010, kWhite);
    EXPECT_TRUE(std::string(title.sbr.Panel("STATUS")).starts_with("The letters will not be seen"));
    colours(kRed, 0x101010);
    EXPECT_TRUE(std::string(title.sbr.Panel("STATUS")).starts_with("The background will not be seen"));
    colours(kRed, 0x101010, true);
    EXPECT_EQ(std::string(title.sbr.Panel("STATUS")), "Saved title.bmp.");
}

TEST_F(AddTextTest, SavedAndPutOverTheFilm)
{
    bool isClosed = false;
    frmAddText::closeDialogue = [&] { isClosed = true; };
    write("Title");
    frmAddText::mnuFileSaveAddAndClose_Click(); // the question for a name is cancelled
    EXPECT_FALSE(isClosed);
    EXPECT_EQ(text(), "V 0-5000");
    platform.savedFiles = {path("none/title.bmp"), path("title.bmp")};
    frmAddText::mnuFileSaveAndClose_Click();
    EXPECT_TRUE(platform.messages.back().text.starts_with("Unable to save"));
    EXPECT_EQ(title.Caption.get(), "Add Text");
    EXPECT_FALSE(isClosed);
    state::ProjectModified = false;
    frmAddText::mnuFileSaveAndAdd_Click();
    EXPECT_EQ(platform.saveRequests.back().name, "Untitled");
    EXPECT_EQ(title.Caption.get(), "title.bmp - Add Text");
    EXPECT_EQ(forms::frmMediaList.lvwMediaList.Row(1).Text, "title.bmp");
    std::int16_t blue = 0;
    check(engine::EngineAs<engine::ITWKeyTransition>()->GetKeyBlue(state::OverlayTrack, 0, blue));
    EXPECT_EQ(blue, 255);
    EXPECT_EQ(history(), "Add to Overlay | 1/1");
    EXPECT_TRUE(state::ProjectModified);
    EXPECT_EQ(std::filesystem::file_size(path("title.bmp")), 54u + 320 * 240 * 3);

    const std::string before = testmedia::bytesOf(path("title.bmp"));
    frmAddText::mnuFileNew_Click();
    write("Another");
    frmAddText::mnuFileSave_Click(); // over the old one, and nobody asks
    EXPECT_NE(testmedia::bytesOf(path("title.bmp")), before);
    EXPECT_EQ(std::string(title.sbr.Panel("STATUS")), "Saved title.bmp.");
    EXPECT_EQ(platform.saveRequests.size(), 3u);
    frmAddText::mnuFileSaveAndAdd_Click();
    Handle stream = 0;
    check(timelineCalls->GetSourceStream(state::OverlayTrack, 1, stream));
    PixelPicture frame;
    check(engine::EngineAs<engine::ITWPreview>()->DrawKeyFrame(stream, 0, frame.hDC(), 320, 240));
    EXPECT_EQ(frame.canvas.at(0, 0), title.picWorkspaceBack.canvas.at(0, 0));
    EXPECT_EQ(frame.canvas.at(title.TextLeft + 80, title.TextTop + 12), 0xFF000000u) << "the new text, which is longer";
    ModuleHistory::OnEditUndoClick();
    ModuleHistory::OnEditUndoClick();
    EXPECT_EQ(text(), "V 0-5000");
}

TEST_F(AddTextTest, ATitleComesWithItsKeyOrNotAtAll)
{
    expectsErrors = true;
    title.TextFile = path("title.bmp");
    write("x");
    colours(kBlue, kWhite);
    const auto addFailing = [&](const std::string& call, int nth, const engine::Status& with) {
        lay("V 0-5000 O 0-500#30");
        engineCalls.failCall({call}, nth, with);
        frmAddText::mnuFileSaveAndAdd_Click();
        const bool wasMet = !engineCalls.failsLater();
        engineCalls.failCall({}, 0);
        const bool isAdded = ModuleHistory::HistoryIndex > 0;
        EXPECT_EQ(text(), isAdded ? "V 0-5000 O 0-500#30 ?500-5500#0,255,0" : "V 0-5000 O 0-500#30") << call << nth;
        return wasMet;
    };
    for (int nth = 1; addFailing("GetSourceCount", nth, engine::kFailed); ++nth) {
    }
    EXPECT_TRUE(addFailing("AddTransitionAt", 1, engine::kDone));
}

TEST_F(AddTextTest, WithoutAPictureUnderTheSlider)
{
    lay("V 1000-5000");
    frmAddText::Form_Load();
    write("x");
    EXPECT_EQ(title.Picture.at(10, 10), engine::PixelCanvas::kBlack);
    EXPECT_EQ(title.picWorkspace.canvas.width(), 320);
    lay("V 0-5000");
    expectsErrors = true;
    engineCalls.failCall({"DrawKeyFrame"});
    frmAddText::Form_Load();
    EXPECT_EQ(title.txtText.Text.get(), "") << "a frame that fails leaves a new text, not the last one";
    EXPECT_EQ(std::string(title.sbr.Panel("STATUS")), "Ready");
    std::string lines;
    for (int i = 0; i < 9; ++i) {
        lines += "\r\n";
    }
    write(lines + "x");
    frmAddText::PlaceText(frmAddText::kTopLeft);
    EXPECT_EQ(title.picWorkspace.canvas.at(4, 9 * 24 + 4), 0xFF000000u);
    frmAddText::picWorkspace_DragDrop(title.DragOffsetX, title.DragOffsetY - 9 * 24);
    EXPECT_EQ(title.picWorkspace.canvas.at(4, 4), 0xFF000000u) << "lines above the picture count";
}

} // namespace
} // namespace logic_test
