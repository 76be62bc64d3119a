// libpng, loaded when a picture is written.
#pragma once

#include <png.h>

#include "io/shared_library.h"

namespace riders::png {

// The library's functions, without their prefix. They are called as its own documentation has them.
struct Libpng {
    io::SharedLibrary library{"libpng16.so.16", "libpng16-16"};

    decltype(&::png_create_write_struct) createWriteStruct = library("png_create_write_struct");
    decltype(&::png_create_info_struct) createInfoStruct = library("png_create_info_struct");
    decltype(&::png_destroy_write_struct) destroyWriteStruct = library("png_destroy_write_struct");
    decltype(&::png_set_longjmp_fn) setLongjmp = library("png_set_longjmp_fn");
    decltype(&::png_init_io) initIo = library("png_init_io");
    decltype(&::png_set_IHDR) setHeader = library("png_set_IHDR");
    decltype(&::png_set_PLTE) setPalette = library("png_set_PLTE");
    decltype(&::png_set_pHYs) setResolution = library("png_set_pHYs");
    decltype(&::png_set_filter) setFilter = library("png_set_filter");
    decltype(&::png_set_compression_level) setCompressionLevel = library("png_set_compression_level");
    decltype(&::png_write_info) writeInfo = library("png_write_info");
    decltype(&::png_write_row) writeRow = library("png_write_row");
    decltype(&::png_write_end) writeEnd = library("png_write_end");
    decltype(&::png_image_write_to_memory) writeToMemory = library("png_image_write_to_memory");
};

// Loads it the first time. Throws io::Refusal where it is not installed.
const Libpng &libpng();

}  // namespace riders::png
