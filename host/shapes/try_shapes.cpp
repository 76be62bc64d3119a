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

std::string scriptFor(const screens::Shape &shape, const screening::PixelPlaces &places)
{
    std::string script(kTrial);
    for (const std::int64_t number : {places.columns, places.rows, places.range, places.startU, places.startV,
                                      places.rightU, places.rightV, places.downU, places.downV})
        script += std::to_string(number) + " ";
    return script + "RidersTabulate " + shape.body + "%end-of-dot-shape%\n";
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

// Runs the script, and gives what the words have read then.
std::vector<ShapeTrial> runTrials(const std::string &script, TrialWords words, const TrialLimits &limits)
{
    const io::PrivateFolder folder;
    std::filesystem::create_directory(folder.path() / kTemporary);
    io::writeFile(folder.path() / kScript, script);
    const io::LimitedResult result =
        io::runLimited({.command = {"gs", "-q", "-P-", "-dSAFER", "-dBATCH", "-dNODISPLAY", "-dNOPROMPT", kScript},
                        .folder = folder.path(),
                        .temporary = kTemporary,
                        .seconds = limits.seconds,
                        .secondsInAll = 10 * limits.seconds,
                        .megabytes = limits.megabytes,
                        .line = [&](std::string_view line) { return words.take(line); },
                        .beside = limits.beside});
    std::vector<ShapeTrial> trials = words.trials();
    if (words.current() < trials.size())
        trials[words.current()] = {false, whyUnfinished(result, limits), {}};
    return trials;
}

}  // namespace

std::vector<ShapeTrial> tryShapes(const std::vector<screens::Shape> &shapes, const TrialLimits &limits)
{
    TrialWords words(shapes.size());
    return runTrials(scriptFor(shapes), std::move(words), limits);
}

ShapeTrial tabulateShape(const screens::Shape &shape, const screening::PixelPlaces &places,
                         const TrialLimits &limits)
{
    TrialWords words(1, static_cast<std::size_t>(places.columns * places.rows));
    return runTrials(scriptFor(shape, places), std::move(words), limits).front();
}

}  // namespace riders::shapes
