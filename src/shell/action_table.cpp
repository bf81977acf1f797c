#include "shell/action_table.h"

#include "core/forms/frmTools.h"
#include "preview/moduleTWPreview.h"
#include "shell/frmTools_events.h"

#include <algorithm>
#include <array>

namespace shell {

namespace {

using enum ActionContext;
using T = CommandTests;

// clang-format off
const std::array kActions = std::to_array<Action>({
    {kMediaList, "IMPORT_FILE", "Open media file...", "mnuFileOpen"},
    {kMediaList, "ADD_TO_TIMELINE", "Add media file to the timeline", "mnuEditAddToTimeline", &T::hasRows},
    {kMediaList, "ADD_TO_OVERLAY", "Add media file to overlay track", "mnuEditAddToOverlay", &T::hasVideo},

    {kPreview, "PLAY", "Play", "", &T::hasTimeline, nullptr, [] { moduleTWPreview::DoPreviewAction("Play"); }},
    {kPreview, "PAUSE", "Pause", "", &T::hasTimeline, nullptr, [] { moduleTWPreview::DoPreviewAction("Pause"); }},
    {kPreview, "STOP", "Stop", "", &T::hasTimeline, nullptr, [] { moduleTWPreview::DoPreviewAction("Stop"); }},
    {kPreview, "REWIND", "Rewind", "", &T::hasTimeline, nullptr, [] { moduleTWPreview::DoPreviewAction("Rewind"); }},
    {kPreview, "FORWARD", "Forward", "", &T::hasTimeline, nullptr, [] { moduleTWPreview::DoPreviewAction("Forward"); }},
    {kPreview, "LOOP", "Loop playback", "", &T::hasTimeline, nullptr, [] { moduleTWPreview::DoPreviewAction("Loop playback"); }},
    {kPreview, "TAKE_SNAP", "Take snap", "mnuToolsTakeSnap", &T::hasTimeline},
    {kPreview, "SAVE_TIMELINE", "Save Timeline...", "mnuFileExportTimeline", &T::hasTimeline},

    {kTimeline, "UNDO", "Undo", "mnuEditUndo", &T::canUndo},
    {kTimeline, "REDO", "Redo", "mnuEditRedo", &T::canRedo},
    {kTimeline, "SEL_SLIDERS", "Show/Hide selection sliders", "mnuViewSelectionSliders", &T::hasTimeline},
    {kTimeline, "CLEAR", "Delete selection", "mnuEditClear", &T::canEdit, &T::hasTimeline},
    {kTimeline, "CUT", "Cut selection", "mnuEditCut", &T::canEdit, &T::hasTimeline},
    {kTimeline, "COPY", "Copy selection", "mnuEditCopy", &T::canEdit, &T::hasTimeline},
    {kTimeline, "CROP", "Crop selection", "mnuEditCrop", &T::canEdit, &T::hasTimeline},
    {kTimeline, "CROP_SOURCES", "Crop source(s)", "mnuEditCropSources", &T::canCropSources, &T::hasTimeline},
    {kTimeline, "PASTE", "Paste", "mnuEditPaste", &T::canPaste, &T::hasTimeline},
    {kTimeline, "RESTORE_SIZE", "Restore to original size", "mnuEditRestoreSize", &T::canRestoreSize, &T::hasTimeline},
    {kTimeline, "ADD_EFFECT", "Add an effect", "", &T::hasVideo, &T::hasTimeline, frmTools::cmdAdd_Click},
    {kTimeline, "OVERLAY_TRANSPARENCY", "Set overlay key color", "mnuEditSetOverlayTransparency", &T::canSetKeyColor, &T::hasTimeline},
    {kTimeline, "STRETCH", "Set stretch mode...", "mnuEditStretchMode", &T::canSetStretchMode, &T::hasTimeline},
    {kTimeline, "SPLIT_TIMELINE", "Split timeline tracks", "mnuToolsSplitTimeline", &T::hasTimeline},
    {kTimeline, "PACK_TIMELINE", "Pack timeline tracks", "mnuToolsPackTimelineBars", &T::hasTimeline},
    {kTimeline, "REPEAT_AUDIO", "Repeat audio", "mnuToolsRepeatAudio", &T::isAudioSelected, &T::hasTimeline},
    {kTimeline, "ADD_TEXT", "Add text as overlay", "mnuToolsAddText", &T::hasTimeline},
    {kTimeline, "SAVE_TIMELINE", "Save timeline...", "mnuFileExportTimeline", &T::hasTimeline},

    {kCommon, "NEW", "Create a new project", "mnuFileNewProject"},
    {kCommon, "OPEN", "Open an existing project...", "mnuFileOpenProject"},
    {kCommon, "SAVE", "Save current project", "mnuFileSaveProject", &T::hasRows},
});
// clang-format on

/// The list that is being made.
std::vector<TreeNode> nodes;

void append(ActionContext context, const CommandTests& tests)
{
    for (const Action* const action : actionsOf(context, tests)) {
        frmTools::AddNode(action->key, action->text);
    }
}

bool isShown(const TreeView& tree)
{
    return std::ranges::equal(tree.Root().Children, nodes, [](const TreeNode& a, const TreeNode& b) {
        return a.Image == b.Image && a.Text == b.Text;
    });
}

void show()
{
    TreeView& tree = forms::frmTools.tvwActions;
    if (tree.Root().Text.empty() || !isShown(tree)) {
        tree.Selected = std::vector<std::int32_t>{};
        tree.Change() = {"Actions", "", 0, true, nodes};
    }
}

} // namespace

std::vector<const Action*> actionsOf(ActionContext context, const CommandTests& tests)
{
    const auto holds = [&](CommandTest test) { return test == nullptr || tests.*test; };
    std::vector<const Action*> actions;
    for (const Action& action : kActions) {
        if (action.context == context && holds(action.test) && holds(action.within)) {
            actions.push_back(&action);
        }
    }
    return actions;
}

void (*commandOfAction(std::string_view text))()
{
    const auto found = std::ranges::find(kActions, text, &Action::text);
    if (found == kActions.end()) {
        return nullptr;
    }
    const MenuRow* const menu = findMenu(found->menu);
    return menu != nullptr ? menu->handler : found->handler;
}

void refreshActions(const CommandTests& tests)
{
    frmTools::ActionsClear();
    append(static_cast<ActionContext>(forms::frmTools.ActiveContext), tests);
    append(kCommon, tests);
    show();
}

} // namespace shell

namespace frmTools {

void ActionsClear() { shell::nodes.clear(); }

void AddNode(std::string_view key, std::string_view text)
{
    if (shell::commandOfAction(text) != nullptr) {
        shell::nodes.push_back({std::string(text), std::string(key), 0, false, {}});
    }
}

void ActionsBuildMediaList() { shell::append(shell::ActionContext::kMediaList, shell::currentTests()); }

void ActionsBuildPreview() { shell::append(shell::ActionContext::kPreview, shell::currentTests()); }

void ActionsBuildTimeline() { shell::append(shell::ActionContext::kTimeline, shell::currentTests()); }

void ActionsBuildCommon()
{
    shell::append(shell::ActionContext::kCommon, shell::currentTests());
    shell::show();
}

} // namespace frmTools
