#include "processes.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <stdexcept>

namespace {

[[noreturn]] void becomeProgram(char *const *arguments, const char *output)
{
    const int out = *output ? open(output, O_WRONLY | O_CREAT | O_TRUNC, 0644) : open("/dev/null", O_WRONLY);
    if (out < 0 || dup2(out, STDOUT_FILENO) < 0)
        _exit(126);
    execvp(arguments[0], arguments);
    _exit(127);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

int missed = 0;

const char *verdict(double value, double aim)
{
    missed += value > aim;
    return value <= aim ? "reached" : "missed";
}

// Of the last minute: what else the machine was doing.
double load()
{
    double loads[1] = {};
    getloadavg(loads, 1);
    return loads[0];
}

}  // namespace

double secondsOf(const std::function<void()> &work)
{
    auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

ProcessRun runProcess(const std::vector<std::string> &arguments, const std::filesystem::path &output)
{
    std::vector<char *> pointers;
    pointers.reserve(arguments.size() + 1);
    for (const std::string &argument : arguments)
        pointers.push_back(const_cast<char *>(argument.c_str()));
    pointers.push_back(nullptr);
    int status = 0;
    rusage usage{};
    double seconds = secondsOf([&] {
        pid_t child = fork();
        if (child == 0)
            becomeProgram(pointers.data(), output.c_str());
        if (child < 0 || wait4(child, &status, 0, &usage) < 0)
            throw std::runtime_error("cannot run " + arguments[0]);
    });
    return {seconds, usage.ru_maxrss, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

Pair sideBySide(int rounds, const std::function<double()> &ours, const std::function<double()> &theirs)
{
    std::vector<double> a, b;
    for (int round = -1; round < rounds; ++round) {
        double first = ours();
        double second = theirs();
        if (round >= 0) {
            a.push_back(first);
            b.push_back(second);
        }
    }
    return {median(a), median(b)};
}

void printHeading(const char *heading)
{
    std::printf("\n%s (load %.1f)\n%-60s %10s %10s %7s %6s\n", heading, load(), "", "ours ms", "other ms", "ratio",
                "aim");
}

void printRow(const std::string &what, const Pair &pair, double aim)
{
    std::printf("%-60s %10.2f %10.2f %7.2f %6.2f  %s\n", what.c_str(), pair.ours * 1e3, pair.theirs * 1e3,
                pair.ratio(), aim, verdict(pair.ratio(), aim));
    std::fflush(stdout);
}

int missedSoFar()
{
    return missed;
}

void printFigure(const std::string &what, double value, const char *unit, double aim)
{
    std::printf("%-60s %10.1f %-10s %7s %6.1f  %s\n", what.c_str(), value, unit, "", aim, verdict(value, aim));
    std::fflush(stdout);
}

Workplace::Workplace()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "riders-measure-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("no temporary folder");
    path_ = pattern;
}

Workplace::~Workplace()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}
