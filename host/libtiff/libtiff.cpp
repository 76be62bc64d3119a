#include "libtiff/libtiff.h"

namespace riders::tiff {

const Libtiff &libtiff()
{
    static const Libtiff kLibtiff;
    return kLibtiff;
}

}  // namespace riders::tiff
