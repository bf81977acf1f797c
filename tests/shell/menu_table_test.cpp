// What stands in the menus and on the toolbar, and under which test.

#include "shell/menu_table.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

namespace {

using namespace shell;
using enum MenuKind;

/// Captions and keys in order: "File:|Open &File... Ctrl+I|-|> Add...|>> &Fade"; a check mark as "*".
std::string inWords(std::span<const MenuRow> rows)
{
    std::string all;
    for (const MenuRow& row : rows) {
        const std::string caption(row.caption);
        const std::string key = row.shortcut.empty() ? "" : " " + std::string(row.shortcut);
        const std::string check = row.startsChecked ? "*" : "";
        switch (row.kind) {
        case kTop:
            all += (all.empty() ? "" : "\n") + caption + ":";
            break;
        case kRule:
            all += "|-" + std::string(row.name);
            break;
        case kSubMenu:
        case kRecent:
            all += "|" + caption + " >";
            break;
        case kSubEntry:
            all += "|> " + caption;
            break;
        default:
            all += "|" + caption + key + check;
        }
    }
    return all;
}

TEST(MenuTable, EntriesInOrder)
{
    EXPECT_EQ(inWords(menuBar()),
              "&File:|Open &File... Ctrl+I|&Close File|-|&New Project... Ctrl+N|&Open Project... Ctrl+O|Clos&e Project"
              "|-|&Save Project Ctrl+S|Save Project &As...|-|Save &Timeline...|-|Previe&w... Ctrl+W"
              "|-|Recent &Projects >|&Recent Files >|-|E&xit\n"
              "&Edit:|&Undo Ctrl+Z|&Redo Ctrl+Y|-|&Add to Timeline F2|Clear &Timeline|Set Stretch &Mode Ctrl+M"
              "|-|Add &Effect to Timeline >|> &Fade|> &Pixelate|> &Blur|> &Wave|> &Emboss|> &Engrave|Clear E&ffects"
              "|-|A&dd to Overlay F4|Clear O&verlay|Set Overlay &Key Color Ctrl+L"
              "|-|Cu&t Ctrl+X|&Copy Ctrl+C|&Paste Ctrl+V|&Delete Del|Cr&op Shift+Del|Crop So&urce(s) Ctrl+U"
              "|-|Move to Audio &1|Move to Audio &2|-|&Start Selection Ctrl+T|E&nd Selection Ctrl+D"
              "|-|Restore Si&ze Ctrl+R\n"
              "&View:|Timeline &List*|-|&Large Icon|Small &Icon|&List|&Detail*|-|&Selection Sliders F5\n"
              "&Tools:|Zoom &In Timeline Scale F6|Zoom &Out Timeline Scale F7"
              "|-|&Add Marker F8|&Remove Marker F9|Remove All &Markers"
              "|-|&Capture... F3|&Split Timeline Tracks F11|&Pack Timeline Tracks F12|&Take Snap Ctrl+F2"
              "|Repeat A&udio Ctrl+F3|Add Te&xt Ctrl+F5|-|Optio&ns...\n"
              "&Window:|&Media List*|&Preview*|&Timeline*|T&ools*|-|&Arrange All\n"
              "&Help:|&Help Section F1|&Tutorial Ctrl+F1|-|What's &This? Shift+F1"
              "|-|&Report Bugs|&New Feature Request|-|&About Quillmont...");
    EXPECT_EQ(inWords(mediaListContext()), "Media List Context:|Add to &Timeline|&Add to Overlay|&Preview|&Close");
    EXPECT_EQ(inWords(editContext()),
              "&Edit Context:|Zoom &In|Zoo&m Out|-s21|Cu&t|&Copy|&Paste|&Delete|Cr&op|-s34|Move to Audio &1"
              "|Move to Audio &2|-s22|&Add Marker|&Remove Marker|-s23|Set Stretch &Mode|-sr1|Set Overlay &Key Color"
              "|-sr2|&Selection Sliders");
    std::string buttons;
    for (const ToolRow& row : toolBar()) {
        buttons += (buttons.empty() ? "" : "|") + std::string(row.key) + " " + std::string(row.toolTip)
                   + (row.picture == row.key ? "" : " (" + std::string(row.picture) + ")");
    }
    EXPECT_EQ(buttons, "NEW_PROJECT New Project (NEW)|OPEN_PROJECT Open Project (OPEN)|SAVE_PROJECT Save Project (SAVE)"
                       "|IMPORT_FILE Open File|ADD_TO_TIMELINE Add To Timeline|ADD_EFFECT Add Effect (To Timeline)"
                       "|ADD_TEXT Add Text (To Timeline)|CUT Cut|COPY Copy|PASTE Paste|CLEAR Delete|CROP Crop"
                       "|SET_OVERLAY_KEY_COLOR Set Overlay Key Color (OVERLAY_KEY_COLOR)"
                       "|SET_STRETCH_MODE Set Stretch Mode (STRETCH_MODE)|UNDO Undo|REDO Redo|LARGE_ICONS Large Icons"
                       "|SMALL_ICONS Small Icons|LIST List|DETAIL Detail|HELP ");
}

TEST(MenuTable, NamesKeysAndStatesAreTheirOwn)
{
    std::set<std::string_view> names;
    std::set<std::string_view> keys;
    std::set<const Menu*> states;
    std::set<const forms::ToolButton*> buttons;
    for (const auto& menu : {menuBar(), mediaListContext(), editContext()}) {
        for (const MenuRow& row : menu) {
            if (!row.name.empty()) {
                EXPECT_TRUE(names.insert(row.name).second) << row.name;
                EXPECT_TRUE(states.insert(row.state).second) << row.name;
            }
            EXPECT_TRUE(row.shortcut.empty() || keys.insert(row.shortcut).second) << row.shortcut;
        }
    }
    for (const ToolRow& row : toolBar()) {
        EXPECT_TRUE(buttons.insert(row.state).second) << row.key;
    }
    EXPECT_EQ(buttons.size(), 21U);
}

TEST(MenuTable, PopUpEntriesDoWhatTheirTwinsDo)
{
    const std::pair<const char*, const char*> twins[] = {
        {"mnuMLC_AddToTimeline", "mnuEditAddToTimeline"},
        {"mnuMLC_AddToOverlay", "mnuEditAddToOverlay"},
        {"mnuMLC_Preview", "mnuFilePreview"},
        {"mnuMLC_Close", "mnuFileClose"},
        {"mnuEC_ZoomIn", "mnuToolsZoomIn"},
        {"mnuEC_ZoomOut", "mnuToolsZoomOut"},
        {"mnuEC_Cut", "mnuEditCut"},
        {"mnuEC_Copy", "mnuEditCopy"},
        {"mnuEC_Paste", "mnuEditPaste"},
        {"mnuEC_Delete", "mnuEditClear"},
        {"mnuEC_Crop", "mnuEditCrop"},
        {"mnuEditContextAddtoAudio1", "mnuEditAddtoAudio1"},
        {"mnuEditContextAddtoAudio2", "mnuEditAddtoAudio2"},
        {"mnuEC_AddMarker", "mnuToolsAddBookmark"},
        {"mnuEC_RemoveMarker", "mnuToolsRemoveBookmark"},
        {"mnuEC_StretchMode", "mnuEditStretchMode"},
        {"mnuEC_SetOverlayTransparency", "mnuEditSetOverlayTransparency"},
        {"mnuEC_SelSliders", "mnuViewSelectionSliders"},
    };
    for (const auto& [entry, twin] : twins) {
        ASSERT_NE(findMenu(entry), nullptr) << entry;
        ASSERT_NE(findMenu(twin), nullptr) << twin;
        EXPECT_EQ(findMenu(entry)->handler, findMenu(twin)->handler) << entry;
        EXPECT_EQ(findMenu(entry)->test, findMenu(twin)->test) << entry;
    }
}

TEST(MenuTable, TestsOfEntriesAndButtons)
{
    using T = CommandTests;
    const std::pair<CommandTest, std::set<std::string_view>> tests[] = {
        {&T::hasRows,
         {"mnuFileCloseProject", "mnuFileSaveProject", "mnuFileSaveProjectAs", "mnuEditAddToTimeline", "mnuFileClose",
          "SAVE_PROJECT", "ADD_TO_TIMELINE", "mnuMLC_AddToTimeline", "mnuMLC_Close"}},
        {&T::isRowSelected, {"mnuFilePreview", "mnuMLC_Preview"}},
        {&T::hasTimeline,
         {"mnuFileExportTimeline", "mnuEditClearTimeline", "mnuToolsSplitTimeline", "mnuToolsPackTimelineBars"}},
        {&T::hasVideo,
         {"mnuEditAddEffectToTimeline", "mnuEditAddToOverlay", "mnuToolsAddText", "mnuToolsTakeSnap", "ADD_EFFECT",
          "ADD_TEXT", "mnuMLC_AddToOverlay"}},
        {&T::canRepeatAudio, {"mnuToolsRepeatAudio"}},
        {&T::isAudio1Selected, {"mnuEditAddtoAudio2", "mnuEditContextAddtoAudio2"}},
        {&T::isAudio2Selected, {"mnuEditAddtoAudio1", "mnuEditContextAddtoAudio1"}},
        {&T::hasEffects, {"mnuEditClearEffect"}},
        {&T::hasOverlays, {"mnuEditClearOverlay"}},
        {&T::canEdit,
         {"mnuEditCut", "mnuEditCopy", "mnuEditClear", "mnuEditCrop", "CUT", "COPY", "CLEAR", "CROP", "mnuEC_Cut",
          "mnuEC_Copy", "mnuEC_Delete", "mnuEC_Crop"}},
        {&T::canCropSources, {"mnuEditCropSources"}},
        {&T::canPaste, {"mnuEditPaste", "PASTE", "mnuEC_Paste"}},
        {&T::canUndo, {"mnuEditUndo", "UNDO"}},
        {&T::canRedo, {"mnuEditRedo", "REDO"}},
        {&T::canSetKeyColor,
         {"mnuEditSetOverlayTransparency", "mnuEC_SetOverlayTransparency", "SET_OVERLAY_KEY_COLOR"}},
        {&T::canSetStretchMode, {"mnuEditStretchMode", "mnuEC_StretchMode", "SET_STRETCH_MODE"}},
        {&T::canRestoreSize, {"mnuEditRestoreSize"}},
    };
    for (const auto& [test, expected] : tests) {
        std::set<std::string_view> found;
        for (const auto& menu : {menuBar(), mediaListContext(), editContext()}) {
            for (const MenuRow& row : menu) {
                if (row.test == test) {
                    found.insert(row.name);
                }
            }
        }
        for (const ToolRow& row : toolBar()) {
            if (row.test == test) {
                found.insert(row.key);
            }
        }
        EXPECT_EQ(found, expected);
    }
}

} // namespace
