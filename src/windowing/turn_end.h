#pragma once

// The end of the outermost event: what was asked for is done, and the program is about to wait for the person.
//
// Not while a handler lets events run, in a box, in a menu that pops up or in a drag and drop: a handler waits there.

#include <QObject>
#include <functional>

class TurnEnd final : public QObject {
public:
    /// ended runs on the interface thread until this object goes.
    explicit TurnEnd(std::function<void()> ended);

private:
    void aboutToWait() const;

    std::function<void()> ended_;
};
