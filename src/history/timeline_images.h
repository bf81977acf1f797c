#pragma once

// Images of the timeline: a plain copy of all that lies on the tracks, taken through the engine's getters, from which
// its setters rebuild it.
//
// Not in an image: selected flags (all clear after a rebuild), options of the rows, bookmarks, sliders. An image names
// streams by their handles; the engine opens one again whose file was closed meanwhile.
//
// An engine call that fails is tried once more. What fails twice is left out, and the rest is still done; the first
// failure is reported in the end. Every routine traps its own errors and raises nothing. Interface thread only.

#include "history/image_records.h"

#include <cstdint>

class cHistoryData;

namespace ModuleHistory {

/// A set of arrays with their counts. An overlay and its transition, of the same sequence number, have one place.
struct TimelineImage : ImageRecords {
    std::int16_t SourceCount = 0;
    std::int16_t EffectCount = 0;
    std::int16_t TransitionCount = 0; // of both arrays
    bool IsWhole = false;             // false: something could not be read
};

/// Between an entry and the engine.
inline TimelineImage WorkingImage;
inline FileImage WorkingFile;
/// The newest state, for which no entry holds an image.
inline TimelineImage LastImage;

/// Adds the timeline to the working set, behind what its counts say.
void StoreTimelineImage();
/// Makes the timeline the last image.
void StoreCurrentTLImage();
/// The timeline as it stands, for a reader beside the history. Raises the engine's failures.
ImageRecords ReadTimeline();
/// Removes everything from all tracks and draws them. Streams and files stay open.
void EmptyTimeline();
/// Puts the image of `EntryToRestore` on the tracks, which must be empty, and brings files back to the media list that
/// the engine has opened again for it.
void RestoreTimeline();
/// The same with the last image.
void RestoreLastTLImage();

/// The entry that the running undo or redo goes to; nullptr when it is missing or not whole, or no step is running.
const cHistoryData* EntryToRestore();

} // namespace ModuleHistory
