#pragma once

// The real player over the timeline, with a note of what it is told, and answers of the test's own where it wants some.

#include "engine/ITWPreview.h"
#include "engine/engine_access.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace testsupport {

class NotedPreview final : public engine::ITWPreview {
public:
    using Status = engine::Status;
    using Bool16 = engine::Bool16;
    using Ms = engine::Milliseconds;
    using Text = engine::Text;

    explicit NotedPreview(engine::ITWPreview& real) : real_(real) {}

    bool isInvalid = false;         // what IsPreviewValid denies; until the next BuildPreview
    std::optional<Ms> position;     // instead of the real one
    std::string failing;            // the operation that fails, undone
    std::vector<std::string> calls; // all but those that only ask

    /// What was called since the last time, joined by "; ".
    std::string takeCalls()
    {
        std::string joined;
        for (const std::string& call : std::exchange(calls, {})) {
            joined += (joined.empty() ? "" : "; ") + call;
        }
        return joined;
    }

    Status SetOwnerWindow(std::int32_t window) override
    {
        return noted(
            "SetOwnerWindow", [&] { return real_.SetOwnerWindow(window); }, " " + std::to_string(window));
    }
    Status BuildPreview(Bool16& built) override
    {
        isInvalid = false;
        return noted("BuildPreview", [&] { return real_.BuildPreview(built); });
    }
    Status ClosePreview() override
    {
        return noted("ClosePreview", [&] { return real_.ClosePreview(); });
    }
    Status IsPreviewValid(Bool16& valid) override
    {
        const Status status = real_.IsPreviewValid(valid);
        valid = isInvalid ? engine::kFalse : valid;
        return status;
    }
    Status Play(Bool16& ok) override
    {
        return noted("Play", [&] { return real_.Play(ok); });
    }
    Status Pause(Bool16& ok) override
    {
        return noted("Pause", [&] { return real_.Pause(ok); });
    }
    Status Stop(Bool16& ok) override
    {
        return noted("Stop", [&] { return real_.Stop(ok); });
    }
    Status Seek(Ms to, Bool16& ok) override
    {
        return noted(
            "Seek", [&] { return real_.Seek(to, ok); }, " " + std::to_string(to));
    }
    Status RefreshPreview(Bool16& ok) override
    {
        return noted("RefreshPreview", [&] { return real_.RefreshPreview(ok); });
    }
    Status Halt(Bool16& ok) override
    {
        return noted("Halt", [&] { return real_.Halt(ok); });
    }
    Status GetDuration(Ms& duration) override { return real_.GetDuration(duration); }
    Status GetPosition(Ms& at) override
    {
        const Status status = failing == "GetPosition" ? Status(engine::kFailed) : real_.GetPosition(at);
        at = position.value_or(at);
        return status;
    }
    Status GetFramePixel(std::int32_t canvas, std::int32_t x, std::int32_t y, std::int32_t& red, std::int32_t& green,
                         std::int32_t& blue) override
    {
        return real_.GetFramePixel(canvas, x, y, red, green, blue);
    }
    Status DrawSnapFrame(Text path, double seconds, std::int32_t canvas, std::int32_t width,
                         std::int32_t height) override
    {
        return real_.DrawSnapFrame(path, seconds, canvas, width, height);
    }
    Status DrawKeyFrame(engine::Handle stream, double seconds, std::int32_t canvas, std::int32_t width,
                        std::int32_t height) override
    {
        return real_.DrawKeyFrame(stream, seconds, canvas, width, height);
    }
    Status SaveSnapFrame(std::int32_t canvas, Text path, std::int32_t width, std::int32_t height, Bool16& ok) override
    {
        return real_.SaveSnapFrame(canvas, path, width, height, ok);
    }
    Status SetVolume(std::int32_t level) override
    {
        return noted(
            "SetVolume", [&] { return real_.SetVolume(level); }, " " + std::to_string(level));
    }

private:
    template <class Call>
    Status noted(const char* operation, const Call& call, const std::string& argument = {})
    {
        calls.push_back(operation + argument);
        return failing == operation ? Status(engine::kFailed) : call();
    }

    engine::ITWPreview& real_;
};

} // namespace testsupport
