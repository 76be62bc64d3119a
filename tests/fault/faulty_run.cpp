// The kernel stops the program before each call of interest (a seccomp filter says which), and the call is then
// made to fail, by way of ptrace. So no call is missed, whatever library makes it.
#include "fault/faulty_run.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <stddef.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <set>
#include <thread>

#include "fault/call_kinds.h"
#include "support/toolbox_test.h"

namespace fs = std::filesystem;

namespace {

constexpr long kOptions = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL | PTRACE_O_TRACESECCOMP | PTRACE_O_TRACECLONE |
                          PTRACE_O_TRACEFORK | PTRACE_O_TRACEVFORK | PTRACE_O_TRACEEXEC;

// Besides the call that is to fail: the one that tells that main has begun, and those that make names.
constexpr long kLookedAt[] = {SYS_rt_sigaction, SYS_open, SYS_openat, SYS_mkdir, SYS_mkdirat};

// The program stops before these calls; before all if the list is empty.
void stopBefore(const std::vector<long> &calls)
{
    std::vector<sock_filter> filter;
    filter.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)));
    for (long call : calls) {
        filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1));
        filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRACE));
    }
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, calls.empty() ? SECCOMP_RET_TRACE : SECCOMP_RET_ALLOW));
    const sock_fprog program = {static_cast<unsigned short>(filter.size()), filter.data()};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        _exit(125);
}

// What the program reads and writes: files, or pipes at whose other ends are threads.
class Streams {
public:
    explicit Streams(const FaultyCommand &command) : input_(command.input)
    {
        writeFile(folder_ / "in", input_);
        if (command.piped && (pipe2(in_, O_CLOEXEC) != 0 || pipe2(out_, O_CLOEXEC) != 0))
            abort();
        if (!command.piped) {
            in_[0] = open((folder_ / "in").c_str(), O_RDONLY | O_CLOEXEC);
            out_[1] = open((folder_ / "out").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        }
        err_ = open((folder_ / "err").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    }
    Streams(const Streams &) = delete;
    ~Streams() { close(err_); }

    void give() const
    {
        dup2(in_[0], STDIN_FILENO);
        dup2(out_[1], STDOUT_FILENO);
        dup2(err_, STDERR_FILENO);
    }
    // Once the program has them.
    void begin()
    {
        close(in_[0]);
        close(out_[1]);
        if (in_[1] >= 0)
            feeder_ = std::thread([this] { feed(); });
        if (out_[0] >= 0)
            drain_ = std::thread([this] { drain(); });
    }
    void end(FaultyRun &run)
    {
        for (std::thread *thread : {&feeder_, &drain_})
            if (thread->joinable())
                thread->join();
        run.out = out_[0] >= 0 ? drained_ : contentsOf(folder_ / "out");
        run.err = contentsOf(folder_ / "err");
    }

private:
    void feed()
    {
        sigset_t pipes;
        sigemptyset(&pipes);
        sigaddset(&pipes, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipes, nullptr);
        ssize_t put = 0;
        for (size_t at = 0; at < input_.size() && put >= 0; at += static_cast<size_t>(std::max<ssize_t>(put, 0)))
            put = write(in_[1], input_.data() + at, input_.size() - at);
        close(in_[1]);
    }
    void drain()
    {
        char buffer[64 << 10];
        for (ssize_t got; (got = read(out_[0], buffer, sizeof buffer)) > 0;)
            drained_.append(buffer, static_cast<size_t>(got));
        close(out_[0]);
    }

    TemporaryFolder folder_;
    std::string input_, drained_;
    int in_[2] = {-1, -1}, out_[2] = {-1, -1}, err_ = -1;
    std::thread feeder_, drain_;
};

[[noreturn]] void become(const FaultyCommand &command, const Streams &streams, const std::vector<long> &calls)
{
    streams.give();
    std::vector<char *> arguments;
    for (const std::string &word : command.command)
        arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    for (const std::string &variable : command.environment)
        putenv(const_cast<char *>(variable.c_str()));
    alarm(kSecondsARun);
    if (chdir(command.folder.c_str()) == 0 && ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0) {
        raise(SIGSTOP);
        stopBefore(calls);
        execv(arguments[0], arguments.data());
    }
    _exit(127);
}

class Tracer {
public:
    Tracer(pid_t root, const FaultyCommand &command, const std::optional<Fault> &fault, FaultyRun &run)
        : root_(root), folder_(command.folder), fault_(fault), run_(run)
    {
    }

    // Until the program and all that it has started have ended.
    void follow()
    {
        int status = 0;
        waitpid(root_, &status, __WALL);
        ptrace(PTRACE_SETOPTIONS, root_, nullptr, kOptions);
        ptrace(PTRACE_CONT, root_, nullptr, 0);
        for (pid_t pid; (pid = waitpid(-1, &status, __WALL | __WNOTHREAD)) > 0;)
            if (WIFSTOPPED(status))
                stopped(pid, status);
            else if (pid == root_)
                ended(status);
    }

private:
    void ended(int status)
    {
        run_.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
        for (pid_t pid : seen_)
            if (pid != root_)
                kill(pid, SIGKILL);
    }

    void stopped(pid_t pid, int status)
    {
        seen_.insert(pid);
        const int signal = WSTOPSIG(status), event = status >> 16;
        if (signal == (SIGTRAP | 0x80))
            return leaveCall(pid);
        if (event == PTRACE_EVENT_SECCOMP)
            return atCall(pid);
        if (event == PTRACE_EVENT_EXEC && pid != root_)
            others_.insert(pid);
        unsigned long child = 0;
        if ((event == PTRACE_EVENT_FORK || event == PTRACE_EVENT_VFORK || event == PTRACE_EVENT_CLONE) &&
            others_.contains(pid) && ptrace(PTRACE_GETEVENTMSG, pid, nullptr, &child) == 0)
            others_.insert(static_cast<pid_t>(child));
        ptrace(PTRACE_CONT, pid, nullptr, signal == SIGTRAP || signal == SIGSTOP ? 0 : signal);
    }

    void atCall(pid_t pid)
    {
        user_regs_struct registers = {};
        ptrace(PTRACE_GETREGS, pid, nullptr, &registers);
        const long call = static_cast<long>(registers.orig_rax);
        begun_ |= call == SYS_rt_sigaction && registers.rdi == SIGXFSZ;
        if (begun_ && !others_.contains(pid)) {
            noteName(pid, registers);
            if (!fault_)
                ++run_.calls[call];
            else if (call == fault_->call && strikes())
                return strike(pid, registers);
        }
        ptrace(PTRACE_CONT, pid, nullptr, 0);
    }

    bool strikes()
    {
        ++count_;
        return count_ >= fault_->nth && count_ - fault_->nth <= fault_->further;
    }

    void strike(pid_t pid, user_regs_struct &registers)
    {
        run_.met = true;
        const bool writes = fault_->call == SYS_write || fault_->call == SYS_writev;
        run_.muted |= writes && registers.rdi == STDERR_FILENO;
        const bool isMade =
            fault_->failure.error == 0 || fault_->call == SYS_brk || isCut() || isDoneAllTheSame(fault_->call);
        if (isMade) {
            atEntry_[pid] = registers;
            if (fault_->failure.error == 0)
                shorten(registers);
            else if (fault_->call == SYS_brk)
                registers.rdi = 0;  // its failure is not an error but an end of memory that has not moved
            else if (isCut()) {
                registers.orig_rax = SYS_shutdown;
                registers.rsi = SHUT_RDWR;
            }
        } else {
            registers.orig_rax = static_cast<unsigned long long>(-1);
            registers.rax = static_cast<unsigned long long>(-fault_->failure.error);
        }
        ptrace(PTRACE_SETREGS, pid, nullptr, &registers);
        ptrace(isMade ? PTRACE_SYSCALL : PTRACE_CONT, pid, nullptr, 0);
    }

    // Of a call that was made after all: only its result may be another one.
    void leaveCall(pid_t pid)
    {
        user_regs_struct registers = {};
        ptrace(PTRACE_GETREGS, pid, nullptr, &registers);
        const user_regs_struct &entry = atEntry_[pid];
        registers.rdi = entry.rdi;
        registers.rsi = entry.rsi;
        registers.rdx = entry.rdx;
        registers.r10 = entry.r10;
        registers.r8 = entry.r8;
        if (isDoneAllTheSame(fault_->call) || isCut())
            registers.rax = static_cast<unsigned long long>(-fault_->failure.error);
        ptrace(PTRACE_SETREGS, pid, nullptr, &registers);
        ptrace(PTRACE_CONT, pid, nullptr, 0);
    }

    // A connection that is gone is gone for the other end, too.
    bool isCut() const { return fault_->failure.error == ECONNRESET; }

    // Half of what it was to move; of a list of buffers, the first.
    void shorten(user_regs_struct &registers) const
    {
        unsigned long long &most = fault_->call == SYS_copy_file_range || fault_->call == SYS_splice ? registers.r8
                                   : fault_->call == SYS_sendfile ? registers.r10
                                                                  : registers.rdx;
        most = std::max(1ULL, std::min(most, 64ULL << 10) / 2);
        if (fault_->call == SYS_writev || fault_->call == SYS_readv)
            most = 1;
    }

    void noteName(pid_t pid, const user_regs_struct &registers)
    {
        const auto call = static_cast<long>(registers.orig_rax);
        const bool creates = (call == SYS_openat && (registers.rdx & O_CREAT)) ||
                             (call == SYS_open && (registers.rsi & O_CREAT)) || call == SYS_mkdir ||
                             call == SYS_mkdirat;
        if (!creates)
            return;
        char name[512] = {};
        const bool first = call == SYS_open || call == SYS_mkdir;
        const iovec here = {name, sizeof name - 1};
        iovec there = {reinterpret_cast<void *>(first ? registers.rdi : registers.rsi), sizeof name - 1};
        // A name may end just before memory that is not there.
        while (process_vm_readv(pid, &here, 1, &there, 1, 0) < 0 && there.iov_len > 1)
            there.iov_len /= 2;
        const fs::path path = folder_ / name;
        if (std::find(run_.made.begin(), run_.made.end(), path) == run_.made.end())
            run_.made.push_back(path);
    }

    const pid_t root_;
    const fs::path folder_;
    const std::optional<Fault> &fault_;
    FaultyRun &run_;
    bool begun_ = false;
    int count_ = 0;
    std::map<pid_t, user_regs_struct> atEntry_;  // of calls that are made, but not as the program made them
    std::set<pid_t> seen_, others_;              // others: what has become another program
};

}  // namespace

namespace {

// In a thread of its own, whose children are these and no others: a test may have started some.
FaultyRun run(const FaultyCommand &command, const std::optional<Fault> &fault, const std::vector<long> &calls)
{
    FaultyRun run;
    std::thread([&] {
        Streams streams(command);
        const pid_t child = fork();
        if (child == 0)
            become(command, streams, calls);
        streams.begin();
        Tracer(child, command, fault, run).follow();
        streams.end(run);
    }).join();
    return run;
}

}  // namespace

FaultyRun runWithFault(const FaultyCommand &command, const std::optional<Fault> &fault)
{
    std::vector<long> calls(std::begin(kLookedAt), std::end(kLookedAt));
    if (fault)
        calls.push_back(fault->call);
    return run(command, fault, calls);
}

FaultyRun runAndCount(const FaultyCommand &command)
{
    return run(command, {}, {});
}
