#pragma once

// The actions of the tools panel: which there are for which panel, under which test, and which command each runs.
//
// An action does what a menu entry does; it is told apart by its text alone. Interface thread only.

#include "core/controls.h"
#include "shell/command_tests.h"
#include "shell/menu_table.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace shell {

/// The first three are the values of `forms::frmTools.ActiveContext`.
enum class ActionContext : std::uint8_t { kMediaList, kPreview, kTimeline, kCommon };

struct Action {
    ActionContext context;
    std::string_view key; // in the tool image list
    std::string_view text;
    std::string_view menu; // whose command it runs; empty: `handler`'s
    CommandTest test = nullptr;
    CommandTest within = nullptr; // a second test that must hold
    void (*handler)() = nullptr;
};

/// The actions of a context that fit the moment, in their order.
std::vector<const Action*> actionsOf(ActionContext context, const CommandTests& tests);

/// What an action of that text runs; nullptr for an unknown text, and while its command is not built.
void (*commandOfAction(std::string_view text))();

/// Shows the actions of the active panel and the common ones.
void refreshActions(const CommandTests& tests);

} // namespace shell

/// The list is made aside and shown by `ActionsBuildCommon`, which ends every list: a list that comes out as it was
/// leaves the tree alone. A node's key stands in `TreeNode::Image`.
namespace frmTools {

/// Begins an empty list.
void ActionsClear();
/// Adds one node to the list. One whose command is not built yet is left out.
void AddNode(std::string_view key, std::string_view text);
void ActionsBuildMediaList();
void ActionsBuildPreview();
void ActionsBuildTimeline();
void ActionsBuildCommon();

} // namespace frmTools
