// Programs that are killed at a chosen moment.
#pragma once

#include <string>
#include <vector>

// Runs the program of that path in the folder, without output, and kills it as it is about to make its nth (from 1)
// system call that changes files. False when it ended before that.
bool killedAtChange(int nth, const std::vector<std::string> &command, const std::string &folder);
