// Which files an open dialog of the plug-in lists.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "toolbox/host/user.h"

// Puts a text, "A text", and a file of another type, "B other", into the folder,
// lets ask put up the dialog, which the user cancels, and returns those of the
// two that were shown.
std::vector<std::string> listedOfTwo(const std::filesystem::path &folder, toolbox::ScriptedUser &user,
                                     const std::function<void()> &ask);
