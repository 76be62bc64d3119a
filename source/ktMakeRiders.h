// Making a riders file: where it goes, and what comes in which order. The pieces
// themselves are in ktRiderSections.
#pragma once

#include "source/ktRiderSections.h"
#include "toolbox/types.h"

// Asks where to save, and writes. 0: the user cancelled; 1: written, or the
// failure has been shown. The settings dialog must be open, its popups with it.
int16_t MakeCustomRiders();
