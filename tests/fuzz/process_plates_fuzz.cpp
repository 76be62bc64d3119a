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
    // The page's size, and then the file.
    const size_t head = size < 2 ? size : 2;
    const int columns = head > 0 ? data[0] : 1, down = head > 1 ? data[1] : 0;
    try {
        // Often as large as the file is.
        const int rows = down % 2 != 0 ? down : static_cast<int>(size) * 2 / (columns + 1);
        const auto plates = riders::plates::readProcessPlates(fileOf(data + head, size - head), columns, rows);
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
