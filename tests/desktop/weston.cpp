#include "desktop/weston.h"

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/inotify.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace desktop {
namespace {

constexpr const char *socketName = "wayland-riders";

[[noreturn]] void becomeWeston(int width, int height)
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int silence = open("/dev/null", O_WRONLY);
    dup2(silence, STDOUT_FILENO);
    dup2(silence, STDERR_FILENO);
    const std::string wide = "--width=" + std::to_string(width), high = "--height=" + std::to_string(height);
    const std::string socket = std::string("--socket=") + socketName;
    execlp("weston", "weston", "--backend=x11-backend.so", "--use-pixman", "--shell=kiosk-shell.so", socket.c_str(),
           wide.c_str(), high.c_str(), "--idle-time=0", "--no-config", static_cast<char *>(nullptr));
    _exit(127);
}

// The compositor makes its socket once it accepts connections.
void waitForSocket(int watch)
{
    alignas(inotify_event) std::array<char, 4096> news;
    for (;;) {
        const ssize_t length = read(watch, news.data(), news.size());
        if (length <= 0)
            throw std::runtime_error("weston does not start");
        for (ssize_t at = 0; at < length;) {
            const auto *event = reinterpret_cast<const inotify_event *>(news.data() + at);
            if (std::string(event->name) == socketName)
                return;
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
    }
}

}  // namespace

Weston::Weston(int width, int height)
{
    chmod(folder_.path().c_str(), 0700);
    setenv("XDG_RUNTIME_DIR", folder_.path().c_str(), 1);
    const int watch = inotify_init1(IN_CLOEXEC);
    inotify_add_watch(watch, folder_.path().c_str(), IN_CREATE);
    compositor_ = fork();  // NOLINT(cppcoreguidelines-prefer-member-initializer): now that its folder is watched
    if (compositor_ == 0)
        becomeWeston(width, height);
    waitForSocket(watch);
    close(watch);
    setenv("WAYLAND_DISPLAY", socketName, 1);
    setenv("SDL_VIDEODRIVER", "wayland", 1);
    setenv("SDL_AUDIODRIVER", "dummy", 1);
}

Weston::~Weston()
{
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("SDL_VIDEODRIVER");
    kill(compositor_, SIGTERM);
    waitpid(compositor_, nullptr, 0);
}

}  // namespace desktop
