#include "toolbox_faults/run.h"

#include <fcntl.h>
#include <string.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iostream>
#include <sstream>

#include "io/plain_text.h"

namespace fs = std::filesystem;

namespace toolbox_faults {
namespace {

constexpr int secondsOfItsOwn = 10, secondsInAll = 100;

Files filesIn(const fs::path &folder)
{
    Files all;
    if (fs::exists(folder))
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder))
            if (entry.is_regular_file())
                all[entry.path().lexically_relative(folder)] = contentsOf(entry.path());
    return all;
}

void fill(const fs::path &folder, const Files &files)
{
    fs::remove_all(folder);
    fs::create_directories(folder);
    for (const auto &[name, bytes] : files) {
        fs::create_directories((folder / name).parent_path());
        writeFile(folder / name, bytes);
    }
}

int openFiles()
{
    const fs::directory_iterator all("/proc/self/fd");
    return static_cast<int>(std::distance(begin(all), end(all)));
}

// What the plug-in has left behind is seen each time it returns.
class Watch {
public:
    Watch()
    {
        toolbox::trace::setSink([this](const std::string &line) { see(line); });
    }
    std::vector<std::string> said, made, leaks, trace;

private:
    void see(const std::string &line)
    {
        trace.push_back(line);
        const std::string creating = "file create ", done = " -> 0";
        if (line.starts_with("params ") || line == "beep")
            said.push_back(line);
        if (line.starts_with(creating) && line.ends_with(done))
            made.push_back(line.substr(creating.size(), line.size() - creating.size() - done.size()));
        if (!line.starts_with("entry "))
            return;
        const toolbox::LeakReport now = toolbox::leftBehind();
        if (!atFirst_)
            atFirst_ = now;
        else if (now != *atFirst_)
            leaks.push_back(now.text() + " after " + line + ", at first " + atFirst_->text());
    }
    std::optional<toolbox::LeakReport> atFirst_;
};

void limitTime()
{
    alarm(secondsInAll);
    const itimerval own = {{0, 0}, {secondsOfItsOwn, 0}};
    setitimer(ITIMER_PROF, &own, nullptr);
}

int runHere(const Scenario &scenario)
{
    Words words;
    try {
        words = scenario.run();
    } catch (const std::bad_alloc &) {
        words.problem = "there is not enough memory";
    } catch (const std::exception &error) {
        words.problem = error.what();
    }
    if (!words.note.empty())
        std::cerr << riders::io::plainText(words.note) << (words.problem.empty() ? "" : "; ");
    if (!words.problem.empty())
        std::cerr << riders::io::plainText(words.problem) << std::endl;
    return words.problem.empty() ? 0 : 1;
}

void writeLines(std::ostream &out, const std::string &mark, const std::vector<std::string> &lines)
{
    for (const std::string &line : lines)
        out << mark << line << '\n';
}

[[noreturn]] void runInChild(const Scenario &scenario, const Fault &fault, int nth, const fs::path &work)
{
    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    const int err = open((work / "err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(err, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    setenv("XDG_CONFIG_HOME", (work / "config").c_str(), 1);
    fs::current_path(work / "there");
    limitTime();
    toolbox::faults::clear();
    if (nth > 0)
        plan(fault, nth);
    Watch watch;
    const int before = openFiles();
    const int status = runHere(scenario);
    if (openFiles() != before)
        watch.leaks.push_back(std::to_string(openFiles() - before) + " descriptors");
    std::ofstream report(work / "report");
    for (int calls : callsOfEachKind())
        report << "calls " << calls << '\n';
    writeLines(report, "said ", watch.said);
    writeLines(report, "made ", watch.made);
    writeLines(report, "leak ", watch.leaks);
    writeLines(report, "trace ", watch.trace);
    report.close();
    _exit(status);
}

void readReport(const fs::path &file, Outcome &outcome)
{
    const std::map<std::string, std::vector<std::string> *> lists = {
        {"said", &outcome.said}, {"made", &outcome.made}, {"leak", &outcome.leaks}, {"trace", &outcome.trace}};
    std::istringstream in(contentsOf(file));
    for (std::string line; std::getline(in, line);) {
        const std::string kind = line.substr(0, line.find(' ')), rest = line.substr(line.find(' ') + 1);
        if (kind == "calls")
            outcome.calls.push_back(std::stoi(rest));
        else
            lists.at(kind)->push_back(rest);
    }
}

std::string howItEnded(int status)
{
    if (!WIFSIGNALED(status))
        return {};
    const int signal = WTERMSIG(status);
    if (signal == SIGPROF || signal == SIGALRM)
        return "did not end";
    return std::string("ended by a signal: ") + strsignal(signal);
}

}  // namespace

Place::Place(Files files, Files settings) : files_(std::move(files)), settings_(std::move(settings))
{
}

void Place::restore() const
{
    fill(folder(), files_);
    fill(settingsFolder(), settings_);
}

Files Place::files() const
{
    return filesIn(folder());
}

Files Place::settings() const
{
    return filesIn(settingsFolder());
}

Outcome Place::run(const Scenario &scenario, const Fault &fault, int nth) const
{
    fs::remove(work_ / "report");
    std::cout.flush();
    const pid_t child = fork();
    if (child == 0)
        runInChild(scenario, fault, nth, work_.path());
    int status = 0;
    waitpid(child, &status, 0);
    Outcome outcome;
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    outcome.how = howItEnded(status);
    outcome.err = contentsOf(work_ / "err");
    readReport(work_ / "report", outcome);
    outcome.files = files();
    outcome.settings = settings();
    return outcome;
}

}  // namespace toolbox_faults
