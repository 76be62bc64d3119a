#include "resources.h"

#include "toolbox/host/resource_fork.h"
#include "toolbox/host/text.h"

namespace rescomp {
namespace {

std::string typeText(std::uint32_t type)
{
    std::string roman;
    for (int shift = 24; shift >= 0; shift -= 8)
        roman += static_cast<char>(type >> shift & 0xFF);
    return "'" + toolbox::utf8FromRoman(roman) + "'";
}

}  // namespace

void Resources::add(Compiled resource, const Place &place)
{
    auto [earlier, isNew] = places_.try_emplace({resource.type, resource.id}, place);
    if (!isNew)
        throw SourceError(place, typeText(resource.type) + " " + std::to_string(resource.id) +
                                     " is there already, at " + earlier->second.text());
    all_.push_back(std::move(resource));
}

std::string Resources::fork(const Place &place) const
{
    if (all_.empty())
        return {};
    std::vector<toolbox::resources::ForkEntry> entries;
    for (const Compiled &each : all_)
        entries.push_back({each.type, each.id, each.attributes, each.name, each.data});
    std::optional<std::string> bytes = toolbox::resources::forkBytes(entries);
    if (!bytes)
        throw SourceError(place, "the resources are too many or too large for one fork");
    return *bytes;
}

}  // namespace rescomp
