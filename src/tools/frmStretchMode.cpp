#include "tools/frmStretchMode.h"

#include "core/forms/frmStretchMode.h"
#include "core/shared_state.h"
#include "core/show_dialogue.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/moduleTWState.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "items/items.h"

#include <array>
#include <vector>

namespace frmStretchMode {

using engine::check;
using engine::Handle;
using forms::FrmStretchMode;
using items::ItemKind;
using items::Items;

namespace {

constexpr const char* kModule = "frmStretchMode";

FrmStretchMode& form = forms::frmStretchMode;

/// By the mode.
struct Option {
    Shown<bool> FrmStretchMode::*option;
    const char* picture;
};
constexpr std::array kOptions{
    Option{&FrmStretchMode::optStretch, "STRETCH"},
    Option{&FrmStretchMode::optCrop, "CROP"},
    Option{&FrmStretchMode::optPreserve, "PRESERVE_ASPECT_RATIO"},
    Option{&FrmStretchMode::optStretchPreserve, "PRESERVE_ASPECT_RATIO_NOLETTERBOX"},
};

void choose(std::size_t mode)
{
    for (std::size_t i = 0; i < kOptions.size(); ++i) {
        form.*kOptions[i].option = i == mode;
    }
    form.imgPreview.Picture = std::string(kOptions.at(mode).picture);
}

/// Calls visit(timeline, track, sources) for each of the tracks.
template <class Visit>
void forEachTrack(const std::vector<Handle>& tracks, const Visit& visit)
{
    const auto timeline = engine::EngineAs<engine::ITWTimeline>();
    for (const Handle track : tracks) {
        visit(*timeline, track, Items(*timeline, ItemKind::kSource, track));
    }
}

std::vector<Handle> allTracks()
{
    std::vector<Handle> tracks(state::TrackCollection.begin(), state::TrackCollection.end());
    tracks.push_back(state::OverlayTrack);
    return tracks;
}

enum class Which : std::uint8_t { kAll, kSelected };

/// set: raised by one with each source, so that it is right when a call fails.
void setModes(const std::vector<Handle>& tracks, Which which, std::int16_t mode, int& set)
{
    forEachTrack(tracks, [&](engine::ITWTimeline& timeline, Handle track, const Items& sources) {
        const std::int16_t count = sources.count();
        for (std::int16_t seq = 0; seq < count; ++seq) {
            if (which == Which::kAll || sources.isSelected(seq)) {
                check(timeline.SetSourceStretchMode(track, seq, mode));
                ++set;
            }
        }
    });
}

void close()
{
    if (closeDialogue) {
        closeDialogue();
    }
}

} // namespace

void ShowModal()
{
    Form_Load();
    ShowDialogue(kModule, showDialogue);
}

void Form_Load()
{
    form.chkApplyToEntireTrack.Value = std::int16_t{0};
    choose(0);
    const std::int16_t mode = GetFirstSelSourceStretchMode().value_or(0);
    if (mode >= 0 && static_cast<std::size_t>(mode) < kOptions.size()) {
        choose(static_cast<std::size_t>(mode));
    } else {
        form.imgPreview.Picture = std::string();
    }
}

std::optional<std::int16_t> GetFirstSelSourceStretchMode()
{
    std::optional<std::int16_t> found;
    Trapped(kModule, "GetFirstSelSourceStretchMode", [&] {
        forEachTrack(allTracks(), [&](engine::ITWTimeline& timeline, Handle track, const Items& sources) {
            const std::int16_t seq = found ? std::int16_t{-1} : sources.firstSelected();
            if (seq >= 0) {
                check(timeline.GetSourceStretchMode(track, seq, found.emplace()));
            }
        });
    });
    return found;
}

int SetSelSourcesStretchMode(std::int16_t mode)
{
    int set = 0;
    Trapped(kModule, "SetSelSourcesStretchMode", [&] { setModes(allTracks(), Which::kSelected, mode, set); });
    return set;
}

int SetTrackStretchMode(std::int16_t mode)
{
    int set = 0;
    Trapped(kModule, "SetTrackStretchMode", [&] {
        const bool isOverlay = moduleTWState::IsOverlaySourceSelected();
        if (moduleTWState::IsVideoSourceSelected()) {
            setModes({state::TrackCollection.begin(), state::TrackCollection.end()}, Which::kAll, mode, set);
        }
        if (isOverlay) {
            setModes({state::OverlayTrack}, Which::kAll, mode, set);
        }
    });
    return set;
}

void optStretch_Click() { choose(0); }

void optCrop_Click() { choose(1); }

void optPreserve_Click() { choose(2); }

void optStretchPreserve_Click() { choose(3); }

void cmdOK_Click()
{
    std::optional<std::int16_t> mode;
    if (form.optStretch) {
        mode = 0;
    } else if (form.optCrop) {
        mode = 1;
    } else if (form.optPreserve) {
        mode = 2;
    } // The fourth has never set anything: projects keep the mode 3 that they came with, and get no more of it.
    if (mode) {
        const bool isWholeTrack = form.chkApplyToEntireTrack.Value != 0;
        if ((isWholeTrack ? SetTrackStretchMode(*mode) : SetSelSourcesStretchMode(*mode)) > 0) {
            state::markModified();
            UpdatePreview();
        }
    }
    close();
}

void cmdCancel_Click() { close(); }

void cmdHelp_Click() { ShowHelp("3_7_03a_Setting_Stretch_Mode.htm"); }

} // namespace frmStretchMode
