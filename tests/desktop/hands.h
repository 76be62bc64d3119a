// A person's hands at a real display: xdotool, kept running and given its
// commands line by line.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <cstdio>
#include <string>

namespace desktop {

class Hands {
public:
    Hands();
    ~Hands();
    Hands(const Hands &) = delete;
    Hands &operator=(const Hands &) = delete;

    void move(int x, int y);
    enum Button { left = 1, right = 3 };
    void button(bool down, Button which = left);
    // A key by its X name, the modifiers as X names them: "ctrl+shift".
    void key(const std::string &name, const std::string &modifiers = {});
    void modifier(const std::string &name, bool down);
    // Anything else that xdotool can do.
    void send(const std::string &line);

private:
    pid_t process_ = -1;
    FILE *orders_ = nullptr;
};

// What xdotool prints for one command, without the last line end.
std::string ask(const std::string &command);

}  // namespace desktop
