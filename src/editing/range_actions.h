#pragma once

// One item against the selection: what cut, copy, delete and crop do to it.
//
//     selection            a |----------| b
//     whole                  [ A ]             cut and delete   A goes
//     left part                 [   A   ]      cut and delete   A begins at b
//     right part        [   A   ]              cut and delete   A ends at a
//     inside         [         A         ]     cut and delete   two pieces, up to a and from b on
//
// Crop keeps what lies between a and b where it is. Cut and copy put the piece between a and b on the clipboard, with
// the gaps around it. What lies outside the selection is left alone, but: a delete also draws out the start of each
// source behind the selection into the gap ahead of it, as far as its media and b allow, unless it begins exactly at b.
// Kept: scripts count on the times that come of it. The engine keeps such a source from covering the one ahead of it.
//
// seq names the item; it is lowered when the item goes, so that seq + 1 is the next one. An item is changed whole or
// not at all. Every action traps its own errors (error 11: a source with a media length of 0 or less, which then stays
// as it is) and answers whether it did. Interface thread only.

#include "editing/edit_trap.h"
#include "editing/selection_edges.h"
#include "items/source_times.h"

#include <cstdint>

namespace moduleEdit {

editing::Answer CutAction(engine::Handle track, std::int16_t& seq, const items::SourceTimes& source,
                          const editing::SelectionEdges& selection);
editing::Answer CopyAction(engine::Handle track, std::int16_t& seq, const items::SourceTimes& source,
                           const editing::SelectionEdges& selection);
editing::Answer DeleteAction(engine::Handle track, std::int16_t& seq, const items::SourceTimes& source,
                             const editing::SelectionEdges& selection);
/// As a delete, for a paste in its place: a source without media length is divided too.
editing::Answer replaceAction(engine::Handle track, std::int16_t& seq, const items::SourceTimes& source,
                              const editing::SelectionEdges& selection);
editing::Answer CropAction(engine::Handle track, std::int16_t& seq, const items::SourceTimes& source,
                           const editing::SelectionEdges& selection);

// The same on the overlay track, where the transition of the same sequence number goes along.

editing::Answer CutActionOverlay(engine::Handle track, std::int16_t& seq, const items::SourceTimes& source,
                                 const editing::SelectionEdges& selection);
editing::Answer CopyActionOverlay(engine::Handle track, std::int16_t& seq, const items::SourceTimes& source,
                                  const editing::SelectionEdges& selection);
editing::Answer DeleteActionOverlay(engine::Handle track, std::int16_t& seq, const items::SourceTimes& source,
                                    const editing::SelectionEdges& selection);
editing::Answer replaceActionOverlay(engine::Handle track, std::int16_t& seq, const items::SourceTimes& source,
                                     const editing::SelectionEdges& selection);
editing::Answer CropActionOverlay(engine::Handle track, std::int16_t& seq, const items::SourceTimes& source,
                                  const editing::SelectionEdges& selection);

// The same for an effect of the track.

editing::Answer CutActionEffect(engine::Handle track, std::int16_t& seq, const items::ItemTimes& effect,
                                const editing::SelectionEdges& selection);
editing::Answer CopyActionEffect(engine::Handle track, std::int16_t& seq, const items::ItemTimes& effect,
                                 const editing::SelectionEdges& selection);
editing::Answer DeleteActionEffect(engine::Handle track, std::int16_t& seq, const items::ItemTimes& effect,
                                   const editing::SelectionEdges& selection);
editing::Answer CropActionEffect(engine::Handle track, std::int16_t& seq, const items::ItemTimes& effect,
                                 const editing::SelectionEdges& selection);

} // namespace moduleEdit
