// Reads what Ghostscript and prolog.ps write while they run a job.
#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace riders::plates {

struct AskedScreen {
    double frequency = 0, angle = 0;  // frequency 0: neither is known
    std::string shape = {};  // the name of the spot function with the same dots, see meter/spots.h; empty for none
    // Of "Default" only: the plate that the page is as a whole, where a riders file knows it.
    std::string pagePlate = {};
};
// By plate; the plate "Default" stands for those that are not named.
using AskedScreens = std::map<std::string, AskedScreen>;

struct PagePixels {
    int columns = 0, rows = 0;
};

struct InterpreterReport {
    AskedScreens atStart;             // the interpreter's own
    std::vector<AskedScreens> pages;  // in force at each page's end, as the interpreter reports them: for
                                      // PostScript all pages of the job, for PDF those asked for
    std::vector<PagePixels> sizes;    // of the same pages; 0 where they are not known
    std::map<std::string, std::array<double, 4>>
        inks;                       // cyan, magenta, yellow, black of each spot ink, 0 to 1; allPlates only
    bool inksMixed = false;         // there were too many: it has mixed some from the process inks
    std::vector<std::string> said;  // its other output, the first hundred lines, cut where they are long
};

// Reads what the interpreter writes, a line at a time. The job can write lines
// too: without the word they do not count as prolog.ps's, and whatever they are, they take little memory.
class InterpreterWords {
public:
    // What follows %%Proof in the lines of prolog.ps; a job must not know it.
    explicit InterpreterWords(const std::string &word = {}) : opening_("%%Proof" + word) {}

    // True when a page has ended.
    bool take(std::string_view line);

    const InterpreterReport &report() const { return report_; }
    // Whether the last page has ended but is still being written, as far as is known: a job can hide when the next
    // one begins.
    bool isWritingPage() const { return writing_; }
    // Why the interpreter failed, in its words; when it lacked memory, also how
    // much it may have.
    std::string failure(int megabytes) const;

private:
    bool takeProof(std::string_view line);
    bool endPage();
    void beginPage();
    void takeScreen(const std::string &text);
    void takeShape(const std::string &text);
    void takeSize(const std::string &text);
    void takePlate(const std::string &plate);
    bool takeInk(const std::string &text);

    const std::string opening_;
    InterpreterReport report_;
    AskedScreens screens_;
    PagePixels size_;
    std::string firstError_;
    bool started_ = false, begun_ = false, writing_ = false;
};

}  // namespace riders::plates
