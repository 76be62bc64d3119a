// The resources compiled so far.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "source.h"

namespace rescomp {

struct Compiled {
    std::uint32_t type = 0;
    std::int16_t id = 0;
    std::uint8_t attributes = 0;
    std::optional<std::string> name;
    std::string data;
};

class Resources {
public:
    // Throws SourceError when the type has that number already.
    void add(Compiled resource, const Place &place);
    const std::vector<Compiled> &all() const { return all_; }
    // The resource fork; empty when there are no resources. Throws SourceError
    // for place when they do not fit into one.
    std::string fork(const Place &place) const;

private:
    std::vector<Compiled> all_;
    std::map<std::pair<std::uint32_t, std::int16_t>, Place> places_;
};

}  // namespace rescomp
