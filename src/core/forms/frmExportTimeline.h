#pragma once

// What stands on the dialogue that saves the timeline, as state. Behaviour: `export/`.

#include "core/controls.h"
#include "engine/types.h"

namespace forms {

/// A row of the list of tracks.
struct StreamRow {
    std::string Text; // "Overlay"
    bool Selected = false;

    bool operator==(const StreamRow&) const = default;
};

struct FrmExportTimeline {
    Shown<std::vector<StreamRow>> lstSaveStreams;
    Shown<std::string> lblSaveRange, lblFPS, lblVideoDim;
    Shown<bool> optAVI{true}; // else Windows Media
    TextBox txtSaveFileName;
    Button cmdOK, cmdAdvanced;

    std::vector<engine::Handle> SaveStreams; // a track for each row that is none of effects, in their order
    engine::Milliseconds SaveStart = 0;
    engine::Milliseconds SaveStop = 0;
    bool SaveCancelled = false;   // the run was given up: the dialogue stays
    bool PreviewWhenDone = false; // the finished movie is opened with the desktop's program

    std::string AgreedName; // of a file that the person has agreed to overwrite
};
inline FrmExportTimeline frmExportTimeline;

} // namespace forms
