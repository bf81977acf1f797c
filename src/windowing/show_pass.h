#pragma once

// The one show pass a turn of the event loop: forms copy the program's state into their widgets in it.
//
// A form registers how it shows itself; whatever marks the screens (`core/show.h`) leads to one call of each at the
// next turn. Showing is idempotent and calls no handler of the program.

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
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

    /// While a handler lets events run. A pass that is due soon after another one is put off until the handler has
    /// ended, or for a moment: what stands between two steps of a handler is not worth painting.
    class Calm {
    public:
        Calm();
        ~Calm();
        Calm(const Calm&) = delete;
        Calm& operator=(const Calm&) = delete;
    };

protected:
    bool event(QEvent* event) override;

private:
    struct Form {
        QObject* owner;
        std::function<void()> showState;
    };
    void request();

    std::vector<Form> forms_;
    int calms_ = 0;
    QElapsedTimer sinceLast_;
    QTimer putOff_; // runs while a pass is put off
};

/// The pass in use; set by the one object.
ShowPass& showPass();

/// Keeps a program's timer ticking while it is enabled. Its ticks run in a trap of the timer's own handler.
struct Timer;
void driveTimer(QObject* owner, Timer& timer);
