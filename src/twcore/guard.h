#pragma once

// The engine's boundary: every operation of the contract that can raise runs in here, and no exception leaves one.

#include "engine/status.h"

#include <atomic>
#include <exception>
#include <new>
#include <optional>
#include <utility>
#include <version>
#ifdef __cpp_lib_source_location
#include <source_location>
#endif

namespace twcore {

#ifdef __cpp_lib_source_location
using OperationPlace = std::source_location;
#else
/// For compilers without one, which only read the sources: the bare name stands for the signature.
struct OperationPlace {
    static constexpr OperationPlace current(const char* name = __builtin_FUNCTION()) { return {name}; }
    const char* function_name() const { return name; }
    const char* name;
};
#endif

/// Is told each of these operations ahead of its body, by its signature ("virtual engine::Status
/// twcore::CoreRoot::OpenFile(..."), on the thread that calls it, which is the interface thread; what it answers stands
/// instead of the body.
using OperationWatch = std::optional<engine::Status> (*)(const char* signature) noexcept;
/// For tests, which count calls and let them fail; the program sets none.
inline constinit std::atomic<OperationWatch> operationWatch = nullptr;

/// What a watching test answers; out of the operations' way.
[[gnu::noinline, gnu::cold]] inline std::optional<engine::Status> answerOfWatch(const char* signature) noexcept
{
    const OperationWatch watch = operationWatch.load(std::memory_order_relaxed);
    return watch != nullptr ? watch(signature) : std::nullopt;
}

/// Runs the body of an operation, which may return a status or nothing. A helper between the operation and this hands
/// the operation's place on.
template <class Body>
[[gnu::always_inline]] inline engine::Status guarded(Body&& body,
                                                     OperationPlace operation = OperationPlace::current()) noexcept
{
    if (operationWatch.load(std::memory_order_relaxed) != nullptr) [[unlikely]] {
        if (auto answer = answerOfWatch(operation.function_name())) {
            return *std::move(answer);
        }
    }
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
