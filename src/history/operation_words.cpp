#include "history/operation_words.h"

#include <algorithm>
#include <array>

namespace ModuleHistory {

namespace {

constexpr Rules kAdding{OnFailure::kLeftAlone, true, false, true};
constexpr Rules kAddingFiles{OnFailure::kLeftAlone, true, false, false}; // one image behind all of them
constexpr Rules kDrag{OnFailure::kLeftAlone, true, false, false};        // in force from the press on
// An edit goes on behind what it could not do.
constexpr Rules kEdit{OnFailure::kCounts, false, true, true};
constexpr Rules kPaste{OnFailure::kTakenBack, false, true, true};
constexpr Rules kWhole{OnFailure::kTakenBack, false, false, true};
// Has taken back by itself what it could not end. Both leave no trace when they came to nothing.
constexpr Rules kTrim{OnFailure::kLeftAlone, true, false, true};
constexpr Rules kWholeOrNothing{OnFailure::kTakenBack, true, false, true};
constexpr Rules kEmptying{OnFailure::kCounts, false, false, true};

constexpr OperationWord alike(std::string_view word, std::string_view type, std::string_view caption,
                              std::string_view icon, const Rules& rules)
{
    return {word, type, {caption, icon}, {caption, icon}, rules};
}

constexpr std::array kOperations = {
    alike("AddToTimeline", "Add To Timeline", "Add to Timeline", "ADD_TO_TIMELINE", kAddingFiles),
    alike("Cut", "Cut", "Cut", "CUT", kEdit),
    alike("Copy", "Copy", "Copy", "COPY", kEdit),
    alike("Paste", "Paste", "Paste", "PASTE", kPaste),
    alike("Effect", "Effect", "Add Effect to Timeline", "ADD_EFFECT", kAdding),
    alike("Overlay", "Overlay", "Add to Overlay", "ADD_TO_OVERLAY", kAddingFiles),
    OperationWord{"Delete", "Delete", {"Delete", "CLEAR"}, {"Delete", "DELETE"}, kEdit},
    alike("Move", "Move", "Move", "MOVE", kDrag),
    alike("Resize", "Resize", "Resize", "RESIZE", kDrag),
    alike("Shuffle", "Shuffle", "Shuffle Sources", "SHUFFLE_SOURCES", kWhole),
    alike("Split", "Split", "Split Timeline Tracks", "SPLIT_TIMELINE", kWhole),
    alike("Pack", "Pack", "Pack Timeline Tracks", "PACK_TIMELINE", kWhole),
    alike("Repeat", "Repeat", "Repeat Audio", "REPEAT_AUDIO", kWhole),
    alike("Clear", "Clear", "Clear Timeline", "CLEAR_TIMELINE", kEmptying),
    // These two come back without a row: the list shows them no more once they were undone and redone.
    OperationWord{"Clear Effects", "Clear Effect", {"Clear Effect Track", "CLEAR_EFFECT"}, {}, kEmptying},
    OperationWord{"Clear Overlays", "Clear Overlay", {"Clear Overlay Track", "CLEAR_OVERLAY"}, {}, kWhole},
    alike("Restore", "Restore", "Restore Size", "RESTORE_SIZE", kWhole),
    alike("CropSources", "CropSources", "Crop Sources", "CROP_SOURCES", kEdit),
    alike("Crop", "Crop", "Crop", "CROP", kEdit),
    OperationWord{"SetKeyColor",
                  "SetKeyColor",
                  {"Set Overlay Key Color", "OVERLAY_TRANSPARENCY"},
                  {"Set Key Color", "OVERLAY_TRANSPARENCY"},
                  kWhole},
    alike("Trim", "Trim", "Trim", "TRIM", kTrim),
    alike("Close Gap", "Close Gap", "Close Gap", "CLOSE_GAP", kWholeOrNothing),
    alike("Insert", "Insert", "Insert", "INSERT", kWholeOrNothing),
};

const OperationWord* find(std::string_view text, std::string_view OperationWord::*column)
{
    const auto found = std::ranges::find(kOperations, text, column);
    return found != kOperations.end() ? &*found : nullptr;
}

} // namespace

const OperationWord* findWord(std::string_view word) { return find(word, &OperationWord::word); }

const OperationWord* findType(std::string_view type) { return find(type, &OperationWord::type); }

Rules rulesOf(std::string_view word)
{
    const OperationWord* const found = findWord(word);
    return found != nullptr ? found->rules : Rules{};
}

std::string_view typeOf(std::string_view word)
{
    const OperationWord* const found = findWord(word);
    return found != nullptr ? found->type : std::string_view{};
}

} // namespace ModuleHistory
