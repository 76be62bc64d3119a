#include "libcups/libcups.h"

namespace riders::cups {

const Libcups &libcups()
{
    static const Libcups kLibcups;
    return kLibcups;
}

}  // namespace riders::cups
