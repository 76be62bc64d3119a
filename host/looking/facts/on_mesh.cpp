#include "looking/facts/on_mesh.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "io/decimal.h"
#include "looking/facts/plate_patterns.h"
#include "screens/mesh.h"

namespace riders::looking {

using io::decimal;

namespace {

// What is to be said, and the places of the plates of which it is.
using SaidOfPlates = std::pair<std::string, std::vector<std::size_t>>;

std::string factOn(const screens::Grid &grid, double threadsPerInch)
{
    const screens::OnMesh mesh = screens::onMesh(grid, threadsPerInch);
    std::string words = decimal(mesh.ratio, 2) + " threads a line";
    if (!screens::hasTooFewThreads(mesh))
        words += ", " + screens::adviceFor(mesh);
    if (mesh.coarsest)
        words += "; the coarsest pattern of the two is " + decimal(mesh.coarsest->millimetres(), 2) + " mm";
    return words;
}

// Empty where there is nothing to doubt.
std::string warningOn(const screens::Grid &grid, double threadsPerInch)
{
    const screens::OnMesh mesh = screens::onMesh(grid, threadsPerInch);
    std::string words = screens::hasTooFewThreads(mesh) ? screens::adviceFor(mesh) : "";
    for (const std::string &doubt : screens::doubtsOf(grid, threadsPerInch))
        words += (words.empty() ? "" : "; ") + doubt;
    return words;
}

std::vector<SaidOfPlates> gathered(const PageFacts &page, std::string (*wordsOn)(const screens::Grid &, double))
{
    std::vector<SaidOfPlates> all;
    for (std::size_t i = 0; i < page.plates.size() && page.mesh > 0; ++i) {
        const std::optional<screens::Grid> screen = screenOf(page.plates[i]);
        if (!screen)
            continue;
        const std::string words = wordsOn(*screen, page.mesh);
        const auto same =
            std::find_if(all.begin(), all.end(), [&](const SaidOfPlates &said) { return said.first == words; });
        if (same != all.end())
            same->second.push_back(i);
        else if (!words.empty())
            all.push_back({words, {i}});
    }
    return all;
}

}  // namespace

std::vector<std::string> factsOnMesh(const PageFacts &page)
{
    std::vector<std::string> sentences;
    for (const auto &[words, plates] : gathered(page, factOn))
        sentences.push_back(namesOf(plates, page.plates) + ": " + words + ".");
    return sentences;
}

std::vector<std::string> warningsOnMesh(const PageFacts &page)
{
    std::vector<std::string> sentences;
    for (const auto &[words, plates] : gathered(page, warningOn))
        sentences.push_back(namesOf(plates, page.plates) + " on a mesh of " + decimal(page.mesh, 1) +
                            " threads per inch: " + words + ".");
    return sentences;
}

}  // namespace riders::looking
