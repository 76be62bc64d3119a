#include "quickdraw/freetype.h"

#include <type_traits>

namespace toolbox::quickdraw {

// Fonts that are still open at the end are closed after all that is static here.
const FreeType &freeType()
{
    static_assert(std::is_trivially_destructible_v<FreeType>);
    static const FreeType library;
    return library;
}

}  // namespace toolbox::quickdraw
