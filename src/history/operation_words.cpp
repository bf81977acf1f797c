#include "history/operation_words.h"

#include <algorithm>
#include <array>

namespace ModuleHistory {

namespace {

constexpr OperationWord alike(std::string_view word, std::string_view type, std::string_view caption,
                              std::string_view icon)
{
    return {word, type, {caption, icon}, {caption, icon}};
}

constexpr std::array kOperations = {
    alike("AddToTimeline", "Add To Timeline", "Add to Timeline", "ADD_TO_TIMELINE"),
    alike("Cut", "Cut", "Cut", "CUT"),
    alike("Copy", "Copy", "Copy", "COPY"),
    alike("Paste", "Paste", "Paste", "PASTE"),
    alike("Effect", "Effect", "Add Effect to Timeline", "ADD_EFFECT"),
    alike("Overlay", "Overlay", "Add to Overlay", "ADD_TO_OVERLAY"),
    OperationWord{"Delete", "Delete", {"Delete", "CLEAR"}, {"Delete", "DELETE"}},
    alike("Move", "Move", "Move", "MOVE"),
    alike("Resize", "Resize", "Resize", "RESIZE"),
    alike("Shuffle", "Shuffle", "Shuffle Sources", "SHUFFLE_SOURCES"),
    alike("Split", "Split", "Split Timeline Tracks", "SPLIT_TIMELINE"),
    alike("Pack", "Pack", "Pack Timeline Tracks", "PACK_TIMELINE"),
    alike("Repeat", "Repeat", "Repeat Audio", "REPEAT_AUDIO"),
    alike("Clear", "Clear", "Clear Timeline", "CLEAR_TIMELINE"),
    // These two come back without a row; that is meant.
    OperationWord{"Clear Effects", "Clear Effect", {"Clear Effect Track", "CLEAR_EFFECT"}, {}},
    OperationWord{"Clear Overlays", "Clear Overlay", {"Clear Overlay Track", "CLEAR_OVERLAY"}, {}},
    alike("Restore", "Restore", "Restore Size", "RESTORE_SIZE"),
    alike("CropSources", "CropSources", "Crop Sources", "CROP_SOURCES"),
    alike("Crop", "Crop", "Crop", "CROP"),
    OperationWord{"SetKeyColor",
                  "SetKeyColor",
                  {"Set Overlay Key Color", "OVERLAY_TRANSPARENCY"},
                  {"Set Key Color", "OVERLAY_TRANSPARENCY"}},
};

const OperationWord* find(std::string_view text, std::string_view OperationWord::*column)
{
    const auto found = std::ranges::find(kOperations, text, column);
    return found != kOperations.end() ? &*found : nullptr;
}

} // namespace

const OperationWord* findWord(std::string_view word) { return find(word, &OperationWord::word); }

const OperationWord* findType(std::string_view type) { return find(type, &OperationWord::type); }

} // namespace ModuleHistory
