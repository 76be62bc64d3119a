// libtiff: films, and the interpreter's pictures. It is loaded when it is wanted: with the libraries that it
// brings it is a third of what a program that links it waits for before it starts.
#pragma once

#include <tiffio.h>

#include <memory>

#include "io/shared_library.h"

namespace riders::tiff {

// The library's functions, without their prefix. They are called as its own documentation has them.
struct Libtiff {
    io::SharedLibrary library{"libtiff.so.6", "libtiff6"};

    decltype(&::TIFFOpen) open = library("TIFFOpen");
    decltype(&::TIFFClientOpen) clientOpen = library("TIFFClientOpen");
    decltype(&::TIFFClose) close = library("TIFFClose");
    decltype(&::TIFFFlush) flush = library("TIFFFlush");
    decltype(&::TIFFGetField) getField = library("TIFFGetField");
    decltype(&::TIFFGetFieldDefaulted) getFieldDefaulted = library("TIFFGetFieldDefaulted");
    decltype(&::TIFFSetField) setField = library("TIFFSetField");
    decltype(&::TIFFScanlineSize64) scanlineSize = library("TIFFScanlineSize64");
    decltype(&::TIFFReadScanline) readScanline = library("TIFFReadScanline");
    decltype(&::TIFFWriteScanline) writeScanline = library("TIFFWriteScanline");
    decltype(&::TIFFWriteRawStrip) writeRawStrip = library("TIFFWriteRawStrip");
    decltype(&::TIFFTileSize) tileSize = library("TIFFTileSize");
    decltype(&::TIFFComputeTile) computeTile = library("TIFFComputeTile");
    decltype(&::TIFFReadEncodedTile) readEncodedTile = library("TIFFReadEncodedTile");
    decltype(&::TIFFWriteRawTile) writeRawTile = library("TIFFWriteRawTile");
    decltype(&::TIFFWriteBufferSetup) writeBufferSetup = library("TIFFWriteBufferSetup");
    decltype(&::TIFFSetErrorHandler) setErrorHandler = library("TIFFSetErrorHandler");
    decltype(&::TIFFSetWarningHandler) setWarningHandler = library("TIFFSetWarningHandler");
};

// Loads it the first time. Throws io::Refusal where it is not installed.
const Libtiff &libtiff();

struct Close {
    void operator()(TIFF *file) const { libtiff().close(file); }
};
// Closed at its end.
using File = std::unique_ptr<TIFF, Close>;

}  // namespace riders::tiff
