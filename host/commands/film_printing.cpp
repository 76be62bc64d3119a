#include "commands/film_printing.h"

#include <iostream>
#include <memory>

#include "commands/film_words.h"
#include "commands/print_words.h"
#include "commands/standard_output.h"
#include "film/film.h"
#include "film/printing/print_form.h"
#include "io/refusal.h"

namespace riders::commands {
namespace {

std::vector<printing::JobOption> jobOptions(const std::vector<std::string> &texts)
{
    std::vector<printing::JobOption> options;
    for (const std::string &text : texts)
        options.push_back(*printing::jobOptionFromText(text));
    return options;
}

std::string isJobOption(const std::string &text)
{
    return printing::jobOptionFromText(text) ? "" : "expected NAME=VALUE";
}

void checkForm(const film::FilmRequest &request, const PrinterWords &words)
{
    if (!request.output.empty())
        throw io::Refusal("films go either to " + request.output.string() + " or to the printer " + words.queue);
}

}  // namespace

void addPrinter(CLI::App &command, PrinterWords &words)
{
    CLI::Option *printer =
        command
            .add_option("--printer", words.queue,
                        "Print the films on that queue of CUPS instead of keeping them, each pixel as it is")
            ->excludes(command.get_option("--format"))
            ->type_name("QUEUE");
    command.add_flag("--dry-run", words.dryRun, "Make the films and say what would be sent, but send nothing")
        ->needs(printer);
    command.add_option("-O", words.options, "An option of the queue, as lp -o has it; may be given again")
        ->check(CLI::Validator(isJobOption, ""))
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false)
        ->needs(printer);
    command
        .add_option(
            "--media", words.media,
            "What is printed on, as the queue calls it; when left out, what it has in use, or another that "
            "holds the films")
        ->type_name("NAME")
        ->needs(printer);
    command.add_option("--copies", words.copies, "How many of each film; 1 when left out")
        ->check(CLI::Range(1, 999))
        ->type_name("N")
        ->needs(printer);
}

std::string printFilms(film::FilmRequest &request, const FilmPrinting &printing)
{
    checkForm(request, printing.words);
    const printing::PrintPlan plan = printing::planPrinting(
        {.queue = printing.words.queue,
         .options = jobOptions(printing.words.options),
         .resolution = printing.resolutionAsked ? std::optional(request.resolution) : std::nullopt,
         .media = printing.words.media,
         .copies = printing.words.copies,
         .dryRun = printing.words.dryRun});
    printing::checkSheet(plan);
    request.resolution = plan.resolution.dpi;
    request.format = film::FilmFormat::cups;
    std::vector<printing::JobSent> sent;
    request.form = [&](const std::filesystem::path &work) {
        return std::make_unique<printing::PrintForm>(plan, work, sent);
    };
    film::FilmsMade made;
    film::makeFilms(request, made);
    std::cerr << warningsInWords(made, printing.command) << doubtsInWords(plan, printing.command);
    if (printing.json)
        return printLines(printInJson(plan, sent, made));
    return request.quiet && !plan.dryRun ? "" : printLines(filmsInWords(made) + printInWords(plan, sent));
}

}  // namespace riders::commands
