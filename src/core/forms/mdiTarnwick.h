#pragma once

// What stands on the main window, as state. Behaviour, captions and keys: `shell/`.

#include "core/controls.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace forms {

/// Place and size in logical pixels.
struct Rectangle {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;

    bool operator==(const Rectangle&) const = default;
};

/// The menus that pop up under the pointer.
enum class PopUp : std::uint8_t { kMediaListContext, kEditContext };

struct ToolButton {
    Shown<bool> Enabled{false};
    Shown<bool> Pressed{false}; // of the four view buttons, one is down
};

/// The buttons of the toolbar by their keys.
class ToolBar {
public:
    /// A key that is not there is a programmer's fault.
    ToolButton& Button(std::string_view key) { return std::ranges::find(buttons_, key, &Keyed::key)->button; }

private:
    struct Keyed {
        std::string_view key;
        ToolButton button;
    };
    std::array<Keyed, 21> buttons_{{{"NEW_PROJECT", {}},
                                    {"OPEN_PROJECT", {}},
                                    {"SAVE_PROJECT", {}},
                                    {"IMPORT_FILE", {}},
                                    {"ADD_TO_TIMELINE", {}},
                                    {"ADD_EFFECT", {}},
                                    {"ADD_TEXT", {}},
                                    {"CUT", {}},
                                    {"COPY", {}},
                                    {"PASTE", {}},
                                    {"CLEAR", {}},
                                    {"CROP", {}},
                                    {"SET_OVERLAY_KEY_COLOR", {}},
                                    {"SET_STRETCH_MODE", {}},
                                    {"UNDO", {}},
                                    {"REDO", {}},
                                    {"LARGE_ICONS", {}},
                                    {"SMALL_ICONS", {}},
                                    {"LIST", {}},
                                    {"DETAIL", {}},
                                    {"HELP", {}}}};
};

struct MdiTarnwick {
    bool ProjectStarted = false; // a project was set up since the start
    bool CloseCancelled = false; // the person kept the project when asked to close it

    Shown<std::int16_t> MousePointer{std::int16_t{0}}; // 0 default, 11 hourglass, 99 a picture of the program's own
    StatusBar sbr{"", "SLIDER_POS", "DURATION", "SELECTION"};
    std::optional<std::string> HintAhead; // panel 1 as it was, while a highlighted entry of the menu writes there
    ProgressBar pbarMain;
    ToolBar tbr;

    // The recent lists: the last four, newest first; "Empty" and disabled while there is none.
    std::vector<Menu> mnuFileRF{1};
    std::vector<Menu> mnuFileRP{1};

    Menu mnuFile, mnuFileOpen, mnuFileClose, mnuFileNewProject, mnuFileOpenProject, mnuFileCloseProject,
        mnuFileSaveProject, mnuFileSaveProjectAs, mnuFileExportTimeline, mnuFilePreview, mnuFileResentProjects,
        mnuFileResentFiles, mnuFileExit;

    Menu mnuEdit, mnuEditUndo, mnuEditRedo, mnuEditAddToTimeline, mnuEditClearTimeline, mnuEditStretchMode,
        mnuEditAddEffectToTimeline, mnuAddEffectFade, mnuAddEffectPixelate, mnuAddEffectBlur, mnuAddEffectWave,
        mnuAddEffectEmboss, mnuAddEffectEngrave, mnuEditClearEffect, mnuEditAddToOverlay, mnuEditClearOverlay,
        mnuEditSetOverlayTransparency, mnuEditCut, mnuEditCopy, mnuEditPaste, mnuEditClear, mnuEditCrop,
        mnuEditCropSources, mnuEditAddtoAudio1, mnuEditAddtoAudio2, mnuEditStartSel, mnuEditEndSel, mnuEditRestoreSize,
        mnuEditTrimStart, mnuEditTrimEnd, mnuEditCloseGap, mnuEditSelectWithSound;

    Menu mnuView, mnuViewTimelineList, mnuViewML_LargeIcon, mnuViewML_SmallIcon, mnuViewML_List, mnuViewML_Detail,
        mnuViewSelectionSliders;
    Menu mnuViewPicturesOnBars, mnuViewWavesOnBars;
    Menu mnuViewSnapping{.Caption = {}, .Enabled = true, .Checked = true, .Visible = true};
    Menu mnuViewWholeFilm, mnuViewSelection, mnuViewFollowEdits;

    Menu mnuTools, mnuToolsZoomIn, mnuToolsZoomOut, mnuToolsAddBookmark, mnuToolsRemoveBookmark, mnueditclearmarkers,
        mnuToolsCapture, mnuToolsSplitTimeline, mnuToolsPackTimelineBars, mnuToolsTakeSnap, mnuToolsRepeatAudio,
        mnuToolsAddText, mnuToolsOptions, mnuToolsTrimMode;

    Menu mnuWindow, mnuViewPreview, mnuViewTimeline, mnuViewTools, mnuWindowArrangeAll;
    Menu mnuViewMediaList{.Caption = {}, .Enabled = true, .Checked = true, .Visible = true};

    Menu mnuHelp, mnuHelpSection, mnuHelpTutorial, mnuHelpWhatsThis, mnuHelpReportBugs, mnuHelpNewFeatureRequest,
        mnuHelpAbout;

    // The two menus that pop up, and the rules of the second.
    Menu mnuMediaListContext, mnuMLC_AddToTimeline, mnuMLC_AddToOverlay, mnuMLC_Preview, mnuMLC_Close;
    Menu mnuEditContext, mnuEC_ZoomIn, mnuEC_ZoomOut, s21, mnuEC_Cut, mnuEC_Copy, mnuEC_Paste, mnuEC_Delete, mnuEC_Crop,
        s34, mnuEditContextAddtoAudio1, mnuEditContextAddtoAudio2, s22, mnuEC_AddMarker, mnuEC_RemoveMarker, s23,
        mnuEC_StretchMode, sr1, mnuEC_SetOverlayTransparency, sr2, mnuEC_SelSliders, sr3, mnuEC_TrimStart,
        mnuEC_TrimEnd, mnuEC_CloseGap, mnuEC_SelectWithSound;

    /// Pops a menu up under the pointer; it may come back before the menu is gone. Set by the screens; without one
    /// nothing pops up.
    std::function<void(PopUp)> PopupMenu;

    // The panels. The screen tells the inner size; the places follow from what is visible.
    Shown<std::int32_t> InnerWidth{0};
    Shown<std::int32_t> InnerHeight{0};
    Shown<std::int32_t> TimelineHeight{290}; // of the timeline's panel
    Shown<Rectangle> TimelinePlace;
    Shown<Rectangle> MediaListPlace;
    Shown<Rectangle> PreviewPlace;
    Shown<Rectangle> ToolsPlace; // a column at the right, outside the width that the others share

    // What a hand has set by the dividers, in place of the arrangement's own; 0: nothing.
    std::int32_t KeptListShare = 0;      // of the width that media list and preview share, in ten-thousandths
    std::int32_t KeptTimelineHeight = 0; // pixels
    Shown<Rectangle> ListDividerPlace;   // between media list and preview; empty: it has nothing to divide
    Shown<Rectangle> TimelineDividerPlace;
};
inline MdiTarnwick mdiTarnwick;

} // namespace forms
