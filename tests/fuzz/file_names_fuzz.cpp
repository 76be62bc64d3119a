// Any bytes as a Mac name: refused, or a name that is one part of a path; any two names are in some order.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "files/names.h"
#include "toolbox/host/utf8.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace toolbox::files;
    const std::string_view name(reinterpret_cast<const char *>(data), size);
    std::string linuxName;
    if (linuxNameOf(name, linuxName) == noErr &&
        (linuxName.empty() || linuxName == "." || linuxName == ".." || linuxName.starts_with("._") ||
         linuxName.find('/') != linuxName.npos || linuxName.find('\0') != linuxName.npos ||
         !toolbox::isUtf8(linuxName)))
        abort();
    const std::string_view one = name.substr(0, size / 2), other = name.substr(size / 2);
    const int order = compareNames(one, other), reverse = compareNames(other, one);
    if ((order > 0) != (reverse < 0) || (order == 0) != (reverse == 0) || compareNames(one, one) != 0)
        abort();
    return 0;
}
