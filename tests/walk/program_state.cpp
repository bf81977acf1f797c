#include "walk/program_state.h"

#include "core/colours.h"
#include "core/forms/frmTools.h"
#include "editing/clipboard.h"
#include "history/ModuleHistory.h"
#include "timeline/moduleTimeline.h"
#include "timeline/slider_places.h"

namespace walk_test {

using app::EditTrack;

namespace {

/// The records of the run that a paste takes, the last one of its track.
template <class Record>
std::vector<Record> runOf(const std::vector<Record>& records, std::int32_t last)
{
    if (last == -1) {
        return {};
    }
    const auto end = records.begin() + last + 1;
    return {end - records[static_cast<std::size_t>(last)].Seq - 1, end};
}

std::vector<moduleEdit::SourceClip> sourceRun(EditTrack track)
{
    return runOf(moduleEdit::SourceClips, moduleEdit::LastSourceClip(app::handleOf(track)));
}

std::vector<Clip> clipsOf(EditTrack track, const app::EditSession& session)
{
    std::vector<Clip> clips;
    for (const moduleEdit::SourceClip& clip : sourceRun(track)) {
        const std::int64_t length = clip.isGap() ? clip.gap() : clip.Length;
        const std::string name(clip.isGap() ? std::string_view() : session.nameOfStream(clip.Stream));
        clips.push_back({{0, length, clip.MediaStart, clip.MediaStop, name}, clip.Seq, clip.isGap()});
    }
    return clips;
}

std::vector<Clip> effectClips()
{
    std::vector<Clip> clips;
    const std::int32_t last = moduleEdit::LastEffectClip(app::handleOf(EditTrack::kEffects));
    for (const moduleEdit::EffectClip& clip : runOf(moduleEdit::EffectClips, last)) {
        clips.push_back({{0, clip.Length, 0, 0, clip.Name}, clip.Seq, clip.isGap()});
    }
    return clips;
}

Lane laneOf(const app::LaidTimeline& laid, EditTrack track)
{
    Lane lane{{}, app::rowOf(track).chkLock.Value == 1, app::rowOf(track).chkLink.Value == 1};
    for (const app::LaidItem& item : laid.row(track)) {
        lane.items.push_back(
            {item.times.start, item.times.stop, item.media.start, item.media.stop, item.name, item.isSelected});
    }
    return lane;
}

} // namespace

PlainTimeline plainNow(const app::LaidTimeline& laid, const app::EditSession& session)
{
    PlainTimeline plain;
    for (const Row row : kRows) {
        const EditTrack track = app::kEditTracks[row];
        plain.lane(row) = laneOf(laid, track);
        plain.clipboard[row] = track == EditTrack::kEffects ? effectClips() : clipsOf(track, session);
    }
    plain.slider = moduleTimeline::GetSliderPosition();
    if (timeline::isSelectionShown()) {
        plain.range = Range{moduleTimeline::GetSelSliderPosition(true), moduleTimeline::GetSelSliderPosition(false)};
    }
    return plain;
}

std::string historyNow()
{
    std::string all = std::to_string(ModuleHistory::HistoryIndex) + " of "
                      + std::to_string(ModuleHistory::HistoryCollection.Count()) + ":";
    for (const forms::HistoryRow& row : forms::frmTools.lvwHistory.get()) {
        const std::string face = row.Text + "/" + row.Picture;
        all += row.ForeColor == colours::kButtonFace ? " (" + face + ")" : " " + face;
    }
    return all;
}

bool areKeysClippedAlike()
{
    std::vector<std::int64_t> overlays;
    for (const moduleEdit::SourceClip& clip : sourceRun(EditTrack::kOverlay)) {
        overlays.push_back(clip.isGap() ? -clip.gap() : clip.Length);
    }
    std::vector<std::int64_t> keys;
    const std::int32_t last = moduleEdit::LastTransitionClip(app::handleOf(EditTrack::kOverlay));
    for (const moduleEdit::TransitionClip& clip : runOf(moduleEdit::TransitionClips, last)) {
        keys.push_back(clip.isGap() ? -clip.gap() : clip.Length);
    }
    return overlays == keys;
}

} // namespace walk_test
