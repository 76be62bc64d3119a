#include "dialogs/dialog_list.h"

#include "dialogs/identity.h"

namespace toolbox::dialogs {

std::list<Dialog> dialogs;

Item *Dialog::item(int number)
{
    return number >= 1 && number <= static_cast<int>(items.size()) ? &items[number - 1] : nullptr;
}

Dialog *find(DialogPtr dialog)
{
    for (Dialog &candidate : dialogs)
        if (candidate.pointer() == dialog)
            return &candidate;
    return nullptr;
}

std::int16_t idOf(DialogPtr dialog)
{
    const Dialog *found = find(dialog);
    return found ? found->id : 0;
}

bool isAlert(DialogPtr dialog)
{
    const Dialog *found = find(dialog);
    return found && found->alert;
}

}  // namespace toolbox::dialogs
