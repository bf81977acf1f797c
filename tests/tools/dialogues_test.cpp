// The dialogues for an overlay's key colour and for the stretch mode: what they open on, and what OK does.

#include "shell/shell_harness.h"

#include "core/forms/frmKeyColor.h"
#include "core/forms/frmStretchMode.h"
#include "shell/tools_commands.h"
#include "tools/frmKeyColor.h"
#include "tools/frmStretchMode.h"

namespace logic_test {
namespace {

class ToolDialogues : public ShellTest {
protected:
    void TearDown() override
    {
        frmKeyColor::showDialogue = frmStretchMode::showDialogue = nullptr;
        ShellTest::TearDown();
    }
    /// Gives the command; when its dialogue opens, does that in it. Whether it opened.
    static bool work(void (*command)(), const std::function<void()>& deeds)
    {
        bool isOpen = false;
        frmKeyColor::showDialogue = frmStretchMode::showDialogue = [&] {
            isOpen = true;
            deeds();
        };
        command();
        return isOpen;
    }
    static bool inKeyColour(const std::function<void()>& deeds)
    {
        return work(mdiTarnwick::mnuEditSetOverlayTransparency_Click, deeds);
    }
    static bool inStretchMode(const std::function<void()>& deeds)
    {
        return work(mdiTarnwick::mnuEditStretchMode_Click, deeds);
    }
    int refreshes() { return engineCalls.counts["RefreshPreview"] + engineCalls.counts["BuildPreview"]; }

    /// Fields, boxes and sliders show this colour, and the display too.
    void expectColour(std::array<int, 3> rgb)
    {
        const auto& d = keyColour;
        const auto text = [](int a, int b, int c) {
            return std::to_string(a) + " " + std::to_string(b) + " " + std::to_string(c);
        };
        const std::string told = text(rgb[0], rgb[1], rgb[2]);
        EXPECT_EQ(text(d.KeyColorRed, d.KeyColorGreen, d.KeyColorBlue), told);
        EXPECT_EQ(d.txtRed.Text.get() + " " + d.txtGreen.Text.get() + " " + d.txtBlue.Text.get(), told);
        EXPECT_EQ(text(d.sldRed.Value(), d.sldGreen.Value(), d.sldBlue.Value()), told);
        EXPECT_EQ(d.picColorDisplay.get(), rgb[0] | rgb[1] << 8 | rgb[2] << 16);
    }

    forms::FrmKeyColor& keyColour = forms::frmKeyColor;
    forms::FrmStretchMode& stretch = forms::frmStretchMode;
};

TEST_F(ToolDialogues, OpenFromEveryPlaceButNotWhileBusy)
{
    void (*const ways[])() = {shell::findMenu("mnuEditSetOverlayTransparency")->handler,
                              shell::findMenu("mnuEC_SetOverlayTransparency")->handler,
                              [] { mdiTarnwick::tbr_ButtonClick("SET_OVERLAY_KEY_COLOR"); },
                              [] { mdiTarnwick::OnActionsClick("Set overlay key color"); },
                              shell::findMenu("mnuEditStretchMode")->handler,
                              shell::findMenu("mnuEC_StretchMode")->handler,
                              [] { mdiTarnwick::tbr_ButtonClick("SET_STRETCH_MODE"); },
                              [] { mdiTarnwick::OnActionsClick("Set stretch mode..."); }};
    lay("V 0-1000 O 0-500#30*");
    EnableOrDisableMenuItems();
    for (const auto& way : ways) {
        EXPECT_TRUE(work(way, [] {})) << &way - ways;
        state::BusyOpening = true;
        EXPECT_FALSE(work(way, [] {})) << &way - ways;
        state::BusyOpening = false;
    }
    lay("V 0-1000* O 0-500#30");
    EXPECT_FALSE(inKeyColour([] {})) << "no overlay is selected";
}

TEST_F(ToolDialogues, AllInputsWriteTheKeyColour)
{
    lay("V 0-1000 O 0-300#9 400-700#30* 800-900#31*");
    EXPECT_TRUE(inKeyColour([&] {
        expectColour({10, 20, 30});
        const struct {
            const char* typed;
            const char* shows;
            int value;
        } texts[] = {{"12.5", "12", 12}, {"", "", 12},       {"-", "-", 12},      {"40000", "40000", 12},
                     {" 7 ", "7", 7},    {"7x", "7x", 7},    {"300", "255", 255}, {"301", "255", 255},
                     {"-5", "0", 0},     {"255", "255", 255}};
        for (const auto& [typed, shows, value] : texts) {
            keyColour.txtRed.Text = std::string(typed);
            EXPECT_EQ(keyColour.txtRed.Text.get(), shows) << typed;
            EXPECT_TRUE(keyColour.KeyColorRed == value && keyColour.sldRed.Value() == value) << typed;
        }
        keyColour.sldGreen.SetValue(200);
        expectColour({255, 200, 30});
        const std::array<int, 3> primaries[] = {{0, 0, 0},   {255, 255, 255}, {255, 0, 0},   {0, 255, 0},
                                                {0, 0, 255}, {255, 0, 255},   {0, 255, 255}, {255, 255, 0}};
        for (std::int16_t i = 0; i < 8; ++i) {
            frmKeyColor::lblPrimaryColors_Click(i);
            expectColour(primaries[i]);
        }
        EXPECT_EQ(keyColour.picCurrentColor.get(), 0x1e140a);
        frmKeyColor::cmdCancel_Click();
    }));
    EXPECT_EQ(text() + history(), "V 0-1000 O 0-300#9 400-700#30* 800-900#31* | 0/0");
    EXPECT_TRUE(platform.messages.empty());
}

TEST_F(ToolDialogues, TheDropperTakesThePixelBelowIt)
{
    lay("V 0-1000 O 0-500#30*");
    ASSERT_TRUE(inKeyColour([&] {
        const auto expectPixel = [&](int x, int y) {
            const std::uint32_t pixel = keyColour.picDisplay.canvas.at(x, y);
            expectColour({int(pixel >> 16 & 255), int(pixel >> 8 & 255), int(pixel & 255)});
        };
        frmKeyColor::imgDisplay_MouseMove(300, 20); // without a press
        expectColour({10, 20, 30});
        frmKeyColor::imgDisplay_MouseDown(0, 0);
        for (const auto& [x, y, inX, inY] : {std::array{0, 0, 0, 0},
                                             {160, 120, 160, 120},
                                             {319, 239, 319, 239},
                                             {-9, 400, 0, 239},
                                             {999, -1, 319, 0}}) {
            frmKeyColor::imgDisplay_MouseMove(x, y);
            expectPixel(inX, inY);
        }
        frmKeyColor::imgDisplay_MouseUp();
        frmKeyColor::imgDisplay_MouseMove(160, 120);
        expectPixel(319, 0);
        ASSERT_NE(keyColour.picDisplay.canvas.at(160, 120), keyColour.picDisplay.canvas.at(319, 0));
        keyColour.PickedRed = 99;
        frmKeyColor::imgDisplay_MouseDown(319, 0); // what the boxes show already
        expectPixel(319, 0);
        frmKeyColor::SetStreamHandle(0); // it has no frame
        frmKeyColor::Form_Load();
        EXPECT_EQ(keyColour.picDisplay.canvas.at(160, 120), 0xFF000000U) << "the frame of the last time is gone";
    }));
}

TEST_F(ToolDialogues, OkWithAKeyColourMakesOneStep)
{
    const auto setBlue = [](std::int32_t blue) {
        return [blue] {
            inKeyColour([&] {
                forms::frmKeyColor.sldBlue.SetValue(blue);
                frmKeyColor::cmdOK_Click();
            });
        };
    };
    const int before = refreshes();
    run({"the second", "V 0-900 O 0-300#30 400-700#31*", setBlue(77), "V 0-900 O 0-300#30 400-700#77*"});
    EXPECT_EQ(history(), "Set Key Color | 1/1");
    EXPECT_GT(refreshes(), before);
    run({"no key", "V 0-900 O 0-300*", setBlue(5), "V 0-900 O 0-300*"});
    EXPECT_FALSE(state::ProjectModified);
    int closed = 0;
    frmKeyColor::closeDialogue = [&] { ++closed; };
    runFailing("V 0-900 O 0-300#30*", setBlue(8), {"SetKeyColor"});
    EXPECT_EQ(closed, 0) << "it may be tried again";
    frmKeyColor::closeDialogue = nullptr;
}

TEST_F(ToolDialogues, StretchModeOpensOnThatOfTheFirstSelectedSource)
{
    const std::pair<const char*, const char*> cases[] = {
        {"V 0-500m2 500-900m1", "1000 STRETCH"},
        {"V 0-500m2 500-900m1* O 0-500m2#30*", "0100 CROP"},
        {"V 0-500m1 O 0-500m1#30 600-900m2#31*", "0010 PRESERVE_ASPECT_RATIO"},
        {"V 0-500m3*", "0001 PRESERVE_ASPECT_RATIO_NOLETTERBOX"},
        {"V 0-500m7*", "1000 "},
    };
    for (const auto& [timeline, shows] : cases) {
        lay(timeline);
        EXPECT_TRUE(inStretchMode([&, expected = std::string(shows)] {
            std::string all;
            for (const auto& one :
                 {stretch.optStretch, stretch.optCrop, stretch.optPreserve, stretch.optStretchPreserve}) {
                all += one ? "1" : "0";
            }
            EXPECT_EQ(all + " " + stretch.imgPreview.Picture.get(), expected);
        })) << timeline;
    }
}

TEST_F(ToolDialogues, OkSetsTheModeOfTheSelectedSourcesOrOfTheirTracks)
{
    using namespace frmStretchMode;
    const char* const mixed = "V 0-500m3* 500-900m1 O 0-500m1#30* 600-900m2#31 A 0-500 600-700*";
    const char* const overlay = "V 0-500m1 O 0-500m2#30* 600-900m1#31 A 0-500";
    const struct {
        const char* before;
        void (*option)();
        bool isWholeTrack;
        const char* after;
    } cases[] = {
        {mixed, optPreserve_Click, false, "V 0-500m2* 500-900m1 O 0-500m2#30* 600-900m2#31 A 0-500 600-700m2*"},
        {mixed, optCrop_Click, true, "V 0-500m1* 500-900m1 O 0-500m1#30* 600-900m1#31 A 0-500m1 600-700m1*"},
        {overlay, optStretch_Click, true, "V 0-500m1 O 0-500#30* 600-900#31 A 0-500"},
        {mixed, optStretchPreserve_Click, false, mixed},
        {mixed, optStretchPreserve_Click, true, mixed},
        {"V 0-500m1 O 0-500m2#30", optPreserve_Click, true, "V 0-500m1 O 0-500m2#30"},
    };
    const auto set = [&](void (*option)(), bool isWholeTrack) {
        inStretchMode([&] {
            option();
            stretch.chkApplyToEntireTrack.Value = static_cast<std::int16_t>(isWholeTrack ? 1 : 0);
            cmdOK_Click();
        });
    };
    for (const auto& [before, option, isWholeTrack, after] : cases) {
        SCOPED_TRACE(before);
        lay(before);
        const int ahead = refreshes();
        set(option, isWholeTrack);
        EXPECT_EQ(text() + history(), std::string(after) + " | 0/0");
        const bool isChanged = std::string_view(before) != after;
        EXPECT_EQ(state::ProjectModified, isChanged);
        EXPECT_EQ(refreshes() > ahead, isChanged);
    }
    expectsErrors = true;
    lay("V 0-500* 500-900*");
    engineCalls.failCall({"SetSourceStretchMode"}, 2);
    set(optCrop_Click, false);
    EXPECT_EQ(text(), "V 0-500m1* 500-900*");
    EXPECT_TRUE(state::ProjectModified) << "what was set ahead of the failure stands";
}

} // namespace
} // namespace logic_test
