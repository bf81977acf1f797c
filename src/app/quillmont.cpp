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
#include "settings/screen_language.h"
#include "shell/about_form.h"
#include "shell/frmSplash_form.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/mdiTarnwick_form.h"
#include "shell/project_commands.h"
#include "shell/tutorial.h"
#include "twcore/libraries.h"
#include "twcore/tarnwick_timeline.h"
#include "windowing/desktop_class_root.h"
#include "windowing/icons.h"
#include "windowing/ini_settings.h"
#include "windowing/language.h"
#include "windowing/qt_lettering.h"
#include "windowing/qt_machine.h"
#include "windowing/qt_ports.h"
#include "windowing/seen_marks.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"
#include "windowing/turn_end.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStringList>
#include <QTimer>
#include <algorithm>
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

constexpr int kWrongWords = 2;

constexpr const char* kHelp = R"(usage: quillmont [PROJECT]

Opens the editor, with the project (.qpj) of that path.

  -h, --help   print this
  --version    print the version

Help > Tutorial makes a first film. quillmont-render makes movies of projects without a display.
)";

/// True when a word asked for something to be printed, and it was.
bool isAnswered(int count, char** words)
{
    const auto asks = [&](std::string_view option) {
        return std::find(words + 1, words + count, option) != words + count;
    };
    if (asks("--version")) {
        std::puts("quillmont " QUILLMONT_VERSION);
    } else if (asks("--help") || asks("-h")) {
        std::fputs(kHelp, stdout);
    } else {
        return false;
    }
    return true;
}

/// Whether the first word is an option that nobody knows; those of the toolkit are gone by now. Told, if so.
bool isUnknown(int count, char** words)
{
    if (count < 2 || words[1][0] != '-' || QFileInfo::exists(QString::fromLocal8Bit(words[1]))) {
        return false;
    }
    std::fprintf(stderr, "quillmont: there is no option %s. See quillmont --help.\n", words[1]);
    return true;
}

/// Whether something is named to open a window on; an option may do so.
bool hasDisplay(int count, char** words)
{
    const bool isNamed = std::any_of(words, words + count, [](const char* word) { return word[0] == '-'; });
    for (const char* const name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (isNamed || !qEnvironmentVariableIsEmpty(name)) {
            return true;
        }
    }
    std::fputs("quillmont: there is no display to open a window on. quillmont-render works without one.\n", stderr);
    return false;
}

QStringList saidAtStart; // by the toolkit

/// The toolkit tries displays by itself, and aborts when none answers: that is the one word of it that ends a start.
void hearAtStart(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type != QtFatalMsg) {
        saidAtStart << qFormatLogMessage(type, context, text);
        return;
    }
    std::string places;
    for (const char* const name : {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "DISPLAY"}) {
        if (!qEnvironmentVariableIsEmpty(name)) {
            places += (places.empty() ? "" : ", ") + std::string(name) + "=" + qgetenv(name).toStdString();
        }
    }
    std::fprintf(stderr, "quillmont: no window can be opened%s. quillmont-render works without one.\n",
                 places.empty() ? "" : (" (" + places + ")").c_str());
    std::_Exit(EXIT_FAILURE); // nothing stands yet that could be left in order
}

/// The toolkit, once it has its display.
std::unique_ptr<QApplication> startToolkit(int& count, char** words)
{
    const QtMessageHandler usual = qInstallMessageHandler(hearAtStart);
    auto application = std::make_unique<QApplication>(count, words);
    qInstallMessageHandler(usual);
    for (const QString& line : saidAtStart) {
        std::fprintf(stderr, "%s\n", qPrintable(line));
    }
    return application;
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
    if (!hasDisplay(count, words)) {
        return EXIT_FAILURE;
    }
    const auto application = startToolkit(count, words);
    if (isUnknown(count, words)) {
        return kWrongWords;
    }
    QApplication::setApplicationName("quillmont");
    QApplication::setApplicationVersion(QUILLMONT_VERSION);
    QApplication::setApplicationDisplayName("Quillmont");
    QApplication::setWindowIcon(applicationIcon());
    QApplication::setDesktopFileName("quillmont");
    edgeMarksInTheDark();

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
    const std::string chosen = ModuleSettings::screenLanguage();
    language::use(chosen.empty() ? language::ofDesktop() : QStringList(fromProgram(chosen)));
    ShowPass pass;
    twcore::registerTarnwickTimeline();
    frmbug::connectScreens();
    about::engineLibraries = twcore::libraries;

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
