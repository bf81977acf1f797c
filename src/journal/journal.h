#pragma once

// What a crash must not take away: the state of the project, journalled at the end of every command as the difference
// to the one before, and brought back at the next start.
//
//     command ends -> noteTurn -> image of the state (`capture.h`) -> writer's thread -> difference -> file
//     next start   -> file -> differences up to the last whole one -> image -> question -> program (`bring_back.h`)
//
// The journal lies in the user's state folder, in "journal/": one file for the running program, and the last five that
// were set aside. It holds names of files, never media. The project's own file is not touched.
//
// A journal begins with the first work that is not saved, and ends with `end` or `setAside`. No routine raises
// anything. Interface thread only.

#include <string_view>

namespace journal {

/// Takes the journal of this user, with what a killed run left there. Without one, as when another process holds it,
/// the program runs all the same, and the first panel of the status bar says once that work is not secured.
void start();
/// Asks whether what was left shall be brought back, and does it. True when the program holds work now. To be called
/// once behind `start`, with an empty program whose window stands; from here on turns are noted.
bool offer();

/// The outermost command or event has ended: journals the state when it is another one. In the middle of a drag, of an
/// opening or of a step it does nothing.
void noteTurn();
/// The project was saved, or the person does not want it saved: there is nothing to bring back any more.
void end();
/// The work is given up unasked, and kept as one of the last five. why: a few words for the person.
void setAside(std::string_view why);

/// The end of the program. What was handed over is written.
void stop();

} // namespace journal
