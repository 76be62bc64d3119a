// A display without a person: an X server in memory, for one test program.
#pragma once

#include <sys/types.h>

#include <string>

namespace desktop {

class DisplayServer {
public:
    // Starts the server and names it in DISPLAY; WAYLAND_DISPLAY is unset.
    // std::runtime_error when it does not start.
    explicit DisplayServer(const std::string &screen = "1024x768x24");
    ~DisplayServer();
    DisplayServer(const DisplayServer &) = delete;
    DisplayServer &operator=(const DisplayServer &) = delete;

    // Of the server, for those who want to see it end.
    pid_t process() const { return server_; }
    // Lets every other process on the machine go first.
    void beSlow() const;

    // Writes what it shows, or a part of it, as PNG.
    void picture(const std::string &file, const std::string &geometry = {}) const;

private:
    pid_t server_ = -1;
};

}  // namespace desktop
