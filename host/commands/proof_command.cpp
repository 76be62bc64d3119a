#include "commands/proof_command.h"

#include <iostream>
#include <memory>
#include <string>

#include "commands/film_screens.h"
#include "commands/mesh_command.h"
#include "commands/standard_input.h"
#include "commands/standard_output.h"
#include "film/film.h"
#include "film/resolution_text.h"
#include "io/json.h"
#include "io/plain_text.h"
#include "io/refusal.h"
#include "looking/facts/page_facts.h"
#include "looking/facts/warnings.h"
#include "proof/proof.h"
#include "screens/mesh.h"

namespace riders::commands {
namespace {

struct ProofWords {
    bool film = false;
    FilmScreenWords screens;
    std::string resolution = "1200";
    std::string mesh;
    bool strict = false, verbose = false, json = false;
};

// What the command says of a proof besides where it is.
struct ProofSaid {
    std::vector<std::string> off;       // of screens that are not as they were asked for
    std::vector<std::string> warnings;  // of all kinds, these among them
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
    films.look = film::LookRequest{proof::placeOf(request), request.mesh, request.loupe};
    films.limits = request.limits;
    films.quiet = request.quiet;
    return films;
}

ProofSaid saidOf(const looking::LookFacts &facts)
{
    ProofSaid said;
    for (const looking::PageFacts &page : facts.pages) {
        const std::string start = "page " + std::to_string(page.number) + ", ";
        for (const looking::PlateFacts &plate : page.plates)
            for (const std::string &off : looking::whatIsOff(plate))
                said.off.push_back(start + plate.name + ": " + off);
        for (const std::string &warning : page.warnings)
            said.warnings.push_back(start + warning);
    }
    return said;
}

ProofSaid saidOf(const film::FilmsMade &made)
{
    ProofSaid said;
    for (const film::PlateMade &film : made.films)
        for (const std::string &warning : film.warnings)
            said.off.push_back("page " + std::to_string(film.page) + ", " + film.plate + ": " + warning);
    said.warnings = said.off;
    return said;
}

std::string inJson(const std::filesystem::path &page, const ProofSaid &said)
{
    std::vector<std::string> off, warnings;
    for (const std::string &words : said.off)
        off.push_back(io::jsonText(words));
    for (const std::string &words : said.warnings)
        warnings.push_back(io::jsonText(words));
    return io::jsonObject({{"page", io::jsonText(page.native())},
                           {"off", io::jsonArray(off)},
                           {"warnings", io::jsonArray(warnings)}}) +
           "\n";
}

std::string report(const std::filesystem::path &page, const ProofSaid &said, const proof::ProofRequest &request,
                   const ProofWords &words, const std::string &name)
{
    for (const std::string &line : words.verbose                ? said.warnings
                                   : words.strict || words.film ? said.off
                                                                : std::vector<std::string>{})
        std::cerr << name << ": " << io::plainText(line) << '\n';
    std::string failed;
    if (words.json)
        failed = printLines(inJson(page, said));
    else if (!request.quiet)
        failed = printPath(page);
    if (!failed.empty() || !words.strict || said.off.empty())
        return failed;
    const std::size_t count = said.off.size();
    return "the proof is made, but " +
           (count == 1 ? "a screen is" : "screens are in " + std::to_string(count) + " places") +
           " not as asked for";
}

std::string run(proof::ProofRequest &request, const ProofWords &words, const std::string &name)
{
    request.mesh = screens::perInchFromText(words.mesh).value_or(0);
    if (words.film) {
        film::FilmsMade made;
        film::makeFilms(filmsOf(request, words), made);
        return report(made.look, saidOf(made), request, words, name);
    }
    const screening::Resolution resolution = *film::resolutionFromText(words.resolution);
    if (resolution.across != resolution.down)
        throw io::Refusal("--dpi " + words.resolution +
                          " is for --film only: the interpreter's dots need square pixels");
    request.dpi = static_cast<int>(resolution.across);
    ProofSaid said;
    request.made = [&said](const looking::LookFacts &facts) { said = saidOf(facts); };
    const std::filesystem::path page = proof::proof(request);
    return report(page, said, request, words, name);
}

}  // namespace

void addProof(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<proof::ProofRequest>();
    const auto words = std::make_shared<ProofWords>();
    CLI::App *command = app.add_subcommand("proof", "Make the plates of a job, measure their dots, and show them");
    command->add_option("job", request->job, "PostScript, EPS or PDF; - for standard input")
        ->required()
        ->type_name("JOB");
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
    command->add_flag("--loupe", request->loupe,
                      "Also make a page that zooms from the sheet to the single dot, plate by plate");
    addLimits(*command, request->limits);
    command->add_option("--mesh", words->mesh, "Threads per inch, or N/cm, of the mesh to print through")
        ->check(perInchBetween(screens::kLeastThreads, screens::kMostThreads, "threads"))
        ->type_name("N");
    command->add_flag(
        "--strict", words->strict,
        "End with exit code 1 where a screen is not as it was asked for; the proof is made all the same");
    CLI::Option *json =
        command->add_flag("--json", words->json, "Where the proof is and its warnings, for programs");
    command->add_flag("-q,--quiet", request->quiet, "Say nothing but what goes wrong")->excludes(json);
    command->add_flag("-v,--verbose", words->verbose, "Also print the warnings that are on the page");
    command->callback([request, words, &chosen] {
        chosen.name = "riders proof";
        chosen.run = [request, words, &chosen] {
            return withStandardInput({&request->job, &request->riders},
                                     [&] { return run(*request, *words, chosen.name); });
        };
    });
}

}  // namespace riders::commands
