// Timing whole processes and pieces of work, always side by side.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

struct ProcessRun {
    double seconds;
    long peakKiB;
    int status;  // exit code, or -1
};

// Runs the program found in PATH and waits for it. Its standard output goes to
// the named file, or nowhere when the name is empty.
ProcessRun runProcess(const std::vector<std::string> &arguments, const std::filesystem::path &output = {});

double secondsOf(const std::function<void()> &work);

struct Pair {
    double ours;  // seconds
    double theirs;
    double ratio() const { return ours / theirs; }
};
// Runs both in turn, rounds times, after one round that does not count, and
// returns the medians. Each returns its seconds.
Pair sideBySide(int rounds, const std::function<double()> &ours, const std::function<double()> &theirs);

void printHeading(const char *heading);
void printRow(const std::string &what, const Pair &pair, double aim);
void printFigure(const std::string &what, double value, const char *unit, double aim);
// How many of both have missed their aims.
int missedSoFar();

// A folder for the length of a measurement.
class Workplace {
public:
    Workplace();
    ~Workplace();
    Workplace(const Workplace &) = delete;
    Workplace &operator=(const Workplace &) = delete;
    std::filesystem::path operator/(const std::string &name) const { return path_ / name; }
    const std::filesystem::path &path() const { return path_; }

private:
    std::filesystem::path path_;
};
