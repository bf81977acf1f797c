#pragma once

// A project on the engine alone, as the program would open it.

#include "engine/ITWCoreRoot.h"
#include "engine/ITWProjectStore.h"
#include "engine/ITWTimeline.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "project/project_file.h"

#include <cstdio>
#include <string>

namespace bench {

/// Into the engine that is there, which holds nothing yet. False, with a line for the person, when a file is missing.
inline bool openProject(const std::string& path)
{
    using engine::check;
    for (const engine::Bool16 isVideo : {engine::kTrue, engine::kTrue, engine::kFalse, engine::kFalse}) {
        engine::Handle track = 0;
        check(engine::EngineAs<engine::ITWTimeline>()->CreateTrack(isVideo, track));
    }
    for (const auto& medium : project::readProjectFile(path).mediaPaths) {
        engine::Handle file = 0;
        check(engine::EngineAs<engine::ITWCoreRoot>()->OpenFile(medium, file));
        if (file == 0) {
            std::fprintf(stderr, "%s cannot be opened.\n", medium.c_str());
            return false;
        }
    }
    check(engine::EngineAs<engine::ITWProjectStore>()->LoadProject(path));
    return true;
}

} // namespace bench
