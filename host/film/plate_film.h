// One plate on its way from tones to film: screened, turned, written, and its screen measured.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "film/forms/plate_writer.h"
#include "film/kept_tiles.h"
#include "film/kept_window.h"
#include "film/marks.h"
#include "film/plate_screens.h"

namespace riders::film {

// How the finished film is written.
struct FilmSide {
    bool negative = false;
    bool mirrored = false;
};

struct PlateFilmPlan {
    PlateSheet sheet;
    std::size_t pageColumns = 0;         // of the page on it
    std::shared_ptr<const Sheet> place;  // where that lies
    FilmSide side;
    plates::Place measuredAt;                             // see KeptWindow
    std::vector<std::shared_ptr<KeptWindow>> shown = {};  // what else is kept, to be looked at
    std::shared_ptr<KeptTiles> tiles = {};                // all of it; none where nobody wants to zoom
    Label label;                                          // all but the screen that is reached
    // Both are called once, at the first row with ink, or at once if there is known to be some.
    bool inked = false;
    std::function<std::shared_ptr<const PlateScreening>()> screen;
    std::function<std::unique_ptr<PlateWriter>(const PlateSheet &)> write;
};

// Used by one thread at a time.
class PlateFilm {
public:
    explicit PlateFilm(PlateFilmPlan plan);

    // The page's next row: pageColumns bytes.
    void take(const std::uint8_t *tones);
    // After the page's last row.
    void takeLast();
    // Whether there is a film; else the plate is blank. After takeLast.
    bool begun() const { return writer_ != nullptr; }
    const PlateSheet &sheet() const { return plan_.sheet; }
    // Of one that is begun: the screen it was made with, and what was measured of it; angles count on the film.
    const PlateScreening &screening() const { return *screening_; }
    plates::MeasuredScreen measure(double aboutFrequency, const std::string &shape) const
    {
        return window_.measure(aboutFrequency, shape);
    }
    // Puts the film in place, once it is begun and all rows are taken. Throws Refusal.
    void end() { writer_->end(); }

private:
    bool hasInk(const std::uint8_t *tones) const;
    void begin();
    void writeBlankUntil(std::size_t y);
    void writeRow();

    const PlateFilmPlan plan_;
    KeptWindow window_;
    std::shared_ptr<const PlateScreening> screening_;
    std::unique_ptr<const PlateMarks> marks_;
    std::unique_ptr<PlateWriter> writer_;
    std::size_t y_ = 0;        // the film's next row
    std::size_t pageRow_ = 0;  // the page's next row
    std::vector<std::uint8_t> tones_, bits_, mirrored_;
};

}  // namespace riders::film
