#include "io/become.h"

#include <errno.h>
#include <unistd.h>

#include "io/refusal.h"

namespace riders::io {

void becomeProgram(std::vector<std::string> words)
{
    std::vector<char *> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    execv(pointers[0], pointers.data());
    refuseErrno(words[0], errno);
}

}  // namespace riders::io
