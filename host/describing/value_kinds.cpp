#include "describing/value_kinds.h"

#include <map>

namespace riders::describing {
namespace {

const ValueKind kAnyFile{{}, true, false, {}};
const ValueKind kFolder{{}, false, true, {}};
const ValueKind kJob{{}, true, false, {"ps", "eps", "pdf"}};
const ValueKind kRiders{{}, true, false, {"riders"}};
const ValueKind kShape{"shapes", true, false, {"spot"}};
const ValueKind kSet{"sets", true, false, {"toml"}};

ValueKind known(const char *of)
{
    return {of, false, false, {}};
}

const std::map<std::string, ValueKind> &kindsByName()
{
    static const std::map<std::string, ValueKind> kinds = {
        {"--spot", kShape},
        {"shape", kShape},
        {"--screens", kSet},
        {"set", kSet},
        {"job", kJob},
        {"file", {{}, true, false, {"ps", "eps", "pdf", "riders"}}},
        {"--riders", kRiders},
        {"--queues", {{}, true, false, {"toml"}}},
        {"riders", kRiders},
        {"script", {{}, true, false, {"play"}}},
        {"--plate", known("plates")},
        {"--printer", known("queues")},
        {"--font", known("fonts")},
        {"--size", known("sizes")},
        {"--frequency", known("frequencies")},
        {"--angle", known("angles")},
        {"--flatness", known("flatnesses")},
    };
    return kinds;
}

const std::map<std::string, ValueKind> &kindsByValue()
{
    static const std::map<std::string, ValueKind> kinds = {
        {"DIR", kFolder}, {"FILE", kAnyFile}, {"DIR|FILE", kAnyFile}, {"OUT", kAnyFile}, {"JOB", kJob},
    };
    return kinds;
}

}  // namespace

ValueKind valueKindOf(const OptionWords &option)
{
    for (const std::string &name : option.names)
        if (const auto kind = kindsByName().find(name); kind != kindsByName().end())
            return kind->second;
    const auto kind = kindsByValue().find(option.value);
    return kind == kindsByValue().end() ? ValueKind() : kind->second;
}

}  // namespace riders::describing
