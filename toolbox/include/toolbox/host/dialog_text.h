// What a person reads in the dialog in front.
#pragma once

#include <string>

namespace toolbox {

// Its static texts in item order, the parameters of ParamText in place, joined
// by blanks, line ends as blanks, as UTF-8. Empty when no dialog is open.
std::string frontDialogText();

}  // namespace toolbox
