#include "desktop/display.h"

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace desktop {

// The server writes the number of the display it found free once it accepts
// connections, so no fixed wait is needed.
DisplayServer::DisplayServer(const std::string &screen)
{
    int ends[2];
    if (pipe(ends) != 0)
        throw std::runtime_error("no pipe to the display's server");
    server_ = fork();
    if (server_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        close(ends[0]);
        const std::string descriptor = std::to_string(ends[1]);
        int silence = open("/dev/null", O_WRONLY);
        dup2(silence, STDERR_FILENO);
        execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", screen.c_str(), "-nolisten",
               "tcp", static_cast<char *>(nullptr));
        _exit(127);
    }
    close(ends[1]);
    std::string number;
    for (char digit; read(ends[0], &digit, 1) == 1 && digit != '\n';)
        number += digit;
    close(ends[0]);
    if (number.empty())
        throw std::runtime_error("Xvfb does not start");
    setenv("DISPLAY", (":" + number).c_str(), 1);
    unsetenv("WAYLAND_DISPLAY");
    setenv("SDL_AUDIODRIVER", "dummy", 1);
}

DisplayServer::~DisplayServer()
{
    kill(server_, SIGTERM);
    waitpid(server_, nullptr, 0);
}

void DisplayServer::beSlow() const
{
    setpriority(PRIO_PROCESS, static_cast<id_t>(server_), 15);
}

void DisplayServer::picture(const std::string &file, const std::string &geometry) const
{
    const std::string part = geometry.empty() ? "" : " -crop " + geometry + " +repage";
    if (std::system(("import -window root" + part + " 'png:" + file + "'").c_str()) != 0)
        throw std::runtime_error("no picture of the display");
}

}  // namespace desktop
