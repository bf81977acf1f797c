#include "timeline/timeline_access_form.h"

#include "core/shared_state.h"
#include "core/time_text.h"
#include "engine/engine_access.h"
#include "items/row_items.h"
#include "timeline/item_names.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/slider_places.h"
#include "timeline/sliders.h"
#include "timeline/timeline_sliders_form.h"
#include "windowing/language.h"
#include "windowing/picture_widget.h"
#include "windowing/text.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <algorithm>
#include <map>

namespace {

using items::ItemTimes;
using items::TrackRow;

/// A reader asks at any time, also when the engine has gone or the item has: then the answer is nothing.
template <class Answer, class Read>
Answer asked(const TrackRow& row, Answer otherwise, const Read& read)
{
    try {
        if (engine::Engine && items::isMade(row)) {
            return read(items::rowItems(*engine::EngineAs<engine::ITWTimeline>(), row));
        }
    } catch (const std::exception&) {
        return otherwise;
    }
    return otherwise;
}

QString timeText(engine::Milliseconds ms) { return fromProgram(time_text::MilliSecondsToTimetypeAsString(ms)); }

/// One bar. It is known by its place on the row, as a row's cell is.
class Bar final : public QAccessibleInterface {
public:
    Bar(PictureWidget& picture, const TrackRow& row, int seq)
        : picture_(picture), row_(row), seq_(static_cast<std::int16_t>(seq))
    {}

    bool isValid() const override { return times().has_value(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&picture_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}
    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text what) const override
    {
        const auto at = times();
        if (!at || (what != QAccessible::Name && what != QAccessible::Value)) {
            return {};
        }
        const QString span = QWidget::tr("%1 to %2").arg(timeText(at->start), timeText(at->stop));
        return what == QAccessible::Value ? span : name() + ", " + span;
    }

    QRect rect() const override
    {
        const auto at = times();
        if (!at) {
            return {};
        }
        const int left = moduleScaleRenderer::MsToPixels(at->start) - timeline::viewLeft();
        const int right = moduleScaleRenderer::MsToPixels(at->stop) - timeline::viewLeft();
        const QRect shown = QRect(left, 0, right - left, picture_.height()) & picture_.rect();
        return shown.translated(picture_.mapToGlobal(QPoint()));
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.selectable = true;
        state.selected = asked(row_, false, [this](const items::RowItems& on) { return on.items.isSelected(seq_); });
        state.offscreen = rect().isEmpty();
        return state;
    }

private:
    std::optional<ItemTimes> times() const
    {
        return asked(row_, std::optional<ItemTimes>(),
                     [this](const items::RowItems& on) { return on.items.times(seq_); });
    }
    QString name() const
    {
        return asked(row_, QString(), [this](const items::RowItems& on) {
            timeline::ItemNames names;
            return on.kind == items::RowKind::kEffect ? translatedWord(names.ofEffect(on.track, seq_))
                                                      : fromProgram(names.ofSource(on.track, seq_));
        });
    }

    PictureWidget& picture_;
    const TrackRow& row_;
    std::int16_t seq_;
};

class RowAccess final : public QAccessibleWidget {
public:
    RowAccess(PictureWidget& picture, const TrackRow& row)
        : QAccessibleWidget(&picture, QAccessible::List), picture_(picture), row_(row)
    {}
    ~RowAccess() override
    {
        for (const auto& [seq, id] : bars_) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

    int childCount() const override
    {
        return asked(row_, 0, [](const items::RowItems& on) { return int{on.items.count()}; });
    }
    QAccessibleInterface* child(int index) const override
    {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        const auto [place, isNew] = bars_.try_emplace(index);
        if (isNew) {
            place->second = QAccessible::registerAccessibleInterface(new Bar(picture_, row_, index));
        }
        return QAccessible::accessibleInterface(place->second);
    }
    QAccessibleInterface* childAt(int x, int y) const override
    {
        for (int i = 0; i < childCount(); ++i) {
            if (QAccessibleInterface* const bar = child(i); bar->rect().contains(x, y)) {
                return bar;
            }
        }
        return nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        const auto found = std::ranges::find(bars_, QAccessible::uniqueId(const_cast<QAccessibleInterface*>(child)),
                                             &std::pair<const int, QAccessible::Id>::second);
        return found != bars_.end() ? found->first : -1;
    }

private:
    PictureWidget& picture_;
    const TrackRow& row_;
    mutable std::map<int, QAccessible::Id> bars_;
};

class HandleAccess final : public QAccessibleWidget {
public:
    explicit HandleAccess(SliderHandle& handle) : QAccessibleWidget(&handle, QAccessible::Slider), handle_(handle) {}

    /// The time stands in the name as well: a value that is no number does not come to a reader on every desktop.
    QString text(QAccessible::Text what) const override
    {
        const bool isName = what == QAccessible::Name;
        return isName                       ? QAccessibleWidget::text(what) + ", " + time()
               : what == QAccessible::Value ? time()
                                            : QAccessibleWidget::text(what);
    }

private:
    QString time() const
    {
        const bool isMain = handle_.shape() == SliderHandle::Shape::kMain;
        return timeText(isMain ? moduleTimeline::GetSliderPosition()
                               : moduleTimeline::GetSelSliderPosition(handle_.shape() == SliderHandle::Shape::kStart));
    }

    SliderHandle& handle_;
};

QAccessibleInterface* make(const QString&, QObject* object)
{
    if (auto* const handle = dynamic_cast<SliderHandle*>(object)) {
        return new HandleAccess(*handle);
    }
    auto* const picture = dynamic_cast<PictureWidget*>(object);
    if (picture == nullptr) {
        return nullptr;
    }
    const auto& rows = items::rows();
    const auto* const row =
        std::ranges::find_if(rows, [&](const TrackRow& one) { return &one.picture == &picture->picture(); });
    return row != rows.end() ? new RowAccess(*picture, *row) : nullptr;
}

} // namespace

void installTimelineAccess() { QAccessible::installFactory(make); }
