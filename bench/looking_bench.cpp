// How long the window of a job takes to show what was chosen: from the choice to the picture, with the tenth of a
// second that it waits for another.
#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

#include "app/job_view.h"
#include "benches.h"
#include "processes.h"

namespace {

using riders::app::JobView;
using Clock = std::chrono::steady_clock;

constexpr int kRounds = 5;

// At a sixtieth of a second each, as the window's idle time comes.
void waitForPictures(JobView &view, Clock::time_point start)
{
    using Ticks = std::chrono::duration<std::uint32_t, std::ratio<1, 60>>;
    do {
        view.lookAtWork(1 + std::chrono::duration_cast<Ticks>(Clock::now() - start).count());
        std::this_thread::sleep_for(std::chrono::milliseconds(16));
    } while (view.busy());
    if (!view.problem().empty() || !view.dotsWith())
        throw std::runtime_error("nothing is shown: " + view.problem());
}

double secondsUntilShown(JobView &view, const std::function<void()> &choose)
{
    const Clock::time_point start = Clock::now();
    return secondsOf([&] {
        choose();
        waitForPictures(view, start);
    });
}

double median(std::vector<double> seconds)
{
    std::sort(seconds.begin(), seconds.end());
    return seconds[seconds.size() / 2];
}

void makeRiders(const std::filesystem::path &riders, const std::filesystem::path &file, const char *frequency)
{
    runProcess({riders, "make", "-o", file, "--frequency", frequency, "--angle", "22.5", "--spot", "round"});
}

// As in the window on a display of 1280 by 900, with twice the device pixels.
constexpr riders::app::RoomForPictures kRoom = {780, 1380, 520, 520};

void measureJob(const std::string &name, const std::filesystem::path &job, const Workplace &place)
{
    JobView view(false);
    view.setRoom(kRoom);
    const double first = secondsUntilShown(view, [&] { view.show(job, place / "coarse", 1); });
    std::vector<double> another, resolution;
    for (int i = 0; i < kRounds; ++i) {
        another.push_back(
            secondsUntilShown(view, [&] { view.show(job, place / (i % 2 == 0 ? "fine" : "coarse"), 1); }));
        resolution.push_back(secondsUntilShown(view, [&] { view.setDpi(i % 2 == 0 ? 1200 : 600); }));
    }
    printFigure(name + ": first seen", first, "s", 2);
    printFigure(name + ": another riders file", median(another), "s", 1);
    printFigure(name + ": another resolution", median(resolution), "s", 1);
}

}  // namespace

void measureLooking(const std::filesystem::path &riders)
{
    const Workplace place;
    makeRiders(riders, place / "coarse", "45");
    makeRiders(riders, place / "fine", "133");
    const std::filesystem::path examples = std::filesystem::path(RIDERS_SOURCE_DIR) / "examples";
    printHeading("The window of a job, from a choice to its picture");
    measureJob("tints and a wedge", examples / "sample.ps", place);
    runProcess({"gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pdfwrite", "-o", place / "sample.pdf",
                examples / "sample.ps"});
    measureJob("the same as PDF", place / "sample.pdf", place);
}
