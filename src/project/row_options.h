#pragma once

// Link, lock and disable of the rows, as a project keeps them: an element of the program's own behind the others, so
// that a reader that does not know it passes over it.
//
// The boxes are the state. What a file says goes into them, and their change handlers take it to the engine, so that no
// track is out of sight behind a clear box. Interface thread only.

namespace pugi {
class xml_document;
class xml_node;
} // namespace pugi

namespace project {

/// Appends `Rows` to the root of a project.
void storeRowOptions(pugi::xml_node root);

/// Sets the boxes of all rows to what a project says (`readRowOptions`). Raises errors 6 and 13 for numbers that are
/// none, before anything has changed; the handlers trap their errors.
void bringRowOptions(const pugi::xml_document& document);

} // namespace project
