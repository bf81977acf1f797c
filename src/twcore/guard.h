#pragma once

// The engine's boundary: no exception leaves an operation.

#include "engine/status.h"

#include <exception>
#include <new>
#include <utility>

namespace twcore {

/// Runs the body of an operation, which may return a status or nothing.
template <class Body>
engine::Status guarded(Body&& body) noexcept
{
    try {
        if constexpr (std::is_void_v<decltype(body())>) {
            body();
            return engine::kDone;
        } else {
            return body();
        }
    } catch (const std::bad_alloc&) {
        return engine::kOutOfMemory;
    } catch (const std::exception& failure) {
        return engine::Status(engine::kUnexpected.code(), failure.what());
    }
}

} // namespace twcore
