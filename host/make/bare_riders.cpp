#include "make/bare_riders.h"

#include "io/refusal.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace riders::make {
namespace {

// The pieces before and after the flatness, see docs/riders-file.md.
enum { flatnessBegin = 16560, flatnessEnd = 16561 };
constexpr const char *kFlatness = "1";

std::string piece(int id)
{
    const Handle text = GetResource('TEXT', static_cast<int16_t>(id));
    if (text == nullptr || *text == nullptr)
        throw io::Refusal("there is not enough memory for the pieces of a riders file");
    return {*text, static_cast<std::size_t>(GetHandleSize(text))};
}

}  // namespace

bool choosesForAll(const MakeRequest &request)
{
    return request.frequency || request.angle || request.spot || request.flatness || request.annotation ||
           request.errorHandler;
}

MakeRequest withStandIn(MakeRequest request)
{
    request.flatness = kFlatness;
    return request;
}

std::string withoutStandIn(std::string riders)
{
    const std::string flatness = piece(flatnessBegin) + kFlatness + piece(flatnessEnd);
    const std::size_t at = riders.find(flatness);
    if (at == std::string::npos)
        throw io::Refusal("the riders file that was made is not as expected; riders.so is not of this version");
    return riders.erase(at, flatness.size());
}

}  // namespace riders::make
