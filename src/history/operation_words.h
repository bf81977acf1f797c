#pragma once

// What operations are called: in the entry, in the list, and in the list again after a redo. Pure; any thread.

#include <string_view>

namespace ModuleHistory {

/// How a row of the list looks. The icon is a key of the list's image list. Without a caption there is no row.
struct RowFace {
    std::string_view caption;
    std::string_view icon;
};

struct OperationWord {
    std::string_view word; // as commands give it
    std::string_view type; // as entries keep it
    RowFace row;
    RowFace rowOnRedo;
};

/// By the word of a command; capitals count. nullptr for an unknown one.
const OperationWord* findWord(std::string_view word);
/// By the type of an entry.
const OperationWord* findType(std::string_view type);

} // namespace ModuleHistory
