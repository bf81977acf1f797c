#pragma once

// A program run as people run it: words, a folder to stand in, limits; then its exit status and what it said.

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace app_test {

struct Outcome {
    int status = -1; // exit status; -1 when a signal or the deadline ended it
    int signal = 0;
    std::string out;
    std::string err;
    long peakKib = 0; // of memory
};

/// A call of the system that a child dies at (SIGSYS), or is refused with an errno.
struct NoCall {
    long number;
    unsigned flags = 0; // only with all these in its third argument
    unsigned error = 0; // 0: it dies
};

struct Limits {
    std::optional<rlim_t> fileBytes = {}; // no file may grow beyond
    bool asNobody = false;                // without the rights of the user who runs the tests; needs root
    std::string stdoutPath = {};          // instead of being caught
    std::vector<int> ignoredSignals = {};
    std::vector<NoCall> calls = {};
    std::optional<rlim_t> openFiles = {};
    std::vector<std::pair<std::string, std::string>> environment = {}; // besides what the test has
};

class Child {
public:
    Child(const std::vector<std::string>& words, const std::filesystem::path& folder, const Limits& limits = {})
    {
        std::vector<char*> raw;
        for (const auto& word : words) {
            raw.push_back(const_cast<char*>(word.c_str()));
        }
        raw.push_back(nullptr);
        const int out = limits.stdoutPath.empty() ? ::dup(::fileno(out_)) : ::open(limits.stdoutPath.c_str(), O_WRONLY);
        pid_ = ::fork();
        if (pid_ == 0) {
            become(limits, out);
            if (::chdir(folder.c_str()) == 0) {
                ::execv(raw.front(), raw.data());
            }
            ::_exit(kNotStarted);
        }
        ::close(out);
        watch_ = static_cast<int>(::syscall(SYS_pidfd_open, pid_, 0));
    }
    ~Child()
    {
        if (!ended_) {
            kill(SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
        ::close(watch_);
        std::fclose(out_);
        std::fclose(err_);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    static constexpr int kNotStarted = 127;

    pid_t pid() const { return pid_; }
    void kill(int signal) const { ::kill(pid_, signal); }

    /// Waits until the condition holds. False when the child ends first, or after 60 s.
    bool runsUntil(const std::function<bool()>& condition) const
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (std::chrono::steady_clock::now() < deadline) {
            if (condition()) {
                return true;
            }
            if (endsWithin(1)) {
                return false;
            }
        }
        return false;
    }

    /// Waits for the end. One that hangs is killed, and its signal told.
    Outcome end(int seconds = 60)
    {
#ifdef __SANITIZE_THREAD__
        constexpr int kSlower = 10;
#else
        constexpr int kSlower = 1;
#endif
        if (!endsWithin(seconds * 1000 * kSlower)) {
            kill(SIGKILL);
        }
        int raw = 0;
        rusage used{};
        ::wait4(pid_, &raw, 0, &used);
        ended_ = true;
        return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, WIFSIGNALED(raw) ? WTERMSIG(raw) : 0, textOf(out_),
                textOf(err_), used.ru_maxrss};
    }

private:
    bool endsWithin(int ms) const
    {
        pollfd watched{watch_, POLLIN, 0};
        return ::poll(&watched, 1, ms) > 0;
    }

    void become(const Limits& limits, int out) const
    {
        ::dup2(out, STDOUT_FILENO);
        ::dup2(::fileno(err_), STDERR_FILENO);
        // What the runner of the tests has open is none of the child's.
        ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
        for (const int signal : limits.ignoredSignals) {
            ::signal(signal, SIG_IGN);
        }
        if (limits.fileBytes) {
            const rlimit limit{*limits.fileBytes, *limits.fileBytes};
            ::setrlimit(RLIMIT_FSIZE, &limit);
        }
        if (limits.openFiles) {
            const rlimit limit{*limits.openFiles, *limits.openFiles};
            ::setrlimit(RLIMIT_NOFILE, &limit);
        }
        for (const auto& [name, value] : limits.environment) {
            ::setenv(name.c_str(), value.c_str(), 1);
        }
        constexpr id_t kNobody = 65534;
        if (limits.asNobody && (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) {
            ::_exit(kNotStarted);
        }
        for (const auto& call : limits.calls) {
            forbid(call);
        }
    }

    static void forbid(const NoCall& call)
    {
        const auto number = static_cast<unsigned>(call.number);
        const unsigned answer = call.error != 0 ? SECCOMP_RET_ERRNO | call.error : SECCOMP_RET_KILL_PROCESS;
        const unsigned third = offsetof(seccomp_data, args) + 2 * sizeof(std::uint64_t);
        sock_filter program[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                                 BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 4),
                                 BPF_STMT(BPF_LD | BPF_W | BPF_ABS, third),
                                 BPF_STMT(BPF_ALU | BPF_AND | BPF_K, call.flags),
                                 BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call.flags, 0, 1),
                                 BPF_STMT(BPF_RET | BPF_K, answer),
                                 BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
        const sock_fprog whole{std::size(program), program};
        if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0
            || ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &whole) != 0) {
            ::_exit(kNotStarted);
        }
    }

    static std::string textOf(std::FILE* file)
    {
        std::string text;
        std::rewind(file);
        for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) {
            text += static_cast<char>(c);
        }
        return text;
    }

    std::FILE* out_ = std::tmpfile();
    std::FILE* err_ = std::tmpfile();
    pid_t pid_ = -1;
    int watch_ = -1;
    bool ended_ = false;
};

} // namespace app_test
