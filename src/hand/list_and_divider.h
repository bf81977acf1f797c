#pragma once

// The timeline list, and the divider between it and the rows. Nothing is raised to the caller. Interface thread only.

#include <cstdint>
#include <vector>

namespace frmTimeline {

/// A node was clicked; its places as in `TreeView::Selected`, empty for the root.
void tvwTimeline_NodeClick(const std::vector<std::int32_t>& places);

/// The divider follows the pointer by way of `picVerticalResizeLeft`; the screen fits list and rows to it on release,
/// before it hands that event on.
void picVerticalResize_MouseDown(int button, float x);
void picVerticalResize_MouseMove(int button, float x);
void picVerticalResize_MouseUp(int button, float x);

} // namespace frmTimeline
