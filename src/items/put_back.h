#pragma once

// A change of several engine calls is made whole or not at all: the way back from each call, for when a later one
// fails.

#include <functional>
#include <utility>
#include <vector>

namespace items {

/// Runs the steps back, the newest first, when it goes without `done` having been told.
class PutBack {
public:
    PutBack() = default;
    PutBack(const PutBack&) = delete;
    PutBack& operator=(const PutBack&) = delete;
    ~PutBack()
    {
        for (auto step = steps_.rbegin(); step != steps_.rend(); ++step) {
            (*step)();
        }
    }

    /// step must not raise; what fails on the way back is left.
    void onFailure(std::function<void()> step) { steps_.push_back(std::move(step)); }
    void done() { steps_.clear(); }

private:
    std::vector<std::function<void()>> steps_;
};

} // namespace items
