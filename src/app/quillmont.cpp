// quillmont: the editor.

#include "core/start_up.h"
#include "core/upcalls.h"
#include "engine/engine_access.h"
#include "engine/runtime_error.h"
#include "journal/journal.h"
#include "journal/leftover.h"
#include "journal/offer_form.h"
#include "media/media_files.h"
#include "media/moduleTarnwick.h"
#include "report/frmbug_form.h"
#include "shell/frmSplash_form.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/mdiTarnwick_form.h"
#include "shell/project_commands.h"
#include "shell/tutorial.h"
#include "twcore/tarnwick_timeline.h"
#include "windowing/desktop_class_root.h"
#include "windowing/icons.h"
#include "windowing/ini_settings.h"
#include "windowing/qt_lettering.h"
#include "windowing/qt_machine.h"
#include "windowing/qt_ports.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"
#include "windowing/turn_end.h"

#include <QApplication>
#include <QDir>
#include <QLockFile>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace {

/// Held while this process lives; a crash cannot leave it behind.
std::unique_ptr<QLockFile> instanceLock()
{
    auto lock = std::make_unique<QLockFile>(fromProgram(ports.shell->runtimeFolder()) + "/quillmont.lock");
    lock->setStaleLockTime(0);
    return lock;
}

/// The path of a project: all words joined, as a path with blanks may come in pieces, with or without quotes. A
/// relative one becomes absolute, as the program asks for it again later.
std::string projectOfCommandLine(int count, char** words)
{
    std::string path;
    for (int i = 1; i < count; ++i) {
        path += (i > 1 ? " " : "") + std::string(words[i]);
    }
    if (path.size() > 1 && path.front() == '"' && path.back() == '"') {
        path = path.substr(1, path.size() - 2);
    }
    if (path.empty() || path == "%1") {
        return {};
    }
    return toProgram(QDir::cleanPath(QDir::current().absoluteFilePath(fromProgram(path))));
}

/// True when the one word asked for something to be printed, and it was.
bool isAnswered(int count, char** words)
{
    const std::string_view word = count == 2 ? words[1] : "";
    if (word == "--version") {
        std::puts("quillmont " QUILLMONT_VERSION);
    } else if (word == "--help" || word == "-h") {
        std::puts("usage: quillmont [PROJECT]\n\nOpens the editor, with the project (.qpj) of that path.");
    } else {
        return false;
    }
    return true;
}

/// In the status bar and in the log: the desktop itself may have shown nothing.
void sayThatNoneOpens(const std::string& path)
{
    const std::string text = "There is no program that opens " + path + ".";
    media::say(text);
    ReportError("quillmont", "openWithDesktop*", engine::RuntimeError(engine::error_number::kInvalidCall, text));
}

/// Keeps the journal from here on, and offers what a killed run has left. path: of the command line, which is not
/// opened then; empty: none. True when the program holds work that was brought back.
bool offerWork(std::unique_ptr<TurnEnd>& turns, const std::string& path)
{
    journal::chooseLeftover = journal::showLeftovers;
    journal::start();
    const bool isBack = journal::offer();
    turns = std::make_unique<TurnEnd>([] { journal::noteTurn(); });
    if (isBack && !path.empty()) {
        media::say(path + " was not opened: the work that was not saved was brought back.");
    }
    return isBack;
}

} // namespace

int main(int count, char** words)
{
    if (isAnswered(count, words)) {
        return EXIT_SUCCESS;
    }
    QApplication application(count, words);
    QApplication::setApplicationName("quillmont");
    QApplication::setApplicationVersion(QUILLMONT_VERSION);
    QApplication::setApplicationDisplayName("Quillmont");
    QApplication::setWindowIcon(applicationIcon());
    QApplication::setDesktopFileName("quillmont");

    QtMessageBoxes messages;
    QtCommonDialogs dialogs;
    QtEvents events;
    QtFonts fonts;
    IniSettings settings;
    QtShell shell;
    QtMachine machine;
    QtLettering lettering;
    DesktopClassRoot classRoot(desktopPlaces());
    ports = {&messages, &dialogs, &events, &fonts, &settings, &shell, &machine, &lettering, &classRoot};
    ShowPass pass;
    twcore::registerTarnwickTimeline();
    frmbug::connectScreens();

    shell.openFailedLater = sayThatNoneOpens;

    const std::string project = projectOfCommandLine(count, words);
    const auto lock = instanceLock();
    std::unique_ptr<SplashForm> splash;
    std::unique_ptr<MainWindow> window;
    bool isShown = false;
    StartProgram({
        .anotherInstanceRuns = [&] { return !lock->tryLock() && lock->error() == QLockFile::LockFailedError; },
        .showSplash =
            [&] {
                splash = std::make_unique<SplashForm>();
                splash->show();
            },
        .init = [] { return moduleTarnwick::Init(); },
        .loadMainWindow = [&] { window = std::make_unique<MainWindow>(); },
        .showMainWindow =
            [&] {
                window->show();
                isShown = true;
            },
        .unloadSplash = [&] { splash.reset(); },
        .endProcess = [] { std::exit(EXIT_SUCCESS); },
    });
    std::unique_ptr<TurnEnd> turns;
    if (isShown) {
        const bool isBack = offerWork(turns, project);
        if (!isBack) {
            mdiTarnwick::OpenCommandLine(project);
        }
        if (!isBack && project.empty()) {
            constexpr int kWhenPaintedMs = 200;
            QTimer::singleShot(kWhenPaintedMs, window.get(), mdiTarnwick::ShowTutorialAtStart);
        }
    }
    const int status = isShown ? QApplication::exec() : EXIT_FAILURE;
    turns.reset();
    journal::stop();
    window.reset();
    engine::Engine.reset();
    return status;
}
