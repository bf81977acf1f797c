#include "windowing/show_pass.h"

#include "core/controls.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

namespace {

ShowPass* inUse = nullptr;

const QEvent::Type kShowEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

} // namespace

ShowPass& showPass() { return *inUse; }

ShowPass::ShowPass()
{
    inUse = this;
    show::wanted = [this] { QCoreApplication::postEvent(this, new QEvent(kShowEvent), Qt::HighEventPriority); };
    show::marked = false;
    show::mark();
}

ShowPass::~ShowPass()
{
    show::wanted = nullptr;
    inUse = nullptr;
}

void ShowPass::add(QObject* owner, std::function<void()> showState)
{
    forms_.push_back({owner, std::move(showState)});
    connect(owner, &QObject::destroyed, this,
            [this, owner] { std::erase_if(forms_, [owner](const Form& form) { return form.owner == owner; }); });
    show::mark();
}

void ShowPass::runNow()
{
    if (!show::marked) {
        return;
    }
    show::marked = false;
    for (std::size_t i = 0; i < forms_.size(); ++i) {
        forms_[i].showState();
    }
}

bool ShowPass::event(QEvent* event)
{
    if (event->type() != kShowEvent) {
        return QObject::event(event);
    }
    runNow();
    return true;
}

void driveTimer(QObject* owner, Timer& timer)
{
    auto* const clock = new QTimer(owner);
    QObject::connect(clock, &QTimer::timeout, owner, [&timer] {
        if (timer.Enabled && timer.tick) {
            timer.tick();
        }
    });
    showPass().add(clock, [&timer, clock] {
        if (timer.Enabled && !clock->isActive()) {
            clock->start(timer.Interval);
        } else if (!timer.Enabled && clock->isActive()) {
            clock->stop();
        }
    });
}
