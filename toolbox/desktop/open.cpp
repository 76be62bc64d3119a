// The name by which the program opens the display that the shared object makes.
#include "desktop/desktop_machine.h"
#include "desktop_loader/module.h"

extern "C" __attribute__((visibility("default"))) toolbox::Desktop *
riders_open_desktop(const toolbox::DesktopOptions &options)
{
    return new toolbox::desktop::DesktopMachine(options);
}
