#include "dialogs/templates.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "dialogs/placement.h"
#include "toolbox/bigendian.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace toolbox::dialogs {
namespace {

// Reads a resource's bytes from front to back. What lies beyond the end reads as
// zero, and complete() is false then.
class Reader {
public:
    explicit Reader(const std::string &bytes) : bytes_(bytes.begin(), bytes.end()) {}

    bool complete() const { return at_ <= bytes_.size(); }
    bool more() const { return at_ < bytes_.size(); }

    template <typename Stored>
    Stored take()
    {
        Stored stored{};
        if (at_ + sizeof stored <= bytes_.size())
            std::memcpy(&stored, bytes_.data() + at_, sizeof stored);
        at_ += sizeof stored;
        return stored;
    }
    int byte() { return take<unsigned char>(); }
    int16_t word() { return take<BigInt16>(); }
    int32_t longWord() { return take<BigInt32>(); }

    Rect rect()
    {
        int16_t top = word(), left = word(), bottom = word(), right = word();
        return {top, left, bottom, right};
    }

    std::string pascal()
    {
        size_t length = static_cast<size_t>(byte());
        std::string text;
        if (at_ < bytes_.size())
            text.assign(bytes_.data() + at_, std::min(length, bytes_.size() - at_));
        at_ += length;
        return text;
    }

    void toEven() { at_ += at_ & 1; }

private:
    std::vector<char> bytes_;
    size_t at_ = 0;
};

// Empty when there is none: too short for any template.
std::string bytesOf(ResType type, int16_t id)
{
    Handle resource = GetResource(type, id);
    if (!resource || !*resource)
        return {};
    return std::string(*resource, static_cast<size_t>(GetHandleSize(resource)));
}

AlertTemplate::Stage stageOf(int nibble)
{
    return {static_cast<int16_t>(nibble & 8 ? 2 : 1), (nibble & 4) != 0, nibble & 3};
}

}  // namespace

int16_t ItemTemplate::number() const
{
    BigInt16 stored = 0;
    if (data.size() >= sizeof stored)
        std::memcpy(&stored, data.data(), sizeof stored);
    return stored;
}

std::optional<DialogTemplate> parseDialog(const std::string &bytes)
{
    Reader in(bytes);
    DialogTemplate made;
    made.bounds = in.rect();
    made.procID = in.word();
    made.visible = in.byte() != 0;
    in.byte();
    made.goAway = in.byte() != 0;
    in.byte();
    made.refCon = in.longWord();
    made.itemsID = in.word();
    made.title = in.pascal();
    if (!in.complete())
        return std::nullopt;
    in.toEven();
    if (in.more())
        made.bounds = placed(made.bounds, in.word());
    return made;
}

std::optional<AlertTemplate> parseAlert(const std::string &bytes)
{
    Reader in(bytes);
    AlertTemplate made;
    made.bounds = in.rect();
    made.itemsID = in.word();
    int stages = in.word();
    for (int i = 0; i < 4; ++i)
        made.stages[i] = stageOf(stages >> 4 * i & 15);
    if (!in.complete())
        return std::nullopt;
    if (in.more())
        made.bounds = placed(made.bounds, in.word());
    return made;
}

std::optional<std::vector<ItemTemplate>> parseItems(const std::string &bytes)
{
    Reader in(bytes);
    int count = static_cast<int16_t>(in.word() + 1);
    std::vector<ItemTemplate> items;
    for (int i = 0; i < count && in.complete(); ++i) {
        ItemTemplate item;
        in.longWord();
        item.box = in.rect();
        item.type = static_cast<int16_t>(in.byte());
        item.data = in.pascal();
        items.push_back(item);
        if (in.more())
            in.toEven();
    }
    if (!in.complete())
        return std::nullopt;
    return items;
}

std::optional<DialogTemplate> readDialog(int16_t id)
{
    return parseDialog(bytesOf('DLOG', id));
}

std::optional<AlertTemplate> readAlert(int16_t id)
{
    return parseAlert(bytesOf('ALRT', id));
}

std::optional<std::vector<ItemTemplate>> readItems(int16_t id)
{
    return parseItems(bytesOf('DITL', id));
}

std::optional<ControlTemplate> readControl(int16_t id)
{
    Reader in(bytesOf('CNTL', id));
    ControlTemplate made;
    made.box = in.rect();
    made.value = in.word();
    made.visible = in.byte() != 0;
    in.byte();
    made.max = in.word();
    made.min = in.word();
    made.procID = in.word();
    made.refCon = in.longWord();
    made.title = in.pascal();
    if (!in.complete())
        return std::nullopt;
    return made;
}

}  // namespace toolbox::dialogs
