#include "printing/own_cupsd.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "support/command.h"

namespace fs = std::filesystem;

namespace printing_tests {
namespace {

constexpr int kWaitMilliseconds = 5, kMostWaits = 6000;
constexpr int kPrintMilliseconds = 60000;

[[noreturn]] void execute(const std::vector<std::string> &command, const fs::path &log,
                          const std::vector<std::string> &environment)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int out = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    dup2(out, 1);
    dup2(out, 2);
    for (const std::string &variable : environment)
        putenv(const_cast<char *>(variable.c_str()));
    std::vector<char *> arguments;
    for (const std::string &argument : command)
        arguments.push_back(const_cast<char *>(argument.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

std::string configuration(const fs::path &folder)
{
    return "Listen " + (folder / "cups.sock").string() +
           "\nLogLevel debug\nWebInterface No\nBrowsing No\n"
           "<Location />\nOrder allow,deny\nAllow all\n</Location>\n"
           "<Policy default>\n<Limit All>\nOrder allow,deny\nAllow all\n</Limit>\n</Policy>\n";
}

std::string places(const fs::path &folder)
{
    const std::string at = folder.string() + "/";
    return "FileDevice Yes\nServerRoot " + at + "root\nCacheDir " + at + "cache\nStateDir " + at +
           "state\nRequestRoot " + at + "spool\nTempDir " + at + "spool/tmp\nErrorLog " + at +
           "error\nAccessLog " + at + "access\nPageLog " + at + "page\n";
}

bool accepts(const fs::path &socketPath)
{
    const int end = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, socketPath.c_str(), sizeof address.sun_path - 1);
    const bool connected = connect(end, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0;
    close(end);
    return connected;
}

}  // namespace

Started::Started(const std::vector<std::string> &command, const fs::path &log,
                 const std::vector<std::string> &environment)
    : process_(fork()), log_(log)
{
    if (process_ == 0)
        execute(command, log, environment);
    descriptor_ = static_cast<int>(syscall(SYS_pidfd_open, process_, 0));
}

int Started::end(int signal)
{
    int status = 0;
    kill(process_, signal);
    waitpid(process_, &status, 0);
    process_ = -1;
    return status;
}

Started::~Started()
{
    if (process_ < 0) {
        close(descriptor_);
        return;
    }
    kill(process_, SIGTERM);
    pollfd end = {descriptor_, POLLIN, 0};
    if (poll(&end, 1, kWaitMilliseconds * 1000) == 0)
        kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    close(descriptor_);
}

// The program's end is seen at once.
void Started::waitALittle() const
{
    pollfd end = {descriptor_, POLLIN, 0};
    if (poll(&end, 1, kWaitMilliseconds) != 0 || ++waits_ > kMostWaits)
        throw std::runtime_error("it has not started: " + contentsOf(log_));
}

// A copy, since where AppArmor confines the installed one it may not use these folders.
OwnCupsd::OwnCupsd(const std::vector<Queue> &queues, const std::string &more)
{
    makeFolders(queues, more);
    fs::copy_file("/usr/sbin/cupsd", folder_ / "cupsd");
    const fs::path socketPath = folder_ / "cups.sock";
    process_ = std::make_unique<Started>(std::vector<std::string>{folder_ / "cupsd", "-f", "-c",
                                                                  folder_ / "root/cupsd.conf", "-s",
                                                                  folder_ / "root/cups-files.conf"},
                                         folder_ / "out");
    process_->waitFor([&] { return accepts(socketPath); });
    setenv("CUPS_SERVER", socketPath.c_str(), 1);
}

OwnCupsd::~OwnCupsd()
{
    unsetenv("CUPS_SERVER");
}

void OwnCupsd::waitForDescription(const std::string &queue) const
{
    process_->waitFor([&] { return runProgram({"lpoptions", "-p", queue, "-l"}, "", folder()).status == 0; });
}

// Filters run as another user where the server is root's.
void OwnCupsd::makeFolders(const std::vector<Queue> &queues, const std::string &more) const
{
    fs::permissions(folder(), fs::perms(0755));
    for (const char *name : {"root", "root/ppd", "cache", "state", "spool", "spool/tmp"})
        fs::create_directory(folder_ / name);
    fs::permissions(folder_ / "spool/tmp", fs::perms(01777));
    writeFile(folder_ / "root/cupsd.conf", configuration(folder()) + more);
    writeFile(folder_ / "root/cups-files.conf", places(folder()));
    std::string printers;
    for (const Queue &queue : queues) {
        printers += "<Printer " + queue.name + ">\nPrinterId " + std::to_string(printers.size() + 1) +
                    "\nMakeModel Test\nDeviceURI " + queue.uri + "\nState Idle\nAccepting Yes\n</Printer>\n";
        if (!queue.ppd.empty())
            writeFile(folder_ / ("root/ppd/" + queue.name + ".ppd"), queue.ppd);
    }
    writeFile(folder_ / "root/printers.conf", printers);
}

PrinterPipe::PrinterPipe(fs::path path) : path_(std::move(path)), descriptor_(-1)
{
    if (mkfifo(path_.c_str(), 0666) == 0)
        descriptor_ = open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor_ < 0)
        throw std::runtime_error(path_.string() + ": no pipe");
}

PrinterPipe::~PrinterPipe()
{
    close(descriptor_);
}

// Its end has come when whoever wrote to it has closed it; before the first has opened it there is none.
std::string PrinterPipe::read(int jobs) const
{
    std::string bytes;
    std::vector<char> buffer(1 << 16);
    for (int ended = 0; ended < jobs;) {
        pollfd end = {descriptor_, POLLIN, 0};
        if (poll(&end, 1, kPrintMilliseconds) == 0)
            throw std::runtime_error("nothing is printed");
        const ssize_t count = ::read(descriptor_, buffer.data(), buffer.size());
        if (count > 0)
            bytes.append(buffer.data(), static_cast<std::size_t>(count));
        else if (count == 0)
            ++ended;
    }
    return bytes;
}

bool PrinterPipe::isSilent() const
{
    pollfd end = {descriptor_, POLLIN, 0};
    return poll(&end, 1, 0) == 0;
}

std::string gutenprintPpd(const std::string &driver)
{
    const CommandResult result = runProgram(
        {"/usr/lib/cups/driver/gutenprint.5.3", "cat", "gutenprint.5.3://" + driver + "/expert"}, "", "/");
    if (result.status != 0)
        throw std::runtime_error("Gutenprint has no driver " + driver + ": " + result.err);
    return result.out;
}

}  // namespace printing_tests
