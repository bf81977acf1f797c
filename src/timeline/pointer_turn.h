#pragma once

// One deed of the hand at a time.
//
// A press that moves the slider lets events run, and what the hand did meanwhile, like the release of a short click,
// may arrive there: it waits, and runs behind what is being worked on, in the order in which it came. Interface thread
// only.

#include <deque>
#include <functional>
#include <utility>

namespace timeline {

/// Runs the deed now, or behind the one that is being worked on: it holds copies of what it needs. It raises nothing.
inline void inTurn(std::function<void()> deed)
{
    static std::deque<std::function<void()>> waiting;
    static bool isBusy = false;
    waiting.push_back(std::move(deed));
    if (isBusy) {
        return;
    }
    struct Span {
        Span() { isBusy = true; }
        ~Span() { isBusy = false; }
        Span(const Span&) = delete;
        Span& operator=(const Span&) = delete;
    };
    const Span span;
    while (!waiting.empty()) {
        const auto next = std::move(waiting.front());
        waiting.pop_front();
        next();
    }
}

} // namespace timeline
