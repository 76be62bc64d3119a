// The installed dot shapes in Ghostscript: their values, and the dots that it makes of them.
#include "printed/postscript_support.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "meter/spots.h"
#include "screens/shapes.h"
#include "shapes/growth.h"
#include "shapes/try_shapes.h"

namespace {

using namespace riders;
using screens::Shape;

const std::filesystem::path kShapes = std::filesystem::path(RIDERS_SOURCE_DIR) / "resources" / "shapes";

// All by name, tried once for all tests.
struct Tried {
    Shape shape;
    std::vector<float> values;
};
const std::map<std::string, Tried> &tried()
{
    static const std::map<std::string, Tried> all = [] {
        std::vector<Shape> shapes;
        for (const auto &entry : std::filesystem::directory_iterator(kShapes))
            shapes.push_back(screens::shapeIn(entry.path()));
        const std::vector<shapes::ShapeTrial> trials = shapes::tryShapes(shapes);
        std::map<std::string, Tried> byName;
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            EXPECT_EQ(trials[i].problem, "") << shapes[i].name;
            byName[shapes[i].name] = {shapes[i], trials[i].values};
        }
        return byName;
    }();
    return all;
}

float valueAt(const std::vector<float> &values, int x, int y)
{
    return values[static_cast<std::size_t>(y) * shapes::kSide + static_cast<std::size_t>(x)];
}

// Whether the value at each place is that at another. The edge at -1 is left out: 1 is the next cell's.
bool isLike(const std::vector<float> &values, const std::function<float(int x, int y)> &other)
{
    for (int y = 1; y < shapes::kSide; ++y)
        for (int x = 1; x < shapes::kSide; ++x)
            if (std::abs(valueAt(values, x, y) - other(x, y)) > 1e-5F)
                return false;
    return true;
}

bool isMirrored(const std::vector<float> &values, bool leftAndRight)
{
    return isLike(values, [&](int x, int y) {
        return leftAndRight ? valueAt(values, shapes::kSide - x, y) : valueAt(values, x, shapes::kSide - y);
    });
}

bool isSameAlongBothAxes(const std::vector<float> &values)
{
    return isLike(values, [&](int x, int y) { return valueAt(values, y, x); });
}

void expectValuesEverywhere()
{
    EXPECT_EQ(tried().size(), 21U);
    for (const auto &[name, shape] : tried()) {
        ASSERT_EQ(shape.values.size(), std::size_t{shapes::kSide} * shapes::kSide) << name;
        const auto [least, most] = std::minmax_element(shape.values.begin(), shape.values.end());
        EXPECT_GE(*least, -1) << name;
        EXPECT_LE(*most, 1) << name;
    }
}

void expectSymmetry()
{
    const std::vector<std::string> oneSided = {"Double", "DoubleDot", "InvertedDouble", "InvertedDoubleDot"};
    const std::vector<std::string> alike = {"CosineDot",         "Cross", "DoubleDot", "InvertedDoubleDot",
                                            "InvertedSimpleDot", "Round", "Square",    "SimpleDot"};
    for (const auto &[name, shape] : tried()) {
        const bool odd = std::count(oneSided.begin(), oneSided.end(), name) > 0;
        EXPECT_EQ(isMirrored(shape.values, true), !odd && name != "LineX") << name;
        EXPECT_EQ(isMirrored(shape.values, false), !odd && name != "LineY") << name;
        EXPECT_EQ(isSameAlongBothAxes(shape.values), std::count(alike.begin(), alike.end(), name) > 0) << name;
    }
}

void expectInverses()
{
    for (const std::string name : {"SimpleDot", "DoubleDot", "Double", "EllipseA", "EllipseC"}) {
        const std::vector<float> &inverted = tried().at("Inverted" + name).values;
        EXPECT_TRUE(isLike(tried().at(name).values, [&](int x, int y) { return -valueAt(inverted, x, y); }))
            << name;
    }
}

// Equal values are on lines by nature in some: Line and its kin, Square and Cross, and where sines are 0.
void expectNoBands()
{
    const double cell = double(shapes::kSide) * shapes::kSide, line = shapes::kSide / cell;
    for (const auto &[name, shape] : tried()) {
        const shapes::Bands bands = shapes::bandsOf(shape.values);
        const double most = name == "LineX" || name == "LineY" ? 1 : name == "Line" ? 2 : 4.05;
        EXPECT_LE(double(bands.widest.size) / cell, most * line) << name;
        EXPECT_GE(bands.count, std::size_t{shapes::kSide / 2}) << name;
    }
}

// What a shape's comment says of its dots, with the share that it names replaced by the one found.
std::string asFound(std::string about, const shapes::Joining &joining)
{
    for (const auto &[words, share] : {std::pair<std::string, double>{"to rows at ", joining.first},
                                       {"to columns at ", joining.first},
                                       {"row to row at ", joining.all},
                                       {"touch at ", joining.first}})
        if (const std::size_t at = about.find(words); at != about.npos)
            about.replace(at + words.size(), 2, std::to_string(std::lround(100 * share)));
    return about;
}

void expectWhatIsSaid()
{
    for (const auto &[name, shape] : tried()) {
        const shapes::Joining joining = shapes::joiningOf(shapes::growthOf(shape.values));
        const std::string about = screens::aboutShape(shape.shape);
        EXPECT_EQ(asFound(about, joining), about) << name;
        for (const std::string direction : {"to rows", "to columns"})
            EXPECT_TRUE(about.find(direction) == about.npos || joining.direction == direction) << name;
        EXPECT_TRUE(about.find("checkerboard") == about.npos || std::abs(joining.first - 0.5) < 0.02) << name;
    }
    const auto joins = [](const std::string &name) {
        return shapes::joiningOf(shapes::growthOf(tried().at(name).values));
    };
    EXPECT_NEAR(joins("InvertedSimpleDot").first, 0.21, 0.01);
    EXPECT_NEAR(joins("Rhomboid").first, 0.45, 0.005);
    EXPECT_NEAR(joins("Rhomboid").all, 0.55, 0.005);
    EXPECT_NEAR(joins("Round").first, 0.5, 0.01);
    EXPECT_LT(joins("Cross").all, 0.03);
    EXPECT_GT(joins("Square").first, 0.97);
}

// The formulas by which measurements and proofs know them.
void expectFormulas()
{
    std::size_t compared = 0;
    for (const auto *known : {&meter::namedSpots(), &meter::rarerSpots()})
        for (const meter::NamedSpot &spot : *known)
            for (const auto &[name, shape] : tried()) {
                const std::vector<std::string> names = screens::namesOf(shape.shape);
                if (std::count(names.begin(), names.end(), spot.name) == 0)
                    continue;
                ++compared;
                EXPECT_TRUE(isLike(shape.values, [&](int x, int y) {
                    return float(spot.value(2.0 * x / shapes::kSide - 1, 2.0 * y / shapes::kSide - 1));
                })) << spot.name;
            }
    EXPECT_EQ(compared, meter::namedSpots().size() + meter::rarerSpots().size());
}

// One test, since trying them takes longer than looking at their values.
TEST(DotShapes, HaveTheValuesThatTheyShould)
{
    expectValuesEverywhere();
    expectSymmetry();
    expectInverses();
    expectNoBands();
    expectFormulas();
    expectWhatIsSaid();
}

TEST(DotShapes, NamesOfTheMenuGiveTheValuesOfItsPieces)
{
    std::vector<Shape> pieces;
    for (const SpotShape &menu : kSpotShapes)
        pieces.push_back({menu.name, pieceBytes(menu.id), {}});
    const std::vector<shapes::ShapeTrial> trials = shapes::tryShapes(pieces);
    int compared = 0;
    for (const auto &[name, shape] : tried())
        for (const std::string &usual : screens::namesOf(shape.shape))
            for (std::size_t i = 0; i < pieces.size(); ++i)
                if (usual == pieces[i].name) {
                    EXPECT_EQ(trials[i].values, shape.values) << usual;
                    ++compared;
                }
    EXPECT_EQ(compared, 7);
}

// --- The dots -----------------------------------------------------------------

constexpr int kSteps = 16, kStep = 64;  // a strip for each tint, of two by two cells of 32 pixels
const std::string kDevice = "-sDEVICE=pbmraw -r1200 -g1024x64";

// A page with strips whose tints are sixteenths, up to solid. They end within pixels, since PDF paints those whose
// middle is covered, and PostScript each that is touched.
std::string strips(bool pdf)
{
    std::string strips;
    for (int step = 0; step < kSteps; ++step)
        strips += std::to_string(1 - (step + 1) / double(kSteps)) + (pdf ? " g " : " setgray ") +
                  std::to_string(step * 3.84 + 0.01) + " 0.01 3.82 3.82 " + (pdf ? "re f\n" : "rectfill\n");
    return strips;
}

// The dots on so many pages.
std::vector<Bitmap> pagesOf(const std::string &job, std::size_t count, const std::string &options = {})
{
    TemporaryFolder folder;
    const GhostscriptResult result = runGhostscript(folder, job, "page%02d", kDevice + options);
    EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
    std::vector<Bitmap> pages;
    for (std::size_t page = 1; page <= count; ++page) {
        char name[16];
        snprintf(name, sizeof name, "page%02zu", page);
        pages.push_back(readBitmap(folder / name));
    }
    return pages;
}

std::vector<std::string> names()
{
    std::vector<std::string> names;
    for (const auto &[name, shape] : tried())
        names.push_back(name);
    return names;
}

// A page for each shape.
std::string jobOfBodies(const std::vector<std::string> &names)
{
    std::string job = "%!PS\n";
    for (const std::string &name : names)
        job += "<< /HalftoneType 1 /Frequency 37.5 /Angle 0 /SpotFunction {" + tried().at(name).shape.body +
               "} >> sethalftone\n" + strips(false) + "showpage\n";
    return job;
}

// The same as a PDF in which the shapes have only their names.
std::string jobOfNames(const std::vector<std::string> &names)
{
    std::vector<std::string> objects = {"<< /Type /Catalog /Pages 2 0 R >>"};
    const std::string content = "/G gs\n" + strips(true);
    std::string kids;
    for (std::size_t page = 0; page < names.size(); ++page)
        kids += std::to_string(4 + page) + " 0 R ";
    objects.push_back("<< /Type /Pages /Count " + std::to_string(names.size()) + " /Kids [" + kids + "] >>");
    objects.push_back("<< /Length " + std::to_string(content.size()) + " >> stream\n" + content + "endstream");
    for (const std::string &name : names)
        objects.push_back("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 61.44 3.84] /Contents 3 0 R /Resources "
                          "<< /ExtGState << /G << /HT << /Type /Halftone /HalftoneType 1 /Frequency 37.5 /Angle 0 "
                          "/SpotFunction /" +
                          name + " >> >> >> >> >>");
    std::string pdf = "%PDF-1.4\n", places;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        char place[32];
        snprintf(place, sizeof place, "%010zu 00000 n \n", pdf.size());
        places += place;
        pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::string count = std::to_string(objects.size() + 1);
    return pdf + "xref\n0 " + count + "\n0000000000 65535 f \n" + places + "trailer << /Size " + count +
           " /Root 1 0 R >>\nstartxref\n" + std::to_string(pdf.size()) + "\n%%EOF\n";
}

std::size_t pixelsThatDiffer(const Bitmap &one, const Bitmap &other)
{
    std::size_t differ = 0;
    for (std::size_t pixel = 0; pixel < one.ink.size(); ++pixel)
        differ += one.ink[pixel] != other.ink[pixel];
    return differ;
}

TEST(DotShapes, GhostscriptsOwnOfTheSameNamesGiveTheSameDots)
{
    const std::vector<std::string> all = names();
    const std::vector<Bitmap> named = pagesOf(jobOfNames(all), all.size());
    const std::vector<Bitmap> bodies = pagesOf(jobOfBodies(all), all.size());
    for (std::size_t page = 0; page < all.size(); ++page) {
        // In Ghostscript 10.00 this one has lost its closing brace; in the older of its two readers of PDF it is
        // whole.
        const bool broken = all[page] == "DoubleDot";
        const Bitmap own = broken ? pagesOf(jobOfNames({all[page]}), 1, " -dNEWPDF=false").front() : named[page];
        EXPECT_EQ(pixelsThatDiffer(own, bodies[page]), 0U) << all[page];
    }
}

TEST(DotShapes, DotsGrowWithTheTint)
{
    const std::vector<std::string> all = names();
    const std::vector<Bitmap> pages = pagesOf(jobOfBodies(all), all.size());
    for (std::size_t page = 0; page < all.size(); ++page) {
        const Bitmap &bits = pages[page];
        for (int step = 0; step < kSteps; ++step) {
            const int left = step * kStep;
            EXPECT_NEAR(bits.share(left, 0, left + kStep, kStep), (step + 1) / double(kSteps), 0.02) << all[page];
            for (int y = 0; y < kStep && step > 0; ++y)
                for (int x = left; x < left + kStep; ++x)
                    ASSERT_GE(bits.at(x, y), bits.at(x - kStep, y)) << all[page] << " at " << x << ", " << y;
        }
    }
}

}  // namespace
