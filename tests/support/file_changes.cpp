#include "support/file_changes.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <map>
#include <optional>

namespace fs = std::filesystem;

namespace {

// Where a call has what it changes: the numbers of its arguments, from 0. A path is in the folder that an argument
// names, or in the current one.
constexpr int kNone = -1;
struct Kind {
    const char *name;
    int descriptor, path, folder = kNone;
    int named = kNone, namedFolder = kNone;
};

const std::map<unsigned long, Kind> kKinds = {
    {SYS_write, {"write", 0, kNone}},
    {SYS_pwrite64, {"pwrite", 0, kNone}},
    {SYS_writev, {"writev", 0, kNone}},
    {SYS_pwritev, {"pwritev", 0, kNone}},
    {SYS_ftruncate, {"ftruncate", 0, kNone}},
    {SYS_fallocate, {"fallocate", 0, kNone}},
    {SYS_copy_file_range, {"copy_file_range", 2, kNone}},
    {SYS_sendfile, {"sendfile", 0, kNone}},
    {SYS_splice, {"splice", 2, kNone}},
    {SYS_fchmod, {"fchmod", 0, kNone}},
    {SYS_fchown, {"fchown", 0, kNone}},
    {SYS_fsync, {"fsync", 0, kNone}},
    {SYS_fdatasync, {"fdatasync", 0, kNone}},
    {SYS_truncate, {"truncate", kNone, 0}},
    {SYS_unlink, {"unlink", kNone, 0}},
    {SYS_rmdir, {"rmdir", kNone, 0}},
    {SYS_mkdir, {"mkdir", kNone, 0}},
    {SYS_chmod, {"chmod", kNone, 0}},
    {SYS_chown, {"chown", kNone, 0}},
    {SYS_lchown, {"lchown", kNone, 0}},
    {SYS_symlink, {"symlink", kNone, 1}},
    {SYS_openat, {"openat", kNone, 1, 0}},
    {SYS_unlinkat, {"unlinkat", kNone, 1, 0}},
    {SYS_mkdirat, {"mkdirat", kNone, 1, 0}},
    {SYS_fchmodat, {"fchmodat", kNone, 1, 0}},
    {SYS_fchownat, {"fchownat", kNone, 1, 0}},
    {SYS_utimensat, {"utimensat", kNone, 1, 0}},
    {SYS_symlinkat, {"symlinkat", kNone, 2, 1}},
    {SYS_rename, {"rename", kNone, 0, kNone, 1}},
    {SYS_renameat, {"rename", kNone, 1, 0, 3, 2}},
    {SYS_renameat2, {"rename", kNone, 1, 0, 3, 2}},
    {SYS_link, {"link", kNone, 0, kNone, 1}},
    {SYS_linkat, {"link", kNone, 1, 0, 3, 2}},
};

// One process or thread that has stopped at a call.
class Caller {
public:
    explicit Caller(pid_t process) : proc_("/proc/" + std::to_string(process)) {}

    fs::path opened(unsigned long descriptor) const { return link("fd/" + std::to_string(int(descriptor))); }

    fs::path named(unsigned long address, std::optional<unsigned long> folder) const
    {
        const fs::path path = text(address);
        if (path.native().starts_with("/proc/self/"))
            return link(path.native().substr(11));
        const bool current = !folder || static_cast<int>(*folder) == AT_FDCWD;
        return ((current ? link("cwd") : opened(*folder)) / path).lexically_normal();
    }

private:
    fs::path link(const std::string &name) const
    {
        std::error_code gone;
        return fs::read_symlink(proc_ / name, gone);
    }

    std::string text(unsigned long address) const
    {
        char bytes[4096] = "";
        const int memory = open((proc_ / "mem").c_str(), O_RDONLY | O_CLOEXEC);
        const ssize_t got = pread(memory, bytes, sizeof bytes - 1, static_cast<off_t>(address));
        close(memory);
        bytes[got > 0 ? got : 0] = '\0';
        return bytes;
    }

    fs::path proc_;
};

bool makesFile(unsigned long flags)
{
    return (flags & O_CREAT) || (flags & O_TMPFILE) == O_TMPFILE || (flags & O_TRUNC);
}

bool isOfFiles(const std::string &path)
{
    return path.starts_with("/dev/shm/") ||
           (path.starts_with("/") && !path.starts_with("/dev/") && !path.starts_with("/proc/"));
}

std::optional<FileChange> changeIn(pid_t process)
{
    __ptrace_syscall_info call = {};
    if (ptrace(PTRACE_GET_SYSCALL_INFO, process, sizeof call, &call) <= 0 || call.op != PTRACE_SYSCALL_INFO_ENTRY)
        return {};
    const auto found = kKinds.find(call.entry.nr);
    if (found == kKinds.end() || (call.entry.nr == SYS_openat && !makesFile(call.entry.args[2])))
        return {};
    const Kind &kind = found->second;
    const Caller caller(process);
    const auto named = [&](int path, int folder) {
        return caller.named(call.entry.args[path], folder == kNone
                                                       ? std::nullopt
                                                       : std::optional<unsigned long>(call.entry.args[folder]));
    };
    FileChange change = {kind.name, {}, {}};
    change.path =
        kind.descriptor == kNone ? named(kind.path, kind.folder) : caller.opened(call.entry.args[kind.descriptor]);
    if (kind.named != kNone)
        change.named = named(kind.named, kind.namedFolder);
    if (call.entry.nr == SYS_openat && (call.entry.args[2] & O_TMPFILE) == O_TMPFILE)
        change.path /= kNameless;
    return isOfFiles(change.path) ? std::optional(change) : std::nullopt;
}

class Following {
public:
    explicit Following(const Followed &followed) : followed_(followed), main_(fork())
    {
        if (main_ == 0) {
            ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
            raise(SIGSTOP);
            followed.program();
            _exit(0);
        }
    }

    FollowedRun toTheEnd()
    {
        int status = 0;
        waitpid(main_, &status, 0);
        unsigned long options =
            PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL | PTRACE_O_TRACEEXEC | PTRACE_O_TRACECLONE;
        if (followed_.ofChildren)
            options |= PTRACE_O_TRACEFORK | PTRACE_O_TRACEVFORK;
        ptrace(PTRACE_SETOPTIONS, main_, nullptr, options);
        known_[main_] = main_;
        ptrace(PTRACE_SYSCALL, main_, nullptr, 0);
        for (pid_t process; (process = waitpid(-1, &status, __WALL)) > 0;)
            if (WIFSTOPPED(status))
                goOn(process, status);
            else if (process == main_ && WIFEXITED(status))
                run_.status = WEXITSTATUS(status);
        return run_;
    }

private:
    void goOn(pid_t process, int status)
    {
        // Each new thread and child begins with a stop.
        const bool isNew = !known_.contains(process);
        if (isNew)
            known_[process] = processOf(process);
        const int signal = WSTOPSIG(status);
        const bool atCall = signal == (SIGTRAP | 0x80), event = status >> 16 != 0;
        if (atCall && (known_[process] != main_) == followed_.ofChildren)
            note(process);
        ptrace(PTRACE_SYSCALL, process, nullptr, atCall || event || isNew ? 0 : signal);
    }

    void note(pid_t process)
    {
        const std::optional<FileChange> change = changeIn(process);
        if (!change)
            return;
        if (run_.killed)
            return;
        run_.changes.push_back(*change);
        if (static_cast<int>(run_.changes.size()) != followed_.killAt)
            return;
        run_.killed = true;
        kill(main_, SIGKILL);
    }

    // Of a thread, that to which it belongs.
    static pid_t processOf(pid_t thread)
    {
        FILE *status = fopen(("/proc/" + std::to_string(thread) + "/status").c_str(), "r");
        char line[256];
        int process = thread;
        while (status && fgets(line, sizeof line, status))
            if (sscanf(line, "Tgid: %d", &process) == 1)
                break;
        if (status)
            fclose(status);
        return process;
    }

    const Followed &followed_;
    const pid_t main_;
    std::map<pid_t, pid_t> known_;  // the process of each thread
    FollowedRun run_;
};

}  // namespace

FollowedRun follow(const Followed &followed)
{
    return Following(followed).toTheEnd();
}

std::function<void()> command(const std::vector<std::string> &words, const fs::path &folder)
{
    return [words, folder] {
        const int nothing = open("/dev/null", O_RDWR);
        for (int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            dup2(nothing, standard);
        std::vector<char *> arguments;
        for (const std::string &word : words)
            arguments.push_back(const_cast<char *>(word.c_str()));
        arguments.push_back(nullptr);
        if (chdir(folder.c_str()) == 0)
            execvp(arguments[0], arguments.data());
        _exit(127);
    };
}
