// What a user asks of `riders film`.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "film/forms/plate_writer.h"
#include "film/forms/tiff_form.h"
#include "film/plate_film.h"
#include "film/sheet.h"
#include "plates/interpreter/limits.h"
#include "screens/plate_screen.h"

namespace riders::film {

inline constexpr int kLeastFilmDpi = 72, kMostFilmDpi = 4800;

enum class FilmFormat {
    tiff,
    pdf,
    cups,
    pwg,
    postScript,
    none  // they are only looked at
};
// Whether all plates are pages of one file.
inline bool isOneFile(FilmFormat format)
{
    return format != FilmFormat::tiff;
}

inline constexpr const char *kStandardOutput = "-";

struct LookRequest {
    std::filesystem::path folder =
        {};                 // where the page to look at goes; empty: as the films are called, and -look
    double mesh = 0;        // threads per inch of the mesh it is for; 0 for none
    bool loupe = false;     // also a page that zooms; only for films that are not turned
    bool onDemand = false;  // whose finest tiles are made when somebody looks at them, by riders printer
};

struct FilmRequest {
    std::filesystem::path job;                  // PostScript, EPS or PDF, recognised by its first bytes
    std::filesystem::path riders = {};          // added to the job first; empty for none
    std::vector<screens::PlateScreen> screens;  // chosen for plates, and for kRestOfPlates
    FilmFormat format = FilmFormat::tiff;
    // The folder or file; kStandardOutput for that; empty: the job's name and -film, here.
    std::filesystem::path output = {};
    // Where plates go instead of there, given a folder for temporary files: the form of all of them together.
    std::function<std::unique_ptr<Form>(const std::filesystem::path &)> form = {};
    std::string pages = {};  // as in 1,3-5; empty for all
    screening::Resolution resolution = {1200, 1200};
    FilmSide side = {};
    MarksAsked marks = {};
    int rotation = 0;                               // 0, 90, 180 or 270 degrees anticlockwise
    Compression compression = Compression::group4;  // of TIFF
    bool blank = false;                             // make films of plates without ink, too
    bool force = false;                             // replace files that are no films of ours
    bool strict = false;                            // give up a film whose screen is not the one asked for
    bool interpreterTone = false;                   // lighten tints as Ghostscript does below 800 dpi
    bool quiet = false;                             // show no progress
    std::optional<LookRequest> look = {};           // make a page to look at, too
    plates::InterpreterLimits limits = {};
    int cores = 0;  // threads; 0: as many as there are cores
};

}  // namespace riders::film
