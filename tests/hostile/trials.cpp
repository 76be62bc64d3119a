#include "hostile/trials.h"

#include <cstdlib>
#include <iostream>

namespace {

size_t numberFrom(const char *variable, size_t standard)
{
    const char *text = std::getenv(variable);
    return text ? std::strtoul(text, nullptr, 10) : standard;
}

}  // namespace

Trials::Trials(size_t standardCount)
    : seed(static_cast<unsigned>(numberFrom("RIDERS_HOSTILE_SEED", 1))),
      count(numberFrom("RIDERS_HOSTILE", standardCount))
{
    std::cout << "seed " << seed << ", " << count << " texts\n";
}
