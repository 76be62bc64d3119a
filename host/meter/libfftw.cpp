#include "meter/libfftw.h"

namespace riders::meter {

const Libfftw &libfftw()
{
    static const Libfftw kLibfftw;
    return kLibfftw;
}

}  // namespace riders::meter
