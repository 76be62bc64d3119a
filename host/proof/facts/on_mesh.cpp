#include "proof/facts/on_mesh.h"

#include "io/decimal.h"
#include "proof/facts/plate_patterns.h"
#include "screens/mesh.h"

namespace riders::proof {

using io::decimal;

std::string wordsOnMesh(const MeasuredScreen &measured, double threadsPerInch)
{
    const screens::Grid grid = gridOf(measured);
    const screens::OnMesh mesh = screens::onMesh(grid, threadsPerInch);
    std::string words = decimal(mesh.ratio, 2) + " threads a line, " + screens::adviceFor(mesh);
    for (const std::string &doubt : screens::doubtsOf(grid, threadsPerInch))
        words += "; " + doubt;
    if (mesh.coarsest)
        words += "; the coarsest pattern of the two is " + decimal(mesh.coarsest->millimetres(), 2) + " mm";
    return words;
}

bool isDoubtfulOnMesh(const MeasuredScreen &measured, double threadsPerInch)
{
    return threadsPerInch / measured.frequency < screens::kLeastRatio ||
           !screens::doubtsOf(gridOf(measured), threadsPerInch).empty();
}

}  // namespace riders::proof
