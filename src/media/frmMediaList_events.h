#pragma once

// What the media list's form does: the facts of the selected file, keys, hints; and the small player beside the list,
// whose header it includes.
//
// The form calls these as the person acts; state stands in `forms::frmMediaList`. Nothing is raised to the caller.
// Interface thread only.

#include "media/file_preview.h"

#include <cstdint>
#include <vector>

namespace frmMediaList {

/// Binds the timer, writes the captions.
void Load();
/// Stops the small player and its timer.
void Unload();
/// The form was asked to close from its window menu: it hides instead, and the view menu loses its check.
void CloseFromWindowMenu();
/// The panel has become the active one.
void Form_Activate();
/// Keys of the form: 13 (Enter) plays, 32 (Space) pauses, and plays what does not play.
void Form_KeyDown(int key);

// --- The list ------------------------------------------------------------------------------------------------------
// Before these calls the form writes the rows' `Selected` and `SelectedItem`, the row with the focus.

/// 1 left, 2 right.
void lvwMediaList_MouseDown(int button);
/// Also on a selection by key. Skipped while another selection is being worked on. When no row is selected any more,
/// the facts, the picture and what the small player holds go.
void lvwMediaList_Click();
/// Key codes 38 and 40 (up, down) select, once the focus has moved.
void lvwMediaList_KeyDown(int key);
/// A key that edits the timeline while the rows have the keyboard. Without the selection handles it would act on bars
/// that were selected earlier and may be out of view: then it says so, and is true, the key has done its work.
bool lvwMediaList_EditKey();
/// Opens the selected file with the desktop's program for it.
void OnLvwMediaListDblClick();
/// Refreshes status text, information box and small player for the row with the focus.
void OnLvwMediaListClick();
/// Sets every row to not selected.
void ClearMediaListSelections();
/// The list has come into view: which of its files are still on the disk is looked up elsewhere, without waiting.
void lvwMediaList_Showing();
/// The engine has news of files (`engine::filePresence()`): a row whose file has gone gets a sign, and the status bar
/// says so once; the sign goes when the file is back.
void FilesWereLookedFor();

/// Another text stands in the filter, and the screen hides the rows of these places. They lose their selection; where
/// one had it, what is left of the selection is shown as after a click.
void txtFilter_Change(const std::vector<std::int32_t>& hidden);

/// A row is being dragged to the timeline, whose tracks know it by its kind: the pointer is the form's own (99).
void lvwMediaList_OLEStartDrag();
void lvwMediaList_OLECompleteDrag();

// --- The information box -------------------------------------------------------------------------------------------

/// Empties the captions, and what stood beside them.
void ClearFileInformation();

// --- Hints in the status bar ---------------------------------------------------------------------------------------

void lvwMediaList_MouseMove();
void fmeMediaInfo_MouseMove();
void picPreviewSmall_MouseMove();
void Form_MouseMove();

} // namespace frmMediaList
