#include "hand/row_events.h"

#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/item_moves.h"
#include "editing/sound_mates.h"
#include "engine/engine_access.h"
#include "hand/drag_scroll.h"
#include "hand/edge_keys.h"
#include "hand/pointer_trace.h"
#include "hand/pointer_turn.h"
#include "hand/row_drag.h"
#include "hand/row_pointer.h"
#include "hand/trim_drag.h"
#include "items/row_items.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <cmath>
#include <optional>
#include <utility>

namespace frmTimeline {

using hand::pointerTrace;
using items::RowKind;

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;
constexpr int kShiftKey = 1;
constexpr int kCtrlKey = 2;
constexpr int kAltKey = 4;

/// An event on a row's picture.
struct RowEvent {
    const char* name;
    RowKind kind;
    std::int16_t index;
    int button;
    int shift;
    float x;
    float y;

    std::string trace(std::string_view mark = {}) const { return pointerTrace(name, index, x, y, mark); }
};

/// What the pop-up menu of a row is about.
std::int16_t contextOf(RowKind kind)
{
    return kind == RowKind::kVideo ? std::int16_t{1} : kind == RowKind::kOverlay ? std::int16_t{3} : std::int16_t{2};
}

void say(const char* hint)
{
    if (!state::BusyOpening) { // the progress of an opening is not written over
        forms::mdiTarnwick.sbr.Panel(1) = std::string(hint);
    }
}

/// A press with Alt alone that has not become a drag yet.
struct AltClick {
    RowKind kind;
    std::int16_t index;
    float x;
    float y;
};
std::optional<AltClick> altClick;

bool isHolding() { return form.DragActive || form.Trimming; }

/// Whether the pointer still stands where Alt was pressed; once it has gone, the click is none for good.
bool isAltClickAt(float x, float y)
{
    constexpr float kClick = 4; // pixels
    if (altClick && (std::abs(x - altClick->x) >= kClick || std::abs(y - altClick->y) >= kClick)) {
        altClick.reset();
    }
    return altClick.has_value();
}

std::int16_t itemAt(const items::TrackRow& row, float x)
{
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    const auto px = numbers::added(numbers::rounded<std::int32_t>(x), timeline::viewLeft());
    return items::rowItems(*engine, row).items.at(moduleScaleRenderer::PixelsToMs(px));
}

/// The press is undone but for what it has selected.
void letGo()
{
    altClick.reset();
    cancelDrag();
    cancelTrim();
}

void beginHolding(const RowEvent& event, const items::TrackRow& row)
{
    const auto grip = trimGripAt(row, event.shift, event.x, event.y);
    if (!grip || !beginTrim(row, *grip, event.x)) {
        beginDrag(row, event.x, event.y);
    }
}

template <class Click>
void press(const RowEvent& event, const Click& click)
{
    Trapped("frmTimeline", event.trace(), [&] {
        const bool isLeft = event.button == kLeftButton;
        if ((!isLeft && event.button != kRightButton) || (isHolding() && !isLeft)) {
            return;
        }
        endDrag(true); // its release was lost
        endTrim(true);
        altClick.reset();
        if (isLeft && event.shift == kAltKey) {
            altClick = {event.kind, event.index, event.x, event.y};
        }
        state::ClickX = numbers::rounded<std::int32_t>(event.x);
        state::ClickShift = (event.shift & kShiftKey) != 0;
        state::ClickCtrl = (event.shift & kCtrlKey) != 0;
        click();
        state::ClickShift = false;
        state::ClickCtrl = false;
        const items::TrackRow& row = items::row(event.kind, event.index);
        if (row.isLocked()) {
            return;
        }
        if (isLeft) {
            beginHolding(event, row);
        } else {
            PopUpEditContext(contextOf(event.kind), event.kind == RowKind::kEffect ? std::int16_t{-1} : event.index);
        }
    });
}

template <class Click>
void onPressed(const RowEvent& event, const Click& click)
{
    hand::inTurn([=] { press(event, click); });
}

void dragOn(const RowEvent& event)
{
    if (isAltClickAt(event.x, event.y)) {
        return;
    }
    scrollAtEdge(event.x, event.shift);
    if (form.Trimming) {
        trimTo(event.x, event.shift);
    } else {
        dragTo(event.x);
    }
}

/// Behind what the row itself shows: an end that a press would trim.
void showGrip(const RowEvent& event)
{
    if (const auto grip = trimGripAt(items::row(event.kind, event.index), event.shift, event.x, event.y)) {
        constexpr std::int16_t kSizing = 9;
        moduleTimeline::pointerOf(event.kind, event.index).MousePointer = kSizing;
        say(grip->end == editing::ItemEnd::kStart ? "Drag to trim the start; the speed stays"
                                                  : "Drag to trim the end; the speed stays");
    }
}

template <class Hover>
void onMoved(const RowEvent& event, const char* hint, Hover hover)
{
    hand::inTurn([=] {
        Trapped("frmTimeline", event.trace("*"), [&] {
            say(hint);
            moduleScaleRenderer::DrawScaleLine(event.x);
            if (isHolding() && event.button == kLeftButton) {
                dragOn(event); // tool tip and pointer stay those of the press
            } else {
                hover(event.x, event.y, event.index);
                showGrip(event);
            }
        });
    });
}

/// True when the release is that of a click with Alt on an item.
bool selectWithSound(const RowEvent& event)
{
    if (!isAltClickAt(event.x, event.y)) {
        return false;
    }
    const AltClick click = *std::exchange(altClick, std::nullopt);
    const items::TrackRow& row = items::row(click.kind, click.index);
    const std::int16_t seq = itemAt(row, click.x);
    if (seq == -1) {
        return false;
    }
    letGo();
    moduleEdit::SelectAloneWithSound(row, seq);
    EnableOrDisableMenuItems();
    return true;
}

void onReleased(const RowEvent& event)
{
    hand::inTurn([=] {
        Trapped("frmTimeline", event.trace(), [&] {
            if (event.button == kLeftButton && !selectWithSound(event)) {
                const bool keepsSelection = (event.shift & (kShiftKey | kCtrlKey)) != 0; // the two do the same
                endDrag(keepsSelection);
                endTrim(keepsSelection);
            }
        });
    });
}

/// A nudge has no entry in the history: a held key would push all other steps out of the list. The other arrow takes
/// it back.
void nudge(engine::Milliseconds delta)
{
    if (moduleTimeline::ShiftSelSources(delta)) {
        state::markModified();
        RenderAllBars();
        moduleScaleRenderer::AdjustScroll();
        UpdatePreview();
    }
}

void takeKey(const char* name, const items::TrackRow& row, int key, int shift)
{
    constexpr int kEscape = 27;
    constexpr int kLeftArrow = 37;
    constexpr int kRightArrow = 39;
    Trapped("frmTimeline", name, [&] {
        if (isHolding()) {
            if (key == kEscape) {
                letGo();
            }
            return;
        }
        const bool isFine = (shift & kShiftKey) != 0;
        say(isFine ? "Ready" : "Use the 'Shift' key to nudge source(s) with the direction keys");
        const engine::Milliseconds step = moduleScaleRenderer::PixelsToMs(isFine ? 1 : 5);
        if (key == kLeftArrow || key == kRightArrow) {
            nudge(key == kRightArrow ? step : -step);
        } else {
            takeEdgeKey(row, key, shift);
        }
    });
}

void onKey(const char* name, RowKind kind, std::int16_t index, int key, int shift)
{
    hand::inTurn([=] { takeKey(name, items::row(kind, index), key, shift); });
}

} // namespace

void picVideo_MouseDown(std::int16_t index, int button, int shift, float x, float y)
{
    onPressed({"picVideo_MouseDown", RowKind::kVideo, index, button, shift, x, y},
              [=] { moduleTimeline::OnPicMediaClick(index, true); });
}

void picEffect_MouseDown(std::int16_t index, int button, int shift, float x, float y)
{
    onPressed({"picEffect_MouseDown", RowKind::kEffect, index, button, shift, x, y},
              [=] { moduleTimeline::OnPicEffectClick(index); });
}

void picOverlay_MouseDown(std::int16_t index, int button, int shift, float x, float y)
{
    onPressed({"picOverlay_MouseDown", RowKind::kOverlay, index, button, shift, x, y},
              [=] { moduleTimeline::OnPicOverlayClick(index); });
}

void picAudio_MouseDown(std::int16_t index, int button, int shift, float x, float y)
{
    onPressed({"picAudio_MouseDown", RowKind::kAudio, index, button, shift, x, y},
              [=] { moduleTimeline::OnPicMediaClick(index, false); });
}

void picVideo_MouseMove(std::int16_t index, int button, int shift, float x, float y)
{
    onMoved({"picVideo_MouseMove", RowKind::kVideo, index, button, shift, x, y}, "Represents video sources over time",
            moduleTimeline::OnPicVideoMouseMove);
}

void picEffect_MouseMove(std::int16_t index, int button, int shift, float x, float y)
{
    onMoved({"picEffect_MouseMove", RowKind::kEffect, index, button, shift, x, y},
            "Represents various effects over time", moduleTimeline::OnPicEffectMouseMove);
}

void picOverlay_MouseMove(std::int16_t index, int button, int shift, float x, float y)
{
    onMoved({"picOverlay_MouseMove", RowKind::kOverlay, index, button, shift, x, y},
            "Represents overlay sources over time", moduleTimeline::OnPicOverlayMouseMove);
}

void picAudio_MouseMove(std::int16_t index, int button, int shift, float x, float y)
{
    onMoved({"picAudio_MouseMove", RowKind::kAudio, index, button, shift, x, y}, "Represents audio sources over time",
            moduleTimeline::OnPicAudioMouseMove);
}

void picVideo_MouseUp(std::int16_t index, int button, int shift, float x, float y)
{
    onReleased({"picVideo_MouseUp", RowKind::kVideo, index, button, shift, x, y});
}

void picEffect_MouseUp(std::int16_t index, int button, int shift, float x, float y)
{
    onReleased({"picEffect_MouseUp", RowKind::kEffect, index, button, shift, x, y});
}

void picOverlay_MouseUp(std::int16_t index, int button, int shift, float x, float y)
{
    onReleased({"picOverlay_MouseUp", RowKind::kOverlay, index, button, shift, x, y});
}

void picAudio_MouseUp(std::int16_t index, int button, int shift, float x, float y)
{
    onReleased({"picAudio_MouseUp", RowKind::kAudio, index, button, shift, x, y});
}

void EndItemDrag()
{
    hand::inTurn([] {
        Trapped("frmTimeline", "EndItemDrag", [] {
            altClick.reset();
            endDrag(true);
            endTrim(true);
        });
    });
}

void picVideo_KeyDown(std::int16_t index, int key, int shift)
{
    onKey("picVideo_KeyDown", RowKind::kVideo, index, key, shift);
}

void picEffect_KeyDown(std::int16_t index, int key, int shift)
{
    onKey("picEffect_KeyDown", RowKind::kEffect, index, key, shift);
}

void picOverlay_KeyDown(std::int16_t index, int key, int shift)
{
    onKey("picOverlay_KeyDown", RowKind::kOverlay, index, key, shift);
}

void picAudio_KeyDown(std::int16_t index, int key, int shift)
{
    onKey("picAudio_KeyDown", RowKind::kAudio, index, key, shift);
}

} // namespace frmTimeline
