#include "remaking/remake.h"

#include <algorithm>

#include "apply/riders_file.h"
#include "io/bytes.h"
#include "io/output.h"
#include "io/refusal.h"
#include "reading/choices_in.h"
#include "reading/written_in.h"
#include "remaking/settings_record.h"
#include "toolbox/host/session.h"

namespace fs = std::filesystem;

namespace riders::remaking {
namespace {

// By their numbers.
enum Menu : std::int16_t { fontMenu = 16134, frequencyMenu = 16136, angleMenu, shapeMenu, flatnessMenu };

DialogMenus menusOf(const plugin::Plugin &plugin)
{
    return {plugin.menuItems(frequencyMenu), plugin.menuItems(angleMenu), plugin.menuItems(shapeMenu),
            plugin.menuItems(flatnessMenu), plugin.menuItems(fontMenu)};
}

std::string contents(const fs::path &file)
{
    const io::OpenFile in = io::openOrdinaryFile(file);
    std::string bytes(apply::kLongestRiders + 1, '\0');
    bytes.resize(io::readFully(in, bytes.data(), bytes.size()));
    if (bytes.size() > apply::kLongestRiders || !apply::isRidersFile(bytes))
        throw io::Refusal(file.string() + ": is not a riders file");
    return bytes;
}

// What a riders file needs that was not to be read; empty where nothing is missing.
std::string missingIn(const reading::Choices &choices)
{
    if (!choices.notes.empty())
        return choices.notes.front();
    const auto &annotation = choices.annotation;
    if (annotation && (annotation->font.empty() || !annotation->size))
        return "its annotation has no font or no size";
    return {};
}

}  // namespace

ReadRiders readRiders(const fs::path &file)
{
    const std::string bytes = contents(file);
    return {file, reading::writtenIn(bytes), reading::choicesIn(bytes)};
}

void makeAgain(const ReadRiders &riders)
{
    if (const std::string missing = missingIn(riders.choices); !missing.empty())
        throw io::Refusal(riders.file.string() + ": cannot be made again as it is: " + missing +
                          "; change it instead");
    io::writeFile(riders.file, reading::ridersOf(riders.written));
}

Change::Change(const plugin::Plugin &plugin, ReadRiders riders)
    : riders_(std::move(riders)),
      values_(dialogValuesOf(riders_.choices, menusOf(plugin), toolbox::configuration().decimalPoint))
{
}

void Change::run(keeping::Keeper &keeper) const
{
    keeper.callOnce({[this](const fs::path &settings) { putIntoSettings(settings, values_); },
                     [this](const fs::path &made) { keepPlates(made); }});
}

// The dialog knows nothing of them, nor of the names of files that dot shapes are from.
void Change::keepPlates(const fs::path &made) const
{
    const reading::Written &before = riders_.written;
    if (!before.plates && before.shapeNames.empty())
        return;
    const std::string bytes = io::contentsOf(made);
    reading::Written written = reading::writtenIn(bytes);
    if (reading::ridersOf(written) != bytes)
        throw io::Refusal("the riders file that was made is not as expected; riders.so is not of this version");
    written.plates = before.plates;
    written.entries = before.entries;
    std::copy_if(
        before.shapeNames.begin(), before.shapeNames.end(), std::back_inserter(written.shapeNames),
        [&](const reading::WrittenShapeName &name) { return name.plate != "*" || written.shape == before.shape; });
    io::writeFile(made, reading::ridersOf(written));
}

}  // namespace riders::remaking
