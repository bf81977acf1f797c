#include "walk/invariants.h"

#include "app/edit_errors.h"
#include "core/forms/frmTimeline.h"
#include "engine/ITWKeyTransition.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"

#include <algorithm>
#include <utility>

namespace walk_test {

using app::EditTrack;
using app::LaidItem;

namespace {

/// From 1; 0 for none of them.
std::int16_t numberOf(const LaidItem& item, const std::vector<app::OpenedMedia>& media)
{
    const auto found = std::ranges::find(media, item.name, &app::OpenedMedia::name);
    return found == media.end() ? std::int16_t{0} : static_cast<std::int16_t>(found - media.begin() + 1);
}

bool isInOrder(const std::vector<LaidItem>& items)
{
    engine::Milliseconds end = 0;
    return std::ranges::all_of(items, [&](const LaidItem& item) {
        return item.times.start >= std::exchange(end, item.times.stop) && item.times.stop > item.times.start;
    });
}

} // namespace

bool areKeysInStep(const app::LaidTimeline& timeline)
{
    return std::ranges::equal(timeline.row(EditTrack::kOverlay), timeline.transitions, {}, &LaidItem::times,
                              &LaidItem::times);
}

void markSources(const app::LaidTimeline& timeline, const std::vector<app::OpenedMedia>& media)
{
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    for (const EditTrack track : {EditTrack::kVideo, EditTrack::kOverlay}) {
        for (std::int16_t seq = 0; const LaidItem& item : timeline.row(track)) {
            if (item.mode == 0) {
                const std::int16_t number = numberOf(item, media);
                engine::Bool16 ok = engine::kFalse;
                engine::check(
                    engine->SetSourceStretchMode(app::handleOf(track), seq, static_cast<std::int16_t>(1 + number % 3)));
                engine::check(engine::EngineAs<engine::ITWKeyTransition>()->SetKeyColor(app::handleOf(track), seq,
                                                                                        number, 20, 30, ok));
            }
            ++seq;
        }
    }
}

std::string wrongInAny(const app::LaidTimeline& timeline)
{
    std::string wrong;
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    const auto& nodes = forms::frmTimeline.tvwTimeline.Root().Children;
    for (const EditTrack track : app::kEditTracks) {
        const std::string name(app::nameOf(track));
        wrong += isInOrder(timeline.row(track)) ? "" : name + " is not in order\n";
        engine::Bool16 isLinked = engine::kFalse;
        engine::check(engine->GetTrackLink(app::handleOf(track), isLinked));
        if (track != EditTrack::kEffects && (isLinked != engine::kFalse) != (app::rowOf(track).chkLink.Value == 1)) {
            wrong += name + " is not linked as its box says\n";
        }
        const auto& shown = nodes.at(static_cast<std::size_t>(app::treePlaceOf(track))).Children;
        if (!std::ranges::equal(timeline.row(track), shown, [&](const LaidItem& item, const TreeNode& node) {
                return track == EditTrack::kEffects ? node.Text == item.name : node.Text.starts_with(item.name + ".");
            })) {
            wrong += "the list does not show what lies on " + name + "\n";
        }
    }
    const bool hasKeys = timeline.transitions.size() == timeline.row(EditTrack::kOverlay).size();
    wrong +=
        isInOrder(timeline.transitions) && hasKeys ? "" : "the transitions are not in order, or not one an overlay\n";
    for (const std::string& error : app::takeLoggedErrors()) {
        // Media without length have no rate; all rows undone have no entry below; a bar has no room for that many
        // ticks.
        const bool isMeant = error.find(": 11 ") != std::string::npos
                             || error.starts_with("ModuleHistory.RemoveDisabledEntries*: 9 ")
                             || error.starts_with("moduleScaleRenderer.AdjustScroll*: 6 ");
        wrong += isMeant ? "" : "error " + error + "\n";
    }
    return wrong;
}

} // namespace walk_test
