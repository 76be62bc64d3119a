// Any bytes as a page's process plates: read or refused, all four alike, and
// nothing past their width.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "io/refusal.h"
#include "plates/files/process_plates.h"

namespace {

// A file in memory, of the header's fixed bytes and a width below 256, then the data.
std::string fileOf(const uint8_t *data, size_t size)
{
    static const int file = memfd_create("plates", 0);
    std::string bytes(128, '\0');
    bytes[0] = 10, bytes[2] = 1, bytes[3] = 4, bytes[65] = 1;
    if (size > 0)
        bytes[8] = static_cast<char>(data[0]);
    bytes.append(reinterpret_cast<const char *>(data), size);
    if (ftruncate(file, 0) != 0 ||
        pwrite(file, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        abort();
    return "/proc/self/fd/" + std::to_string(file);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    try {
        const auto plates = riders::plates::readProcessPlates(fileOf(data, size), 100, 10);
        for (const riders::plates::BitPlate &plate : plates) {
            if (plates.size() != 4 || plate.width != plates[0].width || plate.height != plates[0].height ||
                plate.bits.size() != plate.rowBytes * static_cast<size_t>(plate.height))
                abort();
            for (int y = 0; y < plate.height; ++y)
                for (int x = plate.width; x < static_cast<int>(plate.rowBytes) * 8; ++x)
                    if (plate.at(x, y))
                        abort();
        }
    } catch (const riders::io::Refusal &) {
    }
    return 0;
}
