#pragma once

// What this engine can be told beyond the contract, for programs that render without a screen. Reached as an interface
// of the engine object, like the others.

#include <string>

namespace twcore {

class EngineOptions {
public:
    virtual ~EngineOptions() = default;

    /// Samples a second of the sound of movies that are saved from now on, 8,000 to 192,000; until told otherwise
    /// 48,000, and in Windows Media files what the profile says. False for any other rate.
    virtual bool setSoundRate(int hertz) = 0;
    /// Frames a second of Windows Media files that are saved from now on, 1 to 240; the profile's until told otherwise.
    /// False for any other rate.
    virtual bool setProfileFrameRate(int framesPerSecond) = 0;
    /// Bits a second of the picture of AVI movies that are saved from now on, where the compressor takes a quality;
    /// 0, as until told otherwise: quality decides. False below 0.
    virtual bool setVideoBitRate(int bitsPerSecond) = 0;
    /// Begins to note where the time of saves goes, and writes it as a file of trace events. False when the file cannot
    /// be written.
    virtual void startTrace() = 0;
    virtual bool finishTrace(const std::string& path) = 0;
    /// Frames and samples of the movie saved last: written pictures, and samples of its range.
    virtual long long framesSaved() const = 0;
    virtual long long samplesSaved() const = 0;
    /// The rate at which the movie saved last shows its pictures, as a fraction.
    virtual void frameRateSaved(int& numerator, int& denominator) const = 0;
    /// Samples a second of the movie saved last.
    virtual int soundRateSaved() const = 0;
};

} // namespace twcore
