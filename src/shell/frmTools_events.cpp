#include "shell/frmTools_events.h"

#include "core/forms/frmTools.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/adding.h"
#include "history/ModuleHistory.h"
#include "shell/action_table.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/panel_places.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace frmTools {

namespace {

forms::FrmTools& form = forms::frmTools;

bool leftPressed = false;

void hint(const char* text)
{
    if (!state::BusyOpening) { // the progress of an opening is not written over
        forms::mdiTarnwick.sbr.Panel(1) = std::string(text);
    }
}

void selectEffect(std::int32_t place)
{
    ListView& list = form.lvwEffects;
    for (std::int32_t i = 1; i <= list.Count(); ++i) {
        if (list.Row(i).Selected != (i == place)) {
            list.Change(i).Selected = i == place;
        }
    }
    list.SelectedItem = place;
}

} // namespace

void Form_Load()
{
    Trapped("frmTools", "Form_Load", [] {
        form.lvwEffects.Clear();
        for (const char* const name : {"Fade", "Pixelate", "Blur", "Wave", "Emboss", "Engrave"}) {
            form.lvwEffects.Add({name, {}, static_cast<std::int16_t>(form.lvwEffects.Count() + 1), false});
        }
        selectEffect(1);
        tbsTools_Click(1);
        RefreshActions();
    });
}

void CloseFromWindowMenu()
{
    form.Visible = false;
    forms::mdiTarnwick.mnuViewTools.Checked = false;
    mdiTarnwick::ArrangeVisible();
}

void tbsTools_Click(std::int16_t tab)
{
    form.tbsTools = tab;
    form.cmdAdd.Visible = tab == 2;
}

void RefreshActions()
{
    Trapped("frmTools", "RefreshActions", [] { shell::refreshActions(shell::currentTests()); });
}

std::string_view pictureOf(std::string_view key)
{
    constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kOthers{
        {{"OVERLAY_TRANSPARENCY", "OVERLAY_KEY_COLOR"},
         {"STRETCH", "STRETCH_MODE"},
         {"MUTE", "MUTE_FALSE"},
         {"SAVE_TIMELINE", "SAVE"}}};
    const auto found = std::ranges::find(kOthers, key, &std::pair<std::string_view, std::string_view>::first);
    return found == kOthers.end() ? key : found->second;
}

void tvwActions_MouseDown(int button) { leftPressed = button == 1; }

void tvwActions_NodeClick(const std::vector<std::int32_t>& places)
{
    Trapped("frmTools", "tvwActions_NodeClick", [&] {
        form.tvwActions.Selected = places;
        if (std::exchange(leftPressed, false) && places.size() == 1) {
            // A copy: the command makes the list anew.
            const std::string text = form.tvwActions.Root().Children.at(static_cast<std::size_t>(places[0])).Text;
            mdiTarnwick::OnActionsClick(text);
        }
    });
}

void OnAddClick()
{
    moduleTimeline::AddSelectedEffect();
    EnableOrDisableMenuItems();
}

void cmdAdd_Click() { OnAddClick(); }

void lvwEffects_DblClick() { OnAddClick(); }

void SelectEffect(std::string_view name)
{
    const ListView& list = form.lvwEffects;
    for (std::int32_t place = 1; place <= list.Count(); ++place) {
        if (list.Row(place).Text == name) {
            selectEffect(place);
            return;
        }
    }
}

void lvwHistory_Click() { ModuleHistory::OnHistoryListClick(); }

void tvwActions_MouseMove() { hint("Lists all actions possible in the current context"); }

void lvwEffects_MouseMove() { hint("Lists all effects that can be added to the timeline"); }

void lvwHistory_MouseMove() { hint("Lists all operations that has been carried out"); }

void Form_MouseMove() { hint("Ready"); }

} // namespace frmTools

void SetActiveContext(std::int16_t context) { forms::frmTools.ActiveContext = context; }

void RefreshActions() { frmTools::RefreshActions(); }
