// quillmont: the editor.

#include "core/forms/mdiTarnwick.h"
#include "core/shared_state.h"
#include "core/start_up.h"
#include "core/trap.h"
#include "core/upcalls.h"
#include "engine/ITWProjectStore.h"
#include "engine/check.h"
#include "engine/engine_access.h"
#include "journal/journal.h"
#include "journal/leftover.h"
#include "journal/offer_form.h"
#include "media/media_files.h"
#include "media/moduleTarnwick.h"
#include "project/project_file.h"
#include "report/frmbug_form.h"
#include "shell/frmSplash_form.h"
#include "shell/mdiTarnwick_events.h"
#include "shell/mdiTarnwick_form.h"
#include "shell/tutorial.h"
#include "timeline/moduleScaleRenderer.h"
#include "timeline/moduleTimeline.h"
#include "twcore/tarnwick_timeline.h"
#include "windowing/desktop_class_root.h"
#include "windowing/icons.h"
#include "windowing/ini_settings.h"
#include "windowing/qt_ports.h"
#include "windowing/show_pass.h"
#include "windowing/text.h"
#include "windowing/turn_end.h"

#include <QApplication>
#include <QLockFile>
#include <QTimer>
#include <cstdlib>
#include <memory>

namespace {

/// Held while this process lives; a crash cannot leave it behind.
std::unique_ptr<QLockFile> instanceLock()
{
    auto lock = std::make_unique<QLockFile>(fromProgram(ports.shell->runtimeFolder()) + "/quillmont.lock");
    lock->setStaleLockTime(0);
    return lock;
}

/// Fills media list and timeline from a project file, until the program opens projects itself.
void openTimelineOf(const std::string& path)
{
    Trapped("quillmont", "openTimelineOf", [&] {
        for (const std::string& file : project::readProjectFile(path).mediaPaths) {
            moduleTarnwick::OpenResentFile(file);
        }
        engine::check(engine::EngineAs<engine::ITWProjectStore>()->LoadProject(path));
        moduleScaleRenderer::AdjustScroll();
        RenderAllBars();
        UpdateTreeView();
        moduleTimeline::UpdateTrackOptions();
        UpdatePreview();
        EnableOrDisableMenuItems();
    });
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
    DesktopClassRoot classRoot(desktopPlaces());
    ports = {&messages, &dialogs, &events, &fonts, &settings, &shell, &classRoot};
    ShowPass pass;
    twcore::registerTarnwickTimeline();
    frmbug::connectScreens();

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
    const std::string path = count == 3 && std::string_view(words[1]) == "--open" ? words[2] : "";
    std::unique_ptr<TurnEnd> turns;
    const bool isBack = isShown && offerWork(turns, path);
    if (isShown && !isBack && !path.empty()) {
        openTimelineOf(path);
    }
    if (isShown && !isBack && path.empty()) {
        constexpr int kWhenPaintedMs = 200;
        QTimer::singleShot(kWhenPaintedMs, window.get(), mdiTarnwick::ShowTutorialAtStart);
    }
    const int status = isShown ? QApplication::exec() : EXIT_FAILURE;
    turns.reset();
    journal::stop();
    window.reset();
    engine::Engine.reset();
    return status;
}
