// Making a riders file: where it goes, and the order of its sections. These are
// written by ktRiderSections.
#pragma once

#include "source/ktRiderSections.h"
#include "toolbox/types.h"

// Asks where to save, and writes. 0: the user cancelled; 1: written, or the
// failure has been shown. The settings dialog and its popups must be open.
int16_t MakeCustomRiders();
