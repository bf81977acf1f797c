#pragma once

// The rows of the timeline's form as one table, so that what holds for every row is written once. Interface thread
// only.

#include "core/controls.h"
#include "engine/types.h"

#include <array>
#include <cstdint>

namespace items {

enum class RowKind : std::uint8_t { kVideo, kEffect, kOverlay, kAudio };

/// As it stands in the controls' names: "Video".
const char* nameOf(RowKind kind);

/// The controls of one row.
struct TrackRow {
    RowKind kind;
    std::int16_t index; // in the controls of its kind, from 0
    PictureBox& picture;
    Marker& selection; // the tinted shape
    CheckBox& chkLink;
    CheckBox& chkLock;
    CheckBox& chkDisable;
    ImageBox& imgLink;
    ImageBox& imgLock;
    ImageBox& imgDisable;

    bool isLocked() const { return chkLock.Value == 1; }
};

/// In the order Video, Effect, Overlay, Audio.
const std::array<TrackRow, 5>& rows();
/// Raises error 9 when there is no such row.
const TrackRow& row(RowKind kind, std::int16_t index);

/// Video or audio: what files are laid on.
constexpr bool isMediaRow(RowKind kind) { return kind == RowKind::kVideo || kind == RowKind::kAudio; }

/// The place in the `TrackCollection` that the row stands for; the overlay row has none there.
std::int32_t placeOf(const TrackRow& row);

/// Whether the engine had a track to give for the row.
bool isMade(const TrackRow& row);

/// The engine's track under the row; for the effect lane the one whose effects it shows. Raises error 9 when the track
/// could not be made.
engine::Handle trackOf(const TrackRow& row);

/// Puts on an image box the picture that its check box asks for.
void setLinkPicture(const TrackRow& row);
void setLockPicture(const TrackRow& row);
void setDisablePicture(const TrackRow& row);

} // namespace items
