#include "standardfile/folders_used.h"

#include <stdlib.h>

#include "files/directory.h"
#include "session/managers.h"
#include "standardfile/opened_file.h"
#include "toolbox/host/listed_files.h"
#include "toolbox/host/save_place.h"
#include "toolbox/host/standardfile_folder.h"
#include "toolbox/host/text.h"
#include "toolbox/menus.h"

namespace fs = std::filesystem;

namespace toolbox {
namespace standardfile {
namespace {

fs::path lastFolder;

fs::path homeFolder()
{
    const char *home = getenv("HOME");
    return home && *home ? home : "/";
}

// The menu of a folder and those above it, the folder first. Nil: no room.
MenuHandle pathMenu(const std::vector<fs::path> &folders)
{
    constexpr std::int16_t pathMenuID = -4000;
    Str255 name = {0};
    MenuHandle menu = NewMenu(pathMenuID, name);
    for (std::size_t i = 0; menu && i < folders.size(); ++i) {
        setPascal(name, " ");
        AppendMenu(menu, name);
        setPascal(name, files::folderName(folders[i]));
        SetItem(menu, static_cast<std::int16_t>(i + 1), name);
    }
    return menu;
}

}  // namespace

// One that cannot be looked at may be there: a file saved in another one instead would be lost.
static bool isGone(const fs::path &folder)
{
    std::error_code error;
    const fs::file_status status = fs::status(folder, error);
    return status.type() != fs::file_type::none && !fs::is_directory(status);
}

fs::path nearestFolder(fs::path folder)
{
    std::error_code error;
    folder = fs::absolute(folder, error).lexically_normal();
    while (folder.has_relative_path() && isGone(folder))
        folder = folder.parent_path();
    fs::path real = fs::canonical(folder, error);
    return error ? folder : real;
}

fs::path startingFolder()
{
    if (!lastFolder.empty())
        return nearestFolder(lastFolder);
    const fs::path &start = configuration().startFolder;
    return nearestFolder(start.empty() ? homeFolder() : start);
}

void rememberFolder(const fs::path &folder)
{
    lastFolder = folder;
}

fs::path chooseAbove(const fs::path &folder, Point where)
{
    std::vector<fs::path> folders;
    for (fs::path above = folder; !above.empty(); above = files::parentOf(above))
        folders.push_back(above);
    MenuHandle menu = pathMenu(folders);
    if (!menu)
        return {};
    InsertMenu(menu, -1);
    int32_t choice = PopUpMenuSelect(menu, where.v, where.h, 1);
    DisposeMenu(menu);
    auto item = static_cast<std::size_t>(LoWord(choice));
    return HiWord(choice) != 0 && item <= folders.size() ? folders[item - 1] : fs::path();
}

}  // namespace standardfile

void setStandardFileFolder(const fs::path &folder)
{
    standardfile::rememberFolder(folder);
}

fs::path standardFileFolder()
{
    return standardfile::lastFolder;
}

void managers::startStandardFile(const Configuration &)
{
    standardfile::lastFolder.clear();
    standardfile::rememberOpened({});
    setSavePlace({});
    proposeToSave({});
    setListedFiles({});
}

void managers::stopStandardFile()
{
    standardfile::lastFolder.clear();
    standardfile::rememberOpened({});
    setSavePlace({});
    proposeToSave({});
    setListedFiles({});
}

}  // namespace toolbox
