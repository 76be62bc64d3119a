#include "fault/commands.h"

namespace {

const std::vector<std::string> kFilm = {"make", "-o", "film", "--frequency", "45", "--spot", "round"};
const std::vector<std::string> kOther = {"make", "-o", "film", "--frequency", "60", "--angle", "15"};
const std::vector<std::string> kApplied = {"apply", "film", "job.ps", "-o", "job.ps"};
const std::vector<std::string> kKept = {"make", "-o", "film", "--spot", "./one.spot", "--save-settings"};
const std::vector<std::string> kProof = {"proof", "small.ps", "--riders", "film", "--dpi", "100"};
const std::vector<std::string> kFilms = {"film", "small.ps", "--dpi", "100", "--frequency", "10"};

}  // namespace

// To try a new command, or another way of using one, add a row. Its files are in files/.
const std::vector<TriedCommand> &triedCommands()
{
    static const std::vector<TriedCommand> commands = {
        {"make_new", kFilm, {}},
        {"make_replacing", kFilm, {kOther}},
        {"make_import",
         {"make", "-o", "film", "--spot", "./one.spot", "--annotation", "For film", "--font", "Times-Roman",
          "--size", "9", "--error-handler"},
         {}},
        {"make_first_settings", kKept, {}},
        {"make_settings", {"make", "-o", "film", "--spot", "./two.spot", "--save-settings"}, {kKept}},
        {"make_screens",
         {"make", "-o", "film", "--screens", "duo.toml", "--plate", "Gold:60,./one.spot"},
         {kOther}},
        {"make_explained",
         {"make", "-o", "film", "--screens", "flexo", "--explain", "--dpi", "100", "--json"},
         {}},
        {"screens", {"screens"}, {}},
        {"apply", {"apply", "film", "job.ps", "-o", "new.ps"}, {kFilm}},
        {"apply_in_place", kApplied, {kFilm}},
        {"apply_through_link", {"apply", "film", "link.ps", "-o", "link.ps"}, {kFilm}},
        {"apply_standard_files", {"apply", "film"}, {kFilm}, "job.ps"},
        {"apply_pipes", {"apply", "film"}, {kFilm}, "long.ps", true},
        {"apply_long", {"apply", "film", "long.ps", "-o", "new.ps"}, {kFilm}},
        {"apply_to_pipe", {"apply", "film", "long.ps"}, {kFilm}, {}, true},
        {"strip", {"strip", "job.ps", "-o", "new.ps"}, {kFilm, kApplied}},
        {"strip_in_place", {"strip", "job.ps", "-o", "job.ps"}, {kFilm, kApplied}},
        {"strip_standard_files", {"strip"}, {kFilm, kApplied}, "job.ps"},
        {"show", {"show", "film", "--json"}, {{"make", "-o", "film", "--plate", "Gold:60,./one.spot"}}},
        {"show_job", {"show", "job.ps"}, {kFilm, kApplied}},
        {"show_standard_input", {"show", "-"}, {kFilm}, "job.ps"},
        {"play",
         {"play", "film.play", "--trace", "trace", "--pictures", "pictures", "--preferences", "kept"},
         {{"play", "cancel.play", "--preferences", "kept"}},
         {},
         false,
         {"work/trace", "work/pictures"}},
        {"play_replacing",
         {"play", "film.play", "--pictures", "pictures", "--preferences", "kept"},
         {{"play", "film.play", "--pictures", "pictures", "--preferences", "kept"}},
         {},
         false,
         {"work/pictures"}},
        {"play_removing", {"play", "remove.play"}, {kFilm}},
        {"proof", kProof, {kFilm}},
        {"proof_loupe", {"proof", "small.ps", "--dpi", "100", "--loupe"}, {kFilm, kProof}},
        {"make_shape", {"make", "-o", "film", "--spot", "cosinedot"}, {}},
        {"shapes", {"shapes", "--json"}, {}},
        {"shapes_one", {"shapes", "./one.spot"}, {}},
        {"shapes_replacing", {"shapes", "./two.spot", "-o", "page"}, {{"shapes", "./one.spot", "-o", "page"}}},
        {"shapes_fixed", {"shapes", "./one.spot", "--fix", "-o", "new.spot"}, {}},
        {"list", {"list", "fonts"}, {}},
        {"list_shapes", {"list", "shapes", "--json"}, {}},
        {"make_to_standard_output", {"make", "-o", "-", "--angle", "45"}, {}},
        {"film_look", {"film", "small.ps", "--dpi", "100", "--frequency", "10", "--look"}, {}},
        {"proof_film", {"proof", "--film", "small.ps", "--dpi", "100", "--frequency", "10"}, {kFilm, kProof}},
        {"proof_replacing", {"proof", "small.ps", "--dpi", "100", "--mesh", "110"}, {kFilm, kProof}},
        // Without text: what draws it reads fonts and settings of its own, and says itself what it cannot read.
        {"film", {"film", "small.ps", "--riders", "film", "--dpi", "100", "--register", "--crop"}, {kFilm}},
        {"film_replacing", {"film", "small.ps", "--dpi", "100", "--spot", "./one.spot", "--json"}, {kFilms}},
        {"film_in_one_file", {"film", "small.ps", "--dpi", "100", "--negative", "-o", "films.pdf"}, {}},
        {"mesh", {"mesh", "--frequency", "45"}, {}},
        {"mesh_json", {"mesh", "--threads", "90/cm", "--json"}, {}},
        {"help", {"make", "--help"}, {}},
        {"version", {"--version"}, {}},
        {"refused_set", {"make", "-o", "film", "--screens", "wrong.toml"}, {kFilm}},
        {"refused_mesh", {"mesh", "--frequency", "299"}, {}},
        {"refused_cut_off", {"apply", "job.ps", "job.ps"}, {}},
        {"refused_foreign_file", {"make", "-o", "job.ps", "--angle", "45"}, {}},
        {"refused_riders_as_job", {"apply", "film", "film", "-o", "new.ps"}, {kFilm}},
        {"make_forced", {"make", "-o", "job.ps", "--angle", "45", "--force"}, {}},
        {"refused_riders_file", {"apply", "film", "job.ps", "-o", "film"}, {kFilm}},
    };
    return commands;
}

void PrintTo(const TriedCommand &command, std::ostream *out)
{
    *out << command.name;
}
