#include "app/edit_tracks.h"

#include "hand/row_events.h"

#include <algorithm>

namespace app {

using items::RowKind;

namespace {

struct Facts {
    std::string_view name;
    RowKind kind;
    std::int16_t index;
    std::int32_t treePlace;
    PictureEvents events;
};

constexpr PictureEvents kAudioEvents{frmTimeline::picAudio_MouseDown, frmTimeline::picAudio_MouseMove,
                                     frmTimeline::picAudio_MouseUp};

constexpr std::array<Facts, 5> kFacts{
    {{"video",
      RowKind::kVideo,
      0,
      0,
      {frmTimeline::picVideo_MouseDown, frmTimeline::picVideo_MouseMove, frmTimeline::picVideo_MouseUp}},
     {"audio1", RowKind::kAudio, 0, 3, kAudioEvents},
     {"audio2", RowKind::kAudio, 1, 4, kAudioEvents},
     {"overlay",
      RowKind::kOverlay,
      0,
      2,
      {frmTimeline::picOverlay_MouseDown, frmTimeline::picOverlay_MouseMove, frmTimeline::picOverlay_MouseUp}},
     {"effects",
      RowKind::kEffect,
      0,
      1,
      {frmTimeline::picEffect_MouseDown, frmTimeline::picEffect_MouseMove, frmTimeline::picEffect_MouseUp}}}};

const Facts& factsOf(EditTrack track) { return kFacts[static_cast<std::size_t>(track)]; }

} // namespace

std::string_view nameOf(EditTrack track) { return factsOf(track).name; }

std::optional<EditTrack> trackNamed(std::string_view name)
{
    const auto* const found = std::ranges::find(kEditTracks, name, nameOf);
    return found == kEditTracks.end() ? std::nullopt : std::optional(*found);
}

const items::TrackRow& rowOf(EditTrack track) { return items::row(factsOf(track).kind, factsOf(track).index); }

engine::Handle handleOf(EditTrack track) { return items::trackOf(rowOf(track)); }

std::int32_t treePlaceOf(EditTrack track) { return factsOf(track).treePlace; }

bool takesPictures(EditTrack track) { return track == EditTrack::kVideo || track == EditTrack::kOverlay; }

bool takesSound(EditTrack track) { return track == EditTrack::kAudio1 || track == EditTrack::kAudio2; }

PictureEvents eventsOf(EditTrack track) { return factsOf(track).events; }

} // namespace app
