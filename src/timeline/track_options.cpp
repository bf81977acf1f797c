#include "timeline/track_options.h"

#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/engine_access.h"
#include "items/row_items.h"
#include "items/track_rows.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/selection_shapes.h"

namespace timeline {

using engine::check;
using engine::EngineAs;
using engine::ITWTimeline;
using items::RowKind;
using items::TrackRow;

namespace {

std::string handlerOf(const char* box, const TrackRow& row) { return std::string(box) + nameOf(row.kind) + "_Click"; }

void onLinkChanged(const TrackRow& row)
{
    Trapped("frmTimeline", handlerOf("chkLink", row), [&] {
        const bool isEffect = row.kind == RowKind::kEffect;
        if (!isEffect) {
            check(EngineAs<ITWTimeline>()->SetTrackLink(trackOf(row), engine::toBool16(row.chkLink.Value == 1)));
        }
        moduleTimeline::ShowOrHideTrackSelections();
        if (!isEffect && row.kind != RowKind::kOverlay) { // bars do not show a link: these two rows go without
            moduleScaleRenderer::RenderAllBars();
        }
        moduleTimeline::RenderAllSelections();
        EnableOrDisableMenuItems(); // what may be edited is another set of items now
    });
}

void onLockChanged(const TrackRow& row)
{
    Trapped("frmTimeline", handlerOf("chkLock", row), [&] {
        moduleTimeline::ShowOrHideTrackSelections();
        moduleTimeline::RenderAllSelections();
        if (row.kind == RowKind::kEffect) {
            moduleScaleRenderer::RenderEffectBars();
        } else {
            moduleScaleRenderer::RenderAllBars();
            row.chkLink.Enabled = !row.isLocked();
        }
        EnableOrDisableMenuItems();
    });
}

void onDisableChanged(const TrackRow& row)
{
    Trapped("frmTimeline", handlerOf("chkDisable", row), [&] {
        const bool isDisabled = row.chkDisable.Value == 1;
        const auto engine = EngineAs<ITWTimeline>();
        check(row.kind == RowKind::kEffect ? engine->SetEffectsEnabled(engine::toBool16(!isDisabled))
                                           : engine->SetTrackDisabled(trackOf(row), engine::toBool16(isDisabled)));
    });
}

void turn(CheckBox& box) { box.Value = static_cast<std::int16_t>(box.Value == 1 ? 0 : 1); }

/// Enabled and linked, for a row that has just got its first item.
void welcomeFirstItem(const TrackRow& row)
{
    row.chkDisable.Value = std::int16_t{0};
    row.chkLink.Value = std::int16_t{1};
    setDisablePicture(row);
}

} // namespace

void bindOptions()
{
    for (const TrackRow& row : items::rows()) {
        row.chkLink.Value = std::int16_t{1};
        row.chkLock.Value = std::int16_t{0};
        row.chkDisable.Value = std::int16_t{0};
        setLinkPicture(row);
        setLockPicture(row);
        setDisablePicture(row);
        row.chkLink.Value.changed = [&row] { onLinkChanged(row); };
        row.chkLock.Value.changed = [&row] { onLockChanged(row); };
        row.chkDisable.Value.changed = [&row] { onDisableChanged(row); };
    }
}

void turnLink(const TrackRow& row)
{
    if (row.chkLink.Enabled) {
        turn(row.chkLink);
        setLinkPicture(row);
        state::markModified();
    }
}

void turnLock(const TrackRow& row)
{
    turn(row.chkLock);
    setLockPicture(row);
    state::markModified();
}

void turnDisable(const TrackRow& row)
{
    turn(row.chkDisable);
    setDisablePicture(row);
    state::markModified();
}

} // namespace timeline

namespace moduleTimeline {

using items::RowKind;
using items::TrackRow;

void EnableLinkOption(bool visible)
{
    Trapped("moduleTimeline", "EnableLinkOption", [&] {
        for (const TrackRow& row : items::rows()) {
            row.chkLink.Visible = visible;
            row.imgLink.Visible = visible;
            if (visible) {
                items::setLinkPicture(row);
            }
        }
    });
}

void ReInitLinkLockDisable()
{
    Trapped("moduleTimeline", "ReInitLinkLockDisable", [] {
        for (const TrackRow& row : items::rows()) {
            row.chkDisable.Value = std::int16_t{0};
            items::setDisablePicture(row);
            row.chkLock.Value = std::int16_t{0};
            items::setLockPicture(row);
            row.chkLink.Value = std::int16_t{1};
            row.imgLink.Picture = "BLANK"; // though it is linked: the picture comes with the next selection
        }
    });
}

void UpdateTrackOptions()
{
    Trapped("moduleTimeline", "UpdateTrackOptions", [] {
        const auto engine = engine::EngineAs<engine::ITWTimeline>();
        for (const TrackRow& row : items::rows()) {
            if (items::rowItems(*engine, row).items.count() == 1) {
                timeline::welcomeFirstItem(row);
            }
        }
    });
}

} // namespace moduleTimeline
