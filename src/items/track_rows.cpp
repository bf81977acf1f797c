#include "items/track_rows.h"

#include "core/forms/frmTimeline.h"
#include "core/shared_state.h"
#include "engine/runtime_error.h"

#include <algorithm>

namespace items {

namespace {

forms::FrmTimeline& form = forms::frmTimeline;

constexpr auto kVideoRows = static_cast<std::int32_t>(std::tuple_size_v<decltype(form.picVideo)>);

} // namespace

const char* nameOf(RowKind kind)
{
    static constexpr const char* kNames[] = {"Video", "Effect", "Overlay", "Audio"};
    return kNames[static_cast<std::size_t>(kind)];
}

std::int32_t placeOf(const TrackRow& row) { return row.index + 1 + (row.kind == RowKind::kAudio ? kVideoRows : 0); }

const std::array<TrackRow, 5>& rows()
{
    static const std::array<TrackRow, 5> all{{
        {RowKind::kVideo, 0, form.picVideo[0], form.shpVideoSel[0], form.chkLinkVideo[0], form.chkLockVideo[0],
         form.chkDisableVideo[0], form.imgLinkVideo[0], form.imgLockVideo[0], form.imgDisableVideo[0]},
        {RowKind::kEffect, 0, form.picEffect[0], form.shpEffectSel[0], form.chkLinkEffect[0], form.chkLockEffect[0],
         form.chkDisableEffect[0], form.imgLinkEffect[0], form.imgLockEffect[0], form.imgDisableEffect[0]},
        {RowKind::kOverlay, 0, form.picOverlay[0], form.shpOverlaySel[0], form.chkLinkOverlay[0],
         form.chkLockOverlay[0], form.chkDisableOverlay[0], form.imgLinkOverlay[0], form.imgLockOverlay[0],
         form.imgDisableOverlay[0]},
        {RowKind::kAudio, 0, form.picAudio[0], form.shpAudioSel[0], form.chkLinkAudio[0], form.chkLockAudio[0],
         form.chkDisableAudio[0], form.imgLinkAudio[0], form.imgLockAudio[0], form.imgDisableAudio[0]},
        {RowKind::kAudio, 1, form.picAudio[1], form.shpAudioSel[1], form.chkLinkAudio[1], form.chkLockAudio[1],
         form.chkDisableAudio[1], form.imgLinkAudio[1], form.imgLockAudio[1], form.imgDisableAudio[1]},
    }};
    return all;
}

const TrackRow& row(RowKind kind, std::int16_t index)
{
    const auto found =
        std::ranges::find_if(rows(), [&](const TrackRow& each) { return each.kind == kind && each.index == index; });
    if (found == rows().end()) {
        throw engine::RuntimeError(9, "Subscript out of range");
    }
    return *found;
}

bool isMade(const TrackRow& row)
{
    return row.kind == RowKind::kOverlay ? state::OverlayTrack != 0 : placeOf(row) <= state::TrackCollection.Count();
}

engine::Handle trackOf(const TrackRow& row)
{
    return row.kind == RowKind::kOverlay ? state::OverlayTrack : state::TrackCollection.Item(placeOf(row));
}

void setLinkPicture(const TrackRow& row) { row.imgLink.Picture = row.chkLink.Value == 1 ? "LINK" : "BLANK"; }

void setLockPicture(const TrackRow& row) { row.imgLock.Picture = row.isLocked() ? "LOCK" : "BLANK"; }

void setDisablePicture(const TrackRow& row)
{
    const char* const off = row.kind == RowKind::kAudio ? "DISABLE_AUDIO" : "DISABLE";
    row.imgDisable.Picture = row.chkDisable.Value == 1 ? "BLANK" : off;
}

} // namespace items
