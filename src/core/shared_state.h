#pragma once

// The state that all rooms of the program share, by name. It lives for the whole process; the interface thread alone
// touches it. Times are milliseconds, colours as `colours.h` says.
//
// `engine::Engine`, the timeline engine, stands in `engine/engine_access.h`.

#include "core/collection.h"
#include "engine/types.h"

#include <cstdint>
#include <string>
#include <vector>

namespace state {

// The media list and the tracks.
inline Collection<engine::Handle> FileCollection;   // one file per row of the media list, in its order
inline Collection<engine::Handle> StreamCollection; // every open stream of every open file, in opening order
inline Collection<engine::Handle> TrackCollection;  // Video, Audio 1, Audio 2
inline engine::Handle OverlayTrack = 0;
inline std::string LastOpenedExtension; // of the file being opened; its media class follows from it
inline bool FirstStreamOfFile = false;
inline bool FileNotFoundShown = false; // keeps the recent files from repeating that message

// The view of the timeline.
inline std::int32_t SliderPosition = 0;
inline std::int32_t SelStartPosition = 1000;
inline std::int32_t SelEndPosition = 2000;
inline std::int16_t ZoomFactor = 10;  // ms a pixel
inline std::int16_t TickSpacing = 10; // pixels between two ticks
inline std::int32_t ScaleBandColor = 0xFFBBBB;
inline std::int32_t VideoBarFill = 0xFFFF80;
inline std::int32_t AudioBarFill = 0x80FFFF;
inline std::int32_t EffectBarFill = 0x80FF80;
inline std::int32_t OverlayBarFill = 0xC0E0FF;
inline std::int32_t ClickX = 0; // pixels; of the last press on a track picture
inline bool ClickShift = false;
inline bool ClickCtrl = false;

// The project.
inline std::string WorkingFolder; // for new files and dialogues
inline std::int16_t ProjectWidth = 320;
inline std::int16_t ProjectHeight = 240;
inline bool FrameSizeChosen = false; // somebody chose the size of the movie, so no picture's size is offered for it
inline bool ProjectModified = false; // true by `markModified` alone
inline std::uint32_t ModificationCount = 0; // how often it was marked: another number means that something may differ
inline bool MediaListDirty = false;         // files came to the media list since the last save
inline bool ProjectSaved = false;           // the project has a file
inline std::string ProjectFilePath;
inline std::int16_t SavedFileCount = 0;          // rows of the media list at the last save
inline std::string TemporaryProjectPath;         // the name that the project's file bears while it is worked on
inline bool ProjectOpenFailed = false;           // there is no project: one was closed, or could not be loaded
inline std::string AppSection = "Quillmont 1.1"; // under which all settings are stored

// The recent lists. They grow for the whole run; the menus of the main window show the last four.
inline std::vector<std::string> RecentFilePaths;
inline std::int32_t RecentFileCount = 0;
inline std::vector<std::string> RecentProjectPaths;
inline std::int32_t RecentProjectCount = 0;
inline std::string NewRecentProject; // what `UpdateResentProjectMenu` puts on top

// Against re-entry.
inline bool InSelectionUpdate = false;
inline bool BusyOpening = false;
inline bool ProjectLoadLock = false;      // a project is being opened
inline bool OpeningRecentProject = false; // ... from the recent projects, whose list stays as it is then
inline bool SaveCancelled = false;        // the last save wrote nothing: it was cancelled, or failed
inline bool OpeningCancelled = false;     // set by the person while files are being opened; asked between two files

/// There is work now that is not in the project's file. The one place that says so: the question on closing and the
/// title stand on the flag. Commands that change what would be saved call it; some do even when nothing changed, and
/// their headers say so.
inline void markModified()
{
    ProjectModified = true;
    ++ModificationCount;
}

/// Puts everything back to its start value; for tests, which run many programs in one process.
void reset();

} // namespace state
