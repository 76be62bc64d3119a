#include "support/killed.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>

namespace {

constexpr unsigned long kChanges[] = {SYS_write,    SYS_pwrite64, SYS_writev,  SYS_ftruncate, SYS_copy_file_range,
                                      SYS_sendfile, SYS_splice,   SYS_rename,  SYS_renameat,  SYS_renameat2,
                                      SYS_link,     SYS_linkat,   SYS_symlink, SYS_unlink,    SYS_rmdir,
                                      SYS_unlinkat, SYS_mkdir,    SYS_mkdirat, SYS_chmod,     SYS_fchmod,
                                      SYS_fchmodat, SYS_chown,    SYS_fchown,  SYS_fchownat,  SYS_fsync};

bool makesFile(unsigned long flags)
{
    return (flags & O_CREAT) || (flags & O_TMPFILE) == O_TMPFILE || (flags & O_TRUNC);
}

bool changesFiles(const __ptrace_syscall_info &call)
{
    if (call.op != PTRACE_SYSCALL_INFO_ENTRY)
        return false;
    if (call.entry.nr == SYS_openat)
        return makesFile(call.entry.args[2]);
    return std::find(std::begin(kChanges), std::end(kChanges), call.entry.nr) != std::end(kChanges);
}

[[noreturn]] void become(const std::vector<std::string> &command, const std::string &folder)
{
    const int nothing = open("/dev/null", O_RDWR);
    for (int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nothing, standard);
    std::vector<char *> arguments;
    for (const std::string &word : command)
        arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    if (chdir(folder.c_str()) == 0 && ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0)
        execv(arguments[0], arguments.data());
    _exit(127);
}

}  // namespace

bool killedAtChange(int nth, const std::vector<std::string> &command, const std::string &folder)
{
    const pid_t child = fork();
    if (child == 0)
        become(command, folder);
    int status = 0, changes = 0;
    waitpid(child, &status, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    for (int passed = 0; WIFSTOPPED(status);) {
        __ptrace_syscall_info call = {};
        const bool atCall = WSTOPSIG(status) == (SIGTRAP | 0x80);
        passed = atCall || WSTOPSIG(status) == SIGTRAP ? 0 : WSTOPSIG(status);
        if (atCall && ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof call, &call) > 0 && changesFiles(call) &&
            ++changes == nth)
            kill(child, SIGKILL);
        ptrace(PTRACE_SYSCALL, child, nullptr, passed);
        waitpid(child, &status, 0);
    }
    return WIFSIGNALED(status) && changes >= nth;
}
