// quillmont-render: projects and media files to a movie, without a display.

#include "app/render_job.h"
#include "app/render_words.h"
#include "engine/engine_access.h"
#include "engine/factory.h"
#include "project/project_file.h"
#include "twcore/tarnwick_timeline.h"

#include <csignal>
#include <iostream>

namespace {

volatile std::sig_atomic_t interrupted = 0;

void onSignal(int) { interrupted = 1; }

void watchSignals()
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        std::signal(signal, onSignal);
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
        return 0;
    }
    const auto result = app::render(words, interrupted);
    if (words.tellsJson) {
        std::cout << app::asJson(words, result) << "\n";
    }
    return std::cout.flush() ? 0 : 1;
}

} // namespace

int main(int count, char** raw)
{
    const auto read = app::readRenderWords(count, raw);
    if (!read.words) {
        return read.exitStatus;
    }
    watchSignals();
    int status = 1;
    try {
        status = run(*read.words);
    } catch (const std::exception& failure) {
        std::cerr << "quillmont-render: " << failure.what() << "\n";
    }
    engine::Engine.reset();
    return status;
}
