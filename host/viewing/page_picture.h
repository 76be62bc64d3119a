// A page's picture.
#pragma once

#include "toolbox/host/machine.h"
#include "viewing/viewed_job.h"

namespace riders::viewing {

struct PagePicture {
    toolbox::Picture picture;      // at most as wide and high as asked for
    double width = 0, height = 0;  // of the page, inches
};

// Has Ghostscript draw the page, in colour, smoothly. Throws Refusal, also for a page that the job does not have,
// and what ends the interpreter through `unwanted`.
PagePicture drawPage(const ViewedJob &job, int mostColumns, int mostRows, io::Beside &unwanted);

// How many pages there are: of a PDF its own count, of an EPS one; 0 where only running the whole job would tell.
int countPages(const std::filesystem::path &job, io::Beside &unwanted);

}  // namespace riders::viewing
