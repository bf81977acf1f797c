#include "shell/tool_texts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace shell {

namespace {

constexpr auto kTexts = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"NEW_PROJECT", "Begins a new project."},
    {"OPEN_PROJECT", "Opens a project that was saved."},
    {"SAVE_PROJECT", "Saves the project: the media list and what lies on the timeline."},
    {"IMPORT_FILE", "Opens video, sound and picture files; each gets a row in the media list."},
    {"ADD_TO_TIMELINE", "Puts the files that are selected in the media list behind what lies on the timeline."},
    {"ADD_EFFECT", "Adds the effect that is selected in the tools panel, at the slider or over the range."},
    {"ADD_TEXT", "Adds words that you write as an overlay."},
    {"CUT", "Takes the range or the selected bars off the timeline, and keeps them for pasting."},
    {"COPY", "Keeps the range or the selected bars for pasting, and changes nothing."},
    {"PASTE", "Puts what was cut or copied at the slider; what lies behind moves on."},
    {"CLEAR", "Takes the range or the selected bars off the timeline."},
    {"CROP", "Keeps the range or the selected bars, and removes the rest."},
    {"SET_OVERLAY_KEY_COLOR", "Chooses which colour of the selected overlay is transparent."},
    {"SET_STRETCH_MODE", "Chooses how the selected picture fits into the frame."},
    {"UNDO", "Takes the last step back."},
    {"REDO", "Makes the step again that was taken back last."},
    {"LARGE_ICONS", "Shows the files of the media list as large icons."},
    {"SMALL_ICONS", "Shows the files of the media list as small icons."},
    {"LIST", "Shows the files of the media list by their names."},
    {"DETAIL", "Shows the files of the media list with all columns."},
    {"HELP", "Opens the help."},
});

} // namespace

std::string_view whatsThisOf(std::string_view key)
{
    const auto* const found = std::ranges::find(kTexts, key, &std::pair<std::string_view, std::string_view>::first);
    return found == kTexts.end() ? std::string_view() : found->second;
}

} // namespace shell
