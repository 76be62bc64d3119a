// Riders files with hostile annotations, made by the plug-in as it makes all.
#pragma once

#include "hostile/hostile_texts.h"
#include "source/making.h"

class HostileRiders : public Making {
protected:
    std::string ridersOf(const HostileAnnotation &annotation);
    // For messages.
    static std::string shownOf(const HostileAnnotation &annotation);
};
