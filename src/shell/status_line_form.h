#pragma once

// The main window's status bar: the panels of the program, how far a task has come with its way out, and signs of what
// goes on for longer than a message stays. Interface thread only.

#include <QTimer>
#include <array>

class CutLabel;
class QLabel;
class QProgressBar;
class QPushButton;
class QStatusBar;

class StatusLine {
public:
    /// The bar, which outlives this, owns the widgets.
    explicit StatusLine(QStatusBar& bar);

    void showState();

private:
    void makeSigns(QStatusBar& bar);

    std::array<QLabel*, 4> panels_{};
    CutLabel* message_ = nullptr; // the first of them
    QLabel* trimSign_ = nullptr;
    QLabel* barsSign_ = nullptr;
    QTimer awaited_; // pictures on bars, for longer than a moment
    QProgressBar* progress_ = nullptr;
    QPushButton* cancel_ = nullptr;
};
