#include "hand/tree_drop.h"

#include "core/forms/frmTimeline.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "editing/change_track.h"
#include "editing/moduleTWState.h"
#include "editing/shuffle.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "hand/list_and_divider.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/moduleTimeline.h"

namespace frmTimeline {

namespace {

using Places = std::vector<std::int32_t>;

enum class DropKind : std::uint8_t { kNothing, kShuffle, kChangeTrack };

/// nullptr when it is not there.
const TreeNode* nodeAt(const Places& places)
{
    const TreeNode* node = &ModuleTreeView::TreeRoot();
    for (const std::int32_t place : places) {
        if (place < 0 || place >= std::ssize(node->Children)) {
            return nullptr;
        }
        node = &node->Children[static_cast<std::size_t>(place)];
    }
    return node;
}

/// The track that a node below the root is, or belongs to.
const TreeNode& trackOf(const Places& places) { return *nodeAt({places[0]}); }

bool isItem(const Places& places) { return places.size() == 2; }

bool isAudio(const TreeNode& track)
{
    return track.Tag != 0
           && (track.Tag == ModuleTreeView::Audio1TrackNode || track.Tag == ModuleTreeView::Audio2TrackNode);
}

bool isLocked(const TreeNode& track)
{
    return track.Tag == ModuleTreeView::kEffectLane ? moduleTWState::IsEffectLocked(state::TrackCollection.Item(1))
                                                    : moduleTWState::IsTrackLocked(track.Tag);
}

DropKind kindOf(const Places& dragNode, const Places& dropNode)
{
    if (!isItem(dragNode) || dropNode.empty() || nodeAt(dragNode) == nullptr || nodeAt(dropNode) == nullptr) {
        return DropKind::kNothing;
    }
    const TreeNode& source = trackOf(dragNode);
    const TreeNode& target = trackOf(dropNode);
    if (isLocked(source) || isLocked(target)) {
        return DropKind::kNothing;
    }
    if (&source == &target) {
        return isItem(dropNode) ? DropKind::kShuffle : DropKind::kNothing;
    }
    return isAudio(source) && isAudio(target) ? DropKind::kChangeTrack : DropKind::kNothing;
}

void changeTrack(const Places& dragNode, const Places& dropNode)
{
    const engine::Handle source = trackOf(dragNode).Tag;
    const auto seq = static_cast<std::int16_t>(dragNode[1]);
    moduleTimeline::ClearMFSTSubSelections(); // it alone goes
    engine::check(engine::EngineAs<engine::ITWTimeline>()->SetSourceSelected(source, seq, engine::kTrue));
    ModuleTreeView::ChangeTrack(source, trackOf(dropNode).Tag, seq + 1, isItem(dropNode) ? dropNode[1] + 1 : 1);
}

/// True when the drop has taken effect.
bool drop(const Places& dragNode, const Places& dropNode)
{
    const DropKind kind = kindOf(dragNode, dropNode);
    if (kind == DropKind::kNothing) {
        return false;
    }
    bool hasMoved = true;
    if (kind == DropKind::kShuffle) {
        hasMoved = ModuleTreeView::ShuffleSources(dragNode, dropNode);
    } else {
        changeTrack(dragNode, dropNode);
        UpdatePreview();
    }
    moduleTimeline::ShowOrHideTrackSelections();
    moduleTimeline::RenderAllSelections();
    EnableOrDisableMenuItems();
    return hasMoved;
}

/// -1: up, 1: down.
void moveItem(const char* routine, std::int32_t by)
{
    Trapped("frmTimeline", routine, [&] {
        const Places item = forms::frmTimeline.tvwTimeline.Selected.get();
        if (!isItem(item)) {
            return;
        }
        const Places other{item[0], item[1] + by};
        if (by < 0 ? drop(item, other) : drop(other, item)) {
            tvwTimeline_NodeClick(other); // where the item is now
        }
    });
}

} // namespace

bool IsTreeDropValid(const Places& dragNode, const Places& dropNode)
{
    bool isValid = false;
    Trapped("frmTimeline", "IsTreeDropValid*", [&] { isValid = kindOf(dragNode, dropNode) != DropKind::kNothing; });
    return isValid;
}

void tvwTimeline_OLEDragDrop(const Places& dragNode, const Places& dropNode)
{
    Trapped("frmTimeline", "tvwTimeline_OLEDragDrop", [&] { drop(dragNode, dropNode); });
}

void MoveListItemUp() { moveItem("MoveListItemUp", -1); }

void MoveListItemDown() { moveItem("MoveListItemDown", 1); }

} // namespace frmTimeline
