#pragma once

// The shelf of source files: opening media files and their streams, their rows in the media list, closing them.
//
// Every routine traps its own errors: what it does not handle by number is reported, and nothing is raised to the
// caller. Interface thread only.

#include "media/closing.h"
#include "media/opening.h"
#include "media/references.h"
#include "media/rows.h"
