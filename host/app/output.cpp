#include "app/output.h"

#include <memory>

#include "app/errand.h"
#include "app/print_dialog.h"
#include "app/words.h"
#include "film/printing/queue_names.h"

namespace fs = std::filesystem;

namespace riders::app {
namespace {

// A path that no option can be taken for.
std::string argument(const fs::path &file)
{
    return fs::absolute(file).string();
}

void addRiders(const Output &output, std::vector<std::string> &arguments)
{
    if (!output.riders.empty())
        arguments.insert(arguments.end(), {"--riders", argument(output.riders)});
}

}  // namespace

void makeProof(const Output &output)
{
    fs::path folder = output.job.parent_path() / output.job.stem();
    folder += "-proof";
    std::vector<std::string> arguments{"proof", argument(output.job), "--dpi", std::to_string(output.dpi),
                                       "-o",    folder.string()};
    addRiders(output, arguments);
    Errand errand(output.waits);
    switch (errand.run(words(Words::proofing), output.program, arguments, output.job.parent_path())) {
    case Errand::End::done:
        return showNote(words(Words::proofMade, {(folder / "proof.html").string()}));
    case Errand::End::failed:
        return showProblem(errand.withoutCommand());
    case Errand::End::stopped:
        return;
    }
}

void printFilms(const Output &output)
{
    Errand errand(output.waits);
    const auto queues = std::make_shared<std::vector<std::string>>();
    const auto asked =
        errand.run(words(Words::askingPrinters), [queues](io::Beside &) { *queues = printing::queueNames(); });
    if (asked == Errand::End::stopped)
        return;
    if (asked == Errand::End::failed || queues->empty())
        return showProblem(queues->empty() && errand.said().empty() ? words(Words::noPrinter) : errand.said());
    const auto choice = askHowToPrint(*queues);
    if (!choice)
        return;
    std::vector<std::string> arguments{"film",        argument(output.job), "--printer",
                                       choice->queue, "--copies",           std::to_string(choice->copies)};
    addRiders(output, arguments);
    switch (
        errand.run(words(Words::printing, {choice->queue}), output.program, arguments, output.job.parent_path())) {
    case Errand::End::done:
        return showNote(words(Words::printed, {choice->queue}));
    case Errand::End::failed:
        return showProblem(errand.withoutCommand());
    case Errand::End::stopped:
        return;
    }
}

}  // namespace riders::app
