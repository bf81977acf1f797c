#pragma once

// Reordering from the timeline list: an item goes ahead of another of its track.
//
// Nodes are told by their places in `forms::frmTimeline.tvwTimeline`, as in `TreeView::Selected`: the track's below the
// root, then the item's below the track, from 0. Places of items that are numbers count from 1, and place p stands for
// sequence number p - 1. What is taken out leaves the list too, and places are counted without it.
//
//     A 0-10  B 10-20  C 20-30     C onto B     A 0-10  C 10-20  B 20-30
//                                  C onto A     C 0-10  A 10-20  B 20-30
//                                  A onto C     B 10-20  A 20-30  C 30-40
//
// Nothing is raised to the caller, but by the cuts. Interface thread only.

#include "engine/types.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ModuleTreeView {

// --- The item in hand ----------------------------------------------------------------------------------------------
// Filled by the cuts below: times in ms, the key's colours 0 to 255.

inline engine::Handle ShuffleStream = 0;
inline engine::Milliseconds ShuffleStart = 0;
inline engine::Milliseconds ShuffleStop = 0;
inline engine::Milliseconds ShuffleMediaStart = 0;
inline engine::Milliseconds ShuffleMediaStop = 0;
inline std::int16_t ShuffleStretch = 0;
inline std::string ShuffleName; // of an effect, or of an overlay's transition
inline std::int16_t ShuffleKeyRed = 0;
inline std::int16_t ShuffleKeyGreen = 0;
inline std::int16_t ShuffleKeyBlue = 0;

/// Takes source seq (from 0) into the hand and off its track. False when there is no such item. All three raise what
/// the engine raises, and have nothing to do with the routines of these names that fill the clipboard.
bool EditCutSource(engine::Handle track, std::int16_t seq);
bool EditCutEffect(engine::Handle track, std::int16_t seq);
/// With its transition.
bool EditCutOverlay(engine::Handle track, std::int16_t seq);

// --- Moves ---------------------------------------------------------------------------------------------------------

/// Moves an item ahead of another one of the same track, and fills the list anew. A source comes back at the length of
/// its media, an effect keeps its length; what is in the way moves on. Onto itself it comes back where it was; a drop
/// node that is not there stands for the track's end. A whole command with its entry of the history; one that fails
/// half way puts the timeline back. True when it has taken effect.
bool ShuffleSources(const std::vector<std::int32_t>& dragNode, const std::vector<std::int32_t>& dropNode);

/// Gives every transition of the overlay track the times of its overlay.
void AlignTransitionsToSources();

} // namespace ModuleTreeView
