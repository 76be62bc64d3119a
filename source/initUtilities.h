// Measuring the machine: fills the environment record.
#pragma once

#include "source/environment.h"

// Fills the record. Does not return when QuickDraw cannot be asked.
void GetEnvirInfo();
// Puts the system version into the record; Gestalt's result.
OSErr SystemVersionCheck();

// For start-up code that must check a trap before using it. Nothing calls
// TrapAvailable so far, which alone calls the other two: they belong to the set.
//
// Whether a trap word has its own routine.
Boolean TrapAvailable(uint16_t trap);
// ToolTrap or OSTrap, by bit 11 of the trap word.
int16_t GetTrapType(uint16_t trap);
// Entries in the toolbox trap table: 512 or 1024.
int16_t NumToolboxTraps();
