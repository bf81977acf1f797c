#pragma once

// The trap around a routine: what it handles by number, and where the rest goes.
//
//     Trapped("moduleTarnwick", "OnFileOpenClick", [&] { ... },
//             {{32755, [] {}}, {380, [] { logSilently(...); }}});
//
// Errors that the routine knows are handled by their number; any other is reported. A function name that ends in "*"
// is logged silently, any other opens the report dialogue. No error leaves a trap.

#include "engine/runtime_error.h"

#include <functional>
#include <initializer_list>
#include <string_view>
#include <utility>

/// One error that a routine handles itself; the handler may raise, and what it raises is reported.
struct HandledError {
    std::int32_t number;
    std::function<void()> handler;
};

/// True when the body came to its end. `beforeReport` runs ahead of the report of an error that is not handled, and
/// must not raise.
bool Trapped(std::string_view module, std::string_view function, const std::function<void()>& body,
             std::initializer_list<HandledError> handled = {}, const std::function<void()>& beforeReport = {});

/// The error that is being reported, for callers that branch on it before they report it.
engine::RuntimeError currentError();
