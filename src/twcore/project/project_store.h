#pragma once

// The timeline's part of a project file: written as one root element, read back over the files that are open.
// docs/project-format.md tells the format.

#include "engine/ITWProjectStore.h"
#include "twcore/files/file_registry.h"
#include "twcore/model/timeline.h"

namespace twcore {

class ProjectStore final : public engine::ITWProjectStore {
public:
    ProjectStore(Timeline& timeline, FileRegistry& files) : timeline_(timeline), files_(files) {}

    engine::Status SaveProject(engine::Text path, engine::Bool16& ok) override;
    engine::Status LoadProject(engine::Text path) override;

private:
    Timeline& timeline_;
    FileRegistry& files_;
};

} // namespace twcore
