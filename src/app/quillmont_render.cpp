// quillmont-render: projects and media files to a movie, without a display.

#include "app/engine_lists.h"
#include "app/render_job.h"
#include "app/render_words.h"
#include "app/terminal_text.h"
#include "engine/ITWSave.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "project/project_file.h"
#include "twcore/tarnwick_timeline.h"

#include <csignal>
#include <cstdlib>
#include <iostream>

namespace {

volatile std::sig_atomic_t interrupted = 0;

void onSignal(int) { interrupted = 1; }

void watchSignals()
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        // Who was started to outlive a hangup, or beside another program, does.
        if (std::signal(signal, onSignal) == SIG_IGN) {
            std::signal(signal, SIG_IGN);
        }
    }
    // A limit on file size and a reader that went away are errors of a write, with a cause to tell.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
}

int run(const app::RenderWords& words)
{
    twcore::registerTarnwickTimeline();
    engine::Engine = engine::createEngine(engine::kTimelineEngineClass);
    if (words.listsCompressors) {
        app::listCompressors();
    }
    if (words.listsProfiles) {
        app::listProfiles();
    }
    if (words.listsCompressors || words.listsProfiles) {
        return std::cout.flush() ? 0 : 1;
    }
    const auto result = app::render(words, interrupted);
    if (words.tellsJson) {
        std::cout << app::asJson(words, result) << "\n";
    }
    if (!std::cout.flush()) {
        throw app::RenderFailed("The movie is whole, but the result could not be printed. Check standard output.");
    }
    return 0;
}

/// Gives a save that was stopped a little time to close its file.
bool isThroughWithSaving()
{
    constexpr engine::Milliseconds kLongestMs = 2000;
    engine::Bool16 ok = engine::kTrue;
    try {
        if (engine::Engine) {
            const auto save = engine::EngineAs<engine::ITWSave>();
            (void)save->CloseSave();
            (void)save->WaitForStopped(kLongestMs, ok);
        }
    } catch (const engine::RuntimeError&) {
        return true; // an engine without saves has none to wait for
    }
    return ok != engine::kFalse;
}

} // namespace

int main(int count, char** raw)
{
    int status = 1;
    try {
        const auto read = app::readRenderWords(count, raw);
        if (!read.words) {
            return read.exitStatus;
        }
        watchSignals();
        status = run(*read.words);
    } catch (const std::exception& failure) {
        std::cerr << "quillmont-render: " << app::forTerminal(failure.what()) << "\n";
    }
    if (!isThroughWithSaving()) {
        // A picture that is long in the encoder is left behind, and nothing that it uses is taken down under it.
        std::cout.flush();
        std::_Exit(status);
    }
    engine::Engine.reset();
    return status;
}
