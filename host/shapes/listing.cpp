#include "shapes/listing.h"

#include <algorithm>

#include "io/json.h"
#include "io/plain_text.h"

namespace riders::shapes {
namespace {

struct Row {
    std::string names, about;
};

Row rowOf(const screens::Shape &shape)
{
    const std::vector<std::string> names = screens::namesOf(shape);
    Row row{{}, aboutWithFile(shape, names)};
    for (const std::string &name : names)
        row.names += (row.names.empty() ? "" : ", ") + name;
    return row;
}

}  // namespace

std::string aboutWithFile(const screens::Shape &shape, const std::vector<std::string> &names)
{
    const bool isNamed = std::find(names.begin(), names.end(), shape.name) != names.end();
    return screens::aboutShape(shape) + (isNamed || names.empty() ? "" : "; PostScript calls it " + shape.name);
}

std::string listing(const std::vector<screens::Shape> &installed)
{
    std::vector<Row> rows;
    std::size_t widest = 0;
    for (const screens::Shape &shape : installed) {
        rows.push_back(rowOf(shape));
        widest = std::max(widest, rows.back().names.size());
    }
    std::string text;
    for (const Row &row : rows)
        text += io::plainText(row.names + std::string(widest + 2 - row.names.size(), ' ') + row.about) + "\n";
    if (!installed.empty())
        text += "The files are in " + io::plainText(installed.front().file.parent_path().string()) + "\n";
    return text;
}

std::string listingInJson(const std::vector<screens::Shape> &installed)
{
    std::vector<std::string> shapes;
    for (const screens::Shape &shape : installed) {
        std::vector<std::string> names;
        for (const std::string &name : screens::namesOf(shape))
            names.push_back(io::jsonText(name));
        shapes.push_back(io::jsonObject({{"names", io::jsonArray(names)},
                                         {"about", io::jsonText(screens::aboutShape(shape))},
                                         {"file", io::jsonText(shape.file.string())}}));
    }
    return io::jsonArray(shapes) + "\n";
}

}  // namespace riders::shapes
