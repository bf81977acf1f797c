// quillmont-save-bench PROJECT MOVIE: saves a project from the window, by the usual settings of the movie's ending,
// with the real dialogues on a display that nobody sees; prints the milliseconds of the processor from the press on
// Save to the end.

#include "core/forms/frmExportTimeline.h"
#include "core/forms/frmProgressBar.h"
#include "export/frmExportTimeline.h"
#include "screens_program.h"
#include "shell/project_commands.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <cstdio>
#include <sys/resource.h>

namespace {

double processorMs()
{
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto ms = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
    };
    return ms(used.ru_utime) + ms(used.ru_stime);
}

void press(const char* button) { QApplication::activeModalWidget()->findChild<QAbstractButton*>(button)->click(); }

/// Runs `open`, which comes back when its dialogue is closed; `within` runs in it as soon as it stands.
void inDialogue(const std::function<void()>& open, const std::function<void()>& within)
{
    QTimer::singleShot(0, [&] {
        QWidget* const dialogue = QApplication::activeModalWidget();
        QApplication::processEvents();
        within();
        dialogue->close();
    });
    open();
}

void save()
{
    const double before = processorMs();
    inDialogue([] { press("cmdOK"); },
               [&] {
                   forms::FrmProgressBar& run = forms::frmProgressBar;
                   run.chkPreviewWhenDone.Value = std::int16_t{0};
                   while (run.tmSave.Enabled && run.lblFailure.get().empty()) {
                       QApplication::processEvents(QEventLoop::WaitForMoreEvents);
                   }
                   std::printf("processor for the save: %.0f ms   %s%s\n", processorMs() - before,
                               run.lblFramesSaved.get().c_str(), run.lblFailure.get().c_str());
               });
}

} // namespace

int main(int count, char** words)
{
    if (count != 3) {
        std::fprintf(stderr, "usage: quillmont-save-bench PROJECT MOVIE\n");
        return 2;
    }
    const QTemporaryDir folder;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("SDL_AUDIODRIVER", "dummy");
    for (const char* const name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(name, folder.path().toUtf8());
    }
    const QApplication application(count, words);
    const Program program;
    mdiTarnwick::OpenCommandLine(words[1]);
    QApplication::processEvents();
    const std::string movie = words[2];
    inDialogue(frmExportTimeline::ShowModal, [&] {
        if (movie.ends_with(".wmv")) {
            press("optWMF");
        }
        forms::frmExportTimeline.txtSaveFileName.Text = movie;
        QApplication::processEvents();
        save();
    });
    std::fflush(stdout);
}
