#pragma once

// Keys that nothing at the keyboard's place has taken, as the main window gets them.

class QKeyEvent;

/// Runs what the table of keys has for it; false when that is nothing.
bool takeKeyEvent(const QKeyEvent& event);
