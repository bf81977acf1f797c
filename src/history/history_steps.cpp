// Steps back and forth, from the menus and from the list.

#include "core/forms/frmTimeline.h"
#include "core/forms/frmTools.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "history/ModuleHistory.h"
#include "history/history_rows.h"
#include "timeline/moduleScaleRenderer.h"

namespace ModuleHistory {

namespace {

constexpr const char* kModule = "ModuleHistory";

bool hasImage(std::int32_t place)
{
    return place >= 1 && place <= HistoryCollection.Count() && HistoryCollection.Item(place).IsWhole();
}

/// The view after a rebuild: everything drawn, and scrolled as it was.
void showRebuilt(std::int32_t scrollValue)
{
    RenderAllBars();
    moduleScaleRenderer::RenderScale();
    moduleScaleRenderer::AdjustScroll();
    moduleScaleRenderer::ScrollTo(scrollValue);
}

/// The row of the operation that a redo has brought back: an undone one is in force again, a removed one is added.
/// Answers where the view was. With a row that had stayed in the list it goes to the start: kept, after a click that
/// went many steps back people look for them from there.
std::int32_t showRedoneRow()
{
    const std::int32_t row = HistoryIndex + 1;
    if (isUndone(row)) {
        setInForce(row, row, true);
        RowRestored = true;
    }
    if (HistoryIndex != rowCount() || RowRestored) {
        return 0;
    }
    const cHistoryData& entry = HistoryCollection.Item(row);
    if (const OperationWord* const operation = findType(entry.GetOperationType())) {
        addRow(operation->rowOnRedo);
    }
    return entry.GetScrollValue();
}

/// The rows after an undo from the menus. Once a click in the list has coloured rows, they stay.
void showUndoneRow()
{
    if (isUndone(rowCount())) {
        setInForce(HistoryIndex + 1, HistoryIndex + 1, false);
    } else {
        removeRow(rowCount());
    }
}

/// Runs a step that the person asked for, unless another command is running.
template <class Step>
void guardedStep(const char* routine, Step step)
{
    if (state::InSelectionUpdate) {
        return;
    }
    state::InSelectionUpdate = true;
    Trapped(kModule, routine, step);
    EnableOrDisableMenuItems();
    state::InSelectionUpdate = false;
}

} // namespace

bool Undo()
{
    bool isDone = false;
    Trapped(kModule, "Undo", [&] {
        if (HistoryIndex == 0 || !hasImage(HistoryIndex)) {
            return;
        }
        UndoInProgress = true;
        if (EntryToRestore() == nullptr) {
            UndoInProgress = false;
            return;
        }
        EmptyTimeline();
        RestoreTimeline();
        showRebuilt(HistoryCollection.Item(HistoryIndex).GetScrollValue());
        --HistoryIndex;
        isDone = true;
        UndoInProgress = false;
        UpdateTreeView();
        UpdatePreview();
    });
    return isDone;
}

bool Redo()
{
    bool isDone = false;
    Trapped(kModule, "Redo", [&] {
        const std::int32_t count = HistoryCollection.Count();
        if (HistoryIndex >= count) {
            return;
        }
        RedoInProgress = true;
        const bool isNewest = HistoryIndex + 1 == count;
        if (isNewest ? !LastImage.IsWhole : EntryToRestore() == nullptr) {
            RedoInProgress = false;
            return;
        }
        EmptyTimeline();
        if (isNewest) {
            RestoreLastTLImage();
        } else {
            RestoreTimeline();
        }
        const std::int32_t scrollValue = showRedoneRow();
        ++HistoryIndex;
        isDone = true;
        showRebuilt(scrollValue);
        RedoInProgress = RowRestored = false;
        UpdateTreeView();
        UpdatePreview();
    });
    return isDone;
}

void OnEditUndoClick()
{
    guardedStep("OnEditUndoClick", [] {
        if (Undo()) {
            forms::mdiTarnwick.mnuEditRedo.Enabled = true;
            showUndoneRow();
            state::markModified();
        }
    });
}

void OnEditRedoClick()
{
    guardedStep("OnEditRedoClick", [] {
        if (Redo()) {
            state::markModified();
        }
    });
}

void OnHistoryListClick()
{
    const std::int32_t row = forms::frmTools.lvwHistorySelected;
    if (row < 1 || row > rowCount()) {
        return;
    }
    guardedStep("OnHistoryListClick", [&] {
        if (isInForce(row)) {
            OnUndoHistoryListClick();
        } else {
            OnRedoHistoryClick();
        }
    });
}

void OnUndoHistoryListClick()
{
    Trapped(kModule, "OnUndoHistoryListClick", [] {
        const std::int32_t row = forms::frmTools.lvwHistorySelected;
        if (!hasImage(row)) {
            return;
        }
        setInForce(row, rowCount(), false);
        HistoryIndex = static_cast<std::int16_t>(row);
        Undo();
        state::markModified();
    });
}

void OnRedoHistoryClick()
{
    Trapped(kModule, "OnRedoHistoryClick", [] {
        const std::int32_t row = forms::frmTools.lvwHistorySelected;
        const std::int32_t count = HistoryCollection.Count();
        if (row < 1 || row > rowCount() || row > count || !(row == count ? LastImage.IsWhole : hasImage(row + 1))) {
            return;
        }
        setInForce(1, row, true);
        HistoryIndex = static_cast<std::int16_t>(row - 1);
        Redo();
        state::markModified();
    });
}

} // namespace ModuleHistory
