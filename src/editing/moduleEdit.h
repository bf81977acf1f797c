#pragma once

// The commands of the edit menu: cut, copy, delete, crop and paste.
//
// While both selection sliders are shown they work on the range between them, on every linked row (`selection_walk.h`),
// else on the selected items (`whole_items.h`). Nothing that survives moves in time; only a paste over a selection
// closes the gap that it made.
//
// Each draws what has changed, raises the history's index (a copy too, which is meant) and runs nothing while
// `state::InSelectionUpdate` is set, which it sets itself. The caller makes the entry of the history before, and stores
// the newest image behind:
//
//     RemoveDisabledEntries();  AddOperationToHistory("Cut");  EditCut();  StoreCurrentTLImage();
//
// When the last step came to nothing, nothing is drawn and the index stays; after an error that was trapped on the way
// the entry counts nevertheless, so that an undo leads back. Raises nothing. Interface thread only.

namespace moduleEdit {

void EditCut();
void EditCopy();
void EditDelete();
/// cropSourcesOnly: over a selection, what lies outside it stays.
void EditCrop(bool cropSourcesOnly);
/// At the main slider. Over a selection, of which one slider is enough here, the selection is deleted first and what
/// follows it drawn up.
void EditPaste();

} // namespace moduleEdit
