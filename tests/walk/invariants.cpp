#include "walk/invariants.h"

#include "core/forms/frmTimeline.h"
#include "engine/ITWKeyTransition.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"

#include <algorithm>
#include <cstdlib>

namespace walk_test {

using app::EditTrack;
using app::LaidItem;

namespace {

std::string textOf(const Item& item)
{
    return item.name + " " + std::to_string(item.start) + "-" + std::to_string(item.stop) + " ["
           + std::to_string(item.mediaStart) + "-" + std::to_string(item.mediaStop) + "]";
}

std::string textOf(const Lane& lane)
{
    std::string text;
    for (const Item& item : lane.items) {
        text += "\n    " + textOf(item);
    }
    return text.empty() ? " nothing" : text;
}

/// From 1; 0 for none of them.
std::int16_t numberOf(const LaidItem& item, const std::vector<app::OpenedMedia>& media)
{
    const auto found = std::ranges::find(media, item.name, &app::OpenedMedia::name);
    return found == media.end() ? std::int16_t{0} : static_cast<std::int16_t>(found - media.begin() + 1);
}

/// Calls visit(track, seq, number of its file) for each source with a picture.
template <class Visit>
void forEachPicture(const app::LaidTimeline& timeline, const std::vector<app::OpenedMedia>& media, const Visit& visit)
{
    for (const EditTrack track : {EditTrack::kVideo, EditTrack::kOverlay}) {
        const auto& items = timeline.row(track);
        for (std::size_t seq = 0; seq < items.size(); ++seq) {
            visit(track, static_cast<std::int16_t>(seq), numberOf(items[seq], media));
        }
    }
}

std::int16_t stretchModeOf(EditTrack track, std::int16_t seq)
{
    std::int16_t mode = 0;
    engine::check(engine::EngineAs<engine::ITWTimeline>()->GetSourceStretchMode(app::handleOf(track), seq, mode));
    return mode;
}

std::int16_t modeOf(std::int16_t number) { return static_cast<std::int16_t>(number % 4); }

std::string wrongInRow(std::string_view name, const std::vector<LaidItem>& items)
{
    engine::Milliseconds end = 0;
    for (std::size_t seq = 0; seq < items.size(); ++seq) {
        const items::ItemTimes& times = items[seq].times;
        if (times.start < end || times.stop <= times.start) {
            return std::string(name) + " " + std::to_string(seq) + " lies at " + std::to_string(times.start) + "-"
                   + std::to_string(times.stop) + ", behind " + std::to_string(end) + "\n";
        }
        end = times.stop;
    }
    return {};
}

bool areAlike(const Item& some, const Item& other, int slack)
{
    const auto isNear = [&](std::int64_t a, std::int64_t b) { return std::llabs(a - b) <= slack; };
    return some.name == other.name && isNear(some.start, other.start) && isNear(some.stop, other.stop)
           && isNear(some.mediaStart, other.mediaStart) && isNear(some.mediaStop, other.mediaStop);
}

bool areAlike(const Lane& some, const Lane& other)
{
    int slack = 0; // what was rounded moves what lies behind it
    return std::ranges::equal(some.items, other.items, [&](const Item& a, const Item& b) {
        slack = std::max({slack, a.slack, b.slack});
        return areAlike(a, b, slack);
    });
}

std::vector<Item> piecesOf(const std::vector<Clip>& clips)
{
    std::vector<Item> pieces;
    for (const Clip& clip : clips) {
        if (!clip.isGap) {
            Item piece = clip.piece;
            piece.stop -= piece.start; // where it was cut does not count
            piece.start = 0;
            pieces.push_back(piece);
        }
    }
    return pieces;
}

} // namespace

std::string wrongInOrder(const app::LaidTimeline& timeline)
{
    std::string wrong;
    for (const EditTrack track : app::kEditTracks) {
        wrong += wrongInRow(app::nameOf(track), timeline.row(track));
    }
    wrong += wrongInRow("transitions", timeline.transitions);
    if (timeline.transitions.size() != timeline.row(EditTrack::kOverlay).size()) {
        wrong += "there are " + std::to_string(timeline.row(EditTrack::kOverlay).size()) + " overlays, but "
                 + std::to_string(timeline.transitions.size()) + " transitions\n";
    }
    return wrong;
}

std::string wrongInKeys(const app::LaidTimeline& timeline)
{
    const auto& overlays = timeline.row(EditTrack::kOverlay);
    for (std::size_t seq = 0; seq < std::min(overlays.size(), timeline.transitions.size()); ++seq) {
        if (overlays[seq].times != timeline.transitions[seq].times) {
            return "overlay " + std::to_string(seq) + " has its transition elsewhere\n";
        }
    }
    return {};
}

void markSources(const app::LaidTimeline& timeline, const std::vector<app::OpenedMedia>& media)
{
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    const auto keys = engine::EngineAs<engine::ITWKeyTransition>();
    forEachPicture(timeline, media, [&](EditTrack track, std::int16_t seq, std::int16_t number) {
        if (stretchModeOf(track, seq) != modeOf(number)) {
            engine::check(engine->SetSourceStretchMode(app::handleOf(track), seq, modeOf(number)));
        }
        if (track == EditTrack::kOverlay) {
            engine::Bool16 ok = engine::kFalse;
            engine::check(keys->SetKeyColor(app::handleOf(track), seq, number, 20, 30, ok));
        }
    });
}

std::string wrongInMarks(const app::LaidTimeline& timeline, const std::vector<app::OpenedMedia>& media)
{
    const auto keys = engine::EngineAs<engine::ITWKeyTransition>();
    std::string wrong;
    forEachPicture(timeline, media, [&](EditTrack track, std::int16_t seq, std::int16_t number) {
        std::int16_t red = number;
        if (track == EditTrack::kOverlay) {
            engine::check(keys->GetKeyRed(app::handleOf(track), seq, red));
        }
        if (stretchModeOf(track, seq) != modeOf(number) || red != number) {
            wrong += std::string(app::nameOf(track)) + " " + std::to_string(seq) + " has lost its mode or its key\n";
        }
    });
    return wrong;
}

std::string wrongInList(const app::LaidTimeline& timeline)
{
    const auto& nodes = forms::frmTimeline.tvwTimeline.Root().Children;
    for (const EditTrack track : app::kEditTracks) {
        const auto& shown = nodes.at(static_cast<std::size_t>(app::treePlaceOf(track))).Children;
        const bool isSame =
            std::ranges::equal(timeline.row(track), shown, [&](const LaidItem& item, const TreeNode& node) {
                return track == EditTrack::kEffects ? node.Text == item.name : node.Text.starts_with(item.name + ".");
            });
        if (!isSame) {
            return "the list does not show what lies on " + std::string(app::nameOf(track)) + "\n";
        }
    }
    return {};
}

std::string wrongInLinks()
{
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    for (const EditTrack track : app::kEditTracks) {
        engine::Bool16 isLinked = engine::kFalse;
        engine::check(engine->GetTrackLink(app::handleOf(track), isLinked));
        if (track != EditTrack::kEffects && (isLinked != engine::kFalse) != (app::rowOf(track).chkLink.Value == 1)) {
            return std::string(app::nameOf(track)) + " is not linked as its box says\n";
        }
    }
    return {};
}

std::string wrongInErrors(const std::vector<std::string>& errors)
{
    std::string wrong;
    for (const std::string& error : errors) {
        // Media without length have no rate; all rows undone have no entry below; a bar has no room for that many
        // ticks.
        const bool isTold = error.find(": 11 ") != std::string::npos
                            || error.starts_with("ModuleHistory.RemoveDisabledEntries*: 9 ")
                            || error.starts_with("moduleScaleRenderer.AdjustScroll*: 6 ");
        wrong += isTold ? "" : "error " + error + "\n";
    }
    return wrong;
}

std::string wrongInItems(const PlainTimeline& timeline, const PlainTimeline& told)
{
    std::string wrong;
    for (const Row row : kRows) {
        if (!areAlike(timeline.lane(row), told.lane(row))) {
            wrong += std::string(app::nameOf(app::kEditTracks[row])) + " holds" + textOf(timeline.lane(row))
                     + "\n  instead of" + textOf(told.lane(row)) + "\n";
        }
    }
    return wrong;
}

std::string wrongInClipboard(const PlainTimeline& timeline, const PlainTimeline& told)
{
    for (const Row row : kRows) {
        const auto pieces = piecesOf(timeline.clipboard[row]);
        const auto toldPieces = piecesOf(told.clipboard[row]);
        if (!std::ranges::equal(pieces, toldPieces, [](const Item& a, const Item& b) { return areAlike(a, b, 0); })) {
            return "the clipboard of " + std::string(app::nameOf(app::kEditTracks[row])) + " holds"
                   + textOf(Lane{pieces}) + "\n  instead of" + textOf(Lane{toldPieces}) + "\n";
        }
    }
    return {};
}

} // namespace walk_test
