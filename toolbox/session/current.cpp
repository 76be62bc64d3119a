#include "session/current.h"

#include <stdexcept>

namespace toolbox {

session::Session session::current;

Machine &machine()
{
    if (!session::current.machine)
        throw std::logic_error("the Toolbox is not started");
    return *session::current.machine;
}

const Configuration &configuration()
{
    return session::current.configuration;
}

}  // namespace toolbox
