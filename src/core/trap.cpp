#include "core/trap.h"

#include "core/upcalls.h"

#include <algorithm>
#include <new>

engine::RuntimeError currentError()
{
    constexpr std::int32_t kOutOfMemory = 7;
    constexpr std::int32_t kUnexpected = 51;
    try {
        throw;
    } catch (const engine::RuntimeError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return {kOutOfMemory, "Out of memory"};
    } catch (const std::exception& error) {
        return {kUnexpected, error.what()};
    } catch (...) {
        return {kUnexpected, "Internal error"};
    }
}

bool Trapped(std::string_view module, std::string_view function, const std::function<void()>& body,
             std::initializer_list<HandledError> handled, const std::function<void()>& beforeReport)
{
    try {
        body();
        return true;
    } catch (...) {
        engine::RuntimeError error = currentError();
        const auto known = std::ranges::find(handled, error.number(), &HandledError::number);
        if (known == handled.end()) {
            if (beforeReport) {
                beforeReport();
            }
            ReportError(module, function, error);
            return false;
        }
        try {
            known->handler();
        } catch (...) {
            ReportError(module, function, currentError());
        }
        return false;
    }
}
