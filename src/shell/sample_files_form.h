#pragma once

// The files that the tutorial is about: two small clips, a title, and the film that comes out of them.
//
// They are packed into the program and written into a folder of the person's when they are first asked for, as a
// project names its files by full paths. What stands there already stays as it is: the person may have worked on it.
// Nothing is raised to the caller; what goes wrong is told in a box. Interface thread only.

#include <QString>

namespace sample {

/// Below the folder that the desktop has for videos, else below the person's own.
QString folder();
/// What a link of the help asks for. "clips": the two clips go into the media list, without those that are in it;
/// "film": the finished project is opened as by the menu.
void run(const QString& deed);

} // namespace sample
