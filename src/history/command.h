#pragma once

// The way to run a command that changes the timeline: its entry is made ahead of it, and what becomes of the entry
// follows from what the operation answers and from the rules of its word (`operation_words.cpp`).
//
//     run("Pack", [] { ...; return Outcome::kChanged; }, showMoved)
//
//     entries    1 2 | 3             the entry lies above `ModuleHistory::HistoryIndex` while the operation runs
//     changed    1 2 3 |             it comes into force
//     nothing    1 2 | 3   or 1 2 |  it waits there for the next command to drop it, or goes without a trace
//     raised     by the rules: all is taken back, or the entry counts, so that an undo leads back
//
// A drag holds the same object open from the press to the release. Interface thread only.

#include "core/collection.h"
#include "core/forms/frmTools.h"
#include "core/trap.h"
#include "history/cHistoryData.h"
#include "history/operation_words.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace history {

/// What came of an operation.
enum class Outcome : std::uint8_t {
    kNothing,
    kChanged,
    kCutShort // an error was trapped on the way, and the timeline may be changed half way
};

/// A command from its entry to its end. While its operation runs, no other is; a drag stays open from the press to the
/// release, and other commands may come in between (`isNewest`).
class Command {
public:
    /// Drops what was undone and makes the entry. Raises nothing.
    explicit Command(std::string_view word);

    /// False when no entry could be made.
    bool isMade() const { return isMade_; }
    /// False when another step was made or undone since: then this command takes nothing back any more.
    bool isNewest() const;

    /// The entry comes into force, and the project is modified. Nothing when none was made.
    void bringIntoForce();
    /// The end of an operation; one that raised was cut short. Then the timeline is as the rules say; selected flags
    /// are lost when it was taken back. True when the entry is in force.
    bool end(Outcome outcome);
    /// The history, undone entries and rows too, and the project's state are what they were before the command. Only
    /// where the rules keep what was undone.
    void leaveNoTrace();

private:
    /// The history as it stood.
    struct Before {
        Before();
        Collection<cHistoryData> entries;
        std::int16_t index;
        std::vector<forms::HistoryRow> rows;
        std::int32_t selectedRow;
        bool projectModified;
    };

    void takeBack();

    std::string_view word_;
    ModuleHistory::Rules rules_;
    std::optional<Before> before_;
    bool isMade_ = false;
    std::int16_t entry_ = 0; // its place once it is in force
};

/// The newest image, for a redo, and the project is modified. Last of an adding, which makes several entries.
void keepNewestState();

/// A whole command: `operation` answers an `Outcome`, and `show` draws what it has changed, when the history stands.
/// isInForce: the entry is, also when the operation or its drawing raises. Raises what the operation raises, when the
/// history is in order again.
template <class Operation, class Show>
void run(std::string_view word, const Operation& operation, const Show& show, bool& isInForce)
{
    isInForce = false;
    Command command(word);
    Outcome outcome = Outcome::kNothing;
    try {
        outcome = operation();
    } catch (...) {
        isInForce = command.end(Outcome::kCutShort);
        throw;
    }
    isInForce = command.end(outcome);
    if (outcome == Outcome::kChanged) {
        show();
    }
}

/// The same without a trap of its own. True when the entry is in force.
template <class Operation, class Show>
bool run(std::string_view word, const Operation& operation, const Show& show)
{
    bool isInForce = false;
    run(word, operation, show, isInForce);
    return isInForce;
}

/// The same in the trap of a routine: raises nothing.
template <class Operation, class Show>
bool runTrapped(const char* module, const char* routine, std::string_view word, const Operation& operation,
                const Show& show)
{
    bool isInForce = false;
    Trapped(module, routine, [&] { run(word, operation, show, isInForce); });
    return isInForce;
}

} // namespace history
