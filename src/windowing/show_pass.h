#pragma once

// The one show pass a turn of the event loop: forms copy the program's state into their widgets in it.
//
// A form registers how it shows itself; whatever marks the screens (`core/show.h`) leads to one call of each at the
// next turn. Showing is idempotent and calls no handler of the program.

#include <QObject>
#include <functional>

class ShowPass : public QObject {
public:
    /// From now on marks lead here. One per process, on the interface thread.
    ShowPass();
    ~ShowPass() override;

    /// Runs at each pass until `owner` is destroyed, in the order of registering.
    void add(QObject* owner, std::function<void()> showState);
    /// At once, when something is marked.
    void runNow();

protected:
    bool event(QEvent* event) override;

private:
    struct Form {
        QObject* owner;
        std::function<void()> showState;
    };
    std::vector<Form> forms_;
};

/// The pass in use; set by the one object.
ShowPass& showPass();

/// Keeps a program's timer ticking while it is enabled. Its ticks run in a trap of the timer's own handler.
struct Timer;
void driveTimer(QObject* owner, Timer& timer);
