// What the window of a job shows: a page, the loupe on it, and the dots under the loupe.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "io/background.h"
#include "io/private_folder.h"
#include "viewing/compared_job.h"
#include "viewing/dots_picture.h"
#include "viewing/page_picture.h"

namespace riders::app {

// In device pixels of the display.
struct RoomForPictures {
    int pageColumns = 1, pageRows = 1;
    int dotsColumns = 1, dotsRows = 1;

    bool operator==(const RoomForPictures &) const = default;
};

// All that is drawn is drawn beside the window, a moment after the person has stopped changing what is wanted.
class JobView {
public:
    // `waits`: lookAtWork waits for what is drawn, for sessions in which no real time passes.
    explicit JobView(bool waits) : waits_(waits) {}

    // Shows the first page of a job; `tried` is a riders file that is not in it (empty: none), `pages` how many
    // there are, as far as the job says (0: it does not).
    void show(const std::filesystem::path &job, const std::filesystem::path &tried, int pages);
    void setRoom(const RoomForPictures &room);
    // Whether there is, or may be, such a page.
    bool canTurn(int pages) const;
    void turn(int pages);
    void setDpi(int dpi);
    int dpi() const { return dpi_; }
    // How many of the display's device pixels one of the job's device takes, each way.
    void setEnlargement(int times);
    int enlargement() const { return enlargement_; }
    // To the middle of the loupe, as shares of the page's width and height.
    void moveLoupe(double across, double down);
    // By its own width and height.
    void nudgeLoupe(double across, double down);

    struct Part {
        double left, top, right, bottom;  // shares of the page's width and height
    };
    std::optional<Part> loupe() const;

    // To be called when the person does nothing. True when there is something new to show.
    bool lookAtWork(std::uint32_t ticks);

    int page() const { return page_; }
    int pages() const { return pages_; }  // 0: not known
    const viewing::PagePicture *pagePicture() const { return pagePicture_ ? &*pagePicture_ : nullptr; }
    const viewing::Dots *dotsWith() const { return with_ ? &*with_ : nullptr; }
    const viewing::Dots *dotsWithout() const { return without_ ? &*without_ : nullptr; }
    bool hasRiders() const { return compared_ && !compared_->riders.empty(); }
    bool busy() { return pageWork_.busy() || dotsWork_.busy() || pageDue_ || dotsDue_; }
    // Why there is nothing to see; empty where there is.
    const std::string &problem() const { return problem_; }

private:
    void drawPage();
    void drawDots();
    void findEnoughDpi();
    void wantPage();
    void wantDots();
    void keepLoupeOnPage();
    std::optional<viewing::DotsWanted> dotsWanted() const;

    bool waits_;
    std::filesystem::path job_, tried_;
    std::shared_ptr<io::PrivateFolder> folder_;
    std::optional<viewing::ComparedJob> compared_;
    RoomForPictures room_;
    int page_ = 1, pages_ = 0, dpi_ = 600, enlargement_ = 2;
    double across_ = 0.5, down_ = 0.5;  // the loupe's middle
    std::optional<viewing::PagePicture> pagePicture_;
    std::optional<viewing::Dots> with_, without_;
    std::string problem_;
    std::optional<std::uint32_t> pageDue_, dotsDue_;  // ticks; 0: as soon as the clock is seen
    io::Background pageWork_, dotsWork_;
};

}  // namespace riders::app
