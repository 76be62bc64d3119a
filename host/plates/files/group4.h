// Compression with CCITT group 4, faster than libtiff's, which takes longer than all else that is done to a
// screened plate.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "plates/files/group4_codes.h"

namespace riders::plates {

// Compresses a plate from its rows, from the top down. The bytes are those that libtiff makes of them.
class Group4Encoder {
public:
    explicit Group4Encoder(std::size_t columns);

    // The plate's next row: (columns + 7) / 8 bytes, 1 is black, the leftmost pixel in the highest bit.
    void row(const std::uint8_t *bits);
    // After the last row.
    void end();

    // What has been compressed and not yet been taken: whole bytes, most significant bit first.
    std::string_view bytes() const { return {reinterpret_cast<const char *>(bytes_.data()), size_}; }
    void taken() { size_ = 0; }

private:
    using Changes = std::vector<std::uint32_t>;

    void findChanges(const std::uint8_t *bits);
    void makeRoom(std::size_t size);
    void putRow();
    void putRun(std::uint32_t length, int colour);
    void put(const CodeWord &word);

    const std::uint32_t columns_;
    // Where the colour changes in this row and in the one above, from left to right, the first to black; then
    // columns_ several times. There is room for more.
    Changes changes_, above_;
    std::vector<std::uint8_t> bytes_;  // with room for more
    std::size_t size_ = 0;
    std::uint64_t pending_ = 0;  // bits that are no byte yet, in the lowest places
    int pendingCount_ = 0;
};

}  // namespace riders::plates
