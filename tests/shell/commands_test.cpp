// What is enabled when, and what the commands of the main window do.

#include "shell/shell_harness.h"

#include "hand/list_and_divider.h"
#include "hand/row_events.h"
#include "hand/slider_drag.h"
#include "report/web_host.h"
#include "shell/view_switches.h"

namespace logic_test {
namespace {

class CommandsTest : public ShellTest {
protected:
    /// Names of the main menu's entries, below the tops, that can be chosen; those that always can and those of the
    /// view are left out.
    static std::string enabled()
    {
        EnableOrDisableMenuItems();
        std::string all;
        for (const shell::MenuRow& row : shell::menuBar()) {
            if (row.state != nullptr && row.test != nullptr && row.state->Enabled && !row.name.starts_with("mnuView")) {
                all += (all.empty() ? "" : " ") + std::string(row.name);
            }
        }
        return all;
    }
};

TEST_F(CommandsTest, EntriesOverLayouts)
{
    const std::string edits = "mnuEditCut mnuEditCopy mnuEditClear mnuEditCrop ";
    const std::string own = "mnuEditTrimStart mnuEditTrimEnd mnuEditCloseGap mnuEditSelectWithSound ";
    const std::string always = "mnuToolsSplitTimeline mnuToolsPackTimelineBars";
    put("B 0-1000=0-5000");
    EXPECT_EQ(enabled(), "mnuFileExportTimeline mnuEditClearTimeline " + always);
    select(audio(2), 0);
    EXPECT_EQ(enabled(), "mnuFileExportTimeline mnuEditClearTimeline " + edits
                             + "mnuEditAddtoAudio1 mnuEditRestoreSize " + own + always);
    put("V 0-5000 E 0-500 O 0-2500=0-5000#0");
    const std::string rows = "mnuFileExportTimeline mnuEditClearTimeline mnuEditAddEffectToTimeline mnuEditClearEffect "
                             "mnuEditAddToOverlay mnuEditClearOverlay ";
    EXPECT_EQ(enabled(), rows + edits + "mnuEditAddtoAudio1 mnuEditRestoreSize " + own + always
                             + " mnuToolsTakeSnap mnuToolsRepeatAudio mnuToolsAddText");
    const std::string pictures = always + " mnuToolsTakeSnap mnuToolsAddText";
    moduleTimeline::ClearMFSTSubSelections();
    EXPECT_EQ(enabled(), rows + pictures);
    select(state::OverlayTrack, 0);
    EXPECT_EQ(enabled(), "mnuFileExportTimeline mnuEditClearTimeline mnuEditStretchMode mnuEditAddEffectToTimeline "
                         "mnuEditClearEffect mnuEditAddToOverlay mnuEditClearOverlay mnuEditSetOverlayTransparency "
                             + edits + "mnuEditRestoreSize " + own + pictures);
    showSelection(1000, 2000);
    EXPECT_EQ(enabled(), rows + edits + "mnuEditCropSources " + own + pictures);
}

TEST_F(CommandsTest, EntriesOfTheView)
{
    const auto zooms = [&] {
        EnableOrDisableMenuItems();
        return std::string(window.mnuViewWholeFilm.Enabled ? "film " : "")
               + (window.mnuViewSelection.Enabled ? "selection" : "");
    };
    EXPECT_EQ(zooms(), "");
    moduleTimeline::ToggleSelSliders();
    EXPECT_EQ(zooms(), "selection");
    moduleTimeline::ToggleSelSliders();
    put("E 0-500 O 0-2500#0");
    EXPECT_EQ(zooms(), "film ");
    select(state::OverlayTrack, 0);
    EXPECT_EQ(zooms(), "film selection");
    setRows("Lo");
    EXPECT_EQ(zooms(), "film ");

    mdiTarnwick::mnuViewFollowEdits_Click();
    mdiTarnwick::Form_Load(); // the next start
    EXPECT_TRUE(window.mnuViewFollowEdits.Checked);
    EXPECT_TRUE(window.mnuViewSnapping.Checked);
}

TEST_F(CommandsTest, EntriesAreEnabledAsTheProgramGoes)
{
    EXPECT_EQ(enabled(), "");
    EXPECT_TRUE(window.mnuFileOpen.Enabled);
    EXPECT_FALSE(window.tbr.Button("SAVE_PROJECT").Enabled);
    EXPECT_FALSE(tools.cmdAdd.Enabled);
    open({"mpeg4.avi"});
    const std::string project = "mnuFileClose mnuFileCloseProject mnuFileSaveProject mnuFileSaveProjectAs ";
    EXPECT_EQ(enabled(), project + "mnuFilePreview mnuEditAddToTimeline");
    EXPECT_TRUE(window.tbr.Button("ADD_TO_TIMELINE").Enabled);
    EXPECT_TRUE(window.tbr.Button("SAVE_PROJECT").Enabled);
    mdiTarnwick::tbr_ButtonClick("ADD_TO_TIMELINE");
    EXPECT_EQ(enabled(),
              project
                  + "mnuFileExportTimeline mnuFilePreview mnuEditUndo mnuEditAddToTimeline mnuEditClearTimeline "
                    "mnuEditAddEffectToTimeline mnuEditAddToOverlay mnuToolsSplitTimeline "
                    "mnuToolsPackTimelineBars mnuToolsTakeSnap mnuToolsAddText");
    EXPECT_TRUE(tools.cmdAdd.Enabled);
    mdiTarnwick::mnuAddEffectBlur_Click();
    std::string name(10, ' ');
    engine::check(timelineCalls->GetEffectName(video(), 0, name));
    EXPECT_EQ(name, "Blur      ");
    mdiTarnwick::mnuEditAddToOverlay_Click();
    EXPECT_EQ(tools.lvwHistory.get().size(), 3U);
    mdiTarnwick::tbr_ButtonClick("UNDO");
    EXPECT_TRUE(window.mnuEditRedo.Enabled);
    EXPECT_TRUE(window.tbr.Button("REDO").Enabled);
    mdiTarnwick::tbr_ButtonClick("CUT"); // disabled: nothing happens
    mdiTarnwick::showHelp = [](std::string_view) {};
    EnableOrDisableMenuItems();
    EXPECT_TRUE(window.mnuHelpSection.Enabled);
    EXPECT_TRUE(window.tbr.Button("HELP").Enabled);
}

TEST_F(CommandsTest, PressesAndReleasesUpdateTheMenus)
{
    put("V 0-1000");
    const auto undone = [&] { window.mnuEditAddToOverlay.Enabled = false; };
    const std::pair<const char*, std::function<void()>> events[] = {
        {"press on an item", [] { frmTimeline::picVideo_MouseDown(0, 1, 0, 10, 12); }},
        {"press beside", [] { frmTimeline::picEffect_MouseDown(0, 1, 0, 10, 12); }},
        {"sliders", [] { moduleTimeline::ToggleSelSliders(); }},
        {"link", [] { frmTimeline::imgLinkVideo_Click(0); }},
        {"lock", [] { frmTimeline::imgLockVideo_Click(0); }},
        {"node", [] { frmTimeline::tvwTimeline_NodeClick({0}); }},
        {"row", [] { open({"still.bmp"}); }},
        {"drag", [] {
             frmTimeline::imgEndSelHandle_MouseDown(1, 0);
             frmTimeline::imgEndSelHandle_MouseUp(1, 0);
         }}};
    for (const auto& [what, run] : events) {
        undone();
        run();
        EXPECT_TRUE(window.mnuEditAddToOverlay.Enabled) << what;
    }
}

TEST_F(CommandsTest, SelectionFromAndToTheSlider)
{
    const auto selection = [] {
        return std::to_string(state::SelStartPosition) + "-" + std::to_string(state::SelEndPosition);
    };
    const struct {
        engine::Milliseconds slider;
        bool isStart;
        const char* after;
    } steps[] = {{1000, true, "1000-2000"}, {3000, false, "1000-3000"}, {2500, true, "2500-3000"},
                 {2980, true, "2980-3980"}, {500, false, "0-1000"},     {500, true, "500-1000"}};
    for (const auto& [slider, isStart, after] : steps) {
        moduleTimeline::SetSliderPosition(slider, false);
        isStart ? mdiTarnwick::mnuEditStartSel_Click() : mdiTarnwick::mnuEditEndSel_Click();
        EXPECT_EQ(selection(), after);
        EXPECT_TRUE(window.mnuViewSelectionSliders.Checked);
    }
    EXPECT_EQ(forms::frmPreview.sldSeekBar.Min(), 500);
    EXPECT_EQ(forms::frmPreview.sldSeekBar.Max(), 1000);
}

TEST_F(CommandsTest, Views)
{
    const auto shown = [&] {
        std::string all = std::to_string(forms::frmMediaList.lvwMediaList.View.get()) + ":";
        for (const auto& [menu, key] :
             {std::pair{&window.mnuViewML_LargeIcon, "LARGE_ICONS"},
              std::pair{&window.mnuViewML_SmallIcon, "SMALL_ICONS"}, std::pair{&window.mnuViewML_List, "LIST"},
              std::pair{&window.mnuViewML_Detail, "DETAIL"}}) {
            EXPECT_EQ(menu->Checked.get(), window.tbr.Button(key).Pressed.get());
            all += menu->Checked ? "1" : "0";
        }
        return all;
    };
    EXPECT_EQ(shown(), "3:0001");
    mdiTarnwick::tbr_ButtonClick("LARGE_ICONS");
    EXPECT_EQ(shown(), "0:1000");
    mdiTarnwick::mnuViewML_List_Click();
    EXPECT_EQ(shown(), "2:0010");
    mdiTarnwick::mnuViewTimelineList_Click();
    EXPECT_FALSE(form.tvwTimelineVisible);
    EXPECT_FALSE(window.mnuViewTimelineList.Checked);
}

TEST_F(CommandsTest, PlacesOfThePanels)
{
    const auto places = [&] {
        const auto words = [](const forms::Rectangle& place) {
            return std::to_string(place.left) + "," + std::to_string(place.top) + " " + std::to_string(place.width)
                   + "x" + std::to_string(place.height);
        };
        return "M " + words(window.MediaListPlace) + " P " + words(window.PreviewPlace) + " T "
               + words(window.TimelinePlace) + " X " + words(window.ToolsPlace);
    };
    window.TimelineHeight = 300;
    mdiTarnwick::MDIForm_Resize(1233, 800);
    EXPECT_EQ(places(), "M 0,0 622x500 P 622,0 381x500 T 0,500 1003x300 X 1003,0 230x800");
    mdiTarnwick::mnuViewPreview_Click();
    EXPECT_EQ(places(), "M 0,0 1003x500 P 622,0 381x500 T 0,500 1003x300 X 1003,0 230x800");
    EXPECT_FALSE(window.mnuViewPreview.Checked);
    mdiTarnwick::mnuViewPreview_Click();
    mdiTarnwick::mnuViewMediaList_Click();
    EXPECT_EQ(places(), "M 0,0 622x500 P 0,0 1003x500 T 0,500 1003x300 X 1003,0 230x800");
    EXPECT_FALSE(window.mnuViewMediaList.Checked);
    EXPECT_FALSE(forms::frmMediaList.Visible);
    mdiTarnwick::mnuViewMediaList_Click();
    frmTools::CloseFromWindowMenu();
    EXPECT_FALSE(window.mnuViewTools.Checked);
    EXPECT_EQ(places(), "M 0,0 764x500 P 764,0 469x500 T 0,500 1233x300 X 1003,0 230x800");
    mdiTarnwick::mnuViewTimeline_Click();
    EXPECT_EQ(places(), "M 0,0 764x800 P 764,0 469x800 T 0,500 1233x300 X 1003,0 230x800");
    mdiTarnwick::mnuViewTimeline_Click();
    mdiTarnwick::MDIForm_Resize(100, 200); // smaller than the timeline
    EXPECT_EQ(places(), "M 0,0 62x0 P 62,0 38x0 T 0,0 100x200 X 1003,0 230x800");
    const int before = platform.eventsRun;
    mdiTarnwick::mnuWindowArrangeAll_Click();
    EXPECT_EQ(platform.eventsRun, before + 1);
}

TEST_F(CommandsTest, WhatDividersSetStandsInForThePlaces)
{
    const auto sizes = [&] {
        return std::to_string(window.MediaListPlace.get().width) + " " + std::to_string(window.PreviewPlace.get().width)
               + " " + std::to_string(window.TimelinePlace.get().height);
    };
    const auto kept = [&](const char* key) { return platform.settings[state::AppSection + "/Panels/" + key]; };
    window.TimelineHeight = 300;
    mdiTarnwick::MDIForm_Resize(1230, 800);
    const struct {
        std::int32_t x;
        std::int32_t y;
        const char* sizes;
    } drawn[] = {{-20, 900, "260 740 150"}, {990, -20, "820 180 640"}, {450, 380, "450 550 420"}};
    for (const auto& [x, y, expected] : drawn) {
        mdiTarnwick::DrawListDivider(x);
        mdiTarnwick::DrawTimelineDivider(y);
        EXPECT_EQ(sizes(), expected) << "every panel keeps some room";
    }
    mdiTarnwick::KeepDividers();
    mdiTarnwick::MDIForm_Resize(2230, 900);
    EXPECT_EQ(sizes(), "900 1100 420");
    mdiTarnwick::mnuViewPreview_Click();
    EXPECT_EQ(window.MediaListPlace.get().width, 2000);
    EXPECT_EQ(window.ListDividerPlace, forms::Rectangle{});
    mdiTarnwick::mnuViewPreview_Click();
    EXPECT_EQ(sizes(), "900 1100 420");
    EXPECT_EQ(window.ListDividerPlace, (forms::Rectangle{897, 0, 6, 480}));
    EXPECT_EQ(window.TimelineDividerPlace, (forms::Rectangle{0, 477, 2000, 6}));
    mdiTarnwick::MDIForm_Resize(530, 200);
    EXPECT_EQ(sizes(), "150 150 100");

    window.KeptListShare = window.KeptTimelineHeight = 0;
    mdiTarnwick::MDIForm_Resize(1230, 800);
    mdiTarnwick::Form_Load(); // the next start
    EXPECT_EQ(sizes(), "450 550 420");
    mdiTarnwick::ForgetListDivider();
    EXPECT_EQ(sizes(), "620 380 420");
    EXPECT_EQ(kept("Media List Share") + "|" + kept("Timeline Height"), "|420");
    mdiTarnwick::mnuWindowArrangeAll_Click();
    EXPECT_EQ(sizes(), "620 380 300");
    EXPECT_EQ(kept("Timeline Height"), "");
    for (const char* const text : {"wide", "0", "-1", "10000"}) {
        platform.settings[state::AppSection + "/Panels/Media List Share"] = text;
        mdiTarnwick::Form_Load();
        EXPECT_EQ(sizes(), "620 380 300") << text;
    }
}

TEST_F(CommandsTest, HelpAndClosing)
{
    std::string topic;
    mdiTarnwick::showHelp = [&](std::string_view shown) { topic = shown; };
    mdiTarnwick::mnuHelpSection_Click();
    EXPECT_EQ(topic, "1_Welcome.htm");
    mdiTarnwick::mnuHelpReportBugs_Click();
    mdiTarnwick::mnuHelpNewFeatureRequest_Click();
    const std::string host(kWebHost);
    EXPECT_EQ(platform.openedWithDesktop,
              (std::vector{host + "/Quillmont/report_bug.aspx", host + "/Quillmont/new_feature.aspx"}));
    bool isClosed = false;
    mdiTarnwick::unload = [&] { isClosed = mdiTarnwick::QueryUnload(); };
    for (bool* const busy : {&state::InSelectionUpdate, &state::BusyOpening}) {
        *busy = true;
        window.sbr.Panel(1) = "";
        mdiTarnwick::mnuFileExit_Click();
        EXPECT_FALSE(isClosed);
        EXPECT_EQ(panel(""), "Quillmont is currently busy. Please wait until the current operation is completed and "
                             "then close the application.");
        *busy = false;
    }
    mdiTarnwick::MDIForm_MouseMove();
    EXPECT_EQ(panel(""), "Ready");
    mdiTarnwick::mnuFileExit_Click();
    EXPECT_TRUE(isClosed);
}

} // namespace
} // namespace logic_test
