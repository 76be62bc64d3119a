#include "printing/escp2_droplets.h"

#include <stdexcept>
#include <string>

namespace escp2 {
namespace {

constexpr char kEscape = 0x1b;

class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    std::vector<Page> read()
    {
        while (at_ < bytes_.size())
            readNext();
        if (!page_.empty())
            throw std::runtime_error("the last page has no end");
        return std::move(pages_);
    }

private:
    unsigned byte()
    {
        if (at_ == bytes_.size())
            throw std::runtime_error("the data end within a command");
        return static_cast<unsigned char>(bytes_[at_++]);
    }

    unsigned word()
    {
        const unsigned low = byte();
        return low | byte() << 8;
    }

    std::string_view take(std::size_t count)
    {
        if (bytes_.size() - at_ < count)
            throw std::runtime_error("the data end within a command");
        at_ += count;
        return bytes_.substr(at_ - count, count);
    }

    void readNext()
    {
        const unsigned first = byte();
        if (first == '\f')
            endPage();
        else if (first == '\r')
            x_ = 0;
        else if (first == kEscape)
            readCommand();
        else if (first != 0)
            throw std::runtime_error("byte " + std::to_string(first) + " at " + std::to_string(at_ - 1));
    }

    void endPage()
    {
        pages_.push_back(std::move(page_));
        page_.clear();
        x_ = y_ = 0;
    }

    void readCommand()
    {
        switch (const unsigned letter = byte()) {
        case '@':
            break;
        case '(':
            readLong();
            break;
        case 'i':
            readRaster();
            break;
        case 'U':  // one direction, or both
            byte();
            break;
        case '$':
            x_ = word() * horizontalUnit_;
            break;
        case 1:  // the end of packets: two lines of text
            for (int lines = 0; lines < 2;)
                lines += byte() == '\n';
            break;
        default:
            throw std::runtime_error("command " + std::to_string(letter) + " at " + std::to_string(at_ - 1));
        }
    }

    // A letter, how many bytes, the bytes, numbers least significant byte first.
    void readLong()
    {
        const unsigned letter = byte();
        const std::string_view data = take(word());
        const auto number = [&](std::size_t from, std::size_t bytes) {
            std::int64_t value = 0;
            for (std::size_t i = bytes; i-- > 0;)
                value = value << 8 | static_cast<unsigned char>(data.at(from + i));
            return bytes == 4 ? static_cast<std::int32_t>(value) : value;
        };
        if (letter == 'R') {
            skipRemote();
        } else if (letter == 'U') {
            if (data.size() == 1)
                setUnits(number(0, 1), number(0, 1), 3600);
            else
                setUnits(number(1, 1), number(2, 1), number(3, 2));
        } else if (letter == 'D') {
            const std::int64_t base = number(0, 2);
            rowDistance_ = number(2, 1) * whole(base);
            columnDistance_ = number(3, 1) * whole(base);
        } else if (letter == '$') {
            x_ = number(0, data.size()) * horizontalUnit_;
        } else if (letter == 'V') {
            y_ = number(0, data.size()) * verticalUnit_;
        } else if (letter == 'v') {
            y_ += number(0, data.size()) * verticalUnit_;
        }
    }

    // Settings in a language of their own, up to ESC 0 0 0.
    void skipRemote()
    {
        for (;;) {
            const unsigned first = byte();
            if (first == kEscape) {
                take(3);
                return;
            }
            byte();
            take(word());
        }
    }

    static std::int64_t whole(std::int64_t perInch)
    {
        if (perInch == 0 || kUnitsPerInch % perInch != 0)
            throw std::runtime_error("units of 1/" + std::to_string(perInch));
        return kUnitsPerInch / perInch;
    }

    void setUnits(std::int64_t vertical, std::int64_t horizontal, std::int64_t base)
    {
        verticalUnit_ = vertical * whole(base);
        horizontalUnit_ = horizontal * whole(base);
    }

    // Rows of one ink, as its nozzles print them in one pass of the head.
    void readRaster()
    {
        const int ink = static_cast<int>(byte());
        const unsigned compression = byte(), bits = byte();
        const std::size_t bytesInRow = word(), rows = word();
        std::vector<std::uint8_t> data;
        while (data.size() < bytesInRow * rows)
            readRun(data, compression == 0 ? bytesInRow * rows : 0);
        if (data.size() != bytesInRow * rows || compression > 1 || (bits != 1 && bits != 2))
            throw std::runtime_error("a raster of another kind at " + std::to_string(at_));
        for (std::size_t row = 0; row < rows; ++row)
            for (std::size_t pixel = 0; pixel < bytesInRow * 8 / bits; ++pixel) {
                const std::size_t bit = pixel * bits;
                const int size = data[row * bytesInRow + bit / 8] >> (8 - bits - bit % 8) & ((1 << bits) - 1);
                if (size != 0)
                    page_.push_back({x_ + static_cast<std::int64_t>(pixel) * columnDistance_,
                                     y_ + static_cast<std::int64_t>(row) * rowDistance_, ink, size});
            }
    }

    // PackBits, or so many bytes as they are.
    void readRun(std::vector<std::uint8_t> &data, std::size_t plain)
    {
        const unsigned count = plain ? 0 : byte();
        if (plain || count < 128) {
            for (const char value : take(plain ? plain : count + 1))
                data.push_back(static_cast<std::uint8_t>(value));
        } else {
            data.insert(data.end(), 257 - count, static_cast<std::uint8_t>(byte()));
        }
    }

    const std::string_view bytes_;
    std::size_t at_ = 0;
    std::int64_t x_ = 0, y_ = 0;
    std::int64_t verticalUnit_ = whole(360), horizontalUnit_ = whole(360);
    std::int64_t rowDistance_ = 0, columnDistance_ = 0;
    Page page_;
    std::vector<Page> pages_;
};

}  // namespace

std::vector<Page> read(std::string_view bytes)
{
    return Reader(bytes).read();
}

}  // namespace escp2
