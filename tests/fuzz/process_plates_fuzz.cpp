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

// A file in memory.
std::string fileOf(const uint8_t *data, size_t size)
{
    static const int file = memfd_create("plates", 0);
    if (ftruncate(file, 0) != 0 || pwrite(file, data, size, 0) != static_cast<ssize_t>(size))
        abort();
    return "/proc/self/fd/" + std::to_string(file);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 2)
        return 0;
    try {
        // Often as large as the file is.
        const int columns = data[0],
                  rows = data[1] % 2 != 0 ? data[1] : static_cast<int>(size) * 2 / (columns + 1);
        const auto plates = riders::plates::readProcessPlates(fileOf(data + 2, size - 2), columns, rows);
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
