// The four texts that stand for ^0 to ^3. Private to the Dialog Manager.
#pragma once

#include <string>
#include <string_view>

namespace toolbox::dialogs {

std::string substituted(std::string_view text);
void forgetParameters();

}  // namespace toolbox::dialogs
