#include "support/command.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/toolbox_test.h"

namespace {

[[noreturn]] void become(const std::vector<std::string> &command, const TemporaryFolder &streams,
                         const std::string &folder)
{
    int in = open((streams / "in").c_str(), O_RDONLY);
    int out = open((streams / "out").c_str(), O_WRONLY | O_CREAT, 0600);
    int err = open((streams / "err").c_str(), O_WRONLY | O_CREAT, 0600);
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    if (!folder.empty() && chdir(folder.c_str()) != 0)
        _exit(126);
    std::vector<char *> arguments;
    for (const std::string &word : command)
        arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

}  // namespace

CommandResult runProgram(const std::vector<std::string> &command, const std::string &input, const std::string &folder)
{
    TemporaryFolder streams;
    writeFile(streams / "in", input);
    pid_t child = fork();
    if (child == 0)
        become(command, streams, folder);
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentsOf(streams / "out"), contentsOf(streams / "err")};
}

CommandResult runRiders(const std::vector<std::string> &arguments, const std::string &input, const std::string &folder)
{
    std::vector<std::string> command = {RIDERS_BINARY_DIR "/riders"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return runProgram(command, input, folder);
}
