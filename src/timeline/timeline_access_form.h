#pragma once

// The timeline for those who cannot see it: what lies on a row's picture are children of the row, each with its name,
// its start and its stop; a handle of a slider tells its time. Read from the engine whenever it is asked; draws
// nothing, changes nothing. Interface thread only.

/// From here on the toolkit makes these for rows' pictures and handles. Once is enough.
void installTimelineAccess();
