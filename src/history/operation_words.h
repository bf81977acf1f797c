#pragma once

// The operations: what they are called in the entry, in the list, and in the list again after a redo, and what becomes
// of their entries. A new command has its row here. Pure; any thread.

#include <cstdint>
#include <string_view>

namespace ModuleHistory {

/// How a row of the list looks. The icon is a key of the list's image list. Without a caption there is no row.
struct RowFace {
    std::string_view caption;
    std::string_view icon;
};

/// What becomes of an operation that raises.
enum class OnFailure : std::uint8_t {
    kTakenBack, // the timeline is put back to the image ahead of it
    kCounts,    // what was done stays, and its entry counts: an undo leads back
    kLeftAlone  // it has taken back by itself what it did
};

/// How the commands of a word differ.
struct Rules {
    OnFailure onFailure = OnFailure::kTakenBack;
    bool keepsUndone = false;    // one that comes to nothing leaves no trace: what was undone can still be redone
    bool alwaysModifies = false; // the project is modified even when it came to nothing
    bool keepsImage = true;      // its end stores the newest image; else the caller does, behind several of them
};

struct OperationWord {
    std::string_view word; // as commands give it
    std::string_view type; // as entries keep it
    RowFace row;
    RowFace rowOnRedo;
    Rules rules;
};

/// By the word of a command; capitals count. nullptr for an unknown one.
const OperationWord* findWord(std::string_view word);
/// By the type of an entry.
const OperationWord* findType(std::string_view type);

// Of a word; of an unknown one those of a plain command, and no type.
Rules rulesOf(std::string_view word);
std::string_view typeOf(std::string_view word);

} // namespace ModuleHistory
