// Any bytes as the beginning of a file with the plates of a page: a head is whole or refused.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "io/refusal.h"
#include "plates/files/plate.h"
#include "plates/tones/ink_file_head.h"
#include "plates/tones/page_boxes.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    riders::plates::PageBoxes boxes;
    riders::plates::takeBoxLine(bytes, 1, boxes);
    for (const auto &[page, found] : boxes)
        for (const auto &box : {found.trim, found.bleed})
            if (box && !(box->left < box->right && box->bottom < box->top))
                abort();
    try {
        const auto head = riders::plates::inkFileHead(bytes, "1.psd");
        if (head && (head->columns < 1 || head->rows < 1 || head->columns > riders::plates::kLongestPlateSide ||
                     head->tones > size || head->inks.size() > 60))
            abort();
    } catch (const riders::io::Refusal &) {
    }
    return 0;
}
