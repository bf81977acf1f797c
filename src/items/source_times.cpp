#include "items/source_times.h"

#include "core/numbers.h"

namespace items {

double SourceTimes::rate() const
{
    if (!hasRate()) {
        throw engine::RuntimeError(engine::error_number::kDivisionByZero, "Division by zero");
    }
    return (static_cast<double>(stop) - start) / (static_cast<double>(mediaStop) - mediaStart);
}

engine::Milliseconds SourceTimes::mediaAt(engine::Milliseconds pos) const
{
    if (!hasRate()) {
        return mediaStart;
    }
    return numbers::rounded<std::int32_t>((static_cast<double>(pos) - start) / rate() + mediaStart);
}

} // namespace items
