#include "shapes/show_shapes.h"

#include <fstream>

#include "io/interruption.h"
#include "io/output.h"
#include "io/refusal.h"
#include "shapes/growth.h"
#include "shapes/page.h"

namespace fs = std::filesystem;

namespace riders::shapes {
namespace {

std::vector<screens::Shape> shapesFor(const ShowRequest &request)
{
    if (!request.shape.empty()) {
        if (std::optional<screens::Shape> shape = screens::shapeNamed(request.shape))
            return {*shape};
        throw io::Refusal("there is no dot shape and no file \"" + request.shape +
                          "\"; riders shapes lists the dot shapes" + screens::shapeMeant(request.shape));
    }
    std::vector<screens::Shape> installed = screens::installedShapes();
    if (installed.empty())
        throw io::Refusal("no dot shapes are installed");
    return installed;
}

fs::path pageFor(const ShowRequest &request, const std::vector<screens::Shape> &shapes)
{
    if (!request.page.empty())
        return request.page;
    return request.shape.empty() ? fs::path("shapes.html") : fs::path(shapes.front().name + "-shape.html");
}

// Whatever else there is may be something that nobody has a second time.
void refuseForeign(const fs::path &page)
{
    std::error_code ignored;
    if (fs::is_directory(page, ignored))
        throw io::Refusal(page.string() + " is a folder; name a file with -o");
    if (!fs::is_regular_file(page, ignored) || fs::is_empty(page, ignored))
        return;
    std::ifstream in(page, std::ios::binary);
    std::string start(1024, '\0');
    in.read(start.data(), static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<std::size_t>(in.gcount()));
    if (start.find(pageMark()) == start.npos)
        throw io::Refusal(page.string() + ": exists and is no page of dot shapes; name another with -o");
}

std::string problemOf(const screens::Shape &shape, const std::string &problem)
{
    return shape.file.string() + ": " + problem;
}

}  // namespace

Shown showShapes(const ShowRequest &request)
{
    const std::vector<screens::Shape> shapes = shapesFor(request);
    Shown shown{{}, {}, pageFor(request, shapes)};
    refuseForeign(shown.page);
    const io::Interruption interruption;
    const std::vector<ShapeTrial> trials = tryShapes(shapes, request.limits);
    std::vector<ShownShape> all;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        if (!trials[i].problem.empty())
            return {problemOf(shapes[i], trials[i].problem), {}, {}};
        std::vector<std::string> names = {shapes[i].name};
        all.push_back(
            {shapes[i], request.shape.empty() ? screens::namesOf(shapes[i]) : std::move(names), trials[i]});
    }
    if (!request.shape.empty())
        shown.notes = notesOn(trials.front().values);
    const std::string page = pageOf(all);
    io::Interruption::check();
    io::writeFile(shown.page, page);
    return shown;
}

}  // namespace riders::shapes
