#include "libpng/libpng.h"

namespace riders::png {

const Libpng &libpng()
{
    static const Libpng kLibpng;
    return kLibpng;
}

}  // namespace riders::png
