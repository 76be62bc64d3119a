#include "pictures/kept_pictures.h"

#include "pictures/comparison.h"
#include "toolbox/host/picture.h"

namespace fs = std::filesystem;

fs::path KeptPictures::leaving(const std::string &name, const char *which) const
{
    return leavings_ / (name + "." + which + ".png");
}

std::string KeptPictures::difference(const std::string &name, const fs::path &actualFile) const
{
    for (const char *which : {"expected", "actual", "difference"})
        fs::remove(leaving(name, which));
    const toolbox::Picture actual = toolbox::readPng(actualFile);
    if (actual.width == 0)
        return name + ": there is no picture " + actualFile.string();
    const fs::path kept = expected_ / (name + ".png");
    const toolbox::Picture expected = toolbox::readPng(kept);
    const PictureDifference found = comparison(expected, actual);
    if (found.same())
        return {};
    fs::create_directories(leavings_);
    fs::copy_file(actualFile, leaving(name, "actual"), fs::copy_options::overwrite_existing);
    const std::string look = "; look at " + leaving(name, "*").string() +
                             " and, when what is shown now is right, run ./test --update-pictures";
    if (expected.width == 0)
        return name + ": no picture is kept as " + kept.string() + look;
    fs::copy_file(kept, leaving(name, "expected"), fs::copy_options::overwrite_existing);
    toolbox::writePng(leaving(name, "difference"), differencePicture(expected, actual));
    return name + ": " + found.text() + look;
}
