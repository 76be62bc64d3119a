#include "toolbox/system.h"

#include "toolbox/host/session.h"
#include "toolbox/host/trace.h"

extern "C" void ExitToShell(void)
{
    toolbox::trace::line("process ended");
    throw toolbox::ProcessEnded{};
}
