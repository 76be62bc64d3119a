#include "screens/job_producers.h"

#include <cairo-ps.h>

namespace {

namespace fs = std::filesystem;

// Runs a program in the folder; its output goes to the file.
void produce(const TemporaryFolder &folder, const std::vector<std::string> &command, const fs::path &to = {})
{
    const CommandResult run = runProgram(command, {}, folder.path().string());
    ASSERT_EQ(run.status, 0) << command[0] << ": " << run.err;
    if (!to.empty())
        writeFile(to, run.out);
}

std::string repeated(const std::string &line, int times)
{
    std::string text;
    for (int i = 0; i < times; ++i)
        text += line;
    return text;
}

void makeGroff(const TemporaryFolder &folder, const fs::path &job)
{
    writeFile(folder / "text.tr", ".ll 5i\nA box of grey.\n.sp 1i\n\\D'Fg 0.5'\\D'P 3i 0 0 2i -3i 0'\n.bp\n"
                                  "Another, darker.\n.sp 1i\n\\D'Fg 0.3'\\D'P 3i 0 0 2i -3i 0'\n");
    produce(folder, {"groff", "-Tps", "text.tr"}, job);
}

void makeEnscript(const TemporaryFolder &folder, const fs::path &job)
{
    writeFile(folder / "text", repeated("a line\n", 100));
    produce(folder,
            {"enscript", "-q", "-G", "--highlight-bars=20", "--highlight-bar-gray=0.6", "-p", job, "text"});
}

// Comments stand on grey; most of this one is blank. The greys are too light to
// be measured at this resolution, so they are made darker.
void makeA2ps(const TemporaryFolder &folder, const fs::path &job)
{
    const std::string blank(70, ' ');
    writeFile(folder / "text.c", "int x;\n/*\n" + repeated("x" + blank + ".\n", 40) + "*/\n");
    produce(folder, {"a2ps", "-q", "--prologue=gray", "-Ec", "-1", "--portrait", "-o", job, "text.c", "text.c"});
    std::string bytes = contentsOf(job);
    int found = 0;
    for (const std::string light : {"0.9 0.9 0.9 true BG", "0.8 0.8 0.8 true BG"})
        for (size_t at = 0; (at = bytes.find(light, at)) != std::string::npos; ++found)
            bytes.replace(at, light.size(), "0.6 0.6 0.6 true BG");
    ASSERT_GT(found, 0);
    writeFile(job, bytes);
}

void greyPage(cairo_t *page, double grey)
{
    cairo_set_source_rgb(page, grey, grey, grey);
    cairo_rectangle(page, 100, 100, 200, 250);
    cairo_fill(page);
    cairo_set_source_rgb(page, 0, 0, 0);
    cairo_move_to(page, 100, 90);
    cairo_show_text(page, "A box of grey");
    cairo_show_page(page);
}

void makeCairo(const TemporaryFolder &, const fs::path &job)
{
    cairo_surface_t *surface = cairo_ps_surface_create(job.c_str(), 595, 842);
    cairo_t *page = cairo_create(surface);
    greyPage(page, 0.5);
    greyPage(page, 0.7);
    cairo_destroy(page);
    cairo_surface_destroy(surface);
}

void writeDrawings(const TemporaryFolder &folder)
{
    for (const char *shade : {"777777", "bbbbbb"})
        writeFile(
            folder / (std::string(shade) + ".svg"),
            "<svg xmlns='http://www.w3.org/2000/svg' width='500' height='600'><rect x='50' y='60' width='300'"
            " height='200' fill='#" +
                std::string(shade) + "'/><text x='50' y='400'>Below the box</text></svg>");
}

void makeRsvg(const TemporaryFolder &folder, const fs::path &job)
{
    writeDrawings(folder);
    produce(folder, {"rsvg-convert", "-f", "ps", "-o", job, "777777.svg", "bbbbbb.svg"});
}

void makePdftops(const TemporaryFolder &folder, const fs::path &job)
{
    makePdf(folder, folder / "drawings.pdf");
    produce(folder, {"pdftops", "drawings.pdf", job});
}

void makePs2write(const TemporaryFolder &folder, const fs::path &job)
{
    makePdf(folder, folder / "drawings.pdf");
    produce(folder, {"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=ps2write",
                     "-sOutputFile=" + job.string(), "drawings.pdf"});
}

void makeGnuplot(const TemporaryFolder &folder, const fs::path &job)
{
    writeFile(folder / "plot", "set terminal postscript landscape color solid\nset output '" + job.string() +
                                   "'\nset style fill solid 0.5 noborder\nset boxwidth 0.9\n" +
                                   repeated("plot '-' with boxes lc rgb 'black' notitle\n1 4\n2 5\n3 3\ne\n", 2));
    produce(folder, {"gnuplot", "plot"});
}

// A photograph of a single grey.
void makeNetpbm(const TemporaryFolder &folder, const fs::path &job)
{
    writeFile(folder / "grey.pgm", "P5\n300 200\n255\n" + std::string(300 * 200, '\x70'));
    produce(folder, {"pnmtops", "-noturn", "-setpage", "-imagewidth=4", "grey.pgm"}, job);
}

void makePsnup(const TemporaryFolder &folder, const fs::path &job)
{
    makeGroff(folder, folder / "single.ps");
    produce(folder, {"psnup", "-2", "-pa4", "single.ps", job});
}

}  // namespace

void makePdf(const TemporaryFolder &folder, const fs::path &pdf)
{
    writeDrawings(folder);
    produce(folder, {"rsvg-convert", "-f", "pdf", "-o", pdf, "777777.svg", "bbbbbb.svg"});
}

const std::vector<Producer> &jobProducers()
{
    static const std::vector<Producer> producers = {
        {"groff", 2, makeGroff},       {"enscript", 2, makeEnscript}, {"a2ps", 2, makeA2ps},
        {"cairo", 2, makeCairo},       {"rsvg", 2, makeRsvg},         {"pdftops", 2, makePdftops},
        {"ps2write", 2, makePs2write}, {"gnuplot", 2, makeGnuplot},   {"netpbm", 1, makeNetpbm},
        {"psnup", 1, makePsnup},
    };
    return producers;
}
