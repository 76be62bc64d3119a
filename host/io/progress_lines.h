// How far work has got, from one of the program's processes to another.
#pragma once

#include <optional>
#include <string_view>

namespace riders::io {

// Where RIDERS_PROGRESS is "lines" in its environment, a process writes such lines to standard error.
bool wantsProgressLines();
// `pages` is 0 until it is known how many there are; the work has then read `done`.
void tellProgress(int done, int pages);

struct ToldProgress {
    int done = 0, pages = 0;
};
// Of such a line; nothing where the line is another.
std::optional<ToldProgress> toldProgress(std::string_view line);

}  // namespace riders::io
