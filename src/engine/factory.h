#pragma once

// Engines by class name. An engine's library registers its class; the program creates the one object it works with.
// Registering and creating come from the interface thread.

#include "engine/ITWCoreRoot.h"
#include "engine/runtime_error.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace engine {

/// The class name of the timeline engine.
inline constexpr std::string_view kTimelineEngineClass = "TWCore.TarnwickTimeline";

using EngineMaker = std::function<std::shared_ptr<ITWCoreRoot>()>;

inline std::map<std::string, EngineMaker, std::less<>>& engineClasses()
{
    static std::map<std::string, EngineMaker, std::less<>> classes;
    return classes;
}

/// The last registration of a name wins.
inline void registerEngineClass(std::string_view className, EngineMaker maker)
{
    engineClasses().insert_or_assign(std::string(className), std::move(maker));
}

/// A new engine. Raises error 429 when no such class is registered.
inline std::shared_ptr<ITWCoreRoot> createEngine(std::string_view className)
{
    const auto found = engineClasses().find(className);
    auto made = found == engineClasses().end() ? nullptr : found->second();
    if (!made) {
        throw RuntimeError(error_number::kNoSuchClass, "The class " + std::string(className) + " cannot be created.");
    }
    return made;
}

} // namespace engine
