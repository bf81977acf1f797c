#include "shell/mdiTarnwick_events.h"

#include "core/forms/frmMediaList.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/frmTools.h"
#include "core/numbers.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/adding.h"
#include "history/ModuleHistory.h"
#include "media/frmMediaList_events.h"
#include "report/web_host.h"
#include "shell/ModuleAssociateIcon.h"
#include "shell/action_table.h"
#include "shell/frmTools_events.h"
#include "shell/menu_table.h"
#include "shell/panel_places.h"
#include "shell/project_commands.h"
#include "shell/view_switches.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <string>
#include <utility>

namespace mdiTarnwick {

namespace {

forms::MdiTarnwick& form = forms::mdiTarnwick;

constexpr const char* kModule = "mdiTarnwick";

void forEachMenu(const auto& visit)
{
    for (const auto& menu : {shell::menuBar(), shell::mediaListContext(), shell::editContext()}) {
        for (const shell::MenuRow& row : menu) {
            if (row.state != nullptr) {
                visit(row);
            }
        }
    }
}

bool holds(shell::CommandTest test, const shell::CommandTests& tests) { return test == nullptr || tests.*test; }

void enableMenus(const shell::CommandTests& tests)
{
    forEachMenu([&](const shell::MenuRow& row) {
        const bool isOn = row.hasCommand() && holds(row.test, tests);
        // Once there were files there is a project to close, also when they are gone.
        if (isOn || row.state != &form.mnuFileCloseProject) {
            row.state->Enabled = isOn;
        }
    });
}

void ready()
{
    if (!state::BusyOpening) { // the progress of an opening is not written over
        form.sbr.Panel(1) = "Ready";
    }
}

/// 0 large icons, 1 small icons, 2 list, 3 detail.
void setView(std::int16_t view)
{
    constexpr const char* kButtons[] = {"LARGE_ICONS", "SMALL_ICONS", "LIST", "DETAIL"};
    Menu* const menus[] = {&form.mnuViewML_LargeIcon, &form.mnuViewML_SmallIcon, &form.mnuViewML_List,
                           &form.mnuViewML_Detail};
    forms::frmMediaList.lvwMediaList.View = view;
    for (std::int16_t i = 0; i < 4; ++i) {
        menus[i]->Checked = i == view;
        form.tbr.Button(kButtons[i]).Pressed = i == view;
    }
}

void openPage(std::string_view path)
{
    const std::string page = std::string(kWebHost) + std::string(path);
    if (!ports.shell->openWithDesktop(page)) {
        form.sbr.Panel(1) = "Unable to open " + page + ".";
    }
}

void addEffect(std::string_view name)
{
    frmTools::SelectEffect(name);
    frmTools::OnAddClick();
}

/// Shows a selection that begins or ends at the main slider.
void setSelectionEdge(bool isStart)
{
    constexpr std::int32_t kNewPx = 100;
    constexpr std::int32_t kApartPx = 6; // the handles keep that far from each other
    const engine::Milliseconds length = moduleScaleRenderer::PixelsToMs(kNewPx);
    const engine::Milliseconds pos = moduleTimeline::GetSliderPosition();
    engine::Milliseconds start = isStart ? pos : state::SelStartPosition;
    engine::Milliseconds end = isStart ? state::SelEndPosition : pos;
    if (!timeline::isSelectionShown() || end - start < moduleScaleRenderer::PixelsToMs(kApartPx)) {
        start = isStart ? pos : std::max(0, pos - length);
        end = isStart ? numbers::added(pos, length) : std::max(pos, start + length);
    }
    moduleTimeline::SetSelSliderPosition(start, true);
    moduleTimeline::SetSelSliderPosition(end, false);
    moduleTimeline::ShowSelSliders(true);
    state::SelStartPosition = moduleTimeline::GetSelSliderPosition(true);
    state::SelEndPosition = moduleTimeline::GetSelSliderPosition(false);
}

} // namespace

// --- The window ----------------------------------------------------------------------------------------------------

void Form_Initialize()
{
    Trapped(kModule, "MDIForm_Initialize", [] {
        state::WorkingFolder = ports.shell->programFolder();
        state::ProjectWidth = 320;
        state::ProjectHeight = 240;
    });
}

void Form_Load()
{
    Trapped(kModule, "MDIForm_Load", [] {
        forEachMenu([](const shell::MenuRow& row) {
            row.state->Caption = std::string(row.caption);
            row.state->Checked = row.startsChecked && row.hasCommand();
            row.state->Enabled = false;
        });
        LoadViewSwitches();
        setView(3);
        LoadDividers();
        ArrangeVisible();
        ModuleAssociateIcon::ApplyFileAssociation();
        EnableOrDisableMenuItems();
    });
}

void MDIForm_Resize(std::int32_t width, std::int32_t height)
{
    form.InnerWidth = width;
    form.InnerHeight = height;
    ArrangeVisible();
}

void MDIForm_MouseMove() { ready(); }

void tbr_MouseMove() { ready(); }

void MenuHighlighted(std::string_view name)
{
    const bool isUndo = name == "mnuEditUndo";
    const std::string_view caption = isUndo                  ? ModuleHistory::captionOfUndo()
                                     : name == "mnuEditRedo" ? ModuleHistory::captionOfRedo()
                                                             : std::string_view();
    Shown<std::string>& panel = form.sbr.Panel(1);
    static std::string written;
    if (const auto ahead = std::exchange(form.HintAhead, std::nullopt); ahead && panel.get() == written) {
        panel = *ahead; // what was said meanwhile stays
    }
    if (!caption.empty() && !state::BusyOpening) {
        form.HintAhead = panel.get();
        written = (isUndo ? "Undo: " : "Redo: ") + std::string(caption);
        panel = written;
    }
}

bool QueryUnload()
{
    if (state::InSelectionUpdate || state::BusyOpening) {
        form.sbr.Panel(1) = "Quillmont is currently busy. Please wait until the current operation is completed and "
                            "then close the application.";
        return false;
    }
    return MayLoseProject();
}

// --- Commands ------------------------------------------------------------------------------------------------------

void EnableOrDisableMenuItems()
{
    Trapped(kModule, "EnableOrDisableMenuItems", [] {
        const shell::CommandTests tests = shell::currentTests();
        enableMenus(tests);
        for (const shell::ToolRow& row : shell::toolBar()) {
            row.state->Enabled = row.handler != nullptr && holds(row.test, tests);
        }
        forms::frmTools.cmdAdd.Enabled = tests.hasVideo;
        form.mnuEditAddtoAudio1.Visible = true; // the pop-up menu of the overlay row has hidden them
        form.mnuEditAddtoAudio2.Visible = true;
        shell::refreshActions(tests);
    });
}

void tbr_ButtonClick(std::string_view key)
{
    const auto row = std::ranges::find(shell::toolBar(), key, &shell::ToolRow::key);
    if (row != shell::toolBar().end() && row->state->Enabled && row->handler != nullptr) {
        row->handler();
    }
}

void OnActionsClick(std::string_view caption)
{
    if (void (*const command)() = shell::commandOfAction(caption)) {
        command();
    }
}

void mnuFilePreview_Click() { frmMediaList::OnLvwMediaListDblClick(); }

void mnuFileExit_Click()
{
    if (unload) {
        unload();
    }
}

void mnuEditAddToTimeline_Click()
{
    moduleTimeline::OnEditAddToTimelineClick();
    EnableOrDisableMenuItems();
}

void mnuEditAddToOverlay_Click()
{
    moduleTimeline::OnEditAddToOverlayClick();
    EnableOrDisableMenuItems();
}

void mnuAddEffectFade_Click() { addEffect("Fade"); }

void mnuAddEffectPixelate_Click() { addEffect("Pixelate"); }

void mnuAddEffectBlur_Click() { addEffect("Blur"); }

void mnuAddEffectWave_Click() { addEffect("Wave"); }

void mnuAddEffectEmboss_Click() { addEffect("Emboss"); }

void mnuAddEffectEngrave_Click() { addEffect("Engrave"); }

void mnuEditStartSel_Click()
{
    Trapped(kModule, "mnuEditStartSel_Click", [] { setSelectionEdge(true); });
}

void mnuEditEndSel_Click()
{
    Trapped(kModule, "mnuEditEndSel_Click", [] { setSelectionEdge(false); });
}

void mnuViewTimelineList_Click()
{
    form.mnuViewTimelineList.Checked = !form.mnuViewTimelineList.Checked;
    forms::frmTimeline.tvwTimelineVisible = form.mnuViewTimelineList.Checked.get();
}

void mnuViewML_LargeIcon_Click() { setView(0); }

void mnuViewML_SmallIcon_Click() { setView(1); }

void mnuViewML_List_Click() { setView(2); }

void mnuViewML_Detail_Click() { setView(3); }

void mnuHelpSection_Click() { ShowHelp("1_Welcome.htm"); }

void mnuHelpWhatsThis_Click()
{
    if (enterWhatsThis) {
        enterWhatsThis();
    }
}

void mnuHelpReportBugs_Click() { openPage("/Quillmont/report_bug.aspx"); }

void mnuHelpNewFeatureRequest_Click() { openPage("/Quillmont/new_feature.aspx"); }

void mnuHelpAbout_Click()
{
    if (showAbout) {
        showAbout();
    }
}

} // namespace mdiTarnwick

void EnableOrDisableMenuItems() { mdiTarnwick::EnableOrDisableMenuItems(); }

void ShowHelp(std::string_view topic)
{
    if (mdiTarnwick::showHelp) {
        mdiTarnwick::showHelp(topic);
    }
}
