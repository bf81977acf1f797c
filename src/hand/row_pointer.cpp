#include "hand/row_pointer.h"

#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/adding.h"
#include "editing/moduleTWState.h"
#include "engine/engine_access.h"
#include "items/row_items.h"
#include "timeline/item_names.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <vector>

namespace moduleTimeline {

using engine::EngineAs;
using engine::ITWTimeline;
using items::ItemTimes;
using items::RowKind;

forms::RowPointer& pointerOf(RowKind kind, std::int16_t index)
{
    auto& form = forms::frmTimeline;
    switch (kind) {
    case RowKind::kVideo:
        return form.ptrVideo.at(static_cast<std::size_t>(index));
    case RowKind::kEffect:
        return form.ptrEffect.at(static_cast<std::size_t>(index));
    case RowKind::kOverlay:
        return form.ptrOverlay.at(static_cast<std::size_t>(index));
    case RowKind::kAudio:
        break;
    }
    return form.ptrAudio.at(static_cast<std::size_t>(index));
}

namespace {

/// The audio rows say "Video Track" too: kept, whoever drives the screen by its texts finds them so.
const char* defaultToolTip(RowKind kind)
{
    return kind == RowKind::kEffect ? "Effect Track" : kind == RowKind::kOverlay ? "Overlay Track" : "Video Track";
}

bool isResizeZone(const ItemTimes& item, engine::Milliseconds pos, float y)
{
    constexpr std::int32_t kZone = 12; // pixels, both ways
    return y < kZone && pos >= item.stop - moduleScaleRenderer::PixelsToMs(kZone) && pos <= item.stop;
}

std::string nameOf(RowKind kind, engine::Handle track, std::int16_t seq)
{
    timeline::ItemNames names;
    return std::string(kind == RowKind::kEffect ? names.ofEffect(track, seq) : names.ofSource(track, seq));
}

bool onMove(const char* routine, RowKind kind, float x, float y, std::int16_t index)
{
    bool isZone = false;
    Trapped("moduleTimeline", routine, [&] {
        const auto px = numbers::added(numbers::rounded<std::int32_t>(x), timeline::viewLeft());
        const engine::Milliseconds pos = moduleScaleRenderer::PixelsToMs(px);
        const auto engine = EngineAs<ITWTimeline>();
        const items::RowItems row = items::rowItems(*engine, items::row(kind, index));
        const std::int16_t seq = row.items.at(pos);
        const auto item = row.items.times(seq);
        isZone = item && isResizeZone(*item, pos, y);
        forms::RowPointer& pointer = pointerOf(kind, index);
        pointer.ToolTipText = item ? nameOf(kind, row.track, seq) : std::string(defaultToolTip(kind));
        constexpr std::int16_t kSizing = 9;
        pointer.MousePointer = isZone ? kSizing : std::int16_t{0};
    });
    return isZone;
}

} // namespace

bool OnPicVideoMouseMove(float x, float y, std::int16_t index)
{
    return onMove("OnPicVideoMouseMove*", RowKind::kVideo, x, y, index);
}

bool OnPicAudioMouseMove(float x, float y, std::int16_t index)
{
    return onMove("OnPicAudioMouseMove*", RowKind::kAudio, x, y, index);
}

bool OnPicEffectMouseMove(float x, float y, std::int16_t index)
{
    return onMove("OnPicEffectMouseMove*", RowKind::kEffect, x, y, index);
}

bool OnPicOverlayMouseMove(float x, float y, std::int16_t index)
{
    return onMove("OnPicOverlayMouseMove*", RowKind::kOverlay, x, y, index);
}

} // namespace moduleTimeline

namespace frmTimeline {

namespace {

struct ContextEntries {
    std::vector<Menu*> shown;
    std::vector<Menu*> hidden;
};

ContextEntries entriesOf(std::int16_t context, std::int16_t index)
{
    auto& m = forms::mdiTarnwick;
    const std::vector<Menu*> edit{&m.mnuEC_Copy, &m.mnuEC_Cut, &m.mnuEC_Paste, &m.mnuEC_Delete, &m.mnuEC_Crop};
    const std::vector<Menu*> scale{&m.mnuEC_ZoomIn, &m.mnuEC_ZoomOut, &m.s22, &m.mnuEC_AddMarker,
                                   &m.mnuEC_RemoveMarker};
    const auto joined = [](std::vector<Menu*> all, std::initializer_list<Menu*> more) {
        all.insert(all.end(), more);
        return all;
    };
    switch (context) {
    case 0:
        return {scale, joined(edit, {&m.s21, &m.s23, &m.mnuEC_StretchMode, &m.sr1})};
    case 1:
        return {joined(edit, {&m.s23, &m.mnuEC_StretchMode}),
                joined(scale, {&m.s21, &m.sr1, &m.mnuEC_SetOverlayTransparency, &m.mnuEditContextAddtoAudio1,
                               &m.mnuEditContextAddtoAudio2})};
    case 2: {
        const std::vector<Menu*> hidden =
            joined(scale, {&m.s23, &m.mnuEC_StretchMode, &m.sr1, &m.mnuEC_SetOverlayTransparency, &m.s21});
        if (index != 0 && index != 1) { // the effects: the moves between the audio tracks stay as they were
            return {edit, joined(hidden, {&m.s34})};
        }
        Menu* const moves[] = {&m.mnuEditContextAddtoAudio2, &m.mnuEditContextAddtoAudio1};
        return {joined(edit, {&m.s34, moves[index]}), joined(hidden, {moves[1 - index]})};
    }
    case 3:
        // The entries of the main menu go as well; the next menu update brings them back.
        return {
            joined(edit, {&m.s23, &m.mnuEC_StretchMode, &m.mnuEC_SetOverlayTransparency, &m.sr2, &m.mnuEC_SelSliders}),
            joined(scale, {&m.s21, &m.sr1, &m.s34, &m.mnuEditAddtoAudio1, &m.mnuEditAddtoAudio2,
                           &m.mnuEditContextAddtoAudio1, &m.mnuEditContextAddtoAudio2})};
    default:
        return {};
    }
}

} // namespace

void ShowMenuItems(std::int16_t context, std::int16_t index)
{
    Trapped("frmTimeline", "ShowMenuItems", [&] {
        const ContextEntries entries = entriesOf(context, index);
        for (Menu* const entry : entries.shown) {
            entry->Visible = true;
        }
        for (Menu* const entry : entries.hidden) {
            entry->Visible = false;
        }
        auto& m = forms::mdiTarnwick;
        for (Menu* const entry :
             {&m.sr3, &m.mnuEC_TrimStart, &m.mnuEC_TrimEnd, &m.mnuEC_CloseGap, &m.mnuEC_SelectWithSound}) {
            entry->Visible = context != 0; // of the bars
        }
    });
}

void PopUpEditContext(std::int16_t context, std::int16_t index)
{
    ShowMenuItems(context, index);
    if (forms::mdiTarnwick.PopupMenu) {
        forms::mdiTarnwick.PopupMenu(forms::PopUp::kEditContext);
    }
}

// --- Drops ---------------------------------------------------------------------------------------------------------

namespace {

bool isMediaTrackLocked()
{
    return std::ranges::any_of(
        items::rows(), [](const items::TrackRow& row) { return items::isMediaRow(row.kind) && row.isLocked(); });
}

} // namespace

void picVideo_OLEDragDrop(std::int16_t)
{
    Trapped("frmTimeline", "picVideo_OLEDragDrop", [] {
        if (isMediaTrackLocked()) {
            tellUser("Please unlock the audio and / or video track(s) before attempting to add this file to the "
                     "timeline.");
            return;
        }
        moduleTimeline::OnEditAddToTimelineClick();
        EnableOrDisableMenuItems();
    });
}

void picAudio_OLEDragDrop(std::int16_t index)
{
    Trapped("frmTimeline", "picAudio_OLEDragDrop", [&] {
        if (isMediaTrackLocked()) {
            tellUser("Track is locked");
        } else if (index == 0) { // the second row takes no files
            moduleTimeline::OnEditAddToTimelineClick();
            EnableOrDisableMenuItems();
        }
    });
}

void picEffect_OLEDragDrop(std::int16_t)
{
    Trapped("frmTimeline", "picEffect_OLEDragDrop", [] {
        moduleTimeline::AddSelectedEffect();
        EnableOrDisableMenuItems();
    });
}

void picOverlay_OLEDragDrop(std::int16_t index)
{
    Trapped("frmTimeline", "picOverlay_OLEDragDrop", [&] {
        if (items::row(items::RowKind::kOverlay, index).isLocked()) {
            tellUser("Track is locked");
        } else if (!moduleTWState::IsVideoTrackEmpty()) {
            moduleTimeline::OnEditAddToOverlayClick();
            EnableOrDisableMenuItems();
        }
    });
}

} // namespace frmTimeline
