#include "shapes/try_shapes.h"

#include "io/limited_process.h"
#include "io/output.h"
#include "io/private_folder.h"
#include "io/refusal.h"

namespace riders::shapes {

// Defines RidersTry, and what it writes is read by TrialWords.
extern const std::string_view kTrial;

namespace {

constexpr const char *kScript = "trial.ps";
constexpr const char *kTemporary = "temporary";

std::string scriptFor(const std::vector<screens::Shape> &shapes)
{
    std::string script(kTrial);
    for (const screens::Shape &shape : shapes)
        script += "RidersTry " + shape.body + "%end-of-dot-shape%\n";
    return script;
}

// What the interpreter has not finished, if anything.
std::string whyUnfinished(const io::LimitedResult &result, const TrialLimits &limits)
{
    switch (result.end) {
    case io::RunEnd::timedOut:
    case io::RunEnd::tookTooLong:
        return "it does not end, or takes more than " + std::to_string(limits.seconds) + " seconds";
    case io::RunEnd::wroteTooMuch:
    case io::RunEnd::filledFolder:
        return "it fills the disk";
    case io::RunEnd::killed:
        return "the interpreter broke down with it, perhaps for lack of memory; it may have " +
               std::to_string(limits.megabytes) + " MB";
    case io::RunEnd::exited:
        break;
    }
    return "the interpreter ended before it did, perhaps for lack of memory; it may have " +
           std::to_string(limits.megabytes) + " MB";
}

}  // namespace

std::vector<ShapeTrial> tryShapes(const std::vector<screens::Shape> &shapes, const TrialLimits &limits)
{
    const io::PrivateFolder folder;
    std::filesystem::create_directory(folder.path() / kTemporary);
    io::writeFile(folder.path() / kScript, scriptFor(shapes));
    TrialWords words(shapes.size());
    const io::LimitedResult result =
        io::runLimited({.command = {"gs", "-q", "-P-", "-dSAFER", "-dBATCH", "-dNODISPLAY", "-dNOPROMPT", kScript},
                        .folder = folder.path(),
                        .temporary = kTemporary,
                        .seconds = limits.seconds,
                        .secondsInAll = 10 * limits.seconds,
                        .megabytes = limits.megabytes,
                        .line = [&](std::string_view line) { return words.take(line); }});
    std::vector<ShapeTrial> trials = words.trials();
    if (words.current() < trials.size())
        trials[words.current()] = {false, whyUnfinished(result, limits), {}};
    return trials;
}

}  // namespace riders::shapes
