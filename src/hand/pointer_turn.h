#pragma once

// One deed of the hand at a time.
//
// A press that moves the slider lets events run, and what the hand did meanwhile, like the release of a short click or
// the keys of a command, may arrive there: it waits, and runs behind what is being worked on, in the order in which it
// came. Interface thread only.

#include <deque>
#include <functional>
#include <utility>

namespace hand {

/// What waits, and whether something is being worked on.
struct Turns {
    std::deque<std::function<void()>> waiting;
    bool isBusy = false;
};

inline Turns& turns()
{
    static Turns all;
    return all;
}

/// Says for its lifetime whether something is being worked on.
class TurnSpan {
public:
    explicit TurnSpan(bool isBusy) : before_(std::exchange(turns().isBusy, isBusy)) {}
    ~TurnSpan() { turns().isBusy = before_; }
    TurnSpan(const TurnSpan&) = delete;
    TurnSpan& operator=(const TurnSpan&) = delete;

private:
    bool before_;
};

/// Runs the deed now, or behind the one that is being worked on: it holds copies of what it needs. It raises nothing.
inline void inTurn(std::function<void()> deed)
{
    Turns& all = turns();
    all.waiting.push_back(std::move(deed));
    if (all.isBusy) {
        return;
    }
    const TurnSpan span(true);
    while (!all.waiting.empty()) {
        const auto next = std::move(all.waiting.front());
        all.waiting.pop_front();
        next();
    }
}

/// The same for a command, which keeps nobody waiting: it may ask the person something, and the hand goes on meanwhile.
inline void behindTurn(std::function<void()> command)
{
    if (!turns().isBusy) {
        command();
        return;
    }
    inTurn([command = std::move(command)] {
        const TurnSpan span(false);
        command();
    });
}

} // namespace hand
