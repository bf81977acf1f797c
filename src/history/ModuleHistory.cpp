// The entries: made before an operation, dropped after it or by the next one.

#include "history/ModuleHistory.h"

#include "core/forms/frmTimeline.h"
#include "core/trap.h"
#include "history/history_rows.h"
#include "history/operation_words.h"

#include <utility>

namespace ModuleHistory {

namespace {

constexpr const char* kModule = "ModuleHistory";
constexpr std::int16_t kLimit = 25;

void dropOldestAtLimit()
{
    if (HistoryIndex > kLimit) {
        HistoryCollection.Remove(1);
        HistoryIndex = static_cast<std::int16_t>(HistoryCollection.Count());
        removeRow(1);
    }
}

void nameEntry(std::string_view word)
{
    if (const OperationWord* const operation = findWord(word)) {
        HistoryEntry.SetOperationType(operation->type);
        addRow(operation->row);
    }
}

void fillEntry()
{
    StoreTimelineImage();
    HistoryEntry.SetWhole(WorkingImage.IsWhole);
    HistoryEntry.SetSrcCount(std::exchange(WorkingImage.SourceCount, std::int16_t{0}));
    HistoryEntry.SetEffectCount(std::exchange(WorkingImage.EffectCount, std::int16_t{0}));
    HistoryEntry.SetTransitionCount(std::exchange(WorkingImage.TransitionCount, std::int16_t{0}));
    HistoryEntry.SetFileOperationData();
    HistoryEntry.SetEditOperationData();
    HistoryEntry.SetEffectOperationData();
    HistoryEntry.SetTransitionOperationData();
    HistoryEntry.SetScrollValue(forms::frmTimeline.hsb.Value());
}

std::string_view captionOf(std::int32_t entry)
{
    const bool isThere = entry >= 1 && entry <= HistoryCollection.Count();
    const auto* const word = isThere ? findType(HistoryCollection.Item(entry).GetOperationType()) : nullptr;
    return word != nullptr ? word->row.caption : std::string_view();
}

} // namespace

bool CanUndo() { return HistoryIndex > 0; }

bool CanRedo() { return HistoryIndex != HistoryCollection.Count(); }

std::string_view captionOfUndo() { return captionOf(HistoryIndex); }

std::string_view captionOfRedo() { return captionOf(HistoryIndex + 1); }

void AddOperationToHistory(std::string_view word)
{
    Trapped(kModule, "AddOperationToHistory", [&] {
        dropOldestAtLimit();
        RearrangeHistoryCollection();
        keepRows(HistoryIndex); // those of operations that came to nothing
        HistoryEntry = {};
        nameEntry(word);
        fillEntry();
        HistoryCollection.Add(std::exchange(HistoryEntry, {}));
    });
}

void DeleteLastEntry()
{
    Trapped(kModule, "DeleteLastEntry", [] {
        HistoryCollection.Remove(HistoryCollection.Count());
        removeRow(rowCount());
        if (HistoryIndex > 0) {
            --HistoryIndex;
        }
    });
}

void RearrangeHistoryCollection()
{
    Trapped(kModule, "RearrangeHistoryCollection", [] {
        while (HistoryCollection.Count() > HistoryIndex) {
            HistoryCollection.Remove(HistoryCollection.Count());
        }
    });
}

void RemoveDisabledEntries()
{
    // Logged without the dialogue: when all rows were undone, it ends with the removal of an entry 0.
    Trapped(kModule, "RemoveDisabledEntries*", [] {
        if (HistoryIndex > kLimit) {
            return;
        }
        while (isUndone(rowCount())) {
            removeRow(rowCount());
            // The one below the row that went, so that the way back is shorter than the list was: kept, scripts count
            // the steps that they can still undo.
            HistoryCollection.Remove(rowCount());
        }
    });
}

void EmptyHistory()
{
    Trapped(kModule, "EmptyHistory", [] {
        HistoryCollection.Clear();
        keepRows(0);
        HistoryIndex = 0;
        HistoryEntry = {};
        // A step of the next project must not find an image of this one.
        WorkingImage = {};
        LastImage = {};
        UndoInProgress = RedoInProgress = RowRestored = false;
    });
}

} // namespace ModuleHistory
