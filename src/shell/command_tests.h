#pragma once

// Which commands make sense at the moment, asked once for all menus, buttons and actions. Interface thread only.

namespace shell {

/// One answer for each test that a command may hang on.
struct CommandTests {
    bool hasRows = false;       // the media list holds files
    bool isRowSelected = false; // one of them is selected
    bool hasTimeline = false;   // some track holds a source
    bool hasVideo = false;      // the video track does
    bool hasEffects = false;
    bool hasOverlays = false;
    bool canRepeatAudio = false;   // a source of an audio track is selected, and there is video
    bool isAudioSelected = false;  // on either audio track
    bool isAudio1Selected = false; // on the first
    bool isAudio2Selected = false; // on the second
    bool canEdit = false;          // cut, copy, delete, crop
    bool canCropSources = false;   // the same between the sliders of the selection
    bool hasSelection = false;     // these are shown, or an item is selected that may be edited
    bool canPaste = false;         // the clipboard holds something
    bool canUndo = false;
    bool canRedo = false;
    bool canSetKeyColor = false;    // of the selected overlay
    bool canSetStretchMode = false; // of the selected overlay or video source
    bool canRestoreSize = false;
    bool canTrim = false;          // a selected item of an unlocked row
    bool isSourceSelected = false; // on any row
    bool hasHelp = false;          // there is a help window
    bool hasWhatsThis = false;     // the screens have a context help mode
    bool hasAbout = false;
};

/// Asks the engine and the forms. Raises nothing: a question that fails is answered with no.
CommandTests currentTests();

} // namespace shell
