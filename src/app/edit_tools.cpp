#include "app/edit_tools.h"

#include "core/forms/frmKeyColor.h"
#include "core/forms/frmStretchMode.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "shell/tools_commands.h"
#include "tools/frmKeyColor.h"
#include "tools/frmStretchMode.h"

namespace app {

namespace {

/// Runs the command with that as what a person does in its dialogue.
void work(std::function<void()>& showDialogue, void (*command)(), std::function<void()> deeds)
{
    showDialogue = std::move(deeds);
    command();
    showDialogue = nullptr;
}

/// False, and nothing is done, when there is no such item.
bool chooseAlone(EditSession& session, const OneItem& item)
{
    const auto kind = item.track == EditTrack::kEffects ? items::ItemKind::kEffect : items::ItemKind::kSource;
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    if (item.seq < 0 || item.seq >= items::Items(*engine, kind, handleOf(item.track)).count()) {
        return false;
    }
    session.deselect();
    session.select(item.track, item.seq);
    return true;
}

} // namespace

void setKeyColour(EditSession& session, std::int16_t seq, const std::array<std::string, 3>& colour)
{
    if (!chooseAlone(session, {EditTrack::kOverlay, seq})) {
        return;
    }
    work(frmKeyColor::showDialogue, mdiTarnwick::mnuEditSetOverlayTransparency_Click, [&] {
        forms::frmKeyColor.txtRed.Text = colour[0];
        forms::frmKeyColor.txtGreen.Text = colour[1];
        forms::frmKeyColor.txtBlue.Text = colour[2];
        frmKeyColor::cmdOK_Click();
    });
}

void setStretchMode(EditSession& session, std::optional<OneItem> item, bool isWholeTrack, std::int32_t mode)
{
    static constexpr std::array kOptions{frmStretchMode::optStretch_Click, frmStretchMode::optCrop_Click,
                                         frmStretchMode::optPreserve_Click, frmStretchMode::optStretchPreserve_Click};
    if (item && !chooseAlone(session, *item)) {
        return;
    }
    work(frmStretchMode::showDialogue, mdiTarnwick::mnuEditStretchMode_Click, [&] {
        kOptions.at(static_cast<std::size_t>(mode))();
        forms::frmStretchMode.chkApplyToEntireTrack.Value = static_cast<std::int16_t>(isWholeTrack ? 1 : 0);
        frmStretchMode::cmdOK_Click();
    });
}

} // namespace app
