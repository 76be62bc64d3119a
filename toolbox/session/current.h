// The running session. Only the start and stop of the Toolbox change it;
// managers ask toolbox::machine() and toolbox::configuration().
#pragma once

#include "toolbox/host/session.h"

namespace toolbox::session {

struct Session {
    Configuration configuration;
    Machine *machine = nullptr;   // nil while the Toolbox is not started
};

extern Session current;

}  // namespace toolbox::session
