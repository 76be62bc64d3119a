#include "fault/trial.h"

#include <signal.h>

#include <cstdio>
#include <sstream>

namespace fs = std::filesystem;

namespace {

// A line, or two where two files of the user's cannot be read.
bool saysWhatFailed(const std::string &words)
{
    std::istringstream lines(words);
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        if (!line.starts_with("riders"))
            return false;
    return (count == 1 || count == 2) && words.ends_with('\n') && words.find("std::") == std::string::npos;
}

std::vector<std::string> wrongWords(const FaultyRun &run)
{
    if (run.status == -SIGALRM)
        return {"does not end"};
    // Where it gets no memory, FFTW ends the process itself, with words of its own.
    if (run.status == -SIGABRT && run.err.starts_with("fftw: alloc.c"))
        return {};
    if (run.status < 0)
        return {"ended by signal " + std::to_string(-run.status) + ": " + run.err};
    if (run.status == 0 || run.muted)
        return {};
    if (!saysWhatFailed(run.err))
        return {"exits with " + std::to_string(run.status) + ", and says: " + run.err};
    return {};
}

std::string firstDifference(const Files &now, const Files &fresh)
{
    for (const auto &[path, what] : fresh)
        if (const auto here = now.find(path); here == now.end() || here->second != what)
            return path + (here == now.end() ? " is missing" : " is not the new one");
    for (const auto &[path, what] : now)
        if (!fresh.contains(path))
            return path + " is there";
    return {};
}

// What it has made outside its world, and not removed.
std::vector<fs::path> leftBy(const FaultyRun &run)
{
    std::vector<fs::path> those;
    for (const fs::path &path : run.made)
        if (path.string().starts_with("/dev/shm/") && fs::exists(fs::symlink_status(path)))
            those.push_back(path);
    return those;
}

}  // namespace

Trial::Trial(const TriedCommand &tried) : tried_(tried), world_(tried), old_(world_.files())
{
    right_ = runAndCount(world_.command());
    fresh_ = world_.files();
    again_ = runWithFault(world_.command(), {});
    afterAgain_ = world_.files();
}

void Trial::tryWith(const Setting &setting, const std::string &kind, const std::string &what)
{
    world_.restore();
    FaultyCommand command = world_.command();
    command.environment.insert(command.environment.end(), setting.environment.begin(), setting.environment.end());
    FaultyRun run = runWithFault(command, setting.fault);
    if (run.status == -SIGALRM) {
        world_.restore();
        run = runWithFault(command, setting.fault);
    }
    Count &count = counts_[kind];
    ++count.tried;
    std::vector<std::string> wrong = wrongWith(run, setting.nothingCanBeRemoved);
    for (const fs::path &path : leftBy(run)) {
        wrong.push_back(path.string() + " is left");
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    if (wrong.empty())
        return;
    ++count.failed;
    std::string text;
    for (const std::string &line : wrong)
        text += "  " + line + "\n";
    ADD_FAILURE() << tried_.name << ", " << what << "\n" << text << "  said: " << run.err;
}

std::vector<std::string> Trial::wrongWith(const FaultyRun &run, bool mayLeave)
{
    const Files now = world_.files();
    std::vector<std::string> wrong = wrongWords(run);
    for (const std::string &line : wrongResult(run, now, mayLeave))
        wrong.push_back(line);
    for (const std::string &line : wrongFiles(now, mayLeave))
        wrong.push_back(line);
    // In a world that is as it was, the next run is the one without a fault.
    const bool isAsItWas = now == old_ || now == fresh_;
    if (!isAsItWas || (mayLeave && !leftBy(run).empty()))
        for (const std::string &line : wrongNext())
            wrong.push_back(line);
    return wrong;
}

std::vector<std::string> Trial::wrongResult(const FaultyRun &run, const Files &now, bool mayLeave) const
{
    if (run.status != 0)
        return {};
    std::vector<std::string> wrong;
    if (right_.status != 0)
        wrong.push_back("exits with 0");
    if (const Files made = mayLeave ? withoutWhatIsLeft(now, old_, fresh_) : now; made != fresh_)
        wrong.push_back("has not done its work, and exits with 0; " + firstDifference(made, fresh_));
    if (run.out != right_.out)
        wrong.push_back("has not put out what it should, and exits with 0");
    return wrong;
}

std::vector<std::string> Trial::wrongFiles(const Files &now, bool mayLeave) const
{
    std::vector<std::string> wrong;
    for (const Difference &difference : neitherOldNorNew(now, old_, fresh_))
        if (!(difference.isLeft && mayLeave))
            wrong.push_back(difference.group + (difference.isLeft ? " is left" : " is neither old nor new"));
    return wrong;
}

std::vector<std::string> Trial::wrongNext()
{
    FaultyRun next = runWithFault(world_.command(), {});
    if (next.status == -SIGALRM)
        next = runWithFault(world_.command(), {});
    const Files now = world_.files();
    if ((next.status == right_.status && now == fresh_) || (next.status == again_.status && now == afterAgain_))
        return {};
    return {"the next run does not work: " + next.err};
}

void Trial::print() const
{
    Count sum;
    for (const auto &[kind, count] : counts_) {
        std::printf("%-24s %-16s %6d tried, %4d failed\n", tried_.name, kind.c_str(), count.tried, count.failed);
        sum.tried += count.tried;
        sum.failed += count.failed;
    }
    std::printf("%-24s %-16s %6d tried, %4d failed\n", tried_.name, "all", sum.tried, sum.failed);
}
