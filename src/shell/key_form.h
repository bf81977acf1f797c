#pragma once

// Keys that nothing at the keyboard's place has taken, as the main window gets them.

class QKeyEvent;

/// Runs what the table of keys has for it; false when that is nothing.
bool takeKeyEvent(const QKeyEvent& event);
/// The same ahead of a list: of letters with Shift, which a search by plain letters does not need.
bool takeKeyFromList(const QKeyEvent& event);
