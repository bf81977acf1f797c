#include "timeline/ModuleTreeView.h"

#include "core/forms/frmTimeline.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "timeline/item_names.h"

#include <algorithm>
#include <string>
#include <vector>

namespace ModuleTreeView {

namespace {

TreeView& tree = forms::frmTimeline.tvwTimeline;

constexpr std::string_view kEffectsText = "Effects";
constexpr std::string_view kItemImage = "SOURCE";

std::int32_t NextNodeTag = 1;

const std::vector<TreeNode>& tracks() { return TreeRoot().Children; }

const char* imageOf(engine::Handle track)
{
    if (track == state::OverlayTrack) {
        return "OVERLAY";
    }
    if (track == kEffectLane) {
        return "EFFECT";
    }
    engine::Bool16 isVideo = engine::kFalse;
    engine::check(engine::EngineAs<engine::ITWTimeline>()->IsVideoTrack(track, isVideo));
    return isVideo != engine::kFalse ? "VIDEO" : "AUDIO";
}

TreeNode itemNode(std::string_view text, std::string_view imageKey)
{
    return {std::string(text), std::string(imageKey), NextNodeTag++, false, {}};
}

/// The root without children, and nothing found.
void clear()
{
    tree.Change() = {"Timeline", "TIMELINE", 0, true, {}};
    tree.Selected = std::vector<std::int32_t>{};
    VideoTrackNode = 0;
    OverlayTrackNode = 0;
    Audio1TrackNode = 0;
    Audio2TrackNode = 0;
    TreeTrackNode = -1;
    TreeItemNode = -1;
    NextNodeTag = 1;
}

/// Nodes for the tracks that were made.
void addTracks()
{
    const auto videoTracks = static_cast<std::int32_t>(forms::frmTimeline.picVideo.size());
    const std::int32_t count = state::TrackCollection.Count();
    for (std::int32_t i = 1; i <= std::min(videoTracks, count); ++i) {
        VideoTrackNode = state::TrackCollection.Item(i);
        AddTrack("Video", VideoTrackNode);
        AddTrack(kEffectsText, kEffectLane);
    }
    OverlayTrackNode = state::OverlayTrack;
    AddTrack("Overlays", OverlayTrackNode);
    for (std::int32_t i = videoTracks + 1; i <= count; ++i) {
        AddTrack("Audio " + std::to_string(i - 1), state::TrackCollection.Item(i));
        (i == videoTracks + 1 ? Audio1TrackNode : Audio2TrackNode) = state::TrackCollection.Item(i);
    }
}

void addItems(timeline::ItemNames& names, items::ItemKind kind, engine::Handle track)
{
    const bool isSource = kind == items::ItemKind::kSource;
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    const std::int16_t count = items::Items(*engine, kind, track).count();
    for (std::int16_t seq = 0; seq < count; ++seq) {
        AddSource(isSource ? names.ofSource(track, seq) : names.ofEffect(track, seq), kItemImage,
                  isSource ? track : kEffectLane);
    }
}

/// Clears the list down to the root and the nodes of the tracks.
void EmptyTreeView()
{
    Trapped("ModuleTreeView", "EmptyTreeView", [] {
        clear();
        addTracks();
    });
}

} // namespace

const TreeNode& TreeRoot() { return tree.Root(); }

void MakeRoot() { clear(); }

void AddTrack(std::string_view text, engine::Handle track)
{
    Trapped("ModuleTreeView", "AddTrack", [&] {
        TreeNode node{std::string(text), imageOf(track), track, false, {}};
        tree.Change().Children.push_back(std::move(node));
    });
}

void AddSource(std::string_view text, std::string_view imageKey, engine::Handle track)
{
    Trapped("ModuleTreeView", "AddSource", [&] {
        SearchTrack(track);
        if (TreeTrackNode >= 0) {
            TreeNode& parent = tree.Change().Children[static_cast<std::size_t>(TreeTrackNode)];
            parent.Children.push_back(itemNode(text, imageKey));
            parent.Expanded = true;
        }
    });
}

void InsertSource(std::string_view text, std::int32_t trackNode, std::int32_t position)
{
    Trapped("ModuleTreeView", "InsertSource", [&] {
        std::vector<TreeNode>& items = tree.Change().Children.at(static_cast<std::size_t>(trackNode)).Children;
        const auto place = std::clamp<std::ptrdiff_t>(position, 0, std::ssize(items));
        items.insert(items.begin() + place, itemNode(text, kItemImage));
    });
}

void SearchTrack(engine::Handle track)
{
    // The effects have no handle of their own and are known by their text.
    const auto found = std::ranges::find_if(tracks(), [&](const TreeNode& node) {
        return track == kEffectLane ? node.Text == kEffectsText : node.Tag == track;
    });
    TreeTrackNode = found == tracks().end() ? -1 : static_cast<std::int32_t>(found - tracks().begin());
}

void SearchSource(std::int32_t position)
{
    const bool isThere = TreeTrackNode >= 0 && position >= 1
                         && position <= std::ssize(tracks()[static_cast<std::size_t>(TreeTrackNode)].Children);
    TreeItemNode = isThere ? position - 1 : -1;
}

void SetSourceSelected(engine::Handle track, std::int32_t position)
{
    Trapped("ModuleTreeView", "SetSourceSelected", [&] {
        SearchTrack(track);
        SearchSource(position);
        if (TreeItemNode >= 0) {
            tree.Selected = std::vector{TreeTrackNode, TreeItemNode};
        }
    });
}

void UpdateTreeView()
{
    Trapped("ModuleTreeView", "UpdateTreeView", [] {
        EmptyTreeView();
        const auto videoTracks = static_cast<std::int32_t>(forms::frmTimeline.picVideo.size());
        const std::int32_t count = state::TrackCollection.Count();
        timeline::ItemNames names;
        for (std::int32_t i = 1; i <= videoTracks; ++i) {
            addItems(names, items::ItemKind::kSource, state::TrackCollection.Item(i));
        }
        addItems(names, items::ItemKind::kEffect, state::TrackCollection.Item(1));
        addItems(names, items::ItemKind::kSource, state::OverlayTrack);
        for (std::int32_t i = videoTracks + 1; i <= count; ++i) {
            addItems(names, items::ItemKind::kSource, state::TrackCollection.Item(i));
        }
    });
}

} // namespace ModuleTreeView

void UpdateTreeView() { ModuleTreeView::UpdateTreeView(); }
