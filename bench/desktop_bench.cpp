#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "benches.h"
#include "desktop/display.h"
#include "desktop/hands.h"
#include "processes.h"

namespace {

using namespace std::chrono_literals;

// `riders` with its window on a display without a person.
class RunningHost {
public:
    RunningHost(const std::filesystem::path &riders, const Workplace &place) : process_(fork())
    {
        if (process_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGTERM);
            setenv("HOME", place.path().c_str(), 1);
            setenv("XDG_CONFIG_HOME", place.path().c_str(), 1);
            execl(riders.c_str(), riders.c_str(), static_cast<char *>(nullptr));
            _exit(127);
        }
        // The last line: the display's own window comes first.
        window_ = desktop::ask("search --sync --onlyvisible --class riders");
        window_ = window_.substr(window_.rfind('\n') + 1);
        std::this_thread::sleep_for(2s);
    }
    ~RunningHost()
    {
        kill(process_, SIGTERM);
        waitpid(process_, nullptr, 0);
    }
    RunningHost(const RunningHost &) = delete;
    RunningHost &operator=(const RunningHost &) = delete;

    // By its menu, the second one from the right.
    void openSettings()
    {
        const std::string geometry = desktop::ask("getwindowgeometry --shell " + window_);
        int x = 0, y = 0;
        // NOLINTNEXTLINE(cert-err34-c): xdotool writes small numbers
        if (std::sscanf(geometry.substr(geometry.find("X=")).c_str(), "X=%d\nY=%d", &x, &y) != 2)
            throw std::runtime_error("the window is nowhere");
        desktop::Hands hands;
        const std::pair<int, int> title{x + 138, y + 10}, command{x + 160, y + 28};
        for (const auto &[h, v] : {title, command}) {
            hands.move(h, v);
            std::this_thread::sleep_for(200ms);
            hands.button(true);
            std::this_thread::sleep_for(50ms);
            hands.button(false);
            std::this_thread::sleep_for(300ms);
        }
        std::this_thread::sleep_for(1s);
    }

    double mebibytes() const
    {
        std::ifstream status("/proc/" + std::to_string(process_) + "/status");
        for (std::string line; std::getline(status, line);)
            if (line.rfind("VmRSS:", 0) == 0)
                return std::stod(line.substr(6)) / 1024;
        throw std::runtime_error("the program has ended");
    }

    // Of one core, while idle.
    double idlePercent() const
    {
        constexpr auto length = 10s;
        const double before = processorSeconds();
        std::this_thread::sleep_for(length);
        return (processorSeconds() - before) / std::chrono::duration<double>(length).count() * 100;
    }

private:
    // Fields 14 and 15 after the name, which may hold anything.
    double processorSeconds() const
    {
        std::ifstream file("/proc/" + std::to_string(process_) + "/stat");
        std::string line;
        std::getline(file, line);
        std::istringstream rest(line.substr(line.rfind(')') + 2));
        std::string word;
        for (int field = 3; field < 14; ++field)
            rest >> word;
        double user = 0, system = 0;
        rest >> user >> system;
        return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
    }

    pid_t process_;
    std::string window_;
};

}  // namespace

void measureDesktop(const std::filesystem::path &riders)
{
    Workplace place;
    desktop::DisplayServer display;
    printHeading("The window on the desktop");
    RunningHost host(riders, place);
    printFigure("memory at rest", host.mebibytes(), "MiB", 60);
    printFigure("processor at rest, of a core", host.idlePercent(), "%", 2);
    host.openSettings();
    printFigure("processor with the settings dialog open, of a core", host.idlePercent(), "%", 2);
    printFigure("memory with it", host.mebibytes(), "MiB", 60);
}
