// toml++, without its library, which would take a command longer to load than most take to run. Its own checks fail
// for some texts that it then refuses as it should; without them compilers would be told that this cannot happen.
#pragma once

#pragma push_macro("NDEBUG")
#undef NDEBUG
#define TOML_ASSERT(condition) static_cast<void>(0)
#include <toml++/toml.h>
#pragma pop_macro("NDEBUG")
