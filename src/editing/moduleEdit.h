#pragma once

// The commands of the edit menu: cut, copy, delete, crop and paste.
//
// This room holds the commands that change the items on the tracks: these, those over whole tracks
// (`track_commands.h`), adding, shuffling, and the moving and resizing that a drag asks for. It owns the clipboard
// (`clipboard.h`); whatever else it holds means nothing behind a command. Commands run by way of `history/command.h`,
// and show in the end what they have changed. None knows by which menu, key or drag it was called, and none decides
// what becomes of its entry but by its outcome.
//
// While both selection sliders are shown they work on the range between them, on every linked row (`selection_walk.h`),
// else on the selected items (`whole_items.h`). Nothing that survives moves in time; only a paste over a selection and
// the delete that says so close the gap that they made.
//
// Each is a whole command with its entry of the history, a copy too, and draws what has changed. It runs nothing while
// `state::InSelectionUpdate` is set, which it sets itself. When the last step came to nothing, nothing is drawn and the
// entry stays out of force; after an error that was trapped on the way it counts nevertheless, so that an undo leads
// back. True when the entry is in force. Raises nothing. Interface thread only.

namespace moduleEdit {

bool EditCut();
bool EditCopy();
bool EditDelete();
/// cropSourcesOnly: over a selection, what lies outside it stays.
bool EditCrop(bool cropSourcesOnly);
/// At the main slider. Over a selection, of which one slider is enough here, the selection is deleted first and what
/// follows it drawn up.
bool EditPaste();

/// Deletes what `EditDelete` would, but draws up what follows (`close_gap.h`).
bool EditDeleteAndCloseGap();
/// The selected items' ends go to the main slider (`trim.h`).
bool EditTrimStart();
bool EditTrimEnd();

} // namespace moduleEdit
