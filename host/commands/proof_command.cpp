#include "commands/proof_command.h"

#include <iostream>
#include <memory>
#include <string>

#include "commands/film_screens.h"
#include "commands/film_words.h"
#include "commands/mesh_command.h"
#include "commands/standard_output.h"
#include "film/film.h"
#include "film/resolution_text.h"
#include "io/refusal.h"
#include "proof/proof.h"
#include "screens/mesh.h"

namespace riders::commands {
namespace {

struct ProofWords {
    bool film = false;
    FilmScreenWords screens;
    std::string resolution = "1200";
    std::string mesh;
};

void addFilmOptions(CLI::App &command, ProofWords &words)
{
    CLI::Option *film = command.add_flag("--film", words.film,
                                         "Show the dots of the films that riders film would make, with these "
                                         "screens, in place of the interpreter's");
    for (CLI::Option *option : addScreenOptions(command, words.screens))
        option->needs(film);
}

void addLimits(CLI::App &command, plates::InterpreterLimits &limits)
{
    command
        .add_option("--seconds", limits.secondsAPage,
                    "How long a page may take; all pages may take 100 times that; 300 when left out")
        ->check(CLI::Range(1, 86400))
        ->type_name("N");
    command
        .add_option("--megabytes", limits.megabytes,
                    "How much memory the interpreter may take; 2048 when left out")
        ->check(CLI::Range(64, 1 << 20))
        ->type_name("N");
}

film::FilmRequest filmsOf(const proof::ProofRequest &request, const ProofWords &words)
{
    film::FilmRequest films;
    films.job = request.job;
    films.riders = request.riders;
    films.screens = chooseFilmScreens(words.screens);
    films.format = film::FilmFormat::none;
    films.pages = request.pages;
    films.resolution = *film::resolutionFromText(words.resolution);
    films.look = film::LookRequest{proof::placeOf(request), request.mesh};
    films.limits = request.limits;
    return films;
}

std::string run(proof::ProofRequest &request, const ProofWords &words, const std::string &name)
{
    request.mesh = screens::perInchFromText(words.mesh).value_or(0);
    if (words.film) {
        film::FilmsMade made;
        film::makeFilms(filmsOf(request, words), made);
        std::cerr << warningsInWords(made, name);
        return printPath(made.look);
    }
    const screening::Resolution resolution = *film::resolutionFromText(words.resolution);
    if (resolution.across != resolution.down)
        throw io::Refusal("--dpi " + words.resolution +
                          " is for --film only: the interpreter's dots need square pixels");
    request.dpi = static_cast<int>(resolution.across);
    return printPath(proof::proof(request));
}

}  // namespace

void addProof(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<proof::ProofRequest>();
    const auto words = std::make_shared<ProofWords>();
    CLI::App *command = app.add_subcommand("proof", "Make the plates of a job, measure their dots, and show them");
    command->add_option("job", request->job, "PostScript, EPS or PDF")->required()->type_name("JOB");
    command->add_option("--riders", request->riders, "A riders file to add to the job first")->type_name("FILE");
    addFilmOptions(*command, *words);
    command
        ->add_option("--dpi", words->resolution,
                     "Resolution of the plates; 1200 when left out; with --film also as in 1440x720")
        ->check(CLI::Validator(isFilmResolution, ""))
        ->type_name("N");
    command->add_option("--pages", request->pages, "As in 1,3-5; all when left out")->type_name("LIST");
    command->add_option("-o,--output", request->folder, "Where to; the job's name and -proof, here, when left out")
        ->type_name("DIR");
    addLimits(*command, request->limits);
    command->add_option("--mesh", words->mesh, "Threads per inch, or N/cm, of the mesh to print through")
        ->check(perInchBetween(screens::kLeastThreads, screens::kMostThreads, "threads"))
        ->type_name("N");
    command->callback([request, words, &chosen] {
        chosen.name = "riders proof";
        chosen.run = [request, words, &chosen] { return run(*request, *words, chosen.name); };
    });
}

}  // namespace riders::commands
