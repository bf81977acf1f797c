#include "twcore/play/audio_devices.h"

#include <SDL.h>

#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

namespace twcore {

namespace {

/// Opening and closing come from the threads of several players.
std::mutex& sdlMutex()
{
    static std::mutex mutex;
    return mutex;
}

/// What SDL keeps for this thread, and in the end what it keeps at all.
void tidySdl()
{
    if (SDL_WasInit(0) == 0) {
        SDL_Quit();
    }
    SDL_TLSCleanup();
}

class SdlAudio final : public AudioSink {
public:
    /// Throws std::runtime_error when there is no device.
    explicit SdlAudio(AudioSource& source) : source_(source)
    {
        const std::lock_guard lock(sdlMutex());
        SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1"); // the program's signals are not SDL's business
        SDL_SetHint(SDL_HINT_APP_NAME, "Quillmont");
        if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
            tidySdl();
            throw std::runtime_error("There is no sound device.");
        }
        SDL_AudioSpec wanted{};
        wanted.freq = kPlayRate;
        wanted.format = AUDIO_F32SYS;
        wanted.channels = 2;
        wanted.samples = kAudioBlock;
        wanted.callback = &SdlAudio::fill;
        wanted.userdata = this;
        device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
        if (device_ == 0) {
            SDL_QuitSubSystem(SDL_INIT_AUDIO);
            tidySdl();
            throw std::runtime_error("The sound device cannot be opened.");
        }
        SDL_TLSCleanup(); // errors on the way to a device that works
    }
    ~SdlAudio() override
    {
        const std::lock_guard lock(sdlMutex());
        SDL_CloseAudioDevice(device_);
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        tidySdl();
    }

    void start() override
    {
        clock_.restart();
        SDL_PauseAudioDevice(device_, 0);
    }
    void stop() override
    {
        SDL_PauseAudioDevice(device_, 1); // waits for a call in flight
    }
    double heard() const override { return clock_.heard(); }
    bool isAlive() const override { return SDL_GetAudioDeviceStatus(device_) != SDL_AUDIO_STOPPED; }

private:
    static void fill(void* self, Uint8* bytes, int byteCount) noexcept
    {
        auto& sink = *static_cast<SdlAudio*>(self);
        const auto floats = static_cast<std::size_t>(byteCount) / sizeof(float);
        sink.clock_.give(sink.source_.pull({reinterpret_cast<float*>(bytes), floats}));
    }

    AudioSource& source_;
    SDL_AudioDeviceID device_ = 0;
    DeliveryClock clock_;
};

/// Asks for samples at the pace of a clock and drops them.
class SteadyAudio final : public AudioSink {
public:
    explicit SteadyAudio(AudioSource& source) : source_(source), thread_([this] { work(); }) {}
    ~SteadyAudio() override
    {
        {
            const std::lock_guard lock(mutex_);
            closing_ = true;
        }
        changed_.notify_all();
        thread_.join();
    }

    void start() override
    {
        {
            const std::lock_guard lock(mutex_);
            clock_.restart();
            running_ = true;
        }
        changed_.notify_all();
    }
    void stop() override
    {
        const std::lock_guard lock(mutex_);
        running_ = false;
    }
    double heard() const override { return clock_.heard(); }
    bool isAlive() const override { return true; }

private:
    void work()
    {
        constexpr std::chrono::nanoseconds kBlockTime{1'000'000'000LL * kAudioBlock / kPlayRate};
        std::vector<float> block(std::size_t{kAudioBlock} * 2);
        std::unique_lock lock(mutex_);
        while (!closing_) {
            if (!running_) {
                changed_.wait(lock);
                continue;
            }
            auto next = std::chrono::steady_clock::now();
            while (running_ && !closing_) {
                clock_.give(source_.pull(block));
                next += kBlockTime;
                changed_.wait_until(lock, next, [&] { return closing_ || !running_; });
            }
        }
    }

    AudioSource& source_;
    DeliveryClock clock_;
    std::mutex mutex_; // held while the source is asked; guards what follows
    std::condition_variable changed_;
    bool running_ = false;
    bool closing_ = false;
    std::thread thread_; // last: it begins when all else stands
};

} // namespace

std::unique_ptr<AudioSink> openAudio(AudioSource& source)
{
    try {
        return std::make_unique<SdlAudio>(source);
    } catch (const std::runtime_error&) {
        // No device is no error: pictures go on.
        return std::make_unique<SteadyAudio>(source);
    }
}

} // namespace twcore
