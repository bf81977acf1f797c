// The keys of the panels: that none gets in another's way, and where they lead.

#include "shell/shell_harness.h"

#include "preview/moduleTWPreview.h"
#include "shell/key_table.h"
#include "timeline/moduleBookmarks.h"

#include <map>
#include <sstream>

namespace logic_test {
namespace {

using namespace shell;

constexpr std::array kPlaces = {KeyPlace::kRow,       KeyPlace::kScale,   KeyPlace::kGround, KeyPlace::kTimelineList,
                                KeyPlace::kMediaList, KeyPlace::kPreview, KeyPlace::kTools};

class KeyTableTest : public ShellTest {
protected:
    /// True when the key did something there.
    static bool press(KeyPlace place, std::string_view key) { return takeKey(place, keyNamed(key).value(), false); }
};

TEST_F(KeyTableTest, NoKeyIsInAnothersWay)
{
    const auto add = [](std::map<std::pair<int, int>, std::string>& keys, std::string_view text,
                        std::string_view what) {
        const auto key = keyNamed(text);
        ASSERT_TRUE(key) << text;
        const auto [other, isNew] = keys.emplace(std::pair(key->code, key->shift), what);
        EXPECT_TRUE(isNew) << text << ": " << what << ", " << other->second;
    };
    std::map<std::pair<int, int>, std::string> ofTheWindow;
    std::map<std::pair<int, int>, std::string> bare;
    for (const MenuRow& row : menuBar()) {
        if (!row.shortcut.empty()) {
            add(isPanelKey(row.shortcut) ? bare : ofTheWindow, row.shortcut, row.name);
        }
    }
    for (const SecondKey& second : secondKeys()) {
        EXPECT_NE(findMenu(second.menu), nullptr) << second.menu;
        EXPECT_FALSE(isPanelKey(second.key)) << second.key;
        add(ofTheWindow, second.key, second.menu);
    }
    for (const KeyPlace place : kPlaces) {
        SCOPED_TRACE(static_cast<int>(place));
        auto keys = ofTheWindow;
        keys.insert(bare.begin(), bare.end());
        for (const KeyRow& row : panelKeys()) {
            std::istringstream words{std::string(row.keys)};
            for (std::string word; row.isAt(place) && words >> word;) {
                add(keys, word, row.what);
            }
            // A list moves by keys, and searches by letters: nothing of ours is there but what it leaves.
            const bool isList = place >= KeyPlace::kTimelineList && place != KeyPlace::kPreview;
            EXPECT_TRUE(!isList || !row.isAt(place) || row.command == nullptr || row.keys == "Space"
                        || row.keys.starts_with("Alt+"))
                << row.keys;
        }
    }
}

TEST_F(KeyTableTest, WhatTheMenuMustNotTake)
{
    for (const std::string_view key : {"T", "Shift+Z", "Space", "Home", "Shift+Down", "5"}) {
        EXPECT_TRUE(isPanelKey(key)) << key;
    }
    for (const std::string_view key : {"Ctrl+Q", "Ctrl+Shift+Z", "F8", "Del", "Shift+Del", "Shift+F1", "Alt+T", ""}) {
        EXPECT_FALSE(isPanelKey(key)) << key;
    }
    EXPECT_EQ(keyNamed("Ctrl+Shift+Z"), (Key{'Z', 3}));
    EXPECT_FALSE(keyNamed("Hyper+Z") || keyNamed("Ctrl+") || keyNamed("Nothing"));
}

TEST_F(KeyTableTest, KeysTakeTheSliderToPlaces)
{
    put("V 0-1000 1000-2000 3000-4000 O 0-1500#0");
    UpdatePreview();
    moduleBookmarks::takeBookmarks({2500, 500});
    struct Case {
        const char* key;
        std::int32_t slider;
        KeyPlace place = KeyPlace::kRow;
    };
    constexpr auto kPreview = KeyPlace::kPreview;
    // Each goes on from the one before it. Without moving pictures there are 25 frames a second.
    const Case cases[] = {{"Up", 0},
                          {"Down", 500},
                          {"Down", 1000},
                          {"Down", 1500, KeyPlace::kScale},
                          {"Down", 2000, KeyPlace::kGround},
                          {"Shift+Down", 2500},
                          {"Shift+Down", 2500},
                          {"Shift+Up", 500},
                          {"End", 4000},
                          {"Down", 4000},
                          {"Up", 3000},
                          {"J", 2800},
                          {"Right", 2840, kPreview},
                          {"Shift+Left", 2440, kPreview},
                          {"Home", 0},
                          {"Left", 0, kPreview},
                          {"End", 4000},
                          {"Left", 3960, kPreview},
                          {"Shift+Right", 3960, kPreview}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.key) + " to " + std::to_string(c.slider));
        EXPECT_TRUE(press(c.place, c.key));
        EXPECT_EQ(state::SliderPosition, c.slider);
        EXPECT_EQ(forms::frmPreview.sldSeekBar.Value(), c.slider);
        EXPECT_EQ(moduleTWPreview::GetCurrentPosition(), c.slider);
    }
    moduleTimeline::SetSliderPosition(1010, false); // in the middle of a frame
    press(kPreview, "Left");
    EXPECT_EQ(state::SliderPosition, 960);
    forms::frmPreview.sldSeekBar.SetMax(1800); // the range is shown
    press(KeyPlace::kRow, "End");
    EXPECT_EQ(state::SliderPosition, 1800);
}

TEST_F(KeyTableTest, FramesAreThoseOfTheFirstFileThatMoves)
{
    open({"24p.mp4"});
    mdiTarnwick::mnuEditAddToTimeline_Click();
    const std::int32_t starts[] = {42, 84, 126, 167};
    for (const std::int32_t start : starts) {
        press(KeyPlace::kPreview, "Right");
        EXPECT_EQ(state::SliderPosition, start);
    }
    press(KeyPlace::kPreview, "Left");
    EXPECT_EQ(state::SliderPosition, 126);
}

TEST_F(KeyTableTest, PlayingSelectingAndWhatAHandThatHoldsSomethingGets)
{
    put("V 0-1000 E 0-500 O 0-1500#0 A 0-500");
    UpdatePreview();
    const auto& playing = moduleTWPreview::PreviewState;
    const std::pair<const char*, int> plays[] = {{"Space", 1}, {"Space", 2}, {"Space", 1},
                                                 {"K", 2},     {"K", 2},     {"L", 1}};
    for (const auto& [key, playState] : plays) {
        EXPECT_TRUE(press(KeyPlace::kScale, key));
        EXPECT_EQ(playing, playState) << key;
    }
    EXPECT_FALSE(press(KeyPlace::kMediaList, "L") || press(KeyPlace::kTimelineList, "L")
                 || press(KeyPlace::kTools, "F"));
    EXPECT_TRUE(takeKey(KeyPlace::kRow, keyNamed("Space").value(), true)) << "held: neither plays nor goes elsewhere";
    EXPECT_EQ(playing, 1);
    press(KeyPlace::kRow, "Down");
    EXPECT_EQ(playing, 2) << "as after a click on the scale";

    setRows("Le");
    EXPECT_TRUE(press(KeyPlace::kRow, "Ctrl+A"));
    EXPECT_EQ(flags(), "V 1 E 0 O 1 A 1");
    press(KeyPlace::kPreview, "F");
    EXPECT_TRUE(forms::frmPreview.WholeScreen);
    press(KeyPlace::kPreview, "Esc");
    EXPECT_FALSE(forms::frmPreview.WholeScreen);

    form.DragActive = true;
    EXPECT_FALSE(press(KeyPlace::kRow, "Home"));
    form.DragActive = false;
}

TEST_F(KeyTableTest, UndoAndRedoSayWhatTheyAreAbout)
{
    const auto& panel = window.sbr.Panel(1);
    open({"mpeg4.avi"});
    mdiTarnwick::mnuEditAddToTimeline_Click();
    window.sbr.Panel(1) = std::string("before");
    mdiTarnwick::MenuHighlighted("mnuEditUndo");
    EXPECT_EQ(panel.get(), "Undo: Add to Timeline");
    mdiTarnwick::MenuHighlighted("mnuEditRedo");
    EXPECT_EQ(panel.get(), "before");
    mdiTarnwick::tbr_ButtonClick("UNDO");
    mdiTarnwick::MenuHighlighted("mnuEditUndo");
    EXPECT_EQ(panel.get(), "before");
    mdiTarnwick::MenuHighlighted("mnuEditRedo");
    EXPECT_EQ(panel.get(), "Redo: Add to Timeline");
    mdiTarnwick::MenuHighlighted({});
    EXPECT_EQ(panel.get(), "before");
    mdiTarnwick::MenuHighlighted("mnuEditRedo");
    window.sbr.Panel(1) = std::string("a file has gone");
    mdiTarnwick::MenuHighlighted({});
    EXPECT_EQ(panel.get(), "a file has gone") << "what is said meanwhile stays";
}

} // namespace
} // namespace logic_test
