#include "screens/job_producers.h"

#include <cairo-ps.h>

// What the areas of a job are filled with, in each program's words: its two shades.
struct Fills {
    const char *groff[2], *svg[2], *a2ps, *gnuplot;
    double cairo[2][3];
    const char *netpbm;  // a pixel, of one byte or three
};
namespace {

namespace fs = std::filesystem;

constexpr Fills kGrey = {
    {"g 0.5", "g 0.3"}, {"777777", "bbbbbb"}, "0.6 0.6 0.6", "black", {{0.5, 0.5, 0.5}, {0.7, 0.7, 0.7}}, "\x70"};
constexpr Fills kColour = {{"r 0.6 0.4 0.5", "r 0.5 0.5 0.3"}, {"996680", "80804d"}, "0.6 0.4 0.5", "#703050",
                           {{0.6, 0.4, 0.5}, {0.5, 0.5, 0.3}}, "\x99\x66\x80"};

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

void makeGroff(const TemporaryFolder &folder, const fs::path &job, const Fills &fills)
{
    writeFile(folder / "text.tr", std::string(".ll 5i\nA box.\n.sp 1i\n\\D'F") + fills.groff[0] +
                                      "'\\D'P 3i 0 0 2i -3i 0'\n.bp\nAnother.\n.sp 1i\n\\D'F" + fills.groff[1] +
                                      "'\\D'P 3i 0 0 2i -3i 0'\n");
    produce(folder, {"groff", "-Tps", "text.tr"}, job);
}

void makeEnscript(const TemporaryFolder &folder, const fs::path &job, const Fills &)
{
    writeFile(folder / "text", repeated("a line\n", 100));
    produce(folder,
            {"enscript", "-q", "-G", "--highlight-bars=20", "--highlight-bar-gray=0.6", "-p", job, "text"});
}

// Comments stand on grey; most of this one is blank. The greys are too light to
// be measured at this resolution, so they are made darker.
void makeA2ps(const TemporaryFolder &folder, const fs::path &job, const Fills &fills)
{
    const std::string blank(70, ' ');
    writeFile(folder / "text.c", "int x;\n/*\n" + repeated("x" + blank + ".\n", 40) + "*/\n");
    produce(folder, {"a2ps", "-q", "--prologue=gray", "-Ec", "-1", "--portrait", "-o", job, "text.c", "text.c"});
    std::string bytes = contentsOf(job);
    int found = 0;
    for (const std::string light : {"0.9 0.9 0.9 true BG", "0.8 0.8 0.8 true BG"})
        for (size_t at = 0; (at = bytes.find(light, at)) != std::string::npos; ++found)
            bytes.replace(at, light.size(), std::string(fills.a2ps) + " true BG");
    ASSERT_GT(found, 0);
    writeFile(job, bytes);
}

void paintPage(cairo_t *page, const double (&fill)[3])
{
    cairo_set_source_rgb(page, fill[0], fill[1], fill[2]);
    cairo_rectangle(page, 100, 100, 200, 250);
    cairo_fill(page);
    cairo_set_source_rgb(page, 0, 0, 0);
    cairo_move_to(page, 100, 90);
    cairo_show_text(page, "A box");
    cairo_show_page(page);
}

void makeCairo(const TemporaryFolder &, const fs::path &job, const Fills &fills)
{
    cairo_surface_t *surface = cairo_ps_surface_create(job.c_str(), 595, 842);
    cairo_t *page = cairo_create(surface);
    paintPage(page, fills.cairo[0]);
    paintPage(page, fills.cairo[1]);
    cairo_destroy(page);
    cairo_surface_destroy(surface);
}

void writeDrawings(const TemporaryFolder &folder, const Fills &fills)
{
    for (int i = 0; i < 2; ++i)
        writeFile(
            folder / (std::to_string(i) + ".svg"),
            "<svg xmlns='http://www.w3.org/2000/svg' width='500' height='600'><rect x='50' y='60' width='300'"
            " height='200' fill='#" +
                std::string(fills.svg[i]) + "'/><text x='50' y='400'>Below the box</text></svg>");
}

void makeRsvg(const TemporaryFolder &folder, const fs::path &job, const Fills &fills)
{
    writeDrawings(folder, fills);
    produce(folder, {"rsvg-convert", "-f", "ps", "-o", job, "0.svg", "1.svg"});
}

void drawPdf(const TemporaryFolder &folder, const fs::path &pdf, const Fills &fills)
{
    writeDrawings(folder, fills);
    produce(folder, {"rsvg-convert", "-f", "pdf", "-o", pdf, "0.svg", "1.svg"});
}

void makePdftops(const TemporaryFolder &folder, const fs::path &job, const Fills &fills)
{
    drawPdf(folder, folder / "drawings.pdf", fills);
    produce(folder, {"pdftops", "drawings.pdf", job});
}

void makePs2write(const TemporaryFolder &folder, const fs::path &job, const Fills &fills)
{
    drawPdf(folder, folder / "drawings.pdf", fills);
    produce(folder, {"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=ps2write",
                     "-sOutputFile=" + job.string(), "drawings.pdf"});
}

void makeGnuplot(const TemporaryFolder &folder, const fs::path &job, const Fills &fills)
{
    writeFile(folder / "plot", "set terminal postscript landscape color solid\nset output '" + job.string() +
                                   "'\nset style fill solid 0.5 noborder\nset boxwidth 0.9\n" +
                                   repeated(std::string("plot '-' with boxes lc rgb '") + fills.gnuplot +
                                                "' notitle\n1 4\n2 5\n3 3\ne\n",
                                            2));
    produce(folder, {"gnuplot", "plot"});
}

// A photograph of a single tint.
void makeNetpbm(const TemporaryFolder &folder, const fs::path &job, const Fills &fills)
{
    const bool grey = std::string(fills.netpbm).size() == 1;
    writeFile(folder / "flat.pnm",
              (grey ? "P5" : "P6") + ("\n300 200\n255\n" + repeated(fills.netpbm, 300 * 200)));
    produce(folder, {"pnmtops", "-noturn", "-setpage", "-imagewidth=4", "flat.pnm"}, job);
}

void makePsnup(const TemporaryFolder &folder, const fs::path &job, const Fills &fills)
{
    makeGroff(folder, folder / "single.ps", fills);
    produce(folder, {"psnup", "-2", "-pa4", "single.ps", job});
}

}  // namespace

void makePdf(const TemporaryFolder &folder, const fs::path &pdf, bool inColour)
{
    drawPdf(folder, pdf, inColour ? kColour : kGrey);
}

void Producer::make(const TemporaryFolder &folder, const fs::path &job, bool inColour) const
{
    write(folder, job, inColour ? kColour : kGrey);
}

const std::vector<Producer> &jobProducers()
{
    static const std::vector<Producer> producers = {
        {"groff", 2, makeGroff},       {"enscript", 2, makeEnscript, false},
        {"a2ps", 2, makeA2ps},         {"cairo", 2, makeCairo},
        {"rsvg", 2, makeRsvg},         {"pdftops", 2, makePdftops},
        {"ps2write", 2, makePs2write}, {"gnuplot", 2, makeGnuplot},
        {"netpbm", 1, makeNetpbm},     {"psnup", 1, makePsnup},
    };
    return producers;
}
