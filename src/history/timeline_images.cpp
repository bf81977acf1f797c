// From an image to the engine.

#include "history/timeline_images.h"

#include "core/forms/frmTimeline.h"
#include "core/forms/frmTools.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWTimeline.h"
#include "engine/engine_access.h"
#include "history/ModuleHistory.h"
#include "history/steady_calls.h"
#include "items/transition_key.h"
#include "items/whole_item.h"
#include "timeline/moduleScaleRenderer.h"

namespace ModuleHistory {

using engine::Bool16;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;

namespace {

constexpr const char* kModule = "ModuleHistory";

/// Puts records on empty tracks. What the engine refuses is left out, and what follows it on its track closes up in
/// number, not in time.
class Rebuild {
public:
    void addSources(const std::vector<SourceImage>& images, std::int16_t count)
    {
        Handle track = 0;
        std::int16_t leftOut = 0; // of this track
        for (std::int16_t i = 0; i < count; ++i) {
            const SourceImage& image = images.at(static_cast<std::size_t>(i));
            if (image.Track != track) {
                track = image.Track;
                leftOut = 0;
            }
            if (!addSource(image, static_cast<std::int16_t>(image.Seq - leftOut))) {
                ++leftOut;
            }
        }
    }

    void addEffects(const std::vector<EffectImage>& images, std::int16_t count)
    {
        for (std::int16_t i = 0; i < count; ++i) {
            const EffectImage& image = images.at(static_cast<std::size_t>(i));
            Bool16 ok = kFalse;
            calls_.tried(
                [&] { return timeline_->AddEffectAt(image.Track, image.Name.text(), image.Start, image.Stop, ok); });
        }
    }

    void addOverlays(const TimelineImage& images, std::int16_t count)
    {
        std::int16_t seq = 0;
        for (std::int16_t i = 0; i < count; ++i) {
            const auto place = static_cast<std::size_t>(i);
            if (addSource(images.OverlaySources.at(place), seq)) {
                addTransition(images.Transitions.at(place), seq);
                ++seq;
            }
        }
    }

    /// To be called last: raises the first failure.
    void raiseFailure() const { calls_.raiseFailure(); }

private:
    bool addSource(const SourceImage& image, std::int16_t seq)
    {
        Bool16 ok = kFalse;
        const bool isAdded = calls_.tried([&] {
            return timeline_->AppendSource(image.Track, image.Stream, image.Start, ok);
        }) && ok != kFalse;
        if (!isAdded) {
            return false;
        }
        items::setWhole({*timeline_, image.Track, seq}, {image.Start, image.Stop, image.MediaStart, image.MediaStop},
                        image.StretchMode, calls_);
        return true;
    }

    /// An overlay had none only where all behind it had none either, so the numbers stay in step.
    void addTransition(const TransitionImage& image, std::int16_t seq)
    {
        Bool16 ok = kFalse;
        const bool isAdded = !image.Name.empty() && calls_.tried([&] {
            return timeline_->AddTransitionAt(image.Track, image.Name.text(), image.Start, image.Stop, ok);
        });
        if (isAdded) {
            calls_.tried([&] { return applyKey(image, seq); });
        }
    }

    static engine::Status applyKey(const TransitionImage& image, std::int16_t seq)
    {
        try {
            moduleEdit::ApplyTransitionKey(image.Track, seq, image.KeyRed, image.KeyGreen, image.KeyBlue);
            return engine::kDone;
        } catch (const engine::RuntimeError& error) {
            return {static_cast<std::uint32_t>(error.number()), error.what()};
        }
    }

    std::shared_ptr<ITWTimeline> timeline_ = engine::EngineAs<ITWTimeline>();
    SteadyCalls calls_;
};

/// Empties the tracks item by item, as only removals tell that nothing is left.
class Emptying {
public:
    void removeAll()
    {
        for (std::size_t i = 0; i < forms::frmTimeline.picVideo.size(); ++i) {
            if (const auto place = static_cast<std::int32_t>(i) + 1; place <= state::TrackCollection.Count()) {
                clear(&ITWTimeline::RemoveEffect, state::TrackCollection.Item(place));
            }
        }
        for (const Handle track : state::TrackCollection) {
            clear(&ITWTimeline::RemoveSource, track);
        }
        if (state::OverlayTrack != 0) {
            clear(&ITWTimeline::RemoveTransition, state::OverlayTrack);
            clear(&ITWTimeline::RemoveSource, state::OverlayTrack);
        }
    }

    void raiseFailure() const { calls_.raiseFailure(); }

private:
    using Removal = engine::Status (ITWTimeline::*)(Handle, std::int16_t, Bool16&);

    void clear(Removal remove, Handle track)
    {
        Bool16 removed = kFalse;
        do {
            removed = kFalse;
        } while (calls_.tried([&] { return ((*timeline_).*remove)(track, 0, removed); }) && removed != kFalse);
    }

    std::shared_ptr<ITWTimeline> timeline_ = engine::EngineAs<ITWTimeline>();
    SteadyCalls calls_;
};

} // namespace

void EmptyTimeline()
{
    Trapped(kModule, "EmptyTimeline", [] {
        Emptying emptying;
        emptying.removeAll();
        RenderAllBars();
        moduleScaleRenderer::RenderScale();
        moduleScaleRenderer::AdjustScroll();
        emptying.raiseFailure();
    });
}

const cHistoryData* EntryToRestore()
{
    std::int32_t place = UndoInProgress ? HistoryIndex : 0;
    if (RedoInProgress) {
        // The image before the operation that follows is the one after this. With no row left it is the first entry:
        // the first redo after undoing everything shows nothing new, and the next one brings both. Kept: scripts count
        // their redos by it.
        place = forms::frmTools.lvwHistory.get().empty() ? 1 : HistoryIndex + 2;
    }
    if (place < 1 || place > HistoryCollection.Count() || !HistoryCollection.Item(place).IsWhole()) {
        return nullptr;
    }
    return &HistoryCollection.Item(place);
}

void RestoreTimeline()
{
    Trapped(kModule, "RestoreTimeline", [] {
        const cHistoryData* const entry = EntryToRestore();
        if (entry == nullptr) {
            return;
        }
        Rebuild rebuild;
        entry->GetEditOperationData();
        rebuild.addSources(WorkingImage.Sources, entry->GetSrcCount());
        entry->GetEffectOperationData();
        rebuild.addEffects(WorkingImage.Effects, entry->GetEffectCount());
        entry->GetTransitionOperationData();
        rebuild.addOverlays(WorkingImage, entry->GetTransitionCount());
        BringBackFiles();
        rebuild.raiseFailure();
    });
}

void RestoreLastTLImage()
{
    Trapped(kModule, "RestoreLastTLImage", [] {
        Rebuild rebuild;
        rebuild.addSources(LastImage.Sources, LastImage.SourceCount);
        rebuild.addEffects(LastImage.Effects, LastImage.EffectCount);
        rebuild.addOverlays(LastImage, LastImage.TransitionCount);
        BringBackFiles();
        rebuild.raiseFailure();
    });
}

} // namespace ModuleHistory
