#include "editing/shuffle.h"

#include "core/forms/frmTimeline.h"
#include "core/numbers.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "history/command.h"
#include "items/items.h"
#include "items/transition_key.h"
#include "items/whole_item.h"
#include "timeline/ModuleTreeView.h"
#include "timeline/moduleScaleRenderer.h"

#include <algorithm>
#include <memory>

namespace ModuleTreeView {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;
using engine::Milliseconds;
using history::Outcome;
using items::ItemKind;
using items::Items;
using items::ItemTimes;

namespace {

constexpr const char* kModule = "ModuleTreeView";

TreeView& tree = forms::frmTimeline.tvwTimeline;

std::vector<TreeNode>& childrenOf(std::int32_t trackNode)
{
    return tree.Change().Children.at(static_cast<std::size_t>(trackNode)).Children;
}

std::int16_t seqAt(std::int32_t place) { return static_cast<std::int16_t>(place - 1); }

/// The place of the item with that tag, 0 when it is not there.
std::int32_t placeOfTag(std::int32_t trackNode, std::int32_t tag)
{
    const std::vector<TreeNode>& items = TreeRoot().Children.at(static_cast<std::size_t>(trackNode)).Children;
    const auto found = std::ranges::find(items, tag, &TreeNode::Tag);
    return found == items.end() ? 0 : static_cast<std::int32_t>(found - items.begin()) + 1;
}

/// 0 for a node that is not there.
std::int32_t tagOf(const std::vector<std::int32_t>& node)
{
    const TreeNode* found = &TreeRoot();
    for (const std::int32_t place : node) {
        if (place < 0 || place >= std::ssize(found->Children)) {
            return 0;
        }
        found = &found->Children[static_cast<std::size_t>(place)];
    }
    return found->Tag;
}

// --- Within a track ------------------------------------------------------------------------------------------------

/// One track's items as they are shuffled.
class Shuffling {
public:
    explicit Shuffling(Handle nodeTag)
        : isEffect_(nodeTag == kEffectLane), track_(isEffect_ ? state::TrackCollection.Item(1) : nodeTag),
          engine_(EngineAs<ITWTimeline>()), items_(*engine_, isEffect_ ? ItemKind::kEffect : ItemKind::kSource, track_)
    {}

    bool cut(std::int16_t seq) const
    {
        return isEffect_ ? EditCutEffect(track_, seq)
                         : (isOverlay() ? EditCutOverlay(track_, seq) : EditCutSource(track_, seq));
    }

    /// Where the item in hand goes to stand ahead of the one at that place; 0: behind the last one.
    std::pair<std::int32_t, Milliseconds> targetOf(std::int32_t place) const
    {
        const std::int32_t behind = items_.count() + 1;
        if (place >= 1 && place < behind) {
            return {place, items_.times(seqAt(place)).value_or(ItemTimes{}).start};
        }
        return {behind, items_.times(seqAt(behind - 1)).value_or(ItemTimes{}).stop};
    }

    void insert(std::int32_t place, Milliseconds start, bool shiftsRest) const
    {
        if (isEffect_) {
            insertEffect(place, start, shiftsRest);
            return;
        }
        const ItemTimes times{start, numbers::added(start, sourceLength())};
        insertSource(place, times, shiftsRest);
        if (isOverlay()) {
            insertTransition(place, times, shiftsRest);
        }
    }

private:
    bool isOverlay() const { return track_ == state::OverlayTrack; }

    /// The natural one; of media without length, that of the source.
    static Milliseconds sourceLength()
    {
        const Milliseconds media = numbers::subtracted(ShuffleMediaStop, ShuffleMediaStart);
        return media > 0 ? media : ShuffleStop - ShuffleStart;
    }

    void insertSource(std::int32_t place, const ItemTimes& times, bool shiftsRest) const
    {
        const std::int16_t seq = seqAt(place);
        const Milliseconds length = times.stop - times.start;
        Bool16 ok = kFalse;
        check(engine_->InsertSource(track_, ShuffleStream, seq, times.start, length, ok));
        if (ok == kFalse) {
            throw engine::RuntimeError(5, "The source could not be put back.");
        }
        if (shiftsRest) { // the one that it was dropped on gives way by itself
            items_.shift(place + 1, length);
        }
        items::setWhole({*engine_, track_, seq}, {times.start, times.stop, ShuffleMediaStart, ShuffleMediaStop},
                        ShuffleStretch);
    }

    void insertTransition(std::int32_t place, const ItemTimes& times, bool shiftsRest) const
    {
        if (ShuffleName.empty()) {
            return; // an overlay without one is opaque, and stays so
        }
        const std::int16_t seq = seqAt(place);
        Bool16 ok = kFalse;
        check(engine_->InsertTransition(track_, ShuffleName, seq, times.start, times.stop, 0, ok));
        moduleEdit::ApplyTransitionKey(track_, seq, ShuffleKeyRed, ShuffleKeyGreen, ShuffleKeyBlue);
        if (shiftsRest) {
            check(
                engine_->ShiftTransitions(track_, static_cast<std::int16_t>(place + 1), times.stop - times.start, ok));
        }
        check(engine_->SetTransitionTimes(track_, seq, times.start, times.stop, ok));
    }

    void insertEffect(std::int32_t place, Milliseconds start, bool shiftsRest) const
    {
        const Milliseconds length = ShuffleStop - ShuffleStart;
        const ItemTimes times{start, numbers::added(start, length)};
        Bool16 ok = kFalse;
        check(engine_->InsertEffect(track_, ShuffleName, seqAt(place), times.start, times.stop, 0, ok));
        if (shiftsRest) {
            items_.shift(place + 1, length);
        }
        items_.setTimes(seqAt(place), times);
    }

    bool isEffect_;
    Handle track_;
    std::shared_ptr<ITWTimeline> engine_;
    Items items_;
};

/// False when there is no such item.
bool shuffle(const std::vector<std::int32_t>& dragNode, const std::vector<std::int32_t>& dropNode)
{
    if (dragNode.size() != 2 || tagOf(dragNode) == 0) {
        return false;
    }
    const std::int32_t trackNode = dragNode[0];
    const std::int32_t dropTag = dropNode.size() == 2 ? tagOf(dropNode) : 0;
    const bool isItself = dropTag == tagOf(dragNode);
    const std::int32_t ownPlace = placeOfTag(trackNode, tagOf(dragNode));
    const Handle track = tagOf({trackNode});
    const Shuffling shuffling(track);
    SetSourceSelected(track, ownPlace);
    if (!shuffling.cut(seqAt(ownPlace))) {
        return false;
    }
    std::vector<TreeNode>& items = childrenOf(trackNode);
    items.erase(items.begin() + ownPlace - 1);
    if (isItself) {
        shuffling.insert(ownPlace, ShuffleStart, false);
    } else {
        const auto [place, start] = shuffling.targetOf(placeOfTag(trackNode, dropTag));
        shuffling.insert(place, start, place == 1);
    }
    return true;
}

} // namespace

bool ShuffleSources(const std::vector<std::int32_t>& dragNode, const std::vector<std::int32_t>& dropNode)
{
    return history::runTrapped(
        kModule, "ShuffleSources", "Shuffle",
        [&] {
            if (!shuffle(dragNode, dropNode)) {
                return Outcome::kNothing;
            }
            AlignTransitionsToSources();
            return Outcome::kChanged;
        },
        [] {
            RenderAllBars();
            moduleScaleRenderer::AdjustScroll();
            UpdatePreview();
            UpdateTreeView();
        });
}

void AlignTransitionsToSources()
{
    Trapped(kModule, "AlignTransitionsToSources", [] {
        const auto engine = EngineAs<ITWTimeline>();
        const Items sources(*engine, ItemKind::kSource, state::OverlayTrack);
        std::int16_t seq = 0;
        for (auto source = sources.times(seq); source; source = sources.times(++seq)) {
            ItemTimes transition;
            Bool16 ok = kFalse;
            check(engine->GetTransitionTimes(state::OverlayTrack, seq, transition.start, transition.stop, ok));
            if (ok != kFalse && transition != *source) {
                check(engine->SetTransitionTimes(state::OverlayTrack, seq, source->start, source->stop, ok));
            }
        }
    });
}

} // namespace ModuleTreeView
