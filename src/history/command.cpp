#include "history/command.h"

#include "core/shared_state.h"
#include "history/ModuleHistory.h"

#include <utility>

namespace history {

using ModuleHistory::HistoryCollection;
using ModuleHistory::HistoryIndex;
using ModuleHistory::OnFailure;

Command::Before::Before()
    : entries(HistoryCollection), index(HistoryIndex), rows(forms::frmTools.lvwHistory),
      selectedRow(forms::frmTools.lvwHistorySelected), projectModified(state::ProjectModified)
{}

Command::Command(std::string_view word) : word_(word), rules_(ModuleHistory::rulesOf(word))
{
    if (rules_.keepsUndone) {
        before_.emplace();
    }
    ModuleHistory::RemoveDisabledEntries();
    ModuleHistory::AddOperationToHistory(word);
    isMade_ = HistoryCollection.Count() > HistoryIndex;
}

bool Command::isNewest() const
{
    return entry_ != 0 && HistoryIndex == entry_ && HistoryCollection.Count() == entry_
           && HistoryCollection.Item(entry_).GetOperationType() == ModuleHistory::typeOf(word_);
}

void Command::bringIntoForce()
{
    if (isMade_) {
        entry_ = ++HistoryIndex;
        ModuleHistory::RearrangeHistoryCollection();
        state::markModified();
    }
}

bool Command::end(Outcome outcome)
{
    if (outcome == Outcome::kCutShort && rules_.onFailure == OnFailure::kTakenBack) {
        takeBack();
    }
    if (outcome == Outcome::kChanged) {
        state::markModified(); // also where no entry could be made
    }
    if (outcome == Outcome::kChanged || (outcome == Outcome::kCutShort && rules_.onFailure == OnFailure::kCounts)) {
        bringIntoForce();
    } else if (rules_.keepsUndone) {
        leaveNoTrace();
        return false;
    }
    if (rules_.keepsImage) {
        ModuleHistory::StoreCurrentTLImage();
    }
    if (rules_.alwaysModifies) {
        state::markModified();
    }
    return entry_ != 0;
}

void Command::leaveNoTrace()
{
    if (before_) {
        HistoryCollection = std::move(before_->entries);
        HistoryIndex = before_->index;
        forms::frmTools.lvwHistory = std::move(before_->rows);
        forms::frmTools.lvwHistorySelected = before_->selectedRow;
        state::ProjectModified = before_->projectModified;
        before_.reset();
    }
}

/// Back to the image of the entry, which stays above the index until the next command. Without a whole image nothing
/// changes but that the entry is in force.
void Command::takeBack()
{
    if (isMade_) {
        const bool wasModified = state::ProjectModified;
        bringIntoForce();
        if (ModuleHistory::Undo()) {
            entry_ = 0;
            state::ProjectModified = wasModified;
        }
    }
}

void keepNewestState()
{
    ModuleHistory::StoreCurrentTLImage();
    state::markModified();
}

} // namespace history
