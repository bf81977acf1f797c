#pragma once

// Link, lock and disable of the rows, as a project keeps them: an element of the program's own behind the others, so
// that a reader that does not know it passes over it.
//
// The boxes are the state. What a file says goes into them, and their change handlers take it to the engine, so that no
// track is out of sight behind a clear box. Interface thread only.

#include "project/project_file.h"

namespace pugi {
class xml_node;
}

namespace project {

/// Appends `Rows` to the root of a project.
void storeRowOptions(pugi::xml_node root);

/// Sets the boxes of all rows to what a project says; their handlers trap their errors.
void bringRowOptions(const AllRowOptions& all);

} // namespace project
