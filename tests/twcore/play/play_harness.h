// Players over a sound device that a test drives by hand, on a surface that reads the pictures' numbers.
#pragma once

#include "engine/check.h"
#include "engine/surfaces.h"
#include "support/files.h"
#include "support/manifest.h"
#include "support/patterns.h"
#include "twcore/model/timeline_interface.h"
#include "twcore/play/file_preview_interface.h"
#include "twcore/play/preview_interface.h"
#include "twcore/tarnwick_timeline.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace playtest {

using engine::Bool16;
using engine::check;
using engine::Handle;
using testmedia::medium;

template <class Condition>
bool soon(Condition condition, std::chrono::milliseconds patience = std::chrono::seconds(20))
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

template <class Value>
Value underLock(std::mutex& mutex, const Value& value)
{
    const std::lock_guard lock(mutex);
    return value;
}

/// A device whose time goes on only when the test says so. What it is given is kept.
class HandDevice {
public:
    twcore::AudioMaker maker()
    {
        return [this](twcore::AudioSource& source) { return std::make_unique<Sink>(*this, source); };
    }

    /// Once the device has been started, takes so much sound as soon as it is there. False when it was stopped first.
    bool advance(int ms)
    {
        return soon([&] { return isRunning(); }) && take(std::int64_t{ms} * twcore::kPlayRate / 1000);
    }
    /// Until the player stops the device.
    void playOut()
    {
        while (take(twcore::kAudioBlock)) {
        }
    }
    bool isRunning() { return underLock(mutex_, source_) != nullptr; }
    int starts() { return underLock(mutex_, starts_); }
    /// One channel of the last piece that was heard.
    testmedia::SoundView lastHeard(int ms, int channel = 0) const
    {
        const auto count = static_cast<std::size_t>(ms) * twcore::kPlayRate / 1000;
        return {heard_.data() + heard_.size() - count * 2 + channel, count, twcore::kPlayRate, 2};
    }
    const std::vector<float>& heard() const { return heard_; }

private:
    class Sink final : public twcore::AudioSink {
    public:
        Sink(HandDevice& device, twcore::AudioSource& source) : device_(device), source_(source) {}
        ~Sink() override { stop(); }
        void start() override
        {
            const std::lock_guard lock(device_.mutex_);
            device_.source_ = &source_;
            device_.sinceStart_ = 0;
            ++device_.starts_;
        }
        void stop() override
        {
            const std::lock_guard lock(device_.mutex_);
            device_.source_ = nullptr;
        }
        double heard() const override { return static_cast<double>(device_.sinceStart_); }
        bool isAlive() const override { return true; }

    private:
        HandDevice& device_;
        twcore::AudioSource& source_;
    };

    bool take(std::int64_t count)
    {
        std::vector<float> block(std::size_t{twcore::kAudioBlock} * 2);
        return soon([&] {
                   const std::lock_guard lock(mutex_);
                   if (source_ != nullptr) {
                       const std::int64_t wanted = std::min<std::int64_t>(count, twcore::kAudioBlock);
                       const auto got = source_->pull(std::span(block).first(static_cast<std::size_t>(wanted) * 2));
                       heard_.insert(heard_.end(), block.begin(), block.begin() + got * 2);
                       sinceStart_ += got;
                       count -= got;
                   }
                   return count == 0 || source_ == nullptr;
               })
               && count == 0;
    }

    std::mutex mutex_;
    twcore::AudioSource* source_ = nullptr; // while running
    std::atomic<std::int64_t> sinceStart_ = 0;
    int starts_ = 0;
    std::vector<float> heard_;
};

/// Reads what is shown: the number of each picture, -1 for black, -2 for one that cannot be read.
class ReadingSink final : public engine::FrameSink {
public:
    void show(const engine::SurfacePicture& picture) noexcept override
    {
        std::vector<std::uint8_t> gray;
        for (int y = 0; y < picture.height; ++y) {
            const std::uint8_t* const line = picture.pixels.get() + y * picture.strideBytes;
            for (int x = 0; x < picture.width; ++x) {
                gray.push_back(static_cast<std::uint8_t>((line[x * 4] + line[x * 4 + 1] * 2 + line[x * 4 + 2]) / 4));
            }
        }
        const testmedia::GrayView view{gray.data(), static_cast<std::size_t>(picture.width), picture.width,
                                       picture.height};
        const int number = testmedia::isBlack(view) ? -1 : testmedia::readBarcode(view).value_or(-2);
        const std::lock_guard lock(mutex_);
        numbers_.push_back(number);
        area_ = testmedia::findActiveArea(view);
        last_ = picture;
    }
    void say(engine::Text text) noexcept override
    {
        const std::lock_guard lock(mutex_);
        said_ = text;
    }

    std::vector<int> numbers() { return underLock(mutex_, numbers_); }
    /// -3 when nothing has been shown.
    int last()
    {
        const auto all = numbers();
        return all.empty() ? -3 : all.back();
    }
    testmedia::PixelRect area() { return underLock(mutex_, area_); }
    engine::SurfacePicture picture() { return underLock(mutex_, last_); }
    std::string said() { return underLock(mutex_, said_); }

private:
    std::mutex mutex_;
    std::vector<int> numbers_;
    testmedia::PixelRect area_;
    engine::SurfacePicture last_;
    std::string said_;
};

class PlayTest : public testing::Test {
protected:
    void SetUp() override
    {
        twcore::registerTarnwickTimeline(); // silences the media libraries
        surface = engine::surfaces().add(screen, {320, 240});
        check(preview.SetOwnerWindow(surface));
        check(filePreview.SetOwnerWindow(surface));
        check(timelineCalls.SetFrameSize(320, 240));
        for (Handle* track : {&video, &overlay}) {
            check(timelineCalls.CreateTrack(engine::kTrue, *track));
        }
        check(timelineCalls.CreateTrack(engine::kFalse, audio));
    }
    void TearDown() override { engine::surfaces().remove(surface); }

    Handle stream(const std::string& name, bool picture)
    {
        const Handle file = files.openFile(testmedia::medium(name));
        EXPECT_NE(file, 0) << name;
        return files.streamOfKind(file, picture);
    }
    void lay(Handle track, Handle stream, int start, int stop, int mediaStart)
    {
        Bool16 ok = engine::kFalse;
        std::int16_t count = 0;
        check(timelineCalls.AppendSource(track, stream, -1, ok));
        check(timelineCalls.GetSourceCount(track, count));
        const auto seq = static_cast<std::int16_t>(count - 1);
        check(timelineCalls.SetSourceTimes(track, seq, start, stop, ok));
        check(timelineCalls.SetSourceMediaTimes(track, seq, mediaStart, mediaStart + stop - start, ok));
    }
    void layBoth(const std::string& name, int start, int stop, int mediaStart)
    {
        lay(video, stream(name, true), start, stop, mediaStart);
        lay(audio, stream(name, false), start, stop, mediaStart);
    }
    /// Runs an operation of either player and expects it to be ok.
    template <class Object, class... Given, class... Told>
    void expectOk(Object& object, engine::Status (Object::*call)(Given...), Told... told)
    {
        Bool16 ok = engine::kFalse;
        check((object.*call)(told..., ok));
        EXPECT_EQ(ok, engine::kTrue);
    }
    /// What an operation of either player tells.
    template <class Object, class Value>
    Value told(Object& object, engine::Status (Object::*call)(Value&))
    {
        auto value = static_cast<Value>(-7);
        check((object.*call)(value));
        return value;
    }
    int position() { return told(preview, &twcore::PreviewInterface::GetPosition); }
    /// Waits until this picture is the one that is shown.
    testing::AssertionResult shows(int number)
    {
        return soon([&] { return screen.last() == number; })
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << "shown: " << screen.last() << " instead of " << number;
    }
    /// Whether the picture of the present position is shown while playing. One that was late is passed over for one
    /// that is still to come, so the clock is helped on a little.
    template <class NumberAt>
    testing::AssertionResult isInStep(NumberAt numberAt)
    {
        for (int tries = 0; tries < 30; ++tries) {
            const auto isThere = [&] { return screen.last() == numberAt(position() / 40 * 40); };
            if (soon(isThere, std::chrono::milliseconds(300))) {
                return testing::AssertionSuccess();
            }
            device.advance(20);
        }
        return testing::AssertionFailure() << "shown at " << position() << ": " << screen.last();
    }
    /// The pattern's moment at which the last piece of sound begins that was heard.
    double heardMoment(double nearSeconds)
    {
        const auto match = testmedia::locate(device.lastHeard(100), 0, nearSeconds - 0.5, nearSeconds + 0.5);
        EXPECT_GT(match.score, 0.8);
        return match.seconds;
    }

    // The device outlives the players, and the surface what is shown on it.
    HandDevice device;
    ReadingSink screen;
    std::int32_t surface = 0;
    twcore::HandleCounter handles;
    twcore::FileRegistry files{handles};
    twcore::Timeline timeline{files, handles};
    twcore::PreviewInterface preview{timeline, files, device.maker()};
    twcore::FilePreviewInterface filePreview{files, device.maker()};
    twcore::TimelineInterface timelineCalls{timeline, [this] { preview.refreshLook(); }};
    Handle video = 0;
    Handle overlay = 0;
    Handle audio = 0;
};

} // namespace playtest
