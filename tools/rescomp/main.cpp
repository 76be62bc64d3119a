// rescomp: compiles a resource source to a resource fork.
#include <cstdio>
#include <exception>
#include <string>

#include "compiler.h"

namespace {

constexpr int done = 0, refused = 1, wrongUsage = 2;

struct Arguments {
    std::string source;
    std::string appleDouble;
    std::string fork;
};

bool parse(int count, char **words, Arguments &arguments)
{
    for (int i = 1; i < count; ++i) {
        std::string word = words[i];
        if (word == "-o" || word == "--fork") {
            if (++i == count)
                return false;
            (word == "-o" ? arguments.appleDouble : arguments.fork) = words[i];
        } else if (word.starts_with("-") || !arguments.source.empty()) {
            return false;
        } else {
            arguments.source = word;
        }
    }
    return !arguments.source.empty() && !(arguments.appleDouble.empty() && arguments.fork.empty());
}

void run(const Arguments &arguments)
{
    std::string fork = rescomp::compile(arguments.source).fork({arguments.source, 1});
    if (!arguments.appleDouble.empty())
        rescomp::writeWhole(arguments.appleDouble, rescomp::appleDoubleAround(fork));
    if (!arguments.fork.empty())
        rescomp::writeWhole(arguments.fork, fork);
}

}  // namespace

int main(int count, char **words)
{
    Arguments arguments;
    if (!parse(count, words, arguments)) {
        std::fputs("usage: rescomp SOURCE [-o APPLEDOUBLE] [--fork FORK]\n"
                   "Compiles a resource source to a resource fork, inside an AppleDouble file or bare.\n",
                   stderr);
        return wrongUsage;
    }
    try {
        run(arguments);
        return done;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return refused;
    }
}
