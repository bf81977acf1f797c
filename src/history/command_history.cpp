#include "history/command_history.h"

namespace history {

using ModuleHistory::HistoryCollection;
using ModuleHistory::HistoryIndex;

namespace {

bool hasEntry() { return HistoryCollection.Count() > HistoryIndex; }

} // namespace

void bringIntoForce()
{
    if (hasEntry()) {
        ++HistoryIndex;
        ModuleHistory::RearrangeHistoryCollection();
    }
}

void takeBackNewest()
{
    if (hasEntry()) {
        bringIntoForce();
        ModuleHistory::Undo();
    }
}

} // namespace history
