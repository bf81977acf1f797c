#pragma once

// The calls of the engine as a test watches them: it counts them by name and lets chosen ones fail. Faults that a file
// or a disk can have are better had from one.

#include "twcore/guard.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace testsupport {

/// Watches the operations of every engine as long as it lives. One at a time.
class EngineCalls {
public:
    EngineCalls()
    {
        watching_ = this;
        twcore::operationWatch = [](const char* signature) noexcept { return watching_->told(signature); };
    }
    ~EngineCalls() { twcore::operationWatch = nullptr; }
    EngineCalls(const EngineCalls&) = delete;
    EngineCalls& operator=(const EngineCalls&) = delete;

    /// From now on the nth call (1 is the next) of any of these operations ("OpenFile") answers this once, undone, with
    /// its out values empty: with kDone the engine says no.
    void failCall(std::set<std::string> operations, int nth = 1, engine::Status with = engine::kFailed)
    {
        failing_ = std::move(operations);
        callsUntilFailure_ = nth;
        failure_ = std::move(with);
    }
    /// Whether that failure is still to come.
    bool failsLater() const { return callsUntilFailure_ > 0; }

    /// How often each operation was called, failed calls too.
    std::map<std::string, int> counts;
    /// Asked first of all, by class and name ("PreviewInterface::Play"); what it answers stands instead of the call.
    std::function<std::optional<engine::Status>(const std::string& operation)> answer;

private:
    std::optional<engine::Status> told(std::string signature)
    {
        const std::string kRoom = "twcore::";
        signature.erase(signature.find('('));
        signature.erase(0, signature.rfind(kRoom) + kRoom.size());
        const std::string name = signature.substr(signature.rfind(':') + 1);
        ++counts[name];
        if (callsUntilFailure_ > 0 && failing_.contains(name) && --callsUntilFailure_ == 0) {
            return failure_;
        }
        return answer ? answer(signature) : std::nullopt;
    }

    static inline EngineCalls* watching_ = nullptr;
    std::set<std::string> failing_;
    int callsUntilFailure_ = 0;
    engine::Status failure_;
};

/// Answers for a player of the engine ("PreviewInterface"): told to play, it stays where it is, and its clock goes on
/// only as the test seeks.
struct HeldPlayer {
    std::string interface;
    bool isPlaying = false; // as it was told

    std::optional<engine::Status> operator()(const std::string& operation)
    {
        static const std::set<std::string> kEnds{"Pause", "Stop", "Halt", "Close", "ClosePreview", "OpenFile"};
        if (!operation.starts_with(interface + "::")) {
            return std::nullopt;
        }
        const std::string name = operation.substr(interface.size() + 2);
        isPlaying = name == "Play" || (isPlaying && !kEnds.contains(name));
        return name == "Play" ? std::optional(engine::kDone) : std::nullopt;
    }
};

} // namespace testsupport
