#pragma once

// Undo and redo by whole images of the timeline.
//
//     entries   1: before A   2: before B   3: before C      last image: after C
//     rows      A             B             C
//     HistoryIndex 3: all in force. Undo puts entry 3 in the timeline's place, redo then the last image.
//
// An entry is made before its operation, and is in force once the command has raised `HistoryIndex`. The rows of
// `forms::frmTools.lvwHistory` are the entries as the person sees them; their colours alone tell what is undone:
// `colours::kWindowText` in force, `colours::kButtonFace` undone and to be redone. Commands make their entries by way
// of `history/command.h` alone.
//
// This room owns the entries and the images, which are not saved with the project. It never knows what a command does:
// how its entry is called, and what becomes of it when the command fails, stands in a table by the command's word
// (`operation_words.h`). An image holds no media: a file that was closed is the engine's to open again.
//
// A step for which there is no whole image does nothing at all: the timeline is never emptied for it. Every routine
// traps its own errors and raises nothing. Interface thread only.

#include "core/collection.h"
#include "history/cHistoryData.h"
#include "history/timeline_images.h"

#include <cstdint>
#include <string_view>

namespace ModuleHistory {

inline Collection<cHistoryData> HistoryCollection; // oldest first
inline std::int16_t HistoryIndex = 0;              // operations in force: the latest one's entry, 0 none
inline cHistoryData HistoryEntry;                  // under construction

// Set only during an undo or a redo.
inline bool UndoInProgress = false;
inline bool RedoInProgress = false;
inline bool RowRestored = false; // the redo has found its row in the list

/// Which of the two the menus offer.
bool CanUndo();
bool CanRedo();
/// What the next of the two would take back, or bring back, as the list calls it ("Move"); empty for nothing.
std::string_view captionOfUndo();
std::string_view captionOfRedo();

// --- Entries -------------------------------------------------------------------------------------------------------

/// A new entry with its row and the image of the timeline as it stands. An unknown word makes an entry without type and
/// row. At most 26 entries stand; the oldest goes when there is one more.
void AddOperationToHistory(std::string_view word);
/// Takes back the newest entry and row, and lowers `HistoryIndex`: the operation came to nothing.
void DeleteLastEntry();
/// Drops the entries after `HistoryIndex`.
void RearrangeHistoryCollection();
/// Drops the undone rows, for a new operation.
void RemoveDisabledEntries();
/// Drops all entries, rows and the last image.
void EmptyHistory();

// --- Steps ---------------------------------------------------------------------------------------------------------

/// One step back, to the image of entry `HistoryIndex`. False when nothing was done.
bool Undo();
/// One step forward. False when nothing was done.
bool Redo();

/// What the menu entries and their buttons do: the step, the rows, the menu update. Ignored while
/// `state::InSelectionUpdate` is set, which they set themselves.
void OnEditUndoClick();
void OnEditRedoClick();

/// A row of the list was clicked, or became the selected one by a key: `forms::frmTools.lvwHistorySelected`. A row in
/// force is taken back with all behind it, an undone one is redone with all before it; in one step. Guarded as above.
void OnHistoryListClick();
/// Its two branches.
void OnUndoHistoryListClick();
void OnRedoHistoryClick();

} // namespace ModuleHistory
