#include "shell/tutorial.h"

#include "core/forms/frmPreferences.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "engine/runtime_error.h"
#include "settings/ModuleSettings.h"
#include "shell/mdiTarnwick_events.h"

#include <string>

namespace mdiTarnwick {

namespace {

constexpr const char* kModule = "mdiTarnwick";
constexpr std::string_view kSection = "Save Options";
constexpr std::string_view kKey = "Tutorial";

bool isThere(const std::string& path)
{
    try {
        return ports.shell->fileLength(path) > 0;
    } catch (const engine::RuntimeError&) { // no such file, or no such folder
        return false;
    }
}

/// A player that came with the program, with a document of its own.
bool startPlayer()
{
    const std::string folder = ports.shell->programFolder() + "/Tutorial/";
    const std::string player = folder + "FlashPla.exe";
    return startProgram && isThere(player) && startProgram(player, folder + "Index.swf");
}

} // namespace

void mnuHelpTutorial_Click()
{
    Trapped(kModule, "mnuHelpTutorial_Click", [] {
        if (!startPlayer() && showHelp) {
            showHelp(kTutorialPage);
        }
    });
}

bool IsTutorialHidden()
{
    const auto stored = ports.settings->get(state::AppSection, kSection, kKey);
    return stored && !stored->empty() && *stored != "0";
}

void HideTutorialAtStart(bool hide)
{
    forms::FrmPreferences& options = forms::frmPreferences; // which may stand open beside it
    const bool couldApply = options.cmdApply.Enabled;
    ModuleSettings::HideTutorial = hide ? 1 : 0;
    options.chkDoNotShowTutorial.Value = ModuleSettings::HideTutorial;
    options.cmdApply.Enabled = couldApply; // this much is applied
    ports.settings->save(state::AppSection, kSection, kKey, hide ? "1" : "0");
}

void ShowTutorialAtStart()
{
    if (!IsTutorialHidden()) {
        mnuHelpTutorial_Click();
    }
}

} // namespace mdiTarnwick
