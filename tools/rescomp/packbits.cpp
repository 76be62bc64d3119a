#include "packbits.h"

#include <algorithm>

namespace rescomp {
namespace {

constexpr std::size_t longestPiece = 128;
// Two equal bytes among others are shorter unpacked.
constexpr std::size_t shortestRun = 3;

std::size_t runAt(std::string_view row, std::size_t at)
{
    std::size_t end = row.find_first_not_of(row[at], at);
    return std::min(std::min(end, row.size()) - at, longestPiece);
}

std::size_t literalAt(std::string_view row, std::size_t at)
{
    std::size_t end = at;
    while (end < row.size() && runAt(row, end) < shortestRun)
        ++end;
    return std::min(end - at, longestPiece);
}

}  // namespace

std::string packBits(std::string_view row)
{
    std::string packed;
    for (std::size_t at = 0; at < row.size();) {
        std::size_t run = runAt(row, at);
        if (run >= shortestRun) {
            packed += static_cast<char>(1 - static_cast<int>(run));
            packed += row[at];
            at += run;
            continue;
        }
        std::size_t literal = literalAt(row, at);
        packed += static_cast<char>(literal - 1);
        packed += row.substr(at, literal);
        at += literal;
    }
    return packed;
}

}  // namespace rescomp
