#include "io/nearest.h"

#include <algorithm>
#include <cctype>

namespace riders::io {
namespace {

constexpr std::size_t kLongest = 64;  // letters; what is longer is no word

char small(char letter)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

std::size_t mistakes(std::string_view one, std::string_view other)
{
    std::vector<std::vector<std::size_t>> far(one.size() + 1, std::vector<std::size_t>(other.size() + 1));
    for (std::size_t i = 0; i <= one.size(); ++i)
        for (std::size_t j = 0; j <= other.size(); ++j) {
            if (i == 0 || j == 0) {
                far[i][j] = i + j;
                continue;
            }
            const bool same = small(one[i - 1]) == small(other[j - 1]);
            far[i][j] = std::min({far[i - 1][j] + 1, far[i][j - 1] + 1, far[i - 1][j - 1] + !same});
            if (i > 1 && j > 1 && small(one[i - 1]) == small(other[j - 2]) &&
                small(one[i - 2]) == small(other[j - 1]))
                far[i][j] = std::min(far[i][j], far[i - 2][j - 2] + 1);
        }
    return far[one.size()][other.size()];
}

}  // namespace

std::string nearest(std::string_view typed, const std::vector<std::string> &words)
{
    std::string best;
    if (typed.size() > kLongest)
        return best;
    std::size_t least = std::max<std::size_t>(typed.size() / 3, 1) + 1;
    for (const std::string &word : words)
        if (word.size() <= kLongest && word.size() > 1)
            if (const std::size_t count = mistakes(typed, word); count < least && count < word.size()) {
                least = count;
                best = word;
            }
    return best;
}

std::string didYouMean(std::string_view typed, const std::vector<std::string> &words)
{
    const std::string word = nearest(typed, words);
    return word.empty() ? "" : "; did you mean " + word + "?";
}

}  // namespace riders::io
