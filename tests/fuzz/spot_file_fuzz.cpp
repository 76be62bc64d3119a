// Any bytes as a spot function file: imported with what follows the first carriage return, or refused with words.
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>

#include "fuzz/plugin_session.h"
#include "source/ktSpot.h"
#include "toolbox/memory.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static PluginSession session;
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    std::ofstream(session.folder / "spot", std::ios::binary | std::ios::trunc) << bytes;
    session.user.answerOpen(session.folder / "spot");
    const Boolean imported = DoSpotImport();
    session.user.forgetRest();
    if (!imported)
        return 0;
    const std::string body(*gSpotHandle, static_cast<size_t>(gSpotLength));
    DisposeHandle(gSpotHandle);
    gSpotHandle = nullptr;
    const size_t end = bytes.find('\r');
    if (bytes.substr(0, 96).find("%!KT1_Spot") == bytes.npos || end >= 96 || bytes.substr(end + 1) != body)
        abort();
    return 0;
}
