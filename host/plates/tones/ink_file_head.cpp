#include "plates/tones/ink_file_head.h"

#include "plates/files/plate.h"
#include "plates/files/plate_files.h"

namespace riders::plates {
namespace {

constexpr std::size_t kFixedBytes = 26;
constexpr std::uint64_t kCmyk = 4, kAlphaNames = 1006, kDisplays = 1007;
constexpr std::size_t kMostPlates = 64;  // the interpreter has fewer

// The bytes one after the other, as far as they are there.
class Reading {
public:
    explicit Reading(std::string_view bytes) : bytes_(bytes) {}

    bool isShort() const { return short_; }
    bool isAtEnd() const { return at_ >= bytes_.size(); }
    std::size_t at() const { return at_; }
    std::string_view take(std::uint64_t count)
    {
        short_ |= count > bytes_.size() - at_;
        const std::string_view taken = short_ ? std::string_view{} : bytes_.substr(at_, count);
        at_ += taken.size();
        return taken;
    }
    std::uint64_t number(std::size_t bytes)
    {
        std::uint64_t value = 0;
        for (const char c : take(bytes))
            value = value << 8 | static_cast<unsigned char>(c);
        return value;
    }

private:
    std::string_view bytes_;
    std::size_t at_ = 0;
    bool short_ = false;
};

// Each with its length before it.
std::vector<std::string> namesIn(std::string_view bytes, std::size_t count)
{
    if (bytes.empty())
        return {};
    Reading reading(bytes);
    std::vector<std::string> names;
    for (std::size_t i = 0; i < count; ++i)
        names.emplace_back(reading.take(reading.number(1)));
    return names;
}

// Each is a colour space and what there is of its four parts, 65535 being none.
std::vector<std::array<double, 4>> coloursIn(std::string_view bytes, std::size_t count)
{
    Reading reading(bytes);
    std::vector<std::array<double, 4>> colours(count);
    for (std::array<double, 4> &colour : colours) {
        reading.take(2);
        for (double &part : colour)
            part = 1 - static_cast<double>(reading.number(2)) / 65535;
        reading.take(4);
    }
    if (reading.isShort())
        colours.clear();
    return colours;
}

std::string_view resourceOf(std::uint64_t wanted, std::string_view resources)
{
    Reading reading(resources);
    while (!reading.isAtEnd() && !reading.isShort()) {
        reading.take(4);
        const std::uint64_t kind = reading.number(2);
        reading.take(reading.number(1) | 1);  // its name, with its length an even number of bytes
        const std::uint64_t length = reading.number(4);
        const std::string_view bytes = reading.take(length);
        if (kind == wanted)
            return bytes;
        reading.take(length & 1);
    }
    return {};
}

}  // namespace

std::optional<InkFileHead> inkFileHead(std::string_view bytes, const std::filesystem::path &file)
{
    if (bytes.size() < kFixedBytes)
        return {};
    Reading reading(bytes);
    const bool signature = reading.take(6) == std::string_view("8BPS\0\1", 6);
    reading.take(6);
    const std::uint64_t plates = reading.number(2), rows = reading.number(4), columns = reading.number(4);
    const std::uint64_t depth = reading.number(2), mode = reading.number(2);
    constexpr std::size_t kProcess = std::size(kProcessPlates);
    if (!signature || depth != 8 || mode != kCmyk || plates < kProcess || plates > kMostPlates || rows < 1 ||
        rows > kLongestPlateSide || columns < 1 || columns > kLongestPlateSide)
        refusePicture(file);
    reading.take(reading.number(4));
    const std::string_view resources = reading.take(reading.number(4));
    reading.take(reading.number(4));
    const std::uint64_t compression = reading.number(2);
    if (reading.isShort())
        return {};
    const std::size_t inks = plates - kProcess;
    InkFileHead head{static_cast<int>(columns), static_cast<int>(rows),
                     namesIn(resourceOf(kAlphaNames, resources), inks),
                     coloursIn(resourceOf(kDisplays, resources), inks), reading.at()};
    if (compression != 0 || head.inks.size() != plates - kProcess)
        refusePicture(file);
    return head;
}

}  // namespace riders::plates
