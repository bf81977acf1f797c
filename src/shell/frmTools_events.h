#pragma once

// The tools panel: actions that fit the moment, the effects, the history.
//
// The actions are made anew for the active panel (`forms::frmTools.ActiveContext`) with every menu update; a click on
// one runs its command by its text. State stands in `forms::frmTools`. Nothing is raised to the caller. Interface
// thread only.

#include <cstdint>
#include <string_view>
#include <vector>

namespace frmTools {

/// Fills the list of effects and puts the actions in front.
void Form_Load();
/// Closed from its window menu: it hides, and the view menu loses its check.
void CloseFromWindowMenu();
/// A tab was chosen: 1 actions, 2 effects with `cmdAdd`, 3 history.
void tbsTools_Click(std::int16_t tab);

// --- Actions -------------------------------------------------------------------------------------------------------
// Which there are, and the making of their list: `action_table.h`.

/// The whole list for the active panel.
void RefreshActions();

/// The picture of a key of the tool image list, for nodes and rows of the history; the key itself when it has no other.
std::string_view pictureOf(std::string_view key);

/// 1 left, 2 right: only the left button runs an action.
void tvwActions_MouseDown(int button);
/// A node was clicked, or chosen by key after `tvwActions_MouseDown(1)`; its places as in `TreeView::Selected`.
void tvwActions_NodeClick(const std::vector<std::int32_t>& places);

// --- Effects -------------------------------------------------------------------------------------------------------

/// Adds the effect that is selected in `lvwEffects` to the timeline; the screen writes `Selected` and `SelectedItem`
/// before.
void OnAddClick();
void cmdAdd_Click();
void lvwEffects_DblClick();
/// Selects the effect of that name.
void SelectEffect(std::string_view name);

// --- History -------------------------------------------------------------------------------------------------------

/// A row was clicked, or became the selected one by a key; the screen writes `lvwHistorySelected` (from 1) before.
void lvwHistory_Click();

// --- Hints in the status bar ---------------------------------------------------------------------------------------

void tvwActions_MouseMove();
void lvwEffects_MouseMove();
void lvwHistory_MouseMove();
void Form_MouseMove();

} // namespace frmTools
