#include "timeline/bars.h"

#include "core/colours.h"
#include "core/forms/frmTimeline.h"
#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/time_text.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/engine_access.h"
#include "items/items.h"
#include "items/row_items.h"
#include "items/track_rows.h"
#include "timeline/bar_pictures.h"
#include "timeline/item_names.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/slider_places.h"

#include <algorithm>
#include <memory>

namespace moduleScaleRenderer {

using engine::Milliseconds;
using items::ItemKind;
using items::Items;
using items::ItemTimes;
using items::RowKind;

namespace {

constexpr std::int32_t kOutline = 0;
constexpr std::int32_t kHighlight = 0xFFFFFF;

/// The part of the timeline that the pictures show.
struct View {
    std::int32_t leftPx;
    Milliseconds start;
    Milliseconds stop;

    std::int32_t x(Milliseconds ms) const { return MsToPixels(ms) - leftPx; }
};

View currentView()
{
    const std::int32_t left = timeline::viewLeft();
    return {left, PixelsToMs(left), PixelsToMs(left + forms::frmTimeline.picScale.ScaleWidth)};
}

/// One repaint of one row.
class BarPainter {
public:
    struct Look {
        std::int32_t fill;
        std::int32_t shadow;
        bool isLocked;
    };

    BarPainter(PictureBox& pic, ItemKind kind, engine::Handle track, Look look, timeline::BarPictures* pictures)
        : canvas_(pic.drawing), height_(pic.ScaleHeight), kind_(kind), track_(track), look_(look), pictures_(pictures),
          showsMarks_(timeline::isSelectionHidden() && !look.isLocked), engine_(engine::EngineAs<engine::ITWTimeline>())
    {}

    void paint()
    {
        canvas_.clear();
        view_ = currentView();
        const Items items(*engine_, kind_, track_);
        for (std::int16_t seq = 0;; ++seq) {
            const auto item = items.times(seq);
            if (!item || item->start > view_.stop) {
                break; // items are in the order of time
            }
            if (item->stop < view_.start) {
                continue;
            }
            paintBody(*item, seq);
            paintCaption(*item, seq);
            paintCorner(*item);
            if (showsMarks_ && items.isSelected(seq)) {
                markSelected(*item);
            }
        }
    }

private:
    void paintBody(const ItemTimes& item, std::int16_t seq)
    {
        // A difference, not a cut time: it lies at the view's edge or left of it, and so the fill begins beyond.
        const Milliseconds drawStart = item.start < view_.start ? view_.start - item.start : item.start;
        const Milliseconds drawStop = std::min(item.stop, view_.stop);
        const std::int32_t left = view_.x(item.start);
        const std::int32_t right = view_.x(item.stop);
        const std::int32_t h = height_;
        canvas_.filledBox(view_.x(drawStart), 0, view_.x(drawStop), h - 1, look_.fill);
        isCovered_ = pictures_ != nullptr && kind_ == ItemKind::kSource
                     && pictures_->paint(canvas_, {track_, seq, item, left, right, h, look_.shadow, look_.isLocked});
        canvas_.box(left, 0, right, h - 1, kOutline);
        canvas_.box(left + 2, 2, left + 2, h - 3, kHighlight);
        canvas_.box(left + 2, 2, right - 2, 2, kHighlight);
        canvas_.box(right - 1, 2, right - 1, h - 2, look_.shadow);
        canvas_.box(left + 1, h - 2, right - 1, h - 2, look_.shadow);
    }

    /// A name that would not fit is left out whole.
    void paintCaption(const ItemTimes& item, std::int16_t seq)
    {
        constexpr std::int32_t kMargins = 22;
        const std::int32_t room = view_.x(item.stop) - view_.x(item.start) - kMargins;
        if (room <= 0) { // not even an empty name: the engine need not be asked
            return;
        }
        const std::string_view name =
            kind_ == ItemKind::kSource ? names_.ofSource(track_, seq) : names_.ofEffect(track_, seq);
        if (canvas_.textWidth(name) < room) {
            const double y = height_ / 2.0 - canvas_.textHeight() / 2;
            if (isCovered_) {
                paintPlate(view_.x(item.start) + 10, y, canvas_.textWidth(name));
            }
            canvas_.text(view_.x(item.start) + 10, y, name, colours::kWindowText);
        }
    }

    /// So that a name is read above pictures too.
    void paintPlate(std::int32_t x, double y, double width)
    {
        constexpr std::int32_t kMargin = 4;
        const auto top = static_cast<std::int32_t>(y) - 1;
        const auto bottom = static_cast<std::int32_t>(y + canvas_.textHeight()) + 1;
        canvas_.veil(x - kMargin, top, x + static_cast<std::int32_t>(width) + kMargin, bottom, look_.fill);
    }

    void paintCorner(const ItemTimes& item)
    {
        constexpr std::int32_t kCorner = 12;
        const std::int32_t spare = view_.x(item.stop) - kCorner - view_.x(item.start);
        // On a bar of exactly that width it would reach from edge to edge: a source has it, an effect is left plain.
        // Kept: people know the bars so.
        if (spare > 0 || (spare == 0 && kind_ == ItemKind::kSource)) {
            canvas_.line(view_.x(item.stop) - kCorner, 0, view_.x(item.stop), kCorner, kOutline);
        }
    }

    void markSelected(const ItemTimes& item)
    {
        if (isCovered_) { // dots alone are not seen on a dark picture
            canvas_.box(view_.x(item.start) + 1, 1, view_.x(item.stop) - 1, height_ - 2, kHighlight);
        }
        canvas_.dottedBox(view_.x(item.start) + 1, 1, view_.x(item.stop) - 1, height_ - 2, kOutline);
        forms::mdiTarnwick.sbr.Panel("SELECTION") = time_text::MilliSecondsToTimetypeAsString(item.start) + " - "
                                                    + time_text::MilliSecondsToTimetypeAsString(item.stop);
    }

    DrawList& canvas_;
    std::int32_t height_;
    ItemKind kind_;
    engine::Handle track_;
    Look look_;
    timeline::BarPictures* pictures_;
    View view_{};
    bool isCovered_ = false; // the bar in hand shows what lies in it
    bool showsMarks_;
    std::shared_ptr<engine::ITWTimeline> engine_;
    timeline::ItemNames names_;
};

bool isAnythingSelected()
{
    const auto engine = engine::EngineAs<engine::ITWTimeline>();
    static std::int16_t lastFound = 0; // asked first, so that not every painting walks over all items
    bool found = false;
    items::forEachRow(*engine, [&](const items::RowItems& row) {
        found = found || (lastFound < row.items.count() && row.items.isSelected(lastFound));
    });
    items::forEachRow(*engine, [&](const items::RowItems& row) {
        const std::int16_t seq = found ? std::int16_t{-1} : row.items.firstSelected();
        if (seq >= 0) {
            found = true;
            lastFound = seq;
        }
    });
    return found;
}

struct Colours {
    std::int32_t fill;
    std::int32_t shadow;
};

Colours coloursOf(const items::TrackRow& row)
{
    if (row.isLocked()) {
        return {colours::kButtonFace, colours::kButtonShadow};
    }
    switch (row.kind) {
    case RowKind::kVideo:
        return {state::VideoBarFill, 0xC0C000};
    case RowKind::kEffect:
        return {state::EffectBarFill, 0xC000};
    case RowKind::kOverlay:
        return {state::OverlayBarFill, 0x87B8D3};
    case RowKind::kAudio:
        break;
    }
    return {state::AudioBarFill, 0xC0C0};
}

/// Paints all sources of a track that reach the view. Colours as `core/colours.h` says.
void RenderBar(PictureBox& pic, engine::Handle track, const BarPainter::Look& look, timeline::BarPictures* pictures)
{
    Trapped("moduleScaleRenderer", "RenderBar*",
            [&] { BarPainter(pic, ItemKind::kSource, track, look, pictures).paint(); });
}

/// The same for all its effects.
void RenderEffectBar(PictureBox& pic, engine::Handle track, const BarPainter::Look& look, timeline::BarPictures*)
{
    Trapped("moduleScaleRenderer", "RenderEffectBar*",
            [&] { BarPainter(pic, ItemKind::kEffect, track, look, nullptr).paint(); });
}

void renderRows(RowKind kind, timeline::BarPictures* pictures)
{
    for (const items::TrackRow& row : items::rows()) {
        if (row.kind == kind) {
            const Colours colours = coloursOf(row);
            const auto render = kind == RowKind::kEffect ? RenderEffectBar : RenderBar;
            render(row.picture, items::trackOf(row), {colours.fill, colours.shadow, row.isLocked()}, pictures);
        }
    }
}

} // namespace

void RenderEffectBars()
{
    Trapped("moduleScaleRenderer", "RenderEffectBars*", [] { renderRows(RowKind::kEffect, nullptr); });
}

void RenderAllBars()
{
    Trapped("moduleScaleRenderer", "RenderAllBars*", [] {
        timeline::BarPictures pictures;
        renderRows(RowKind::kVideo, &pictures);
        renderRows(RowKind::kAudio, &pictures);
        RenderEffectBars();
        renderRows(RowKind::kOverlay, &pictures);
        pictures.finish();
        // The last selected item has written its times, and may be gone since.
        Shown<std::string>& times = forms::mdiTarnwick.sbr.Panel("SELECTION");
        if (!times.get().empty() && !isAnythingSelected()) {
            times = std::string();
        }
    });
}

} // namespace moduleScaleRenderer

void RenderAllBars() { moduleScaleRenderer::RenderAllBars(); }
