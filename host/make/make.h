// `riders make`: the plug-in's own dialogs, filled in without a display.
#pragma once

#include <string>

#include "make/request.h"

namespace riders::make {

struct Made {
    std::string problem;  // for standard error; empty when all was done
    std::string note;     // what the user should know all the same; often empty
};

// Makes the riders file: it is then wholly new, or with a problem as it was. Only where the choices could not be
// saved is there a problem with the file made; it says so.
Made make(const MakeRequest &request);

}  // namespace riders::make
