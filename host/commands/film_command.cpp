#include "commands/film_command.h"

#include <iostream>
#include <memory>

#include "commands/chosen_screens.h"
#include "commands/film_printing.h"
#include "commands/film_screens.h"
#include "commands/film_words.h"
#include "commands/mesh_command.h"
#include "commands/standard_input.h"
#include "commands/standard_output.h"
#include "film/film.h"
#include "film/resolution_text.h"
#include "io/refusal.h"
#include "screens/mesh.h"

namespace riders::commands {
namespace {

struct FilmWords {
    bool look = false, loupe = false, onDemand = false;
    std::string mesh;
    FilmScreenWords screens;
    PrinterWords printer;
    std::string resolution;
    std::string emulsion = "up";
    std::string format, compression = "g4";
    std::string sheet;
    bool json = false, marks = false;
};

void addSide(CLI::App &command, film::FilmRequest &request, FilmWords &words)
{
    command.add_flag("--negative", request.side.negative, "Black for white");
    CLI::Option *mirror = command.add_flag("--mirror", request.side.mirrored, "Left for right");
    command
        .add_option(
            "--emulsion", words.emulsion,
            "The side that is exposed or printed, when the film is held so that it reads right: up, or down "
            "as with --mirror; up when left out")
        ->check(CLI::IsMember({"up", "down"}))
        ->excludes(mirror);
    command.add_option("--rotate", request.rotation, "Turn the pages, and their screens with them, anticlockwise")
        ->check(CLI::IsMember({0, 90, 180, 270}))
        ->type_name("DEG");
}

void addMarks(CLI::App &command, film::MarksAsked &marks, FilmWords &words)
{
    command.add_flag("--marks", words.marks, "All of --label, --register, --crop and --wedge");
    command.add_flag("--label", marks.label, "Plate, screen, job, page and date beside the page");
    command.add_flag("--register", marks.registerMarks, "Register marks");
    command.add_flag("--crop", marks.cropMarks, "Crop marks");
    command.add_flag("--wedge", marks.wedge, "A wedge of tints in the plate's own screen");
    command
        .add_option("--sheet", words.sheet,
                    "The film's size, as in a3, letter, 420x297mm; as page and marks need when left out")
        ->type_name("SIZE");
}

void addLook(CLI::App &command, FilmWords &words)
{
    CLI::Option *look =
        command.add_flag("--look", words.look,
                         "Make a page to look at, too, with the films' dots through a loupe and what is measured "
                         "on them: proof.html in "
                         "a folder beside the films, called as they are and -look, as in job-film-look");
    command
        .add_flag("--loupe", words.loupe,
                  "With it also a page that zooms from the sheet to the single dot, plate by plate: loupe.html")
        ->needs(look)
        ->excludes("--rotate");
    command
        .add_flag(
            "--loupe-on-demand", words.onDemand,
            "The same for a server: of the finest tiles it has what they are made of when they are looked at")
        ->needs(look)
        ->excludes("--rotate")
        ->excludes("--loupe");
    command.add_option("--mesh", words.mesh, "Threads per inch, or N/cm, of the mesh to print through")
        ->check(perInchBetween(screens::kLeastThreads, screens::kMostThreads, "threads"))
        ->needs(look)
        ->type_name("N");
}

void addLimits(CLI::App &command, film::FilmRequest &request)
{
    command
        .add_option("--seconds", request.limits.secondsAPage,
                    "How long a page may take; all pages may take 100 times that; 300 when left out")
        ->check(CLI::Range(1, 86400))
        ->type_name("N");
    command
        .add_option("--megabytes", request.limits.megabytes,
                    "How much memory the interpreter may take; 2048 when left out")
        ->check(CLI::Range(64, 1 << 20))
        ->type_name("N");
}

void addOutput(CLI::App &command, film::FilmRequest &request, FilmWords &words)
{
    command
        .add_option(
            "-o,--output", request.output,
            "The folder of TIFF files, or the file of another format, - for standard output; the job's name "
            "and -film, here, when left out")
        ->type_name("DIR|FILE");
    command
        .add_option(
            "--format", words.format,
            "tiff, a file for each plate; or a file with a page for each: pdf, ps, cups (raster for CUPS's "
            "drivers), pwg (raster for IPP printers). When left out, what the name after -o ends in, or tiff")
        ->check(CLI::IsMember({"tiff", "pdf", "ps", "cups", "pwg"}));
    command
        .add_option("--dpi", words.resolution,
                    "Resolution, across and down; 1200 when left out, or one of the printer's")
        ->check(CLI::Validator(isFilmResolution, ""))
        ->type_name("N|NxM");
    command.add_option("--pages", request.pages, "As in 1,3-5; all when left out")->type_name("LIST");
    command.add_option("--compression", words.compression, "Of the TIFF files: g4, or none; g4 when left out")
        ->check(CLI::IsMember({"g4", "none"}));
    command.add_flag("--blank", request.blank, "Make films of plates without ink, too");
    command.add_flag("--force", request.force, "Replace files that are no films of riders");
    command.add_flag("--strict", request.strict, "Refuse a film whose screen is not as it was asked for");
    command.add_flag("--interpreter-tone", request.interpreterTone,
                     "Lighten tints as Ghostscript does below 800 dpi");
    command.add_flag("-q,--quiet", request.quiet, "Say nothing but what goes wrong");
    command.add_flag("--json", words.json, "What was made, for programs");
}

film::FilmFormat formatFrom(const std::string &word, const std::string &output)
{
    const std::string ending = word.empty() ? std::filesystem::path(output).extension().string() : "." + word;
    if (ending == ".pdf")
        return film::FilmFormat::pdf;
    if (ending == ".ps")
        return film::FilmFormat::postScript;
    if (ending == ".cups" || ending == ".ras")
        return film::FilmFormat::cups;
    return ending == ".pwg" ? film::FilmFormat::pwg : film::FilmFormat::tiff;
}

// What was made is said however the run ends.
std::string report(const film::FilmsMade &made, const film::FilmRequest &request, const FilmWords &words,
                   const std::string &name)
{
    std::cerr << warningsInWords(made, name);
    if (request.output == film::kStandardOutput)
        return "";
    if (words.json)
        return printLines(filmsInJson(made));
    return request.quiet ? "" : printLines(filmsInWords(made));
}

void fillIn(film::FilmRequest &request, const FilmWords &words)
{
    request.format = formatFrom(words.format, request.output);
    if (words.compression == "none" && request.format != film::FilmFormat::tiff)
        throw io::Refusal("--compression is for TIFF only");
    request.screens = chooseFilmScreens(words.screens);
    if (!words.resolution.empty())
        request.resolution = *film::resolutionFromText(words.resolution);
    request.side.mirrored |= words.emulsion == "down";
    if (words.marks)
        request.marks.label = request.marks.registerMarks = request.marks.cropMarks = request.marks.wedge = true;
    if (!words.sheet.empty())
        request.marks.sheet = film::sheetSizeFrom(words.sheet);
    request.compression = words.compression == "none" ? film::Compression::none : film::Compression::group4;
    if (words.look)
        request.look = film::LookRequest{.mesh = screens::perInchFromText(words.mesh).value_or(0),
                                         .loupe = words.loupe || words.onDemand,
                                         .onDemand = words.onDemand};
}

std::string run(film::FilmRequest &request, const FilmWords &words, const std::string &name)
{
    fillIn(request, words);
    if (!words.printer.queue.empty())
        return printFilms(request, {words.printer, !words.resolution.empty(), words.json, name});
    film::FilmsMade made;
    try {
        film::makeFilms(request, made);
    } catch (const io::Refusal &refusal) {
        if (made.films.empty() || film::isOneFile(request.format))
            throw;
        report(made, request, words, name);
        const std::size_t count = made.films.size();
        throw io::Refusal(refusal.message + "; " +
                          (count == 1 ? "the film" : "the " + std::to_string(count) + " films") + " made before " +
                          (count == 1 ? "is" : "are") + " whole");
    }
    return report(made, request, words, name);
}

}  // namespace

void addFilm(CLI::App &app, Chosen &chosen)
{
    const auto request = std::make_shared<film::FilmRequest>();
    const auto words = std::make_shared<FilmWords>();
    CLI::App *command = app.add_subcommand("film", "Make the films of a job, each plate screened on its own");
    command->add_option("job", request->job, "PostScript, EPS or PDF; - for standard input")
        ->required()
        ->type_name("JOB");
    command->add_option("--riders", request->riders, "A riders file to add to the job first; its screens are used")
        ->type_name("FILE");
    addScreenOptions(*command, words->screens);
    addOutput(*command, *request, *words);
    addPrinter(*command, words->printer);
    addSide(*command, *request, *words);
    addMarks(*command, request->marks, *words);
    addLook(*command, *words);
    addLimits(*command, *request);
    command->callback([request, words, &chosen] {
        chosen.name = "riders film";
        chosen.run = [request, words, &chosen] {
            return withStandardInput({&request->job, &request->riders},
                                     [&] { return run(*request, *words, chosen.name); });
        };
    });
}

}  // namespace riders::commands
