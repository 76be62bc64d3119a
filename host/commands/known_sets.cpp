#include "commands/known_sets.h"

#include "screens/data_folder.h"
#include "toolbox/host/folders.h"

namespace riders::commands {

screens::SetFolders setFolders()
{
    return {toolbox::folders::usersPreferences() / "screens", screens::dataFolder("screens")};
}

}  // namespace riders::commands
