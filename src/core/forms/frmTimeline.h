#pragma once

// What stands on the timeline's form, as state. Rows: Video, the effect lane, Overlay, Audio 1 and Audio 2.
// Behaviour: `timeline/`. Places are logical pixels; the pictures and the scale share one left edge,
// `lblHighlight.Left`.

#include "core/controls.h"

#include <array>
#include <vector>

namespace forms {

/// What the pointer meets on a track picture.
struct RowPointer {
    Shown<std::string> ToolTipText;
    Shown<std::int16_t> MousePointer{std::int16_t{0}}; // 0 default, 9 the sizing pointer east-west
    Marker DropMark;                                   // where files that are dragged over it would lie
};

struct FrmTimeline {
    // The scale and its sliders.
    PictureBox picScale;
    Shown<std::string> picScaleToolTip; // the time under the pointer
    ImageBox imgScaleMarker;
    Label lblHighlight; // marks where the track pictures start
    ScrollBar hsb;
    ImageBox imgSliderHandle;
    ImageBox imgStartSelHandle;
    ImageBox imgEndSelHandle;
    Marker imgScaleSlider; // the lines on the scale
    Marker imgStartSelSlider;
    Marker imgEndSelSlider;
    Marker picSlider; // the lines over the tracks
    Marker picStartSelSlider;
    Marker picEndSelSlider;
    Timer tmTimeline{.Enabled = false, .Interval = 20, .tick = {}};
    double PixelRatio = 1; // device pixels to one of the rows', told by the screen
    Marker picSnapLine;    // over scale and rows: the time that an edge in the hand is drawn to

    // The rows.
    std::array<PictureBox, 1> picVideo;
    std::array<PictureBox, 1> picEffect;
    std::array<PictureBox, 1> picOverlay;
    std::array<PictureBox, 2> picAudio;
    std::array<RowPointer, 1> ptrVideo;
    std::array<RowPointer, 1> ptrEffect;
    std::array<RowPointer, 1> ptrOverlay;
    std::array<RowPointer, 2> ptrAudio;
    std::array<Marker, 1> shpVideoSel; // the tinted shapes of the selection
    std::array<Marker, 1> shpEffectSel;
    std::array<Marker, 1> shpOverlaySel;
    std::array<Marker, 2> shpAudioSel;
    std::array<CheckBox, 1> chkLinkVideo, chkLockVideo, chkDisableVideo;
    std::array<CheckBox, 1> chkLinkEffect, chkLockEffect, chkDisableEffect;
    std::array<CheckBox, 1> chkLinkOverlay, chkLockOverlay, chkDisableOverlay;
    std::array<CheckBox, 2> chkLinkAudio, chkLockAudio, chkDisableAudio;
    std::array<ImageBox, 1> imgLinkVideo, imgLockVideo, imgDisableVideo;
    std::array<ImageBox, 1> imgLinkEffect, imgLockEffect, imgDisableEffect;
    std::array<ImageBox, 1> imgLinkOverlay, imgLockOverlay, imgDisableOverlay;
    std::array<ImageBox, 2> imgLinkAudio, imgLockAudio, imgDisableAudio;

    // The list and the divider before the rows.
    TreeView tvwTimeline;
    Shown<bool> tvwTimelineVisible{true};
    Shown<std::int32_t> picVerticalResizeLeft{200};
    Shown<std::int32_t> Width{0}; // of the form, told by the screen
    Shown<bool> Visible{true};    // of the panel

    Button cmdZoomIn;
    Button cmdZoomOut;
    Button cmdSelSliders;
    Button cmdAddBookmark;
    Button cmdRemoveBookmark;

    // The markers on the scale. Element 0 is the pattern of the others: hidden, at time 0.
    std::vector<ImageBox> imgBookmark{ImageBox{.Picture = {}, .ToolTipText = {}, .Left = 0, .Visible = false}};
    std::vector<std::int32_t> BookmarkTimes{0}; // ms, in step with the images
    std::int16_t BookmarkCount = 1;             // one above the last used index
    std::int16_t SelectedBookmark = 0;          // 0 none
    bool DraggingBookmark = false;
    float BookmarkOffset = 0; // pixels; x of the press inside the marker

    // A drag of a slider.
    bool Dragging = false;
    float DragOffset = 0; // pixels; x of the press inside the handle
    bool DraggingSlider = false;
    bool MovingSlider = false; // it has a new place, of which nothing else knows yet, and events run
    bool DraggingStart = false;
    bool DraggingEnd = false;
    bool ScrollingRight = false;
    bool Scrolling = false;  // a tick of `tmTimeline` is being worked on
    float DividerOffset = 0; // pixels; x of the press inside the divider
    bool DividerHeld = false;
    std::int32_t DividerWidest = 200; // pixels; the furthest right that the divider has been

    // A drag of items on a track picture.
    bool DragActive = false;        // a left press on an unlocked row is in progress
    float DragLastX = 0;            // pixels; x of the press, then of the last step
    std::int16_t DragSeq = -1;      // what was pressed, -1 nothing
    bool DragResize = false;        // by its right end
    std::int32_t DragOrigStart = 0; // ms; what was pressed, at the press
    std::int32_t DragOrigStop = 0;
    Timer tmDrag{.Enabled = false, .Interval = 20, .tick = {}}; // runs while the pointer of a drag is outside the view
    bool Trimming = false;                                      // the hand holds an end that it trims
};
inline FrmTimeline frmTimeline;

} // namespace forms
