#pragma once

// Engine calls of a walk that must not stop half way.

#include "engine/check.h"

namespace ModuleHistory {

/// Tries a call once more when it fails, and keeps the first failure for a report. For one walk; interface thread only.
class SteadyCalls {
public:
    /// True when the call was done in the end. `call` answers a status; it is made twice at most.
    template <class Call>
    bool tried(Call&& call)
    {
        const engine::Status status = call();
        if (!status.failed()) {
            return true;
        }
        if (!firstFailure_.failed()) {
            firstFailure_ = status;
        }
        return !call().failed();
    }

    /// For a call without which the walk means nothing. Raises the first failure when it was not done.
    template <class Call>
    void needed(Call&& call)
    {
        if (!tried(call)) {
            raiseFailure();
        }
    }

    /// At the end of the walk: raises the first failure, if there was one.
    void raiseFailure() const { engine::check(firstFailure_); }

private:
    engine::Status firstFailure_;
};

} // namespace ModuleHistory
