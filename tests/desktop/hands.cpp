#include "desktop/hands.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace desktop {

Hands::Hands()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe to xdotool");
    process_ = fork();
    if (process_ == 0) {
        dup2(ends[0], STDIN_FILENO);
        execlp("xdotool", "xdotool", "-", static_cast<char *>(nullptr));
        _exit(127);
    }
    close(ends[0]);
    orders_ = fdopen(ends[1], "w");
    signal(SIGPIPE, SIG_IGN);
}

Hands::~Hands()
{
    fclose(orders_);
    waitpid(process_, nullptr, 0);
}

void Hands::send(const std::string &line)
{
    if (std::fprintf(orders_, "%s\n", line.c_str()) < 0 || std::fflush(orders_) != 0)
        throw std::runtime_error("xdotool does not listen: is there a display?");
}

void Hands::move(int x, int y)
{
    send("mousemove " + std::to_string(x) + " " + std::to_string(y));
}

void Hands::button(bool down, Button which)
{
    send((down ? "mousedown " : "mouseup ") + std::to_string(which));
}

void Hands::key(const std::string &name, const std::string &modifiers)
{
    send("key " + (modifiers.empty() ? name : modifiers + "+" + name));
}

void Hands::modifier(const std::string &name, bool down)
{
    send((down ? "keydown " : "keyup ") + name);
}

std::string ask(const std::string &command)
{
    FILE *output = popen(("xdotool " + command).c_str(), "r");
    if (!output)
        throw std::runtime_error("xdotool cannot be run");
    std::string text;
    std::array<char, 256> part;
    while (fgets(part.data(), part.size(), output))
        text += part.data();
    pclose(output);
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    return text;
}

}  // namespace desktop
