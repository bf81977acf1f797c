#pragma once

// The main window without a display, filled and measured to the next painted frame. For the measures of the screens.

#include "core/platform.h"
#include "shell/mdiTarnwick_form.h"
#include "windowing/ini_settings.h"
#include "windowing/qt_lettering.h"
#include "windowing/qt_machine.h"
#include "windowing/qt_ports.h"
#include "windowing/show_pass.h"

#include <QEvent>
#include <QPointF>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point begin);

/// Boxes are told on standard error and answered "OK" or "Yes".
class NoBoxes final : public MessageBoxes {
public:
    MessageAnswer show(std::string_view text, MessageIcon icon, MessageButtons buttons,
                       std::string_view title) override;
};

/// The program with its window and its ports.
class Program {
public:
    Program();
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// The widget of that name; ends the measure when there is none.
    QWidget& find(const char* name) const;

private:
    NoBoxes boxes_;
    QtCommonDialogs dialogs_;
    QtEvents events_;
    QtFonts fonts_;
    IniSettings settings_;
    QtShell shell_;
    QtMachine machine_;
    QtLettering lettering_;
    ShowPass pass_;
    std::unique_ptr<MainWindow> window_;
};

/// Half sounds, half stills, written into the folder; their paths.
std::vector<std::string> writeFiles(const QString& folder, int count);

/// 400 items on each of the five rows, a second apiece, of the streams that are open.
void fillTracks();
/// Milliseconds a pixel; scrolled to the start.
void setZoom(std::int16_t msPerPixel);

/// From each call of `act` until all that it changes is shown and painted, in so many rounds; prints one line. What
/// `prepare` does before each is not measured.
void measure(const char* what, double askedMs, const std::function<void(int round)>& act,
             const std::function<void(int round)>& prepare = {}, int rounds = 60);

/// One line with the median and the worst.
void print(const char* what, std::vector<double> times, double askedMs);

void sendMouse(QWidget& widget, QEvent::Type type, QPointF at);

/// The commands of the menus, undo and redo, with 2,000 items on the tracks.
void measureCommands(const Program& program);
