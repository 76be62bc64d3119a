// What each run of the interpreter may use up.
#pragma once

namespace riders::plates {

// Inks besides the process inks that a job may name. Ghostscript's device for screened separations breaks
// down with more; the one of the survey takes 60, and finds out what they are.
inline constexpr int kMostSpotInks = 27;
inline constexpr int kMostSurveyedInks = 60;

struct InterpreterLimits {
    int secondsAPage = 300;        // it is ended when a page takes longer
    int slowPages = 100;           // or when the whole job takes longer than so many pages may
    int megabytes = 2048;          // of memory
    int pages = 100000;            // a job with more is ended
    int pageMegabytes = 16 << 10;  // of page files that are not yet read, in each run
};

}  // namespace riders::plates
