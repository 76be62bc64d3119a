#include "app/trash_instead.h"

#include <filesystem>
#include <utility>

#include "app/words.h"
#include "io/refusal.h"
#include "io/trash.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/removal.h"

namespace fs = std::filesystem;

namespace riders::app {
namespace {

using Say = std::function<void(const std::string &said)>;

// What lies beside it belongs to it.
void moveWithCompanion(const fs::path &file)
{
    io::moveToTrash(file);
    const fs::path companion = file.parent_path() / ("._" + file.filename().string());
    if (std::error_code ignored; fs::exists(fs::symlink_status(companion, ignored)))
        io::moveToTrash(companion);
}

bool isElsewhereOrStays(const fs::path &file, const Say &say)
{
    if (file.parent_path() == toolbox::folders::preferences())
        return false;
    const std::string name = file.filename().string(), folder = file.parent_path().filename().string();
    if (!ask(Question::moveToTrash, words(Words::askTrash, {name, folder})))
        return true;
    try {
        moveWithCompanion(file);
    } catch (const io::Refusal &refusal) {
        return !ask(Question::deleteForGood,
                    words(Words::askDelete, {name, inPlainWords(refusal.message, file.parent_path())}));
    }
    say(words(Words::trashed, {name}));
    return true;
}

}  // namespace

TrashInstead::TrashInstead(Say say)
{
    toolbox::setRemoval([say = std::move(say)](const fs::path &file) { return isElsewhereOrStays(file, say); });
}

TrashInstead::~TrashInstead()
{
    toolbox::setRemoval({});
}

}  // namespace riders::app
