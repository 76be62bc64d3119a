// FFTW, loaded when the first transform is made: most commands make none.
#pragma once

#include <fftw3.h>

#include "io/shared_library.h"

namespace riders::meter {

// The library's functions for single precision. They are called as its own documentation has them.
struct Libfftw {
    io::SharedLibrary library{"libfftw3f.so.3", "libfftw3-single3"};

    decltype(&::fftwf_alloc_real) allocateReal = library("fftwf_alloc_real");
    decltype(&::fftwf_alloc_complex) allocateComplex = library("fftwf_alloc_complex");
    decltype(&::fftwf_free) free = library("fftwf_free");
    decltype(&::fftwf_plan_dft_r2c_2d) planForward = library("fftwf_plan_dft_r2c_2d");
    decltype(&::fftwf_execute_dft_r2c) execute = library("fftwf_execute_dft_r2c");
    decltype(&::fftwf_destroy_plan) destroyPlan = library("fftwf_destroy_plan");
};

// Loads it the first time. Throws io::Refusal where it is not installed.
const Libfftw &libfftw();

}  // namespace riders::meter
