#pragma once

// Dragging the sliders' handles, with scrolling at the edges of the view.
//
//              -6                                    width - 5
//     scroll <- |  the handle follows the pointer  | -> scroll        a handle's left, in view pixels
//
// The two handles of the selection keep at least 6 pixels apart.
//
// Nothing is raised to the caller. Interface thread only.

namespace frmTimeline {

// x counts from the handle, which moves along. `button` of a move is what is held down.

void imgSliderHandle_MouseDown(int button, float x);
void imgSliderHandle_MouseMove(int button, float x);
void imgSliderHandle_MouseUp(int button, float x);
/// Behind the release, with Ctrl held: the slider goes on to the cut or marker that is within 6 pixels, and the player
/// with it.
void SnapSlider();
void imgStartSelHandle_MouseDown(int button, float x);
void imgStartSelHandle_MouseMove(int button, float x);
void imgStartSelHandle_MouseUp(int button, float x);
void imgEndSelHandle_MouseDown(int button, float x);
void imgEndSelHandle_MouseMove(int button, float x);
void imgEndSelHandle_MouseUp(int button, float x);
/// Behind the release, with Ctrl held: the handle goes on to the cut or marker that is within 6 pixels, unless the
/// other one is too near to it.
void SnapStartSel();
void SnapEndSel();
/// Scrolls by a tick while a handle is held at the edge of the view.
void tmTimeline_Timer();

} // namespace frmTimeline
