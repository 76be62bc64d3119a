#include "dialogs/dialog_list.h"
#include "dialogs/making.h"
#include "dialogs/parameters.h"
#include "session/managers.h"

namespace toolbox {

void managers::startDialogs(const Configuration &)
{
    dialogs::dialogs.clear();
    dialogs::forgetParameters();
    ResetAlrtStage();
    dialogs::startWatching();
}

void managers::stopDialogs()
{
    // Dialogs that are still open are freed with the heap.
    dialogs::dialogs.clear();
}

}  // namespace toolbox
