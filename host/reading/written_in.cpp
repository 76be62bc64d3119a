#include "reading/written_in.h"

#include <algorithm>
#include <charconv>

#include "reading/lines.h"

namespace riders::reading {
namespace {

constexpr std::string_view kAfterShape = "%end-of-dot-shape%";
constexpr std::size_t kTextMark = 256;  // a percent sign and hyphens, after font and annotation

// Takes the word and what it stands before off the front; false where the text does not begin so.
bool take(std::string_view &text, std::string_view word)
{
    if (!text.starts_with(word))
        return false;
    text.remove_prefix(word.size());
    return true;
}

bool takeFromEnd(std::string_view &text, std::string_view word)
{
    if (!text.ends_with(word))
        return false;
    text.remove_suffix(word.size());
    return true;
}

// The bytes of "<4379616E>", taken off the front.
std::optional<std::string> takeHex(std::string_view &text)
{
    const std::size_t end = text.find('>');
    if (!text.starts_with('<') || end == std::string_view::npos || end % 2 == 0)
        return {};
    std::string bytes;
    for (std::size_t at = 1; at < end; at += 2) {
        unsigned value = 0;
        if (std::from_chars(text.data() + at, text.data() + at + 2, value, 16).ptr != text.data() + at + 2)
            return {};
        bytes += static_cast<char>(value);
    }
    text.remove_prefix(end + 1);
    return bytes;
}

class Reader {
public:
    explicit Reader(std::string_view riders) : lines_(riders) {}

    Written read()
    {
        for (std::string_view line; lines_.next(line);)
            if (line == "%Zu3_RidersSetup")
                break;
            else if (!takeText(line) && !takeNumber(line))
                takeRest(line);
        return written_;
    }

private:
    // What reaches from this line on up to a mark: the line is looked at again from its beginning.
    bool takeText(std::string_view line)
    {
        std::string_view rest = line;
        if (take(rest, "riderReadSpot ")) {
            written_.shape = bodyFrom(rest);
            return true;
        }
        if (take(rest, "/riderFont riderReadText ")) {
            annotation().font = lines_.upTo(rest, textMark());
            return true;
        }
        if (take(rest, "/riderText riderReadText ")) {
            annotation().text = lines_.upTo(rest, textMark());
            return true;
        }
        const std::optional<std::string> plate = takeHex(rest);
        if (!plate || !take(rest, " riderShapeOnPlate "))
            return false;
        written_.entries.push_back({*plate, WrittenEntry::shape, bodyFrom(rest)});
        return true;
    }

    bool takeNumber(std::string_view line)
    {
        std::string_view value = line;
        if (take(value, "/riderFrequency ") && takeFromEnd(value, " def"))
            written_.frequency = value;
        else if (value = line; take(value, "/riderAngle ") && takeFromEnd(value, " def"))
            written_.angle = value;
        else if (value = line; take(value, "/riderFontSize ") && takeFromEnd(value, " def"))
            annotation().size = value;
        else if (value = line; takeFromEnd(value, " setflat") && value.find(' ') == value.npos)
            written_.flatness = value;
        else if (value = line; takeFromEnd(value, " riderAddPlates") && value.find(' ') == value.npos)
            written_.plates = value;
        else
            return false;
        return true;
    }

    void takeRest(std::string_view line)
    {
        if (line.starts_with("/faultInfo "))
            written_.errorHandler = true;
        if (take(line, "%Zu3_RidersShape ")) {
            const std::optional<std::string> plate = takeHex(line);
            if (plate && take(line, " "))
                if (std::optional<std::string> file = takeHex(line))
                    written_.shapeNames.push_back({*plate, *file});
            return;
        }
        const std::optional<std::string> plate = takeHex(line);
        if (!plate || !takeFromEnd(line, " riderOnPlate"))
            return;
        if (take(line, " 0 "))
            written_.entries.push_back({*plate, WrittenEntry::frequency, std::string(line)});
        else if (take(line, " 1 "))
            written_.entries.push_back({*plate, WrittenEntry::angle, std::string(line)});
    }

    // A line end of ours is between the body and the mark.
    std::string bodyFrom(std::string_view rest)
    {
        std::string body = lines_.upTo(rest, kAfterShape);
        if (body.ends_with('\n'))
            body.pop_back();
        return body;
    }

    WrittenAnnotation &annotation()
    {
        return written_.annotation ? *written_.annotation : written_.annotation.emplace();
    }
    static std::string textMark() { return "%" + std::string(kTextMark - 1, '-'); }

    Lines lines_;
    Written written_;
};

}  // namespace

Written writtenIn(std::string_view riders)
{
    return Reader(riders).read();
}

}  // namespace riders::reading
