#include "fault/call_kinds.h"

#include <errno.h>
#include <sys/syscall.h>

#include <algorithm>
#include <iterator>

namespace {

constexpr Failure kNoSpace = {"ENOSPC", ENOSPC}, kInOut = {"EIO", EIO}, kInterrupted = {"EINTR", EINTR},
                  kNoAccess = {"EACCES", EACCES}, kNotAllowed = {"EPERM", EPERM}, kTooMany = {"EMFILE", EMFILE},
                  kNoMemory = {"ENOMEM", ENOMEM}, kNotNow = {"EAGAIN", EAGAIN}, kNoSystem = {"ENOSYS", ENOSYS},
                  kNoLocks = {"ENOLCK", ENOLCK}, kInvalid = {"EINVAL", EINVAL}, kGone = {"ECONNRESET", ECONNRESET},
                  kShort = {"short", 0};

#define KIND(call) SYS_##call, #call

}  // namespace

const std::vector<CallKind> &callKinds()
{
    static const std::vector<Failure> looks = {kNoAccess, kInOut}, moves = {kInOut, kInterrupted, kShort},
                                      fills = {kNoSpace, kInOut, kInterrupted, kShort},
                                      names = {kNoAccess, kInOut, kNoSpace}, attributes = {kNotAllowed, kInOut},
                                      memory = {kNoMemory}, waits = {kInterrupted};
    static const std::vector<CallKind> kinds = {
        {KIND(open), {kNoAccess, kTooMany, kInterrupted, kInOut, kNoSpace}},
        {KIND(openat), {kNoAccess, kTooMany, kInterrupted, kInOut, kNoSpace}},
        {KIND(read), moves},
        {KIND(pread64), moves},
        {KIND(readv), moves},
        {KIND(write), fills},
        {KIND(writev), fills},
        {KIND(pwrite64), fills},
        {KIND(copy_file_range), fills},
        {KIND(sendfile), fills},
        {KIND(splice), fills},
        {KIND(ftruncate), {kInOut, kInterrupted, kNoSpace}},
        {KIND(fallocate), {kInOut, kInterrupted, kNoSpace}},
        {KIND(close), {kInOut, kInterrupted, kNoSpace}},
        {KIND(fsync), {kInOut, kInterrupted, kNoSpace}},
        {KIND(sync_file_range), {kInOut, kNoSystem}},
        {KIND(lseek), {kInOut}},
        {KIND(stat), looks},
        {KIND(lstat), looks},
        {KIND(fstat), {kInOut}},
        {KIND(newfstatat), looks},
        {KIND(statx), looks},
        {KIND(access), looks},
        {KIND(faccessat2), looks},
        {KIND(readlink), looks},
        {KIND(readlinkat), looks},
        {KIND(getcwd), looks},
        {KIND(chdir), looks},
        {KIND(getdents64), {kInOut}},
        {KIND(rename), names},
        {KIND(renameat), names},
        {KIND(renameat2), names},
        {KIND(link), names},
        {KIND(linkat), names},
        {KIND(symlink), names},
        {KIND(unlink), names},
        {KIND(unlinkat), names},
        {KIND(mkdir), names},
        {KIND(mkdirat), names},
        {KIND(mknodat), names},
        {KIND(rmdir), names},
        {KIND(chmod), attributes},
        {KIND(fchmod), attributes},
        {KIND(fchmodat), attributes},
        {KIND(chown), attributes},
        {KIND(fchown), attributes},
        {KIND(utimensat), attributes},
        {KIND(flock), {kInterrupted, kNoLocks}},
        {KIND(fcntl), {kInvalid}},
        {KIND(ioctl), {kInvalid, kNoSpace}},
        {KIND(statfs), {kInOut}},
        {KIND(fstatfs), {kInOut}},
        {KIND(dup), {kTooMany}},
        {KIND(dup2), {kTooMany, kInterrupted}},
        {KIND(dup3), {kTooMany}},
        {KIND(pipe2), {kTooMany}},
        {KIND(eventfd2), {kTooMany}},
        {KIND(timerfd_create), {kTooMany}},
        {KIND(timerfd_settime), {kInvalid}},
        {KIND(socket), {kTooMany}},
        {KIND(bind), {kNoAccess}},
        {KIND(listen), {kNoAccess}},
        {KIND(accept), {kTooMany, kInterrupted}},
        {KIND(connect), {kNoAccess, kInterrupted}},
        {KIND(setsockopt), {kInvalid}},
        {KIND(sendto), {kGone, kInterrupted, kShort}},
        {KIND(recvfrom), {kGone, kInterrupted, kShort}},
        {KIND(clone), {kNotNow}},
        {KIND(clone3), {kNotNow}},
        {KIND(vfork), {kNotNow}},
        {KIND(execve), {kNoAccess, kNoMemory}},
        {KIND(wait4), waits},
        {KIND(waitid), waits},
        {KIND(poll), {kInterrupted, kNoMemory}},
        {KIND(prlimit64), {kNotAllowed}},
        {KIND(prctl), {kInvalid}},
        {KIND(setpgid), {kNoAccess}},
        {KIND(mmap), memory},
        {KIND(mremap), memory},
        {KIND(mprotect), memory},
        {KIND(brk), memory},
        {KIND(getrandom), {kInterrupted, kNoSystem}},
        {KIND(memfd_create), {kTooMany, kNoSystem}},
    };
    return kinds;
}

bool neverFails(long call)
{
    constexpr long those[] = {SYS_exit,
                              SYS_exit_group,
                              SYS_futex,
                              SYS_getpid,
                              SYS_getppid,
                              SYS_gettid,
                              SYS_getuid,
                              SYS_geteuid,
                              SYS_getgid,
                              SYS_getegid,
                              SYS_getresuid,
                              SYS_getresgid,
                              SYS_kill,
                              SYS_tgkill,
                              SYS_madvise,
                              SYS_munmap,
                              SYS_rt_sigaction,
                              SYS_rt_sigprocmask,
                              SYS_rt_sigreturn,
                              SYS_rt_sigtimedwait,
                              SYS_pause,
                              SYS_rseq,
                              SYS_sched_yield,
                              SYS_sched_getaffinity,
                              SYS_set_robust_list,
                              SYS_umask,
                              SYS_clock_gettime,
                              SYS_clock_nanosleep,
                              SYS_nanosleep,
                              SYS_restart_syscall,
                              SYS_fadvise64,
                              SYS_getpgid,
                              SYS_sysinfo,
                              SYS_uname,
                              SYS_set_tid_address,
                              SYS_arch_prctl};
    return std::find(std::begin(those), std::end(those), call) != std::end(those);
}

bool removes(long call)
{
    constexpr long those[] = {SYS_openat,   SYS_getdents64, SYS_newfstatat, SYS_fstat, SYS_fcntl,
                              SYS_unlinkat, SYS_unlink,     SYS_rmdir,      SYS_mmap,  SYS_brk};
    return std::find(std::begin(those), std::end(those), call) != std::end(those);
}

bool isDoneAllTheSame(long call)
{
    return call == SYS_close;
}
