// Alerts: dialogs of four stages that are closed once an item is hit.
#include <algorithm>

#include "dialogs/dialog_list.h"
#include "dialogs/making.h"
#include "dialogs/modal.h"
#include "quickdraw/port_scope.h"
#include "toolbox/dialogs.h"
#include "toolbox/host/trace.h"
#include "toolbox/system.h"

using namespace toolbox;
using namespace toolbox::dialogs;

namespace {

constexpr int16_t noBox = -1;
constexpr int lastStage = 3;
enum AlertIcon { none = -1, stop = 0, note = 1, caution = 2 };

int16_t latestAlert = 0;
int latestStage = -1;   // -1: none since ResetAlrtStage

int nextStage(int16_t id)
{
    bool again = id == latestAlert && latestStage >= 0;
    latestStage = again ? std::min(latestStage + 1, lastStage) : 0;
    latestAlert = id;
    return latestStage;
}

DialogTemplate asDialog(const AlertTemplate &from)
{
    DialogTemplate made;
    made.bounds = from.bounds;
    made.procID = dBoxProc;
    made.itemsID = from.itemsID;
    made.alert = true;
    return made;
}

int16_t showAndAsk(Dialog &dialog, ModalFilterProcPtr filter)
{
    quickdraw::PortScope current(dialog.pointer());
    ShowWindow(dialog.pointer());
    int16_t hit = runModally(dialog.pointer(), filter);
    trace::line("alert %d gave %d", dialog.id, hit);
    return hit;
}

int16_t alert(int16_t id, AlertIcon icon, ModalFilterProcPtr filter)
{
    auto from = readAlert(id);
    if (!from)
        return noBox;
    const AlertTemplate::Stage &stage = from->stages[nextStage(id)];
    for (int i = 0; i < stage.sounds; ++i)
        SysBeep(1);
    if (!stage.showsBox)
        return noBox;
    Dialog *dialog = make(id, asDialog(*from), nullptr, reinterpret_cast<WindowPtr>(-1));
    if (!dialog)
        return noBox;
    dialog->alertIcon = static_cast<int16_t>(icon);
    dialog->record->aDefItem = stage.defaultItem;
    int16_t hit = showAndAsk(*dialog, filter);
    DisposDialog(dialog->pointer());
    return hit;
}

}  // namespace

int16_t Alert(int16_t id, ModalFilterProcPtr filter)
{
    return alert(id, none, filter);
}

int16_t StopAlert(int16_t id, ModalFilterProcPtr filter)
{
    return alert(id, stop, filter);
}

int16_t NoteAlert(int16_t id, ModalFilterProcPtr filter)
{
    return alert(id, note, filter);
}

int16_t CautionAlert(int16_t id, ModalFilterProcPtr filter)
{
    return alert(id, caution, filter);
}

int16_t GetAlrtStage(void)
{
    return static_cast<int16_t>(latestStage < 0 ? 0 : latestStage);
}

void ResetAlrtStage(void)
{
    latestAlert = 0;
    latestStage = -1;
}
