#include "proof/interpreter.h"

#include <signal.h>

#include <sstream>

#include "io/output.h"
#include "io/refusal.h"
#include "io/limited_process.h"

namespace riders::proof {
namespace {

// Runs ahead of the job. Install takes Ghostscript's lightening of tints out
// each time the page device is set; EndPage tells of each page and its screens,
// by the operators as the job and the riders file have them then, in lines that
// InterpreterWords knows.
constexpr std::string_view kProlog = R"(%!PS
userdict /RidersProofLine { % frequency angle name -
  (%%ProofScreen ) print 3 1 roll exch =only ( ) print =only ( ) print
  dup type /stringtype ne {dup length string cvs} if print (\n) print
} bind put
userdict /RidersProofShape { % spot name - ; its values over the cell
  1 index type dup /arraytype eq exch /packedarraytype eq or {
    (%%ProofShape) print
    0 1 48 {
      dup 7 mod 3 sub 3.3 div exch 7 idiv 3 sub 3.5 div
      3 index exec ( ) print =only
    } for
    ( ) print =only pop (\n) print
  } {pop pop} ifelse
} bind put
userdict /RidersProofShapes { % halftone - ; a riders file has put what it is made of into it
  dup /HalftoneType get 5 eq {dup /Default get} {dup} ifelse
  dup /Zu3_Riders known {
    exch pop /Zu3_Riders get 0 get {2 get exch RidersProofShape} forall
  } {
    pop
    dup /HalftoneType get 5 eq {
      {dup type /dicttype eq {
        dup /SpotFunction known {/SpotFunction get exch RidersProofShape} {pop pop} ifelse
      } {pop pop} ifelse} forall
    } {
      dup /SpotFunction known {/SpotFunction get (Default) RidersProofShape} {
        pop currentcolorscreen
        [(Black) (Yellow) (Magenta) (Cyan)] {RidersProofShape pop pop} forall
      } ifelse
    } ifelse
  } ifelse
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
userdict /RidersProofTellAll {
  mark {RidersProofTell} stopped cleartomark
  mark {currenthalftone RidersProofShapes} stopped cleartomark
  (\n) print
} bind put
RidersProofTellAll
(%%ProofPage\n) print flush
<< /Install {{} settransfer}
   /EndPage {
     dup 2 ne {RidersProofTellAll (%%ProofPage\n) print flush} if
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
    case PlateDevice::none:
        return {"-sDEVICE=nullpage"};
    case PlateDevice::tints:
        // An annotation is on all plates: here it would make plates of inks that the job has not.
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
        io::Output out(prolog);
        io::writeAll(out.file(), kProlog);
        io::writeAll(out.file(), run.ahead);
        out.finish();
    }
    InterpreterWords words;
    const io::LimitedResult result = io::runLimited(
        {commandOf(run, prolog), folder, temporary, run.secondsAPage, run.megabytes, [&](std::string_view line) {
             const bool pageEnded = words.take(line);
             if (pageEnded)
                 run.pageEnded();
             return pageEnded;
         }});
    const std::string where =
        run.job.name.string() + ": page " + std::to_string(pageInWork(run, words.report().pages.size())) + ": ";
    if (result.end == io::RunEnd::timedOut)
        throw io::Refusal(where + "the interpreter took more than " + std::to_string(run.secondsAPage) +
                      " seconds and was ended");
    if (result.end == io::RunEnd::killed)
        throw io::Refusal(where + endedBy(run, result.status));
    if (result.status != 0)
        throw io::Refusal(where + "the interpreter said: " + words.failure(run.megabytes));
    return words.report();
}

}  // namespace riders::proof
