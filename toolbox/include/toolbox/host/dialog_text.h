// What a person reads in the dialog in front.
#pragma once

#include <string>

namespace toolbox {

// Its static texts in item order, with ParamText's texts in place of ^0 to ^3, as
// one line of UTF-8: texts are joined, and line ends replaced, by single blanks.
// Empty when the front window is not a dialog.
std::string frontDialogText();

}  // namespace toolbox
