#pragma once

// The history of an adding: its entry stands only when something was added. Interface thread only.

#include "core/forms/frmTools.h"
#include "core/shared_state.h"
#include "history/ModuleHistory.h"

#include <string_view>
#include <utility>
#include <vector>

namespace history {

/// The history as it stands, to be put back when an adding comes to nothing: also the undone entries and rows, which a
/// new operation drops.
class HistoryBefore {
public:
    void putBack()
    {
        ModuleHistory::HistoryCollection = std::move(entries_);
        ModuleHistory::HistoryIndex = index_;
        forms::frmTools.lvwHistory = std::move(rows_);
        forms::frmTools.lvwHistorySelected = selected_;
    }

private:
    Collection<cHistoryData> entries_ = ModuleHistory::HistoryCollection;
    std::int16_t index_ = ModuleHistory::HistoryIndex;
    std::vector<forms::HistoryRow> rows_ = forms::frmTools.lvwHistory;
    std::int32_t selected_ = forms::frmTools.lvwHistorySelected;
};

/// One operation with its entry. `add` says whether it has put anything on the timeline, and raises only when it has
/// not.
template <class Add>
bool addWithHistory(std::string_view word, const Add& add)
{
    HistoryBefore before;
    ModuleHistory::RemoveDisabledEntries();
    ModuleHistory::AddOperationToHistory(word);
    try {
        if (!add()) {
            before.putBack();
            return false;
        }
    } catch (...) {
        before.putBack();
        throw;
    }
    ++ModuleHistory::HistoryIndex;
    ModuleHistory::RearrangeHistoryCollection();
    return true;
}

/// Last of every command that has put something on the timeline: a redo must reach this state.
inline void keepNewestState()
{
    ModuleHistory::StoreCurrentTLImage();
    state::ProjectModified = true;
}

} // namespace history
