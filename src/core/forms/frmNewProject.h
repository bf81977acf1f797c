#pragma once

// What stands on the dialogue for a new project, as state. Behaviour: `project/`.

#include "core/dimension_boxes.h"

namespace forms {

struct FrmNewProject {
    DimensionBoxes PreviewDimension; // the size: of the entry that is chosen, or the person's own

    TextBox txtPath; // the working folder

    bool IsAccepted = false; // it was left by OK
};
inline FrmNewProject frmNewProject;

} // namespace forms
