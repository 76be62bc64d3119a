#include "plates/interpreter/interpreter.h"

#include <signal.h>

#include <algorithm>
#include <cstdio>
#include <random>
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

constexpr const char *kPrologName = "prolog.ps";
constexpr double kLeastLightened = 150, kLeastUnchanged = 800;  // dpi

std::string number(double value)
{
    std::ostringstream text;
    text.exceptions(std::ios::badbit);
    text << value;
    return text.str();
}

// With as many digits as a pixel's place may need.
std::string exact(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6f", value);
    return text;
}

// A page is rendered in bands, and where they meet, a thin line can come out a pixel otherwise. The bands are made
// as high as those of tiffsep, whose memory is for fourteen plates where it is not told otherwise.
std::vector<std::string> toneOptions(int spotInks, int threads)
{
    constexpr int kPlainPlates = 14, kPlainBand = 4'000'000, kPlainPage = 10'000'000;  // bytes
    const int plates = spotInks + 4;
    std::vector<std::string> options = {"-sDEVICE=psdcmyk", "-sOutputFile=%d.psd",
                                        "-dMaxSpots=" + std::to_string(spotInks)};
    if (threads > 0)
        options.push_back("-dNumRenderingThreads=" + std::to_string(threads));
    if (plates < kPlainPlates) {
        options.push_back("-dBufferSpace=" + std::to_string(kPlainBand / kPlainPlates * plates));
        options.push_back("-dMaxBitmap=" + std::to_string(kPlainPage / kPlainPlates * plates));
    }
    return options;
}

// Bytes of a page that is kept whole. In bands, all that touches one is run anew for it, and what is transparent
// takes longest; but whole, each of a page's groups takes as much again.
long mostBitmap(const InterpreterLimits &limits)
{
    constexpr long kMost = 192L << 20, kShareOfAll = 10;
    return std::min(kMost, (static_cast<long>(limits.megabytes) << 20) / kShareOfAll);
}

std::vector<std::string> deviceOptions(const InterpreterRun &run)
{
    switch (run.device) {
    case PlateDevice::none:
        return {"-sDEVICE=nullpage"};
    case PlateDevice::tints:
        // An annotation is on all plates: here it would make plates of inks that the job does not have.
        return {"-sDEVICE=tiffsep",
                "-sCompression=none",
                "-sOutputFile=%d.tif",
                "-dZu3_RidersInBlack",
                "-dMaxSpots=" + std::to_string(run.spotInks),
                "-dMaxBitmap=" + std::to_string(mostBitmap(run.limits))};
    case PlateDevice::processPlates:
        return {"-sDEVICE=bitcmyk", "-sOutputFile=%d.bits"};
    case PlateDevice::colours:
        return {"-sDEVICE=ppmraw", "-sOutputFile=%d.ppm"};
    case PlateDevice::allTones:
        return toneOptions(run.spotInks, run.threads);
    case PlateDevice::allPlates:
        break;
    }
    return {"-sDEVICE=tiffsep1", "-sCompression=none", "-sOutputFile=%d.tif",
            "-dMaxSpots=" + std::to_string(run.spotInks)};
}

std::string pageList(const std::vector<int> &pages)
{
    std::string list;
    for (int page : pages)
        list += (list.empty() ? "" : ",") + std::to_string(page);
    return "-sPageList=" + list;
}

// A word that no job can know.
std::string secretWord()
{
    std::random_device random;
    std::ostringstream word;
    word.exceptions(std::ios::badbit);
    for (int i = 0; i < 4; ++i)
        word << std::hex << random();
    return word.str();
}

// Defines what prolog.ps's lines begin with. A job could read it in a file.
std::string linesWith(const std::string &word)
{
    const std::string opening = "Line (%%Proof" + word;
    std::string text;
    text += "userdict /RidersScreen" + opening + "Screen ) put ";
    text += "userdict /RidersShape" + opening + "Shape) put ";
    text += "userdict /RidersPlate" + opening + "Plate ) put ";
    text += "userdict /RidersSize" + opening + "Size ) put ";
    text += "userdict /RidersBegin" + opening + "Begin) put ";
    text += "userdict /RidersPage" + opening + "Page) put";
    return text;
}

// What prolog.ps is to do otherwise.
std::string wishes(const InterpreterRun &run)
{
    std::string text;
    if (const double least = run.dpiDown > 0 ? std::min(run.dpi, run.dpiDown) : run.dpi;
        run.interpreterTone && least >= kLeastLightened && least < kLeastUnchanged)
        text += " userdict /RidersInterpreterTone true put";
    if (run.rotation != 0)
        text += " userdict /RidersQuarterTurns " + std::to_string(run.rotation / 90) + " put";
    // Moves the page under the part; downwards is positive.
    if (run.part)
        text += " << /PageOffset [" + exact(-run.part->left) + " " + exact(run.part->bottom) + "] >> setpagedevice";
    return text;
}

std::string resolution(const InterpreterRun &run)
{
    return "-r" + number(run.dpi) + (run.dpiDown > 0 ? "x" + number(run.dpiDown) : "");
}

std::string fileName(size_t index)
{
    return "job-" + std::to_string(index);
}

// The interpreter gets names that mean nothing to it: in those of files it lets a job read, and of
// its temporary folder, it takes * and ? for patterns, and every name must be UTF-8.
void linkFiles(const InterpreterRun &run)
{
    for (size_t i = 0; i < run.job.files.size(); ++i) {
        const std::filesystem::path link = run.folder / fileName(i);
        std::filesystem::remove(link);
        std::filesystem::create_symlink(run.job.files[i], link);
    }
}

std::vector<std::string> commandOf(const InterpreterRun &run, const std::string &word)
{
    std::vector<std::string> command = {"gs",      "-q",        "-P-",        "-dSAFER",
                                        "-dBATCH", "-dNOPAUSE", "-dNOPROMPT", resolution(run)};
    for (const std::string &option : deviceOptions(run))
        command.push_back(option);
    if (run.job.kind == JobKind::eps)
        command.emplace_back("-dEPSCrop");
    if (!run.pages.empty())
        command.push_back(pageList(run.pages));
    if (run.part) {
        command.push_back("-g" + std::to_string(run.part->columns) + "x" + std::to_string(run.part->rows));
        command.emplace_back("-dFIXEDMEDIA");
    }
    command.insert(command.end(), {"-c", linesWith(word) + wishes(run), "-f", kPrologName});
    for (size_t i = 0; i < run.job.files.size(); ++i)
        command.push_back(fileName(i));
    return command;
}

// The number of the page that was being rendered.
int pageInWork(const InterpreterRun &run, size_t written)
{
    const bool listedOnly = run.job.kind == JobKind::pdf && !run.pages.empty();
    return listedOnly && written < run.pages.size() ? run.pages[written] : static_cast<int>(written) + 1;
}

std::string endedBy(const InterpreterRun &run, int signal)
{
    if (signal == SIGKILL || signal == SIGABRT || signal == SIGSEGV || signal == SIGBUS)
        return "the interpreter broke down, perhaps for lack of memory; it may have " +
               std::to_string(run.limits.megabytes) + " MB";
    return "the interpreter was ended by signal " + std::to_string(signal);
}

int secondsInAll(const InterpreterLimits &limits)
{
    return limits.secondsAPage * limits.slowPages;
}

// Thrown to end a run of which no more is wanted.
struct Enough {};

// A page's file is whole once the next page has come to its end.
bool hasPassed(const InterpreterRun &run, const InterpreterReport &report)
{
    return run.job.kind == JobKind::postScript && !run.pages.empty() &&
           report.pages.size() > static_cast<size_t>(run.pages.back());
}

// Does nothing when the interpreter has finished the job.
void refuseFailure(const InterpreterRun &run, const io::LimitedResult &result, const InterpreterWords &words)
{
    const size_t written = words.report().pages.size() - (words.isWritingPage() ? 1 : 0);
    const int page = pageInWork(run, written);
    const std::string where = run.job.name.string() + ": page " + std::to_string(page) + ": ";
    if (result.end == io::RunEnd::timedOut)
        throw SlowPage(where + "the interpreter took more than " + std::to_string(run.limits.secondsAPage) +
                           " seconds and was ended",
                       page, words.report());
    if (result.end == io::RunEnd::tookTooLong)
        throw io::Refusal(where + "the interpreter took more than " + std::to_string(secondsInAll(run.limits)) +
                          " seconds so far, " + std::to_string(run.limits.slowPages) +
                          " times what a page may take, and was ended");
    if (result.end == io::RunEnd::filledFolder)
        throw io::Refusal(where + "the page files take more than " + std::to_string(run.limits.pageMegabytes) +
                          " MB, and the job was ended");
    if (result.end == io::RunEnd::wroteTooMuch)
        throw io::Refusal(where + "the job fills the disk with temporary files and was ended");
    if (result.end == io::RunEnd::killed)
        throw io::Refusal(where + endedBy(run, result.status));
    if (result.status != 0)
        throw io::Refusal(where + "the interpreter said: " + words.failure(run.limits.megabytes));
}

}  // namespace

std::size_t placeInReport(const PreparedJob &job, int number, std::size_t file)
{
    return job.kind == JobKind::pdf ? file : static_cast<std::size_t>(number) - 1;
}

InterpreterReport interpret(const InterpreterRun &run)
{
    // A job may use the temporary folder, so it is not the one that holds the page files.
    const std::filesystem::path folder = std::filesystem::absolute(run.folder);
    const char *const temporary = "temporary";
    std::filesystem::create_directory(folder / temporary);
    linkFiles(run);
    io::writeFile(folder / kPrologName, std::string(kProlog) + run.ahead);
    const std::string word = secretWord();
    InterpreterWords words(word);
    const auto take = [&](std::string_view line) {
        const bool pageEnded = words.take(line);
        if (words.report().pages.size() > static_cast<size_t>(run.limits.pages))
            throw io::Refusal(run.job.name.string() + ": has more than " + std::to_string(run.limits.pages) +
                              " pages");
        if (pageEnded)
            run.pageEnded();
        if (run.endsWhenInksMix && words.report().inksMixed)
            throw Enough();
        if (run.endsAfterPages && hasPassed(run, words.report()))
            throw Enough();
        return pageEnded;
    };
    const std::vector<std::string> command = commandOf(run, word);
    try {
        refuseFailure(run,
                      io::runLimited({.command = command,
                                      .folder = folder,
                                      .temporary = temporary,
                                      .seconds = run.limits.secondsAPage,
                                      .secondsInAll = secondsInAll(run.limits),
                                      .megabytes = run.limits.megabytes,
                                      .folderMegabytes = run.limits.pageMegabytes,
                                      .line = take,
                                      .beside = run.beside}),
                      words);
    } catch (const Enough &) {
        return words.report();
    }
    std::filesystem::remove_all(folder / temporary);
    return words.report();
}

}  // namespace riders::plates
