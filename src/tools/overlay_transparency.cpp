#include "tools/overlay_transparency.h"

#include "core/shared_state.h"
#include "core/trap.h"
#include "engine/ITWKeyTransition.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "tools/frmKeyColor.h"

namespace moduleTimeline {

using engine::check;
using engine::EngineAs;

namespace {

/// False when no overlay is selected.
bool fillDialogue()
{
    const engine::Handle track = state::OverlayTrack;
    const auto timeline = EngineAs<engine::ITWTimeline>();
    const std::int16_t seq = items::Items(*timeline, items::ItemKind::kSource, track).firstSelected();
    if (seq < 0) {
        return false;
    }
    const auto keys = EngineAs<engine::ITWKeyTransition>();
    std::int16_t red = 0;
    std::int16_t green = 0;
    std::int16_t blue = 0;
    engine::Handle stream = 0;
    check(keys->GetKeyRed(track, seq, red));
    check(keys->GetKeyGreen(track, seq, green));
    check(keys->GetKeyBlue(track, seq, blue));
    check(timeline->GetSourceStream(track, seq, stream));
    frmKeyColor::SetRGB(red, green, blue);
    frmKeyColor::SetSequenceNumber(seq);
    frmKeyColor::SetStreamHandle(stream);
    return true;
}

} // namespace

void OnEditSetOverlayTransparencyClick()
{
    Trapped("moduleTimeline", "OnEditSetOverlayTransparencyClick", [] {
        if (fillDialogue()) {
            frmKeyColor::ShowModal();
        }
    });
}

} // namespace moduleTimeline
