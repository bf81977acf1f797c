#pragma once

// What this engine can be told beyond the contract, for programs that render without a screen. Reached as an interface
// of the engine object, like the others.

namespace twcore {

class EngineOptions {
public:
    virtual ~EngineOptions() = default;

    /// Samples a second of the sound of movies that are saved from now on, 8,000 to 192,000; 48,000 until told
    /// otherwise. False for any other rate.
    virtual bool setSoundRate(int hertz) = 0;
    /// Frames and samples of the movie saved last: written pictures, and samples of its range.
    virtual long long framesSaved() const = 0;
    virtual long long samplesSaved() const = 0;
    /// The rate at which the movie saved last shows its pictures, as a fraction.
    virtual void frameRateSaved(int& numerator, int& denominator) const = 0;
};

} // namespace twcore
