// The About box and, behind it, the credits panel.
#pragma once

#include "toolbox/types.h"

void AboutInit();
// The credits panel's hook.
void CreditsInit();

// Shows the About box until the user closes it. Needs the settings and the
// environment; may change useColor. Answers 1.
int16_t HandleAboutDialog();
