#include "io/limited_process.h"

#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <utility>

#include "io/interruption.h"
#include "io/refusal.h"

namespace riders::io {
namespace {

using Clock = std::chrono::steady_clock;
constexpr size_t kLongestLine = 64 << 10, kAtOnce = 16 << 10;
constexpr int kReadsOfAPipe = 4;
constexpr std::chrono::milliseconds kBetweenLooks(50);  // at what is written

// True where the folder's files take more, each a block at least, less what they leave out. What links lead to is
// not counted.
bool holdsMoreThan(const std::filesystem::path &folder, int megabytes)
{
    constexpr std::uintmax_t kBlock = 4096, kUnit = 512;  // of st_blocks
    const std::uintmax_t most = static_cast<std::uintmax_t>(megabytes) << 20;
    std::uintmax_t bytes = 0;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end && bytes <= most;
         entry.increment(error)) {
        struct stat file = {};
        const bool there = lstat(entry->path().c_str(), &file) == 0;
        if (!there || !S_ISLNK(file.st_mode))
            bytes += std::max(kBlock, there ? static_cast<std::uintmax_t>(file.st_blocks) * kUnit : 0);
    }
    return bytes > most;
}

// What the child needs, made before the fork: afterwards it may not allocate.
struct Prepared {
    std::vector<char *> arguments;
    std::vector<std::string> variables;
    std::vector<char *> environment;
    std::string program, folder;
    rlimit memory;

    explicit Prepared(const LimitedRun &run) : folder(run.folder)
    {
        for (const std::string &word : run.command)
            arguments.push_back(const_cast<char *>(word.c_str()));
        arguments.push_back(nullptr);
        // A limit that the user has set himself may be lower, and cannot be raised.
        rlimit own = {};
        getrlimit(RLIMIT_AS, &own);
        memory.rlim_cur = memory.rlim_max = std::min(static_cast<rlim_t>(run.megabytes) << 20, own.rlim_max);
        takeEnvironment(run.temporary);
    }

    // Leaves out what would change how the program works; temporary files go into its own folder.
    void takeEnvironment(const std::string &temporary)
    {
        for (char **variable = environ; *variable; ++variable) {
            const std::string_view text = *variable;
            const bool leftOut = text.starts_with("TEMP=") || text.starts_with("TMPDIR=") ||
                                 text.starts_with("TMP=") || text.starts_with("GS_");
            if (!leftOut)
                variables.emplace_back(text);
        }
        variables.push_back("TEMP=" + temporary);
        variables.push_back("TMPDIR=" + temporary);
        for (std::string &variable : variables)
            environment.push_back(variable.data());
        environment.push_back(nullptr);
    }
};

// In the child.
[[noreturn]] void become(const Prepared &prepared, int output, pid_t parent)
{
    setpgid(0, 0);
    if (prctl(PR_SET_PDEATHSIG, SIGKILL) != 0 || getppid() != parent)
        _exit(127);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    signal(SIGPIPE, SIG_DFL);
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    if (setrlimit(RLIMIT_AS, &prepared.memory) != 0)
        _exit(127);
    const int input = open("/dev/null", O_RDONLY);
    if (input >= 0 && dup2(input, STDIN_FILENO) >= 0 && dup2(output, STDOUT_FILENO) >= 0 &&
        dup2(output, STDERR_FILENO) >= 0 && chdir(prepared.folder.c_str()) == 0)
        execvpe(prepared.arguments[0], prepared.arguments.data(), prepared.environment.data());
    _exit(127);
}

bool readable(int descriptor)
{
    pollfd ready = {descriptor, POLLIN, 0};
    return poll(&ready, 1, 0) > 0;
}

// Leaves its status to be fetched.
bool hasEnded(pid_t pid)
{
    siginfo_t state = {};
    int looked;
    while ((looked = waitid(P_PID, static_cast<id_t>(pid), &state, WEXITED | WNOWAIT | WNOHANG)) != 0 &&
           errno == EINTR)
        ;
    return looked != 0 || state.si_pid != 0;
}

// The status with which it has ended.
int waitForEnd(pid_t pid)
{
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR)
        ;
    return status;
}

class Child {
public:
    explicit Child(const LimitedRun &run) : run_(run)
    {
        const Prepared prepared(run);
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            refuseErrno(run.command[0], errno);
        const pid_t self = getpid();
        pid_ = fork();
        if (pid_ == 0)
            become(prepared, ends[1], self);
        const int error = errno;
        close(ends[1]);
        output_ = ends[0];
        if (pid_ < 0) {
            close(output_);
            refuseErrno(run.command[0], error);
        }
        setpgid(pid_, pid_);
    }

    ~Child()
    {
        if (pid_ > 0) {
            kill(-pid_, SIGKILL);
            waitForEnd(pid_);
        }
        close(output_);
    }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    // Calls `line` for each line until the output ends; false when a limit is reached.
    bool listen()
    {
        restart();
        for (bool open = true; open;) {
            if (!waitFor(output_))
                return false;
            // What is beside comes after the lines that were written before it: what the pipe can hold.
            const bool beside = besideReady_;
            for (int reads = 0; open && reads <= kReadsOfAPipe && readable(output_); ++reads)
                open = readLines();
            if (beside)
                takeBeside();
        }
        if (!rest_.empty())
            run_.line(rest_);
        return true;
    }

    // Waits for the end of a process that has closed its output, which is not
    // always its end. False when a limit is reached.
    bool wait(LimitedResult &result)
    {
        while (!hasEnded(pid_)) {
            if (!waitFor(-1))
                return false;
            if (besideReady_)
                takeBeside();
        }
        kill(-pid_, SIGKILL);  // whatever it has started
        const int status = waitForEnd(std::exchange(pid_, 0));
        if (run_.beside)
            run_.beside->ended();
        result = WIFEXITED(status) ? LimitedResult{RunEnd::exited, WEXITSTATUS(status)}
                                   : LimitedResult{RunEnd::killed, WTERMSIG(status)};
        return true;
    }

    RunEnd limitReached() const { return limit_; }

private:
    // Sets limit_ where it is.
    bool isAtLimit(Clock::time_point now)
    {
        const bool look = now >= nextLook_;
        if (look)
            nextLook_ = now + kBetweenLooks;
        if (look && holdsMoreThan(run_.folder / run_.temporary, run_.temporaryMegabytes))
            limit_ = RunEnd::wroteTooMuch;
        else if (look && holdsMoreThan(run_.folder, run_.folderMegabytes))
            limit_ = RunEnd::filledFolder;
        else if (now >= end_)
            limit_ = RunEnd::tookTooLong;
        else if (now >= deadline_)
            limit_ = RunEnd::timedOut;
        return limit_ != RunEnd::exited;
    }

    // False at the end of the output.
    bool readLines()
    {
        char buffer[kAtOnce];
        const ssize_t got = read(output_, buffer, sizeof buffer);
        if (got < 0 && errno != EINTR)
            refuseErrno(run_.command[0], errno);
        if (got > 0 && take({buffer, static_cast<size_t>(got)}))
            restart();
        return got != 0;
    }

    // The time that this takes is not the program's.
    void takeBeside()
    {
        const Clock::time_point before = Clock::now();
        const bool wait = run_.beside->isFarBehind();
        if (wait)
            kill(-pid_, SIGSTOP);
        const bool progress = run_.beside->take();
        if (wait)
            kill(-pid_, SIGCONT);
        const Clock::duration taken = Clock::now() - before;
        deadline_ += taken;
        end_ += taken;
        if (progress)
            restart();
    }

    void restart() { deadline_ = Clock::now() + std::chrono::seconds(run_.seconds); }

    // Waits until the descriptor can be read (-1: for a moment), or what is beside; false when a limit is reached.
    bool waitFor(int descriptor)
    {
        for (int some = 0; some <= 0;) {
            const Clock::time_point now = Clock::now();
            if (isAtLimit(now))
                return false;
            const auto left = std::min({deadline_, end_, nextLook_}) - now;
            const auto most = std::chrono::ceil<std::chrono::milliseconds>(left).count();
            const int beside = run_.beside ? run_.beside->descriptor() : -1;
            pollfd ready[3] = {
                {Interruption::descriptor(), POLLIN, 0}, {descriptor, POLLIN, 0}, {beside, POLLIN, 0}};
            some = poll(ready, 3, static_cast<int>(descriptor < 0 ? std::min<long>(most, 10) : most));
            if (some < 0 && errno != EINTR)
                refuseErrno(run_.command[0], errno);
            Interruption::check();
            besideReady_ = some > 0 && ready[2].revents != 0;
            if (descriptor < 0)
                return true;
        }
        return true;
    }

    // True where there was progress.
    bool take(std::string_view bytes)
    {
        bool progress = false;
        for (size_t end; (end = bytes.find('\n')) != std::string_view::npos; bytes.remove_prefix(end + 1)) {
            rest_ += bytes.substr(0, end);
            progress |= run_.line(rest_);
            rest_.clear();
        }
        if (rest_.size() < kLongestLine)
            rest_ += bytes;
        return progress;
    }

    const LimitedRun &run_;
    pid_t pid_ = 0;
    int output_ = -1;
    std::string rest_;
    Clock::time_point end_ = Clock::now() + std::chrono::seconds(run_.secondsInAll);
    Clock::time_point deadline_, nextLook_;
    bool besideReady_ = false;
    RunEnd limit_ = RunEnd::exited;  // as long as none is reached
};

}  // namespace

LimitedResult runLimited(const LimitedRun &run)
{
    Interruption::check();
    Child child(run);
    LimitedResult result;
    if (!child.listen() || !child.wait(result))
        return {child.limitReached(), 0};
    if (result.end == RunEnd::exited && result.status == 127)
        throw Refusal(run.command[0] + " cannot be started; is it installed?");
    return result;
}

}  // namespace riders::io
