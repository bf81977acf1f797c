#include "timeline/timeline_news_form.h"

#include "timeline/bar_pictures.h"
#include "timeline/bars.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimerEvent>

namespace {

const QEvent::Type kNews = static_cast<QEvent::Type>(QEvent::registerEventType());
constexpr int kBetweenMs = 80;

} // namespace

TimelineNews::TimelineNews(QObject* parent) : QObject(parent), number_(engine::surfaces().add(*this))
{
    timeline::listenForBarPictures(number_);
}

TimelineNews::~TimelineNews() { engine::surfaces().remove(number_); }

void TimelineNews::hear() noexcept
{
    if (!isPending_.exchange(true)) {
        QCoreApplication::postEvent(this, new QEvent(kNews));
    }
}

bool TimelineNews::event(QEvent* event)
{
    if (event->type() == kNews) {
        startTimer(kBetweenMs);
        return true;
    }
    return QObject::event(event);
}

void TimelineNews::timerEvent(QTimerEvent* event)
{
    killTimer(event->timerId());
    isPending_ = false; // what is heard from here on may come too late for this painting
    moduleScaleRenderer::RenderAllBars();
}
