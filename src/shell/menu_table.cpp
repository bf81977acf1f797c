#include "shell/menu_table.h"

#include "hand/bookmark_events.h"
#include "history/ModuleHistory.h"
#include "shell/edit_commands.h"
#include "shell/file_commands.h"
#include "shell/frmTools_events.h"
#include "shell/key_table.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/panel_places.h"
#include "shell/project_commands.h"
#include "shell/tools_commands.h"
#include "shell/track_menu.h"
#include "shell/tutorial.h"
#include "shell/view_switches.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/view_times.h"

#include <algorithm>
#include <array>

namespace shell {

namespace {

using enum MenuKind;
using T = CommandTests;

forms::MdiTarnwick& m = forms::mdiTarnwick;

/// A rule; in a pop-up it has a name, since it comes and goes.
MenuRow rule(std::string_view name = {}, Menu* state = nullptr) { return {kRule, name, {}, {}, state}; }

MenuRow recent(std::string_view name, std::string_view caption, Menu& state, std::vector<Menu>& items,
               void (*pick)(std::size_t))
{
    MenuRow row{kRecent, name, caption, {}, &state};
    row.items = &items;
    row.pick = pick;
    return row;
}

// clang-format off
const std::array kMenuBar = std::to_array<MenuRow>({
    {kTop, "mnuFile", "&File", "", &m.mnuFile},
    {kEntry, "mnuFileOpen", "Open &File...", "Ctrl+I", &m.mnuFileOpen, mdiTarnwick::mnuFileOpen_Click},
    {kEntry, "mnuFileClose", "&Close File", "", &m.mnuFileClose, mdiTarnwick::mnuFileClose_Click, &T::hasRows},
    rule(),
    {kEntry, "mnuFileNewProject", "&New Project...", "Ctrl+N", &m.mnuFileNewProject, mdiTarnwick::mnuFileNewProject_Click},
    {kEntry, "mnuFileOpenProject", "&Open Project...", "Ctrl+O", &m.mnuFileOpenProject, mdiTarnwick::mnuFileOpenProject_Click},
    {kEntry, "mnuFileCloseProject", "Clos&e Project", "", &m.mnuFileCloseProject, mdiTarnwick::mnuFileCloseProject_Click, &T::hasRows},
    rule(),
    {kEntry, "mnuFileSaveProject", "&Save Project", "Ctrl+S", &m.mnuFileSaveProject, mdiTarnwick::mnuFileSaveProject_Click, &T::hasRows},
    {kEntry, "mnuFileSaveProjectAs", "Save Project &As...", "", &m.mnuFileSaveProjectAs, mdiTarnwick::mnuFileSaveProjectAs_Click, &T::hasRows},
    rule(),
    {kEntry, "mnuFileExportTimeline", "Save &Timeline...", "", &m.mnuFileExportTimeline, mdiTarnwick::mnuFileExportTimeline_Click, &T::hasTimeline},
    rule(),
    {kEntry, "mnuFilePreview", "Previe&w...", "Ctrl+W", &m.mnuFilePreview, mdiTarnwick::mnuFilePreview_Click, &T::isRowSelected},
    rule(),
    recent("mnuFileResentProjects", "Recent &Projects", m.mnuFileResentProjects, m.mnuFileRP, mdiTarnwick::mnuFileRP_Click),
    recent("mnuFileResentFiles", "&Recent Files", m.mnuFileResentFiles, m.mnuFileRF, mdiTarnwick::mnuFileRF_Click),
    rule(),
    {kEntry, "mnuFileExit", "E&xit", "", &m.mnuFileExit, mdiTarnwick::mnuFileExit_Click},

    {kTop, "mnuEdit", "&Edit", "", &m.mnuEdit},
    {kEntry, "mnuEditUndo", "&Undo", "Ctrl+Z", &m.mnuEditUndo, ModuleHistory::OnEditUndoClick, &T::canUndo},
    {kEntry, "mnuEditRedo", "&Redo", "Ctrl+Y", &m.mnuEditRedo, ModuleHistory::OnEditRedoClick, &T::canRedo},
    rule(),
    {kEntry, "mnuEditAddToTimeline", "&Add to Timeline", "F2", &m.mnuEditAddToTimeline, mdiTarnwick::mnuEditAddToTimeline_Click, &T::hasRows},
    {kEntry, "mnuEditClearTimeline", "Clear &Timeline", "", &m.mnuEditClearTimeline, mdiTarnwick::mnuEditClearTimeline_Click, &T::hasTimeline},
    {kEntry, "mnuEditStretchMode", "Set Stretch &Mode", "Ctrl+M", &m.mnuEditStretchMode, mdiTarnwick::mnuEditStretchMode_Click, &T::canSetStretchMode},
    rule(),
    {kSubMenu, "mnuEditAddEffectToTimeline", "Add &Effect to Timeline", "", &m.mnuEditAddEffectToTimeline, nullptr, &T::hasVideo},
    {kSubEntry, "mnuAddEffectFade", "&Fade", "", &m.mnuAddEffectFade, mdiTarnwick::mnuAddEffectFade_Click},
    {kSubEntry, "mnuAddEffectPixelate", "&Pixelate", "", &m.mnuAddEffectPixelate, mdiTarnwick::mnuAddEffectPixelate_Click},
    {kSubEntry, "mnuAddEffectBlur", "&Blur", "", &m.mnuAddEffectBlur, mdiTarnwick::mnuAddEffectBlur_Click},
    {kSubEntry, "mnuAddEffectWave", "&Wave", "", &m.mnuAddEffectWave, mdiTarnwick::mnuAddEffectWave_Click},
    {kSubEntry, "mnuAddEffectEmboss", "&Emboss", "", &m.mnuAddEffectEmboss, mdiTarnwick::mnuAddEffectEmboss_Click},
    {kSubEntry, "mnuAddEffectEngrave", "&Engrave", "", &m.mnuAddEffectEngrave, mdiTarnwick::mnuAddEffectEngrave_Click},
    {kEntry, "mnuEditClearEffect", "Clear E&ffects", "", &m.mnuEditClearEffect, mdiTarnwick::mnuEditClearEffect_Click, &T::hasEffects},
    rule(),
    {kEntry, "mnuEditAddToOverlay", "A&dd to Overlay", "F4", &m.mnuEditAddToOverlay, mdiTarnwick::mnuEditAddToOverlay_Click, &T::hasVideo},
    {kEntry, "mnuEditClearOverlay", "Clear O&verlay", "", &m.mnuEditClearOverlay, mdiTarnwick::mnuEditClearOverlay_Click, &T::hasOverlays},
    {kEntry, "mnuEditSetOverlayTransparency", "Set Overlay &Key Color", "Ctrl+L", &m.mnuEditSetOverlayTransparency, mdiTarnwick::mnuEditSetOverlayTransparency_Click, &T::canSetKeyColor},
    rule(),
    {kEntry, "mnuEditCut", "Cu&t", "Ctrl+X", &m.mnuEditCut, mdiTarnwick::mnuEditCut_Click, &T::canEdit},
    {kEntry, "mnuEditCopy", "&Copy", "Ctrl+C", &m.mnuEditCopy, mdiTarnwick::mnuEditCopy_Click, &T::canEdit},
    {kEntry, "mnuEditPaste", "&Paste", "Ctrl+V", &m.mnuEditPaste, mdiTarnwick::mnuEditPaste_Click, &T::canPaste},
    {kEntry, "mnuEditClear", "&Delete", "Del", &m.mnuEditClear, mdiTarnwick::mnuEditClear_Click, &T::canEdit},
    {kEntry, "mnuEditCrop", "Cr&op", "Shift+Del", &m.mnuEditCrop, mdiTarnwick::mnuEditCrop_Click, &T::canEdit},
    {kEntry, "mnuEditCropSources", "Crop So&urce(s)", "Ctrl+U", &m.mnuEditCropSources, mdiTarnwick::mnuEditCropSources_Click, &T::canCropSources},
    rule(),
    {kEntry, "mnuEditAddtoAudio1", "Move to Audio &1", "", &m.mnuEditAddtoAudio1, mdiTarnwick::mnuEditAddtoAudio1_Click, &T::isAudio2Selected},
    {kEntry, "mnuEditAddtoAudio2", "Move to Audio &2", "", &m.mnuEditAddtoAudio2, mdiTarnwick::mnuEditAddtoAudio2_Click, &T::isAudio1Selected},
    rule(),
    {kEntry, "mnuEditStartSel", "&Start Selection", "Ctrl+T", &m.mnuEditStartSel, mdiTarnwick::mnuEditStartSel_Click},
    {kEntry, "mnuEditEndSel", "E&nd Selection", "Ctrl+D", &m.mnuEditEndSel, mdiTarnwick::mnuEditEndSel_Click},
    rule(),
    {kEntry, "mnuEditRestoreSize", "Restore Si&ze", "Ctrl+R", &m.mnuEditRestoreSize, mdiTarnwick::mnuEditRestoreSize_Click, &T::canRestoreSize},
    rule(),
    {kEntry, "mnuEditTrimStart", "Tr&im Start to Slider", "", &m.mnuEditTrimStart, mdiTarnwick::mnuEditTrimStart_Click, &T::canTrim},
    {kEntry, "mnuEditTrimEnd", "Trim End to S&lider", "", &m.mnuEditTrimEnd, mdiTarnwick::mnuEditTrimEnd_Click, &T::canTrim},
    {kEntry, "mnuEditCloseGap", "Delete and Close &Gap", "Ctrl+Del", &m.mnuEditCloseGap, mdiTarnwick::mnuEditCloseGap_Click, &T::canEdit},
    {kEntry, "mnuEditSelectWithSound", "Select &with Sound", "Ctrl+Shift+A", &m.mnuEditSelectWithSound, mdiTarnwick::mnuEditSelectWithSound_Click, &T::isSourceSelected},

    {kTop, "mnuView", "&View", "", &m.mnuView},
    {kCheck, "mnuViewTimelineList", "Timeline &List", "", &m.mnuViewTimelineList, mdiTarnwick::mnuViewTimelineList_Click, nullptr, true},
    rule(),
    {kChoice, "mnuViewML_LargeIcon", "&Large Icon", "", &m.mnuViewML_LargeIcon, mdiTarnwick::mnuViewML_LargeIcon_Click},
    {kChoice, "mnuViewML_SmallIcon", "Small &Icon", "", &m.mnuViewML_SmallIcon, mdiTarnwick::mnuViewML_SmallIcon_Click},
    {kChoice, "mnuViewML_List", "&List", "", &m.mnuViewML_List, mdiTarnwick::mnuViewML_List_Click},
    {kChoice, "mnuViewML_Detail", "&Detail", "", &m.mnuViewML_Detail, mdiTarnwick::mnuViewML_Detail_Click, nullptr, true},
    rule(),
    {kCheck, "mnuViewSelectionSliders", "&Selection Sliders", "F5", &m.mnuViewSelectionSliders, moduleTimeline::ToggleSelSliders},
    rule(),
    {kCheck, "mnuViewSnapping", "S&napping", "", &m.mnuViewSnapping, mdiTarnwick::mnuViewSnapping_Click},
    {kCheck, "mnuViewPicturesOnBars", "&Pictures on Bars", "", &m.mnuViewPicturesOnBars, mdiTarnwick::mnuViewPicturesOnBars_Click},
    {kCheck, "mnuViewWavesOnBars", "&Waves on Bars", "", &m.mnuViewWavesOnBars, mdiTarnwick::mnuViewWavesOnBars_Click},
    rule(),
    {kEntry, "mnuViewWholeFilm", "Wh&ole Film", "Shift+Z", &m.mnuViewWholeFilm, moduleScaleRenderer::ZoomToFilm, &T::hasTimeline},
    {kEntry, "mnuViewSelection", "S&election", "", &m.mnuViewSelection, moduleScaleRenderer::ZoomToSelection, &T::hasSelection},
    {kCheck, "mnuViewFollowEdits", "&Follow Edits", "", &m.mnuViewFollowEdits, mdiTarnwick::mnuViewFollowEdits_Click},

    {kTop, "mnuTools", "&Tools", "", &m.mnuTools},
    {kEntry, "mnuToolsZoomIn", "Zoom &In Timeline Scale", "F6", &m.mnuToolsZoomIn, moduleScaleRenderer::ZoomIn},
    {kEntry, "mnuToolsZoomOut", "Zoom &Out Timeline Scale", "F7", &m.mnuToolsZoomOut, moduleScaleRenderer::ZoomOut},
    rule(),
    {kEntry, "mnuToolsAddBookmark", "&Add Marker", "F8", &m.mnuToolsAddBookmark, frmTimeline::cmdAddBookmark_Click},
    {kEntry, "mnuToolsRemoveBookmark", "&Remove Marker", "F9", &m.mnuToolsRemoveBookmark, frmTimeline::cmdRemoveBookmark_Click},
    {kEntry, "mnueditclearmarkers", "Remove All &Markers", "", &m.mnueditclearmarkers, frmTimeline::mnueditclearmarkers_Click},
    rule(),
    {kEntry, "mnuToolsCapture", "&Capture...", "F3", &m.mnuToolsCapture, mdiTarnwick::mnuToolsCapture_Click},
    {kEntry, "mnuToolsSplitTimeline", "&Split Timeline Tracks", "F11", &m.mnuToolsSplitTimeline, mdiTarnwick::mnuToolsSplitTimeline_Click, &T::hasTimeline},
    {kEntry, "mnuToolsPackTimelineBars", "&Pack Timeline Tracks", "F12", &m.mnuToolsPackTimelineBars, mdiTarnwick::mnuToolsPackTimelineBars_Click, &T::hasTimeline},
    {kEntry, "mnuToolsTakeSnap", "&Take Snap", "Ctrl+F2", &m.mnuToolsTakeSnap, mdiTarnwick::mnuToolsTakeSnap_Click, &T::hasVideo},
    {kEntry, "mnuToolsRepeatAudio", "Repeat A&udio", "Ctrl+F3", &m.mnuToolsRepeatAudio, mdiTarnwick::mnuToolsRepeatAudio_Click, &T::canRepeatAudio},
    {kEntry, "mnuToolsAddText", "Add Te&xt", "Ctrl+F5", &m.mnuToolsAddText, mdiTarnwick::mnuToolsAddText_Click, &T::hasVideo},
    rule(),
    {kEntry, "mnuToolsOptions", "Optio&ns...", "", &m.mnuToolsOptions, mdiTarnwick::mnuToolsOptions_Click},
    rule(),
    {kCheck, "mnuToolsTrimMode", "Trim Mo&de", "T", &m.mnuToolsTrimMode, mdiTarnwick::mnuToolsTrimMode_Click},

    {kTop, "mnuWindow", "&Window", "", &m.mnuWindow},
    {kCheck, "mnuViewMediaList", "&Media List", "", &m.mnuViewMediaList, mdiTarnwick::mnuViewMediaList_Click, nullptr, true},
    {kCheck, "mnuViewPreview", "&Preview", "", &m.mnuViewPreview, mdiTarnwick::mnuViewPreview_Click, nullptr, true},
    {kCheck, "mnuViewTimeline", "&Timeline", "", &m.mnuViewTimeline, mdiTarnwick::mnuViewTimeline_Click, nullptr, true},
    {kCheck, "mnuViewTools", "T&ools", "", &m.mnuViewTools, mdiTarnwick::mnuViewTools_Click, nullptr, true},
    rule(),
    {kEntry, "mnuWindowArrangeAll", "&Arrange All", "", &m.mnuWindowArrangeAll, mdiTarnwick::mnuWindowArrangeAll_Click},

    {kTop, "mnuHelp", "&Help", "", &m.mnuHelp},
    {kEntry, "mnuHelpSection", "&Help Section", "F1", &m.mnuHelpSection, mdiTarnwick::mnuHelpSection_Click, &T::hasHelp},
    {kEntry, "mnuHelpTutorial", "&Tutorial", "Ctrl+F1", &m.mnuHelpTutorial, mdiTarnwick::mnuHelpTutorial_Click, &T::hasHelp},
    rule(),
    {kEntry, "mnuHelpWhatsThis", "What's &This?", "Shift+F1", &m.mnuHelpWhatsThis, mdiTarnwick::mnuHelpWhatsThis_Click, &T::hasWhatsThis},
    rule(),
    {kEntry, "mnuHelpReportBugs", "&Report Bugs", "", &m.mnuHelpReportBugs, mdiTarnwick::mnuHelpReportBugs_Click},
    {kEntry, "mnuHelpNewFeatureRequest", "&New Feature Request", "", &m.mnuHelpNewFeatureRequest, mdiTarnwick::mnuHelpNewFeatureRequest_Click},
    rule(),
    {kEntry, "mnuHelpAbout", "&About Quillmont...", "", &m.mnuHelpAbout, mdiTarnwick::mnuHelpAbout_Click, &T::hasAbout},
});

const std::array kMediaListContext = std::to_array<MenuRow>({
    {kTop, "mnuMediaListContext", "Media List Context", "", &m.mnuMediaListContext},
    {kEntry, "mnuMLC_AddToTimeline", "Add to &Timeline", "", &m.mnuMLC_AddToTimeline, mdiTarnwick::mnuEditAddToTimeline_Click, &T::hasRows},
    {kEntry, "mnuMLC_AddToOverlay", "&Add to Overlay", "", &m.mnuMLC_AddToOverlay, mdiTarnwick::mnuEditAddToOverlay_Click, &T::hasVideo},
    {kEntry, "mnuMLC_Preview", "&Preview", "", &m.mnuMLC_Preview, mdiTarnwick::mnuFilePreview_Click, &T::isRowSelected},
    {kEntry, "mnuMLC_Close", "&Close", "", &m.mnuMLC_Close, mdiTarnwick::mnuFileClose_Click, &T::hasRows},
});

const std::array kEditContext = std::to_array<MenuRow>({
    {kTop, "mnuEditContext", "&Edit Context", "", &m.mnuEditContext},
    {kEntry, "mnuEC_ZoomIn", "Zoom &In", "", &m.mnuEC_ZoomIn, moduleScaleRenderer::ZoomIn},
    {kEntry, "mnuEC_ZoomOut", "Zoo&m Out", "", &m.mnuEC_ZoomOut, moduleScaleRenderer::ZoomOut},
    rule("s21", &m.s21),
    {kEntry, "mnuEC_Cut", "Cu&t", "", &m.mnuEC_Cut, mdiTarnwick::mnuEditCut_Click, &T::canEdit},
    {kEntry, "mnuEC_Copy", "&Copy", "", &m.mnuEC_Copy, mdiTarnwick::mnuEditCopy_Click, &T::canEdit},
    {kEntry, "mnuEC_Paste", "&Paste", "", &m.mnuEC_Paste, mdiTarnwick::mnuEditPaste_Click, &T::canPaste},
    {kEntry, "mnuEC_Delete", "&Delete", "", &m.mnuEC_Delete, mdiTarnwick::mnuEditClear_Click, &T::canEdit},
    {kEntry, "mnuEC_Crop", "Cr&op", "", &m.mnuEC_Crop, mdiTarnwick::mnuEditCrop_Click, &T::canEdit},
    rule("s34", &m.s34),
    {kEntry, "mnuEditContextAddtoAudio1", "Move to Audio &1", "", &m.mnuEditContextAddtoAudio1, mdiTarnwick::mnuEditAddtoAudio1_Click, &T::isAudio2Selected},
    {kEntry, "mnuEditContextAddtoAudio2", "Move to Audio &2", "", &m.mnuEditContextAddtoAudio2, mdiTarnwick::mnuEditAddtoAudio2_Click, &T::isAudio1Selected},
    rule("s22", &m.s22),
    {kEntry, "mnuEC_AddMarker", "&Add Marker", "", &m.mnuEC_AddMarker, frmTimeline::cmdAddBookmark_Click},
    {kEntry, "mnuEC_RemoveMarker", "&Remove Marker", "", &m.mnuEC_RemoveMarker, frmTimeline::cmdRemoveBookmark_Click},
    rule("s23", &m.s23),
    {kEntry, "mnuEC_StretchMode", "Set Stretch &Mode", "", &m.mnuEC_StretchMode, mdiTarnwick::mnuEditStretchMode_Click, &T::canSetStretchMode},
    rule("sr1", &m.sr1),
    {kEntry, "mnuEC_SetOverlayTransparency", "Set Overlay &Key Color", "", &m.mnuEC_SetOverlayTransparency, mdiTarnwick::mnuEditSetOverlayTransparency_Click, &T::canSetKeyColor},
    rule("sr2", &m.sr2),
    {kCheck, "mnuEC_SelSliders", "&Selection Sliders", "", &m.mnuEC_SelSliders, moduleTimeline::ToggleSelSliders},
    rule("sr3", &m.sr3),
    {kEntry, "mnuEC_TrimStart", "Tr&im Start to Slider", "", &m.mnuEC_TrimStart, mdiTarnwick::mnuEditTrimStart_Click, &T::canTrim},
    {kEntry, "mnuEC_TrimEnd", "Trim End to S&lider", "", &m.mnuEC_TrimEnd, mdiTarnwick::mnuEditTrimEnd_Click, &T::canTrim},
    {kEntry, "mnuEC_CloseGap", "Delete and Close &Gap", "", &m.mnuEC_CloseGap, mdiTarnwick::mnuEditCloseGap_Click, &T::canEdit},
    {kEntry, "mnuEC_SelectWithSound", "Select &with Sound", "", &m.mnuEC_SelectWithSound, mdiTarnwick::mnuEditSelectWithSound_Click, &T::isSourceSelected},
});

/// A button of the toolbar does what a menu entry does, when it does.
ToolRow tool(std::string_view key, std::string_view toolTip, std::string_view picture, std::string_view menu, bool opensGroup = false)
{
    const MenuRow& twin = *findMenu(menu);
    const bool isView = menu.starts_with("mnuViewML_");
    return {key, toolTip, picture, &m.tbr.Button(key), twin.handler, twin.test, opensGroup, isView};
}

const std::array kToolBar = std::to_array<ToolRow>({
    tool("NEW_PROJECT", "New Project", "NEW", "mnuFileNewProject"),
    tool("OPEN_PROJECT", "Open Project", "OPEN", "mnuFileOpenProject"),
    tool("SAVE_PROJECT", "Save Project", "SAVE", "mnuFileSaveProject"),
    tool("IMPORT_FILE", "Open File", "IMPORT_FILE", "mnuFileOpen"),
    tool("ADD_TO_TIMELINE", "Add To Timeline", "ADD_TO_TIMELINE", "mnuEditAddToTimeline", true),
    {"ADD_EFFECT", "Add Effect (To Timeline)", "ADD_EFFECT", &m.tbr.Button("ADD_EFFECT"), frmTools::OnAddClick, &T::hasVideo},
    tool("ADD_TEXT", "Add Text (To Timeline)", "ADD_TEXT", "mnuToolsAddText"),
    tool("CUT", "Cut", "CUT", "mnuEditCut", true),
    tool("COPY", "Copy", "COPY", "mnuEditCopy"),
    tool("PASTE", "Paste", "PASTE", "mnuEditPaste"),
    tool("CLEAR", "Delete", "CLEAR", "mnuEditClear"),
    tool("CROP", "Crop", "CROP", "mnuEditCrop"),
    tool("SET_OVERLAY_KEY_COLOR", "Set Overlay Key Color", "OVERLAY_KEY_COLOR", "mnuEditSetOverlayTransparency", true),
    tool("SET_STRETCH_MODE", "Set Stretch Mode", "STRETCH_MODE", "mnuEditStretchMode"),
    tool("UNDO", "Undo", "UNDO", "mnuEditUndo", true),
    tool("REDO", "Redo", "REDO", "mnuEditRedo"),
    tool("LARGE_ICONS", "Large Icons", "LARGE_ICONS", "mnuViewML_LargeIcon", true),
    tool("SMALL_ICONS", "Small Icons", "SMALL_ICONS", "mnuViewML_SmallIcon"),
    tool("LIST", "List", "LIST", "mnuViewML_List"),
    tool("DETAIL", "Detail", "DETAIL", "mnuViewML_Detail"),
    tool("HELP", "", "HELP", "mnuHelpSection", true),
});
// clang-format on

} // namespace

std::span<const MenuRow> menuBar() { return kMenuBar; }

std::span<const MenuRow> mediaListContext() { return kMediaListContext; }

std::span<const MenuRow> editContext() { return kEditContext; }

const MenuRow* findMenu(std::string_view name)
{
    for (const std::span<const MenuRow> menu : {menuBar(), mediaListContext(), editContext()}) {
        const auto found = std::ranges::find(menu, name, &MenuRow::name);
        if (found != menu.end() && !name.empty()) {
            return &*found;
        }
    }
    return nullptr;
}

std::string_view shownKeyOf(const MenuRow& row)
{
    if (!row.shortcut.empty() || row.handler == nullptr) {
        return row.shortcut;
    }
    if (const std::string_view second = secondKeyOf(row.name); !second.empty()) {
        return second;
    }
    const auto twin = std::ranges::find_if(
        kMenuBar, [&](const MenuRow& other) { return other.handler == row.handler && !other.shortcut.empty(); });
    return twin != kMenuBar.end() ? twin->shortcut : std::string_view();
}

std::span<const ToolRow> toolBar() { return kToolBar; }

} // namespace shell
