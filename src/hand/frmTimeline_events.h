#pragma once

// What happens on the timeline's form: the screen calls these as the person acts.
//
// This room turns what the hand does on the timeline into commands: presses, drags and keys on rows (`row_events.h`),
// sliders, markers, list and divider. It owns the drag in progress and the deeds that wait for their turn
// (`pointer_turn.h`). It selects and scrolls by itself; what becomes of the items is worked out in `editing/`. It never
// looks at a widget: it knows the numbers of the event and the state of the forms.
//
// State stands in `forms::frmTimeline`. Before a call the screen has written there what the control shows now. x is
// logical pixels from the control's left edge; buttons are 1 left, 2 right; shift is the sum of 1 Shift, 2 Ctrl,
// 4 Alt; index is the row of its kind, from 0. Nothing is raised to the caller. Interface thread only.
//
// The screen lays out the rows: it puts image boxes over their check boxes, keeps the list and the ground beside the
// divider, and hands on the focus that the scroll bar gets to the list.

#include <cstdint>

namespace frmTimeline {

/// Gives the controls their start values and tool tips, binds the change handlers and the timer, makes the timeline.
void Load();
/// The screen has written new sizes of the pictures, and `lblHighlight.Left`.
void Form_Resize();
void Form_MouseMove();
/// The panel has become the active one.
void Form_Activate();
/// The panel was closed from its window menu: it hides, and the view menu loses its check.
void CloseFromWindowMenu();

// --- Scale and ground ----------------------------------------------------------------------------------------------

/// The value of the scroll bar is another one.
void hsb_Scroll();
void picScale_MouseDown(int button, float x);
void picScale_MouseMove(float x);
void picScale_KeyDown(int key, int shift);
void picTimelineBase_MouseMove(float x);
void picTimelineBase_KeyDown(int key, int shift);

void cmdZoomIn_Click();
void cmdZoomOut_Click();
void cmdSelSliders_Click();

// --- The rows ------------------------------------------------------------------------------------------------------
// The pointer and the keys on their pictures: `row_events.h`.

/// Turn over the option of a row. A link box that is disabled, on a locked row, stays as it is.
void imgLinkVideo_Click(std::int16_t index);
void imgLinkEffect_Click(std::int16_t index);
void imgLinkOverlay_Click(std::int16_t index);
void imgLinkAudio_Click(std::int16_t index);
void imgLockVideo_Click(std::int16_t index);
void imgLockEffect_Click(std::int16_t index);
void imgLockOverlay_Click(std::int16_t index);
void imgLockAudio_Click(std::int16_t index);
void imgDisableVideo_Click(std::int16_t index);
void imgDisableEffect_Click(std::int16_t index);
void imgDisableOverlay_Click(std::int16_t index);
void imgDisableAudio_Click(std::int16_t index);

} // namespace frmTimeline
