#include "shell/view_switches.h"

#include "core/forms/mdiTarnwick.h"
#include "core/platform.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"

#include <string_view>

namespace mdiTarnwick {

namespace {

constexpr std::string_view kSection = "View Options";

struct Switch {
    Menu& menu;
    std::string_view key;
    bool atFirst;
};

const Switch kSwitches[] = {{forms::mdiTarnwick.mnuViewSnapping, "Snapping", true},
                            {forms::mdiTarnwick.mnuViewPicturesOnBars, "PicturesOnBars", false},
                            {forms::mdiTarnwick.mnuViewWavesOnBars, "WavesOnBars", false},
                            {forms::mdiTarnwick.mnuViewFollowEdits, "FollowEdits", false}};

void turn(const Menu& menu)
{
    Trapped("mdiTarnwick", "turn", [&] {
        for (const Switch& each : kSwitches) {
            if (&each.menu == &menu) {
                each.menu.Checked = !each.menu.Checked;
                ports.settings->save(state::AppSection, kSection, each.key, each.menu.Checked ? "1" : "0");
            }
        }
    });
}

} // namespace

void LoadViewSwitches()
{
    Trapped("mdiTarnwick", "LoadViewSwitches", [] {
        for (const Switch& each : kSwitches) {
            const auto kept = ports.settings->get(state::AppSection, kSection, each.key);
            each.menu.Checked = kept == "1" || (kept != "0" && each.atFirst);
        }
    });
}

void mnuViewSnapping_Click() { turn(forms::mdiTarnwick.mnuViewSnapping); }

void mnuViewPicturesOnBars_Click()
{
    turn(forms::mdiTarnwick.mnuViewPicturesOnBars);
    RenderAllBars();
}

void mnuViewWavesOnBars_Click()
{
    turn(forms::mdiTarnwick.mnuViewWavesOnBars);
    RenderAllBars();
}

void mnuViewFollowEdits_Click() { turn(forms::mdiTarnwick.mnuViewFollowEdits); }

} // namespace mdiTarnwick
