#include "windowing/turn_end.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QThread>

TurnEnd::TurnEnd(std::function<void()> ended) : ended_(std::move(ended))
{
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { aboutToWait(); });
}

void TurnEnd::aboutToWait() const
{
    // Loops of boxes, menus and drags stand above the program's own. Where a handler lets events run nobody waits for
    // one, and the dispatcher does not come here.
    if (QThread::currentThread()->loopLevel() == 1 && QApplication::activeModalWidget() == nullptr) {
        ended_();
    }
}
