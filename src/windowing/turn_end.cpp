#include "windowing/turn_end.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QThread>
#include <QWidget>

namespace {

constexpr const char* kEndsTurns = "endsTurns";

}

TurnEnd::TurnEnd(std::function<void()> ended) : ended_(std::move(ended))
{
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { aboutToWait(); });
}

void TurnEnd::endTurnsIn(QWidget& window) { window.setProperty(kEndsTurns, true); }

void TurnEnd::aboutToWait() const
{
    // Loops of boxes, menus and drags stand above the program's own. Where a handler lets events run nobody waits for
    // one, and the dispatcher does not come here.
    const QWidget* const modal = QApplication::activeModalWidget();
    const int own = modal != nullptr && modal->property(kEndsTurns).toBool() ? 2 : 1;
    if (QThread::currentThread()->loopLevel() == own && (modal == nullptr || own == 2)) {
        ended_();
    }
}
