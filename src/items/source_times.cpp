#include "items/source_times.h"

#include "core/numbers.h"

namespace items {

double SourceTimes::rate() const
{
    if (mediaStop <= mediaStart) {
        throw engine::RuntimeError(engine::error_number::kDivisionByZero, "Division by zero");
    }
    return (static_cast<double>(stop) - start) / (static_cast<double>(mediaStop) - mediaStart);
}

} // namespace items
