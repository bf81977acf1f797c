#include "windowing/show_pass.h"

#include "core/controls.h"

#include <QCoreApplication>
#include <QEvent>

namespace {

ShowPass* inUse = nullptr;

constexpr int kCalmMs = 30;

const QEvent::Type kShowEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

} // namespace

ShowPass& showPass() { return *inUse; }

ShowPass::ShowPass()
{
    inUse = this;
    putOff_.setSingleShot(true);
    putOff_.setInterval(kCalmMs);
    connect(&putOff_, &QTimer::timeout, this, [this] { runNow(); });
    show::wanted = [this] { request(); };
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
    putOff_.stop();
    sinceLast_.start();
    for (std::size_t i = 0; i < forms_.size(); ++i) {
        forms_[i].showState();
    }
}

bool ShowPass::event(QEvent* event)
{
    if (event->type() != kShowEvent) {
        return QObject::event(event);
    }
    if (calms_ > 0 && sinceLast_.isValid() && sinceLast_.elapsed() < kCalmMs) {
        putOff_.start();
    } else {
        runNow();
    }
    return true;
}

void ShowPass::request() { QCoreApplication::postEvent(this, new QEvent(kShowEvent), Qt::HighEventPriority); }

ShowPass::Calm::Calm() { ++inUse->calms_; }

ShowPass::Calm::~Calm()
{
    if (--inUse->calms_ == 0 && inUse->putOff_.isActive()) {
        inUse->putOff_.stop();
        inUse->request();
    }
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
