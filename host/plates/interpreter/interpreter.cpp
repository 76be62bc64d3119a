#include "plates/interpreter/interpreter.h"

#include <signal.h>

#include <sstream>

#include "io/limited_process.h"
#include "io/output.h"
#include "io/refusal.h"

namespace riders::plates {

// prolog.ps runs before the job. Its Install removes Ghostscript's lightening of tints
// each time the page device is set; its EndPage writes the screens of each page, using
// the operators as the job and the riders file have left them, in lines that
// InterpreterWords reads.
extern const std::string_view kProlog;

namespace {

std::string number(double value)
{
    std::ostringstream text;
    text << value;
    return text.str();
}

std::vector<std::string> deviceOptions(PlateDevice device)
{
    switch (device) {
    case PlateDevice::none:
        return {"-sDEVICE=nullpage"};
    case PlateDevice::tints:
        // An annotation is on all plates: here it would make plates of inks that the job does not have.
        return {"-sDEVICE=tiffsep", "-sCompression=none", "-sOutputFile=%d.tif", "-dZu3_RidersInBlack"};
    case PlateDevice::processPlates:
        return {"-sDEVICE=pcxcmyk", "-sOutputFile=%d.pcx"};
    case PlateDevice::allPlates:
        break;
    }
    return {"-sDEVICE=tiffsep1", "-sCompression=none", "-sOutputFile=%d.tif"};
}

std::string pageList(const std::vector<int> &pages)
{
    std::string list;
    for (int page : pages)
        list += (list.empty() ? "" : ",") + std::to_string(page);
    return "-sPageList=" + list;
}

std::vector<std::string> commandOf(const InterpreterRun &run, const std::filesystem::path &prolog)
{
    std::vector<std::string> command = {"gs",      "-q",        "-P-",        "-dSAFER",
                                        "-dBATCH", "-dNOPAUSE", "-dNOPROMPT", "-r" + number(run.dpi)};
    for (const std::string &option : deviceOptions(run.device))
        command.push_back(option);
    if (run.job.kind == JobKind::eps)
        command.push_back("-dEPSCrop");
    if (!run.pages.empty())
        command.push_back(pageList(run.pages));
    command.push_back("-f");
    command.push_back(prolog);
    for (const std::filesystem::path &file : run.job.files)
        command.push_back(file);
    return command;
}

// The number of the page that was being rendered.
int pageInWork(const InterpreterRun &run, size_t ended)
{
    const bool listedOnly = run.job.kind == JobKind::pdf && !run.pages.empty();
    return listedOnly && ended < run.pages.size() ? run.pages[ended] : static_cast<int>(ended) + 1;
}

std::string endedBy(const InterpreterRun &run, int signal)
{
    if (signal == SIGKILL || signal == SIGABRT || signal == SIGSEGV || signal == SIGBUS)
        return "the interpreter broke down, perhaps for lack of memory; it may have " +
               std::to_string(run.limits.megabytes) + " MB";
    return "the interpreter was ended by signal " + std::to_string(signal);
}

// Does nothing when the interpreter has finished the job.
void refuseFailure(const InterpreterRun &run, const io::LimitedResult &result, const InterpreterWords &words)
{
    const std::string where =
        run.job.name.string() + ": page " + std::to_string(pageInWork(run, words.report().pages.size())) + ": ";
    if (result.end == io::RunEnd::timedOut)
        throw io::Refusal(where + "the interpreter took more than " + std::to_string(run.limits.secondsAPage) +
                          " seconds and was ended");
    if (result.end == io::RunEnd::killed)
        throw io::Refusal(where + endedBy(run, result.status));
    if (result.status != 0)
        throw io::Refusal(where + "the interpreter said: " + words.failure(run.limits.megabytes));
}

}  // namespace

InterpreterReport interpret(const InterpreterRun &run)
{
    // A job may use the temporary folder, so it is not the one that holds the page files.
    const std::filesystem::path folder = std::filesystem::absolute(run.folder);
    const std::filesystem::path prolog = folder / "prolog.ps", temporary = folder / "temporary";
    std::filesystem::create_directory(temporary);
    io::writeFile(prolog, std::string(kProlog) + run.ahead);
    InterpreterWords words;
    const auto take = [&](std::string_view line) {
        const bool pageEnded = words.take(line);
        if (pageEnded)
            run.pageEnded();
        return pageEnded;
    };
    refuseFailure(run,
                  io::runLimited({commandOf(run, prolog), folder, temporary, run.limits.secondsAPage,
                                  run.limits.megabytes, take}),
                  words);
    return words.report();
}

}  // namespace riders::plates
