#include "proof/interpreter.h"

#include <signal.h>

#include <sstream>
#include <utility>

#include "apply/output.h"
#include "apply/refusal.h"
#include "proof/limited_process.h"

namespace riders {
namespace {

constexpr size_t kMostLines = 100;
constexpr std::string_view kPageLine = "%%ProofPage";
constexpr std::string_view kScreenLine = "%%ProofScreen ";
constexpr std::string_view kInkLine = "%%SeparationName: ";

// Runs ahead of the job. Install takes Ghostscript's lightening of tints out
// each time the page device is set; EndPage tells of each page and its screens,
// by the operators as the job and the riders file have them then.
constexpr std::string_view kProlog = R"(%!PS
userdict /RidersProofLine { % frequency angle name -
  (%%ProofScreen ) print 3 1 roll exch =only ( ) print =only ( ) print
  dup type /stringtype ne {dup length string cvs} if print (\n) print
} bind put
userdict /RidersProofTell {
  currenthalftone /HalftoneType get
  dup 5 eq {
    pop currenthalftone {
      dup type /dicttype eq {
        dup /Frequency known
          {dup /Frequency get exch /Angle get 3 -1 roll RidersProofLine} {pop pop} ifelse
      } {pop pop} ifelse
    } forall
  } {
    1 eq
      {currenthalftone dup /Frequency get exch /Angle get (Default) RidersProofLine}
      {
        currentcolorscreen
        [(Black) (Yellow) (Magenta) (Cyan)] {
          exch type /dicttype eq {pop pop pop} {RidersProofLine} ifelse
        } forall
      } ifelse
  } ifelse
} put
mark {RidersProofTell} stopped cleartomark
(%%ProofPage\n) print flush
<< /Install {{} settransfer}
   /EndPage {
     dup 2 ne {mark {RidersProofTell} stopped cleartomark (%%ProofPage\n) print flush} if
     exch pop 2 ne
   }
>> setpagedevice
)";

std::string number(double value)
{
    std::ostringstream text;
    text << value;
    return text.str();
}

std::vector<std::string> deviceOptions(PlateDevice device)
{
    switch (device) {
    case PlateDevice::tints:
        return {"-sDEVICE=tiffsep", "-sCompression=none", "-sOutputFile=%d.tif"};
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

// Reads what the interpreter writes, a line at a time.
class Listener {
public:
    explicit Listener(const InterpreterRun &run) : run_(run) {}

    // True where a page has ended.
    bool take(std::string_view line)
    {
        if (line == kPageLine)
            return endPage();
        if (line.starts_with(kScreenLine) && takeScreen(std::string(line.substr(kScreenLine.size()))))
            return false;
        if (line.starts_with(kInkLine) && takeInk(std::string(line.substr(kInkLine.size()))))
            return false;
        const bool blank = line.find_first_not_of(" \t\r") == std::string_view::npos;
        if (!blank && firstError_.empty() && line.find("Error: ") != std::string_view::npos)
            firstError_ = line.substr(line.find("Error: ") + 7);
        if (!blank && report_.said.size() < kMostLines)
            report_.said.emplace_back(line);
        return false;
    }

    const InterpreterReport &report() const { return report_; }
    // Without the hyphens that operators stand between there.
    std::string failure() const
    {
        std::string words = firstError_.empty() && !report_.said.empty() ? report_.said.front() : firstError_;
        const size_t in = words.find(" in --");
        if (in != std::string::npos && words.ends_with("--") && words.size() > in + 8)
            words = words.substr(0, in + 4) + words.substr(in + 6, words.size() - in - 8);
        if (words.starts_with("/VMerror"))
            words += "; it may have " + std::to_string(run_.megabytes) + " MB of memory";
        return words.empty() ? "nothing" : words;
    }
    size_t pagesEnded() const { return report_.pages.size(); }

private:
    bool endPage()
    {
        if (started_) {
            report_.pages.push_back(std::move(screens_));
            run_.pageEnded();
        } else {
            report_.atStart = std::move(screens_);
        }
        screens_ = {};
        return std::exchange(started_, true);
    }

    bool takeScreen(const std::string &text)
    {
        std::istringstream words(text);
        AskedScreen screen;
        std::string plate;
        if (!(words >> screen.frequency >> screen.angle) || words.get() != ' ' || !std::getline(words, plate))
            return false;
        screens_[plate] = screen;
        return true;
    }

    // "NAME CMYK = [ 32760 26208 0 0 ]"
    bool takeInk(const std::string &text)
    {
        const std::string_view middle = " CMYK = [ ";
        const size_t at = text.rfind(middle);
        if (at == std::string::npos)
            return false;
        std::istringstream words(text.substr(at + middle.size()));
        std::array<double, 4> ink{};
        for (double &part : ink) {
            if (!(words >> part))
                return false;
            part = std::min(1.0, std::max(0.0, part / 32760));
        }
        report_.inks[text.substr(0, at)] = ink;
        return true;
    }

    const InterpreterRun &run_;
    InterpreterReport report_;
    AskedScreens screens_;
    std::string firstError_;
    bool started_ = false;
};

// The number of the page that was in work.
int pageInWork(const InterpreterRun &run, size_t ended)
{
    const bool listedOnly = run.job.kind == JobKind::pdf && !run.pages.empty();
    return listedOnly && ended < run.pages.size() ? run.pages[ended] : static_cast<int>(ended) + 1;
}

std::string endedBy(const InterpreterRun &run, int signal)
{
    if (signal == SIGKILL || signal == SIGABRT || signal == SIGSEGV || signal == SIGBUS)
        return "the interpreter broke down, perhaps for lack of memory; it may have " +
               std::to_string(run.megabytes) + " MB";
    return "the interpreter was ended by signal " + std::to_string(signal);
}

}  // namespace

InterpreterReport interpret(const InterpreterRun &run)
{
    // A job may use the temporary folder: not that in which the page files are.
    const std::filesystem::path folder = std::filesystem::absolute(run.folder);
    const std::filesystem::path prolog = folder / "prolog.ps", temporary = folder / "temporary";
    std::filesystem::create_directory(temporary);
    {
        Output out(prolog);
        writeAll(out.file(), kProlog);
        out.finish();
    }
    Listener listener(run);
    const LimitedResult result =
        runLimited({commandOf(run, prolog), folder, temporary, run.secondsAPage, run.megabytes,
                    [&listener](std::string_view line) { return listener.take(line); }});
    const std::string where =
        run.job.name.string() + ": page " + std::to_string(pageInWork(run, listener.pagesEnded())) + ": ";
    if (result.end == RunEnd::timedOut)
        throw Refusal(where + "the interpreter took more than " + std::to_string(run.secondsAPage) +
                      " seconds and was ended");
    if (result.end == RunEnd::killed)
        throw Refusal(where + endedBy(run, result.status));
    if (result.status != 0)
        throw Refusal(where + "the interpreter said: " + listener.failure());
    return listener.report();
}

}  // namespace riders
