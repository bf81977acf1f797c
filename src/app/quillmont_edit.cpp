// quillmont-edit: the editor's commands from a script, without a display.

#include "app/edit_words.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cerrno>
#include <csignal>
#include <iostream>
#include <optional>
#include <unistd.h>

namespace {

constexpr int kFailed = 1;
constexpr int kWrongWords = 2;

constexpr const char* kExample = "Positions are milliseconds, tracks are video, audio1, audio2, overlay and effects.\n"
                                 "\"#\" begins a comment. SEQ counts from 0, as dump prints it; that of change-track,\n"
                                 "FROM, TO, PLACE and ROW count from 1.\n"
                                 "\n"
                                 "Example:\n"
                                 "  media clip 4000 va\n"
                                 "  add clip\n"
                                 "  range 1000 2000\n"
                                 "  cut\n"
                                 "  undo\n"
                                 "  dump\n";

volatile std::sig_atomic_t interrupted = 0;

void onSignal(int)
{
    const int before = errno;
    interrupted = 1;
    ::close(STDIN_FILENO); // who looked ahead of this, and is only now going to wait for a line, finds none
    errno = before;
}

/// An interrupted run ends behind the line that it is at, and takes its files along.
void watchSignals()
{
    struct sigaction action {};
    action.sa_handler = onSignal; // without SA_RESTART: a wait for the next line ends too
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaction(signal, &action, nullptr);
    }
    std::signal(SIGPIPE, SIG_IGN); // who reads may go away: an error of a write
}

/// The exit status when the words alone settle it: help, the version, or wrong ones.
std::optional<int> readWords(int count, const char* const* raw, std::string& journalFolder)
{
    CLI::App program("Reads editing commands from standard input, one a line, and runs them.\n"
                     "Exit status: 0 done, 1 the run failed, 2 a line is wrong.");
    program.name("quillmont-edit");
    program.set_version_flag("--version", "quillmont-edit " QUILLMONT_VERSION);
    program.add_option("--journal", journalFolder,
                       "keeps a journal of the work in this folder, and brings back what a killed run left there");
    program.footer("Commands:\n" + app::wordsHelp() + "\n" + kExample);
    try {
        program.parse(count, raw);
    } catch (const CLI::Success& asked) {
        return program.exit(asked);
    } catch (const CLI::ParseError& wrong) {
        std::cerr << "quillmont-edit: " << wrong.what() << "\nRun quillmont-edit --help to see the commands.\n";
        return kWrongWords;
    }
    return std::nullopt;
}

int run(const std::string& journalFolder)
{
    app::EditSession session(std::cerr);
    if (!journalFolder.empty()) {
        session.openJournal(journalFolder);
    }
    int status = 0;
    try {
        app::runScript(session, std::cin, std::cout, interrupted);
    } catch (const app::WrongWords& wrong) {
        std::cerr << "quillmont-edit: " << wrong.what() << "\n";
        status = kWrongWords;
    }
    if (!std::cout.flush()) {
        std::cerr << "quillmont-edit: the result could not be printed\n";
        return kFailed;
    }
    return interrupted != 0 ? kFailed : status;
}

} // namespace

int main(int count, char** raw)
{
    try {
        std::string journalFolder;
        if (const auto status = readWords(count, raw, journalFolder)) {
            return *status;
        }
        watchSignals();
        return run(journalFolder);
    } catch (const std::exception& failure) {
        std::cerr << "quillmont-edit: " << failure.what() << "\n";
        return kFailed;
    }
}
