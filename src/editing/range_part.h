#pragma once

// The part of an item that lies in the selection, and the frame that all actions share. For the actions alone.

#include "editing/edit_trap.h"
#include "editing/selection_edges.h"
#include "editing/selection_walk.h"
#include "items/items.h"

#include <cstddef>

namespace editing {

/// What an action does with that part.
struct Action {
    const char* routine;
    bool isRecorded; // it goes on the clipboard
    bool isRemoved;  // it goes from the track
    /// Of the buffer for the name of an effect or a transition. The names that the program gives fit the smallest one;
    /// a longer one, which a project may hold, is cut to it. The sizes are kept: scripts count on the names after a
    /// paste.
    std::size_t nameBytes;
    bool isOverlay = false;  // the transition goes along
    bool isReplaced = false; // something comes in its place: also where there is nothing to show
};

struct Part {
    items::ItemTimes times;
    bool isHead; // begins with the item
    bool isTail; // ends with it

    bool isWhole() const { return isHead && isTail; }
};

/// As if the item always reached into the selection: of one that lies behind it, the part ends before it begins.
inline Part partOf(const items::ItemTimes& item, const SelectionEdges& selection)
{
    const bool isHead = selection.start <= item.start;
    const bool isTail = selection.stop >= item.stop;
    return {{isHead ? item.start : selection.start, isTail ? item.stop : selection.stop}, isHead, isTail};
}

inline bool isReached(const items::ItemTimes& item, const SelectionEdges& selection)
{
    return item.stop > selection.start && item.start < selection.stop;
}

/// For delete and crop of sources: also what lies behind the selection, but for what begins where it ends. A delete
/// draws such a source out into the gap ahead of it (`range_actions.h`); a crop asks for a stop ahead of its start,
/// which the engine does not take.
inline bool isReachedLoosely(const items::ItemTimes& item, const SelectionEdges& selection)
{
    return item.stop > selection.start && item.start != selection.stop;
}

/// The item ahead of the next one that will be cut or copied.
inline void remember(const items::ItemTimes& item)
{
    moduleEdit::PrevStart = item.start;
    moduleEdit::PrevStop = item.stop;
}

/// change(answer) answers the engine's flag; a step inside it that traps by itself says so in the answer.
template <class Change>
Answer runAction(const Action& action, bool isReached, Change change)
{
    Answer answer;
    const bool isWhole = trapped(action.routine, [&] { answer.flag = !isReached || change(answer); });
    answer.isWhole = answer.isWhole && isWhole;
    return answer;
}

} // namespace editing
