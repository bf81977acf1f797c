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

std::optional<SourceTimes> readSource(engine::ITWTimeline& engine, engine::Handle track, std::int16_t seq)
{
    SourceTimes times;
    engine::Bool16 ok = engine::kFalse;
    engine::check(engine.GetSourceTimes(track, seq, times.start, times.stop, ok));
    if (ok == engine::kFalse) {
        return {};
    }
    engine::check(engine.GetSourceMediaTimes(track, seq, times.mediaStart, times.mediaStop, ok));
    return times;
}

} // namespace items
