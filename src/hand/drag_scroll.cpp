#include "hand/drag_scroll.h"

#include "core/forms/frmTimeline.h"
#include "core/trap.h"
#include "hand/pointer_turn.h"
#include "hand/row_drag.h"
#include "hand/trim_drag.h"

#include <algorithm>
#include <utility>

namespace frmTimeline {

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

struct Pointer {
    float x = 0;
    int shift = 0;
};
Pointer pointer;
bool isTickWaiting = false; // behind another deed of the hand: one is enough

/// 0 in the view.
std::int32_t ticksAt(float x)
{
    constexpr float kPixelsForOneMore = 40;
    constexpr std::int32_t kMost = 6;
    const auto right = static_cast<float>(form.picScale.ScaleWidth);
    const float outside = x < 0 ? -x : std::max(x - right, 0.0F);
    const std::int32_t ticks = std::min(1 + static_cast<std::int32_t>(outside / kPixelsForOneMore), kMost);
    return outside == 0 ? 0 : x < 0 ? -ticks : ticks;
}

void tick()
{
    if (form.DragActive) {
        dragWithView(ticksAt(pointer.x));
    } else if (form.Trimming) {
        trimWithView(ticksAt(pointer.x), pointer.x, pointer.shift);
    } else {
        form.tmDrag.Enabled = false;
    }
}

} // namespace

void scrollAtEdge(float x, int shift)
{
    pointer = {x, shift};
    form.tmDrag.Enabled = ticksAt(x) != 0;
}

void tmDrag_Timer()
{
    if (!std::exchange(isTickWaiting, true)) {
        hand::inTurn([] {
            isTickWaiting = false;
            Trapped("frmTimeline", "tmDrag_Timer*", tick);
        });
    }
}

} // namespace frmTimeline
