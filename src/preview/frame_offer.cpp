#include "preview/frame_offer.h"

#include "core/forms/frmPreview.h"
#include "core/shared_state.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWMediaFiles.h"
#include "engine/ITWStreamInfo.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "preview/frmPreview_events.h"
#include "timeline/item_names.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

namespace frmPreview {

using engine::Bool16;
using engine::check;
using engine::EngineAs;
using engine::Handle;
using engine::ITWTimeline;
using engine::kFalse;
using items::ItemKind;
using items::Items;

namespace {

forms::FrameOffer& offer = forms::frmPreview.fmeFrameOffer;

constexpr const char* kModule = "frmPreview";

struct Size {
    std::int32_t width = 0;
    std::int32_t height = 0;

    bool operator==(const Size&) const = default;
};

std::string textOf(const Size& size) { return std::to_string(size.width) + " x " + std::to_string(size.height); }

/// As it is shown; 0 x 0 of what has no picture.
Size sizeOf(Handle stream)
{
    Bool16 ok = kFalse;
    check(EngineAs<engine::ITWMediaFiles>()->SelectStream(stream, ok));
    Size size;
    if (ok != kFalse) {
        check(EngineAs<engine::ITWStreamInfo>()->GetVideoSize(size.height, size.width));
    }
    return size;
}

/// The frame for a picture: its proportions within the bounds, in even numbers, as compressors take no others.
Size frameFor(const Size& picture)
{
    const double shorter = std::min(picture.width, picture.height);
    const double longer = std::max(picture.width, picture.height);
    const double scale = std::max(std::min(1.0, kMostFrameSide / longer), kLeastFrameSide / shorter);
    const auto side = [&](std::int32_t length) {
        const auto even = static_cast<std::int32_t>(std::lround(length * scale)) / 2 * 2;
        return std::clamp<std::int32_t>(even, kLeastFrameSide, kMostFrameSide);
    };
    return {side(picture.width), side(picture.height)};
}

/// The rows of pictures.
std::vector<Handle> pictureTracks() { return {state::TrackCollection.Item(1), state::OverlayTrack}; }

bool hasPictures()
{
    const auto engine = EngineAs<ITWTimeline>();
    return std::ranges::any_of(pictureTracks(),
                               [&](Handle track) { return Items(*engine, ItemKind::kSource, track).count() > 0; });
}

struct Place {
    Handle track;
    std::int16_t seq;
    Handle stream;
};

/// The first source of the rows of pictures that answers the question.
std::optional<Place> findPicture(const auto& isWanted)
{
    const auto engine = EngineAs<ITWTimeline>();
    for (const Handle track : pictureTracks()) {
        const std::int16_t count = Items(*engine, ItemKind::kSource, track).count();
        for (std::int16_t seq = 0; seq < count; ++seq) {
            Handle stream = 0;
            check(engine->GetSourceStream(track, seq, stream));
            if (isWanted(stream)) {
                return Place{track, seq, stream};
            }
        }
    }
    return std::nullopt;
}

void offerSizeOf(const Place& picture)
{
    const Size shown = sizeOf(picture.stream);
    const Size movie{state::ProjectWidth, state::ProjectHeight};
    if (shown.width < 1 || shown.height < 1 || shown == movie || frameFor(shown) == movie) {
        return;
    }
    const Size frame = frameFor(shown);
    timeline::ItemNames names;
    offer.FileName = names.ofSource(picture.track, picture.seq);
    offer.Caption = "The movie is " + textOf(movie) + ", " + offer.FileName + " is " + textOf(shown) + ".";
    offer.cmdUseCaption = "Use " + textOf(frame);
    offer.Width = static_cast<std::int16_t>(frame.width);
    offer.Height = static_cast<std::int16_t>(frame.height);
    offer.Stream = picture.stream;
    offer.Visible = true;
}

} // namespace

void SetFrameSize(std::int16_t width, std::int16_t height)
{
    check(EngineAs<ITWTimeline>()->SetFrameSize(width, height));
    state::ProjectWidth = width;
    state::ProjectHeight = height;
    state::FrameSizeChosen = true;
    WithdrawFrameOffer();
    Resize();
}

void ForgetFrameSize()
{
    constexpr Size kStart{320, 240};
    if (kStart != Size{state::ProjectWidth, state::ProjectHeight}) {
        SetFrameSize(kStart.width, kStart.height);
    }
    state::FrameSizeChosen = false;
}

void WatchFirstPicture()
{
    const bool hadPictures = std::exchange(forms::frmPreview.HasPictures, hasPictures());
    if (forms::frmPreview.HasPictures && !hadPictures && !state::FrameSizeChosen) {
        offerSizeOf(*findPicture([](Handle) { return true; }));
    } else if (offer.Visible && !findPicture([](Handle stream) { return stream == offer.Stream; })) {
        WithdrawFrameOffer();
    }
}

void WithdrawFrameOffer() { offer.Visible = false; }

void cmdUseFrame_Click()
{
    Trapped(kModule, "cmdUseFrame_Click", [] {
        SetFrameSize(offer.Width, offer.Height);
        state::markModified();
        UpdatePreview();
    });
}

void cmdKeepFrame_Click()
{
    state::FrameSizeChosen = true;
    WithdrawFrameOffer();
}

} // namespace frmPreview
