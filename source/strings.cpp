#include "source/strings.h"

#include <algorithm>

#include "source/environment.h"
#include "toolbox/memory.h"
#include "toolbox/quickdraw.h"

namespace {

constexpr unsigned char kEllipsis = 0xC9;

unsigned char Separator()
{
    return static_cast<unsigned char>(gEnvirInfo->decimalPt);
}

bool IsDigit(unsigned char character)
{
    return character >= '0' && character <= '9';
}

double DigitsValue(ConstStr255Param text, int first, int last)
{
    double value = 0.0;
    for (int i = first; i <= last; ++i)
        value = value * 10.0 + (text[i] - '0');
    return value;
}

}  // namespace

void CopyPStr(StringPtr source, StringPtr destination, int16_t limit)
{
    if (limit < source[0])
        source[0] = static_cast<unsigned char>(std::max<int>(limit, 0));
    BlockMove(source, destination, source[0] + 1);
}

int16_t ConcatPStr(StringPtr source, StringPtr destination, int16_t limit)
{
    int room = std::min<int>(limit, 255) - destination[0];
    if (room < source[0])
        source[0] = static_cast<unsigned char>(std::max(room, 0));
    BlockMove(source + 1, destination + destination[0] + 1, source[0]);
    destination[0] = static_cast<unsigned char>(destination[0] + source[0]);
    return destination[0];
}

Boolean ComparePStr(ConstStr255Param a, ConstStr255Param b)
{
    return std::equal(a, a + a[0] + 1, b);
}

int16_t PStrToDouble(ConstStr255Param text, double *value)
{
    *value = 0.0;
    int separators = 0;
    int position = 0;
    for (int i = 1; i <= text[0]; ++i) {
        if (text[i] == Separator()) {
            ++separators;
            position = i;
        } else if (!IsDigit(text[i])) {
            return kNotANumber;
        }
    }
    if (separators > 1)
        return kTooManySeparators;
    if (separators == 0) {
        *value = DigitsValue(text, 1, text[0]);
        return kWholeNumber;
    }
    double divisor = 1.0;
    for (int i = position + 1; i <= text[0]; ++i)
        divisor *= 10.0;
    *value = DigitsValue(text, 1, position - 1) + DigitsValue(text, position + 1, text[0]) / divisor;
    return kNumberWithDecimals;
}

int16_t GetDecimalPosition(ConstStr255Param text)
{
    int16_t position = -1;
    for (int16_t i = 1; i <= text[0]; ++i) {
        if (text[i] != Separator())
            continue;
        if (position != -1)
            return -1;
        position = i;
    }
    return position;
}

Boolean AddLeadingZero(StringPtr text)
{
    // A text that is full has no room to grow.
    if (GetDecimalPosition(text) != 1 || text[0] == 255)
        return false;
    BlockMove(text + 1, text + 2, text[0]);
    text[1] = '0';
    ++text[0];
    return true;
}

Boolean RemoveLeadingZeros(StringPtr text)
{
    if (text[0] < 2 || text[1] != '0' || text[2] == Separator())
        return false;
    int zeros = 0;
    while (zeros < text[0] && text[zeros + 1] == '0')
        ++zeros;
    BlockMove(text + 1 + zeros, text + 1, text[0] - zeros);
    text[0] = static_cast<unsigned char>(text[0] - zeros);
    return true;
}

Boolean RemoveTrailingZeros(StringPtr text)
{
    int16_t position = GetDecimalPosition(text);
    if (position == -1)
        return false;
    while (text[0] >= position && (text[text[0]] == '0' || text[text[0]] == Separator()))
        --text[0];
    return text[0] < position;
}

void ConvertDecimalToPeriod(StringPtr text)
{
    std::replace(text + 1, text + 1 + text[0], Separator(), static_cast<unsigned char>('.'));
}

void ElipseString(StringPtr text, int16_t width)
{
    if (width < 20 || StringWidth(text) <= width)
        return;
    while (text[0] > 0 && StringWidth(text) > width - 11)
        --text[0];
    // The ellipsis takes the place of the last two characters, and of a space
    // before it.
    int kept = std::max(text[0] - 2, 0);
    if (kept > 0 && text[kept] == ' ')
        --kept;
    text[kept + 1] = kEllipsis;
    text[0] = static_cast<unsigned char>(kept + 1);
}

void RemoveTrailingSpaces(StringPtr text)
{
    while (text[0] > 0 && text[text[0]] == ' ')
        --text[0];
}
