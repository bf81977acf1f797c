#include "shell/key_table.h"

#include "core/forms/frmTimeline.h"
#include "hand/bookmark_events.h"
#include "hand/pointer_turn.h"
#include "hand/slider_keys.h"
#include "hand/tree_drop.h"
#include "preview/frame_steps.h"
#include "preview/frmPreview_events.h"
#include "shell/menu_table.h"
#include "timeline/moduleTimeline.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>

namespace shell {

namespace {

constexpr unsigned at(KeyPlace place) { return 1U << static_cast<unsigned>(place); }

constexpr unsigned kRow = at(KeyPlace::kRow);
constexpr unsigned kScale = at(KeyPlace::kScale) | at(KeyPlace::kGround);
constexpr unsigned kTimeline = kRow | kScale;
constexpr unsigned kTimelineList = at(KeyPlace::kTimelineList);
constexpr unsigned kMediaList = at(KeyPlace::kMediaList);
constexpr unsigned kPreview = at(KeyPlace::kPreview);
constexpr unsigned kTools = at(KeyPlace::kTools);

constexpr std::string_view kOnTimeline = "Scale and rows of the timeline";
constexpr std::string_view kOnBoth = "Timeline, Preview";

template <int kCount>
void step()
{
    moduleTWPreview::StepFrames(kCount);
}

// clang-format off
constexpr std::array kPanelKeys = std::to_array<KeyRow>({
    {kMediaList, "Media List", "Enter", "Plays the selected file in the small player"},
    {kMediaList, "Media List", "Space", "Pauses it, or plays it"},
    {kMediaList, "Media List", "Up Down", "Selects the file above, or below"},
    {kPreview, "Preview", "Enter", "Plays"},
    {kPreview, "Preview", "Space", "Pauses, or plays when it pauses already"},
    {kScale, "Scale of the timeline", "Left Right Shift+Left Shift+Right", "Moves the slider by 5 pixels; with Shift by 1"},
    {kRow, "Row of the timeline", "Left Right Shift+Left Shift+Right", "Nudges what is selected by 5 pixels; with Shift by 1"},
    {kRow, "Row of the timeline", ", .", "Moves the end of what is selected by a picture: its length and speed change, in Trim Mode it is trimmed"},
    {kRow, "Row of the timeline", "Alt+, Alt+.", "Trims the end of what is selected by a picture"},
    {kRow, "Row of the timeline", "Ctrl+, Ctrl+.", "Trims the start of what is selected by a picture"},
    {kRow, "Row, during a drag", "Esc", "Gives the drag up"},
    {kTools, "Tools, actions", "Enter Space", "Runs the action"},
    {kTools, "Tools, history", "Up Down", "Goes to that step, as a click on it does"},
    {kMediaList | kTimeline, "Media List, scale, row", "Menu Shift+F10", "Opens the menu of the right button"},

    {kTimelineList, "Timeline list", "Alt+Up", "Moves the piece ahead of the one above it", frmTimeline::MoveListItemUp, true},
    {kTimelineList, "Timeline list", "Alt+Down", "Moves the piece behind the one below it", frmTimeline::MoveListItemDown, true},
    {kTimeline | kTimelineList, "Timeline", "Space", "Plays, or pauses", frmPreview::PlayOrPause},
    {kTimeline | kPreview, kOnBoth, "J", "Rewind", frmPreview::cmdRewind_Click, true},
    {kTimeline | kPreview, kOnBoth, "K", "Pause", frmPreview::cmdPause_Click},
    {kTimeline | kPreview, kOnBoth, "L", "Play", frmPreview::cmdPlay_Click},
    {kTimeline | kPreview, kOnBoth, "F", "The picture takes the whole screen, or goes back", frmPreview::TurnWholeScreen},
    {kPreview, "Whole screen", "Esc", "Goes back to the panel", frmPreview::LeaveWholeScreen},
    {kPreview, "Preview", "Left", "One frame back", step<-1>, true},
    {kPreview, "Preview", "Right", "One frame on", step<1>, true},
    {kPreview, "Preview", "Shift+Left", "Ten frames back", step<-10>, true},
    {kPreview, "Preview", "Shift+Right", "Ten frames on", step<10>, true},
    {kTimeline, kOnTimeline, "Home", "The slider goes to the start", frmTimeline::GoToStart},
    {kTimeline, kOnTimeline, "End", "The slider goes to the end of the film", frmTimeline::GoToEnd},
    {kTimeline, kOnTimeline, "Up", "The slider goes to the previous cut or marker", frmTimeline::GoToPreviousCut, true},
    {kTimeline, kOnTimeline, "Down", "The slider goes to the next cut or marker", frmTimeline::GoToNextCut, true},
    {kTimeline, kOnTimeline, "Shift+Up", "The slider goes to the previous marker, which is selected then", frmTimeline::GoToPreviousMarker, true},
    {kTimeline, kOnTimeline, "Shift+Down", "The slider goes to the next marker, which is selected then", frmTimeline::GoToNextMarker, true},
    {kScale, "Scale of the timeline", ",", "Moves the selected marker a picture back", frmTimeline::MoveMarkerBack, true},
    {kScale, "Scale of the timeline", ".", "Moves the selected marker a picture on", frmTimeline::MoveMarkerOn, true},
    {kTimeline, kOnTimeline, "Ctrl+A", "Selects all that lies on rows that are not locked", moduleTimeline::SelectAll},
});
// clang-format on

constexpr std::array kSecondKeys =
    std::to_array<SecondKey>({{"mnuFileExit", "Ctrl+Q"}, {"mnuEditRedo", "Ctrl+Shift+Z"}});

struct NamedKey {
    std::string_view name;
    int code;
};

constexpr std::array kNamedKeys = std::to_array<NamedKey>({{"Enter", 13},
                                                           {"Esc", 27},
                                                           {"Space", 32},
                                                           {"End", 35},
                                                           {"Home", 36},
                                                           {"Left", 37},
                                                           {"Up", 38},
                                                           {"Right", 39},
                                                           {"Down", 40},
                                                           {"Del", 46},
                                                           {"Menu", 93},
                                                           {",", 188},
                                                           {".", 190}});

int codeOf(std::string_view name)
{
    constexpr int kF1 = 112;
    const auto* const named = std::ranges::find(kNamedKeys, name, &NamedKey::name);
    if (named != kNamedKeys.end()) {
        return named->code;
    }
    if (name.size() == 1 && std::isalnum(static_cast<unsigned char>(name[0])) != 0) {
        return std::toupper(static_cast<unsigned char>(name[0]));
    }
    int number = 0;
    const bool isFunction =
        name.starts_with('F') && std::from_chars(name.data() + 1, name.data() + name.size(), number).ec == std::errc();
    return isFunction ? kF1 - 1 + number : 0;
}

bool isHandBusy()
{
    const auto& form = forms::frmTimeline;
    return form.DragActive || form.Trimming || form.Dragging || form.DraggingBookmark;
}

/// Of the menu's rows the one that shows this key without being run by it.
const MenuRow* menuRowOf(Key key)
{
    const auto rows = menuBar();
    const auto found = std::ranges::find_if(
        rows, [&](const MenuRow& row) { return isPanelKey(row.shortcut) && keyNamed(row.shortcut) == key; });
    return found != rows.end() ? &*found : nullptr;
}

} // namespace

std::optional<Key> keyNamed(std::string_view text)
{
    Key key;
    for (std::size_t end = text.find('+'); end != std::string_view::npos; end = text.find('+')) {
        const std::string_view word = text.substr(0, end);
        const int bit = word == "Shift" ? 1 : word == "Ctrl" ? 2 : word == "Alt" ? 4 : 0;
        if (bit == 0) {
            return std::nullopt;
        }
        key.shift |= bit;
        text.remove_prefix(end + 1);
    }
    key.code = codeOf(text);
    return key.code != 0 ? std::optional(key) : std::nullopt;
}

bool isPanelKey(std::string_view text)
{
    constexpr int kShiftAlone = 1;
    constexpr int kFirstPlain = 32; // Space; then the moving keys, digits and letters
    constexpr int kLastPlain = 'Z';
    const auto key = keyNamed(text);
    constexpr int kDelete = 46;
    return key && key->shift <= kShiftAlone && key->code >= kFirstPlain && key->code <= kLastPlain
           && key->code != kDelete;
}

std::span<const KeyRow> panelKeys() { return kPanelKeys; }

bool takeKey(KeyPlace place, Key key, bool isRepeat)
{
    if (isHandBusy()) {
        return false;
    }
    for (const KeyRow& row : kPanelKeys) {
        if (row.command != nullptr && row.isAt(place) && keyNamed(row.keys) == key) {
            if (!isRepeat || row.repeats) {
                hand::inTurn(row.command);
            }
            return true;
        }
    }
    return takeMenuKey(key, isRepeat);
}

bool takeMenuKey(Key key, bool isRepeat)
{
    const MenuRow* const menu = isHandBusy() ? nullptr : menuRowOf(key);
    if (menu == nullptr || menu->handler == nullptr || !menu->state->Enabled) {
        return false;
    }
    if (!isRepeat) {
        hand::behindTurn(menu->handler);
    }
    return true;
}

std::span<const SecondKey> secondKeys() { return kSecondKeys; }

std::string_view secondKeyOf(std::string_view menu)
{
    const auto* const found = std::ranges::find(kSecondKeys, menu, &SecondKey::menu);
    return found != kSecondKeys.end() ? found->key : std::string_view();
}

} // namespace shell
