#pragma once

// The end of the outermost event: what was asked for is done, and the program is about to wait for the person.
//
// Not while a handler lets events run, in a box, in a menu that pops up or in a drag and drop: a handler waits there.
// But in a modal window in which whole commands are given (`endTurnsIn`): its handler waits for its end alone.

#include <QObject>
#include <functional>

class QWidget;

class TurnEnd final : public QObject {
public:
    /// ended runs on the interface thread until this object goes.
    explicit TurnEnd(std::function<void()> ended);

    /// window: modal, opened from the program's own loop by a handler that has nothing half done.
    static void endTurnsIn(QWidget& window);

private:
    void aboutToWait() const;

    std::function<void()> ended_;
};
