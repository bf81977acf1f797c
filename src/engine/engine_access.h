#pragma once

// The program's engine, and its interfaces as casts of that one object.

#include "engine/ITWCoreRoot.h"
#include "engine/runtime_error.h"

#include <memory>

namespace engine {

/// The timeline engine, created once before anything else and living until the process ends. Interface thread only.
inline std::shared_ptr<ITWCoreRoot> Engine;

/// `Engine` as another of its interfaces, to be held no longer than the routine that took it.
/// Raises error 91 without an engine and error 430 when the object has no such interface.
template <class Interface>
std::shared_ptr<Interface> EngineAs()
{
    if (!Engine) {
        throw RuntimeError(error_number::kObjectNotSet, "The timeline engine has not been created.");
    }
    void* const found = Engine->interfaceOf(typeid(Interface));
    if (found == nullptr) {
        throw RuntimeError(error_number::kNoSuchInterface, "The timeline engine has no such interface.");
    }
    return {Engine, static_cast<Interface*>(found)};
}

} // namespace engine
