#include "quickdraw/palette.h"

namespace toolbox::quickdraw {

constexpr std::uint32_t white = 0xFFFFFF;

std::uint32_t shownColor(std::uint32_t rgb, int depth)
{
    return depth == 1 && rgb != white ? 0 : rgb;
}

std::uint32_t oppositeColor(std::uint32_t shown, int)
{
    return shown ^ white;
}

}  // namespace toolbox::quickdraw
