#pragma once

// A slider that stands for a place in a film: a press on it goes to the place that was pressed, and may go on as a
// drag.

#include <QSlider>

/// Interface thread only.
void seekWherePressed(QSlider& slider);
