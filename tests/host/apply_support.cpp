#include "host/apply_support.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "io/bytes.h"

namespace fs = std::filesystem;

namespace {

namespace io = riders::io;

std::string readAll(int descriptor)
{
    std::string bytes;
    char buffer[65536];
    for (ssize_t got; (got = read(descriptor, buffer, sizeof buffer)) > 0;)
        bytes.append(buffer, static_cast<size_t>(got));
    close(descriptor);
    return bytes;
}

// In the child; never returns.
[[noreturn]] void workAndExit(int in, int out, int messages, const std::function<void()> &work)
{
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    for (int descriptor = 3; descriptor < 64; ++descriptor)
        if (descriptor != messages)
            close(descriptor);
    try {
        work();
    } catch (const io::Refusal &refusal) {
        if (write(messages, refusal.message.data(), refusal.message.size()) < 0)
            _exit(2);
        _exit(1);
    }
    _exit(0);
}

int exitCodeOf(pid_t child)
{
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

pid_t feed(int descriptor, int unused, const std::string &bytes)
{
    const pid_t child = fork();
    if (child != 0)
        return child;
    close(unused);
    signal(SIGPIPE, SIG_IGN);
    try {
        io::writeAll(io::OpenFile(descriptor, "the job"), bytes);
    } catch (const io::Refusal &) {
        // The reader has gone; the test judges what it made of the job.
    }
    _exit(0);
}

}  // namespace

Piped runOn(int in, int out, const std::function<void()> &work)
{
    int messages[2];
    EXPECT_EQ(pipe(messages), 0);
    const pid_t child = fork();
    if (child == 0)
        workAndExit(in, out, messages[1], work);
    close(messages[1]);
    Piped result;
    result.message = readAll(messages[0]);
    result.exitCode = exitCodeOf(child);
    return result;
}

Piped runPiped(const std::string &input, const std::function<void()> &work)
{
    int in[2], out[2], messages[2];
    EXPECT_EQ(pipe(in) | pipe(out) | pipe(messages), 0);
    const pid_t feeder = feed(in[1], in[0], input);
    const pid_t child = fork();
    if (child == 0)
        workAndExit(in[0], out[1], messages[1], work);
    for (int descriptor : {in[0], in[1], out[1], messages[1]})
        close(descriptor);
    Piped result;
    result.output = readAll(out[0]);
    result.message = readAll(messages[0]);
    result.exitCode = exitCodeOf(child);
    exitCodeOf(feeder);
    return result;
}

void ApplyTest::SetUp()
{
    writeFile(riders, fragment);
    writeFile(job, plainJob);
}

std::string ApplyTest::apply(const fs::path &to)
{
    try {
        riders::apply::applyRiders({riders, job, to});
    } catch (const io::Refusal &refusal) {
        return refusal.message;
    }
    return "done";
}

std::string ApplyTest::strip(const fs::path &from, const fs::path &to)
{
    try {
        riders::apply::stripRiders({from, to});
    } catch (const io::Refusal &refusal) {
        return refusal.message;
    }
    return "done";
}

std::string ApplyTest::applied(const std::string &jobBytes)
{
    writeFile(job, jobBytes);
    EXPECT_EQ(apply(out), "done");
    return contentsOf(out);
}

std::string ApplyTest::stripped(const std::string &appliedBytes)
{
    writeFile(out, appliedBytes);
    EXPECT_EQ(strip(out, folder / "stripped.ps"), "done");
    return contentsOf(folder / "stripped.ps");
}

size_t ApplyTest::filesInFolder() const
{
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()));
}
