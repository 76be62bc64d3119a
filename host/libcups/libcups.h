// libcups: rasters, queues and their descriptions. It is loaded when it is wanted, since linking it takes a
// program five times as long to start.
#pragma once

#include <cups/cups.h>
#include <cups/ppd.h>
#include <cups/raster.h>

#include "io/shared_library.h"

namespace riders::cups {

// The library's functions, without their prefix. They are called as its own documentation has them.
struct Libcups {
    io::SharedLibrary library{"libcups.so.2", "libcups2"};

    // Rasters.
    decltype(&::cupsRasterOpen) rasterOpen = library("cupsRasterOpen");
    decltype(&::cupsRasterOpenIO) rasterOpenIO = library("cupsRasterOpenIO");
    decltype(&::cupsRasterClose) rasterClose = library("cupsRasterClose");
    decltype(&::cupsRasterInitPWGHeader) rasterInitPwgHeader = library("cupsRasterInitPWGHeader");
    decltype(&::cupsRasterReadHeader2) rasterReadHeader = library("cupsRasterReadHeader2");
    decltype(&::cupsRasterReadPixels) rasterReadPixels = library("cupsRasterReadPixels");
    decltype(&::cupsRasterWriteHeader2) rasterWriteHeader = library("cupsRasterWriteHeader2");
    decltype(&::cupsRasterWritePixels) rasterWritePixels = library("cupsRasterWritePixels");
    decltype(&::pwgMediaForSize) mediaForSize = library("pwgMediaForSize");

    // Queues.
    decltype(&::cupsServer) server = library("cupsServer");
    decltype(&::ippPort) port = library("ippPort");
    decltype(&::cupsEncryption) encryption = library("cupsEncryption");
    decltype(&::cupsUser) user = library("cupsUser");
    decltype(&::cupsLastErrorString) lastError = library("cupsLastErrorString");
    decltype(&::httpConnect2) connect = library("httpConnect2");
    decltype(&::httpClose) close = library("httpClose");
    decltype(&::httpSetTimeout) setTimeout = library("httpSetTimeout");
    decltype(&::cupsGetNamedDest) namedDest = library("cupsGetNamedDest");
    decltype(&::cupsFreeDests) freeDests = library("cupsFreeDests");
    decltype(&::cupsConnectDest) connectDest = library("cupsConnectDest");
    decltype(&::cupsAddOption) addOption = library("cupsAddOption");
    decltype(&::cupsFreeOptions) freeOptions = library("cupsFreeOptions");
    decltype(&::cupsGetOption) getOption = library("cupsGetOption");

    // Requests.
    decltype(&::cupsDoRequest) doRequest = library("cupsDoRequest");
    decltype(&::ippNewRequest) newRequest = library("ippNewRequest");
    decltype(&::ippDelete) deleteRequest = library("ippDelete");
    decltype(&::ippAddString) addString = library("ippAddString");
    decltype(&::ippAddStrings) addStrings = library("ippAddStrings");
    decltype(&::ippAddInteger) addInteger = library("ippAddInteger");
    decltype(&::ippFindAttribute) findAttribute = library("ippFindAttribute");
    decltype(&::ippFirstAttribute) firstAttribute = library("ippFirstAttribute");
    decltype(&::ippNextAttribute) nextAttribute = library("ippNextAttribute");
    decltype(&::ippGetName) attributeName = library("ippGetName");
    decltype(&::ippGetCount) attributeCount = library("ippGetCount");
    decltype(&::ippGetString) attributeString = library("ippGetString");
    decltype(&::ippGetBoolean) attributeBoolean = library("ippGetBoolean");
    decltype(&::ippGetInteger) attributeInteger = library("ippGetInteger");
    decltype(&::ippGetResolution) attributeResolution = library("ippGetResolution");
    decltype(&::ippGetStatusCode) statusCode = library("ippGetStatusCode");

    // Jobs.
    decltype(&::cupsCreateJob) createJob = library("cupsCreateJob");
    decltype(&::cupsStartDocument) startDocument = library("cupsStartDocument");
    decltype(&::cupsWriteRequestData) writeRequestData = library("cupsWriteRequestData");
    decltype(&::cupsFinishDocument) finishDocument = library("cupsFinishDocument");
    decltype(&::cupsCancelJob2) cancelJob = library("cupsCancelJob2");

    // A queue's description by its driver. The library deprecates these, but nothing else knows such queues.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    decltype(&::cupsGetPPD3) getPpd = library("cupsGetPPD3");
    decltype(&::ppdOpenFile) ppdOpenFile = library("ppdOpenFile");
    decltype(&::ppdClose) ppdClose = library("ppdClose");
    decltype(&::ppdMarkDefaults) ppdMarkDefaults = library("ppdMarkDefaults");
    decltype(&::ppdMarkOption) ppdMarkOption = library("ppdMarkOption");
    decltype(&::cupsMarkOptions) ppdMarkOptions = library("cupsMarkOptions");
    decltype(&::ppdFindOption) ppdFindOption = library("ppdFindOption");
    decltype(&::ppdFindChoice) ppdFindChoice = library("ppdFindChoice");
    decltype(&::ppdFindMarkedChoice) ppdFindMarkedChoice = library("ppdFindMarkedChoice");
    decltype(&::ppdFirstOption) ppdFirstOption = library("ppdFirstOption");
    decltype(&::ppdNextOption) ppdNextOption = library("ppdNextOption");
    decltype(&::ppdFindAttr) ppdFindAttr = library("ppdFindAttr");
    decltype(&::ppdFindNextAttr) ppdFindNextAttr = library("ppdFindNextAttr");
    decltype(&::cupsRasterInterpretPPD) rasterInterpretPpd = library("cupsRasterInterpretPPD");
#pragma GCC diagnostic pop
};

// Throws Refusal where the library is not installed.
const Libcups &libcups();

}  // namespace riders::cups
