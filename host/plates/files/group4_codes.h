// The code words of CCITT group 4 (ITU-T T.6, and T.4 for runs).
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace riders::plates {

struct CodeWord {
    std::uint32_t bits = 0;
    int length = 0;
};

constexpr CodeWord codeWord(std::string_view digits)
{
    CodeWord word;
    for (const char digit : digits) {
        word.bits = word.bits << 1 | static_cast<std::uint32_t>(digit - '0');
        ++word.length;
    }
    return word;
}

// How a row differs from the one above.
inline constexpr CodeWord kPass = codeWord("0001"), kHorizontal = codeWord("001"),
                          kEndOfBlock = codeWord("000000000001000000000001");
// A change is so far to the right of the one above, from 3 to the left on.
inline constexpr std::array<CodeWord, 7> kVertical = {codeWord("0000010"), codeWord("000010"), codeWord("010"),
                                                      codeWord("1"),       codeWord("011"),    codeWord("000011"),
                                                      codeWord("0000011")};

inline constexpr std::uint32_t kLongestRun = 2560;  // in one word; longer ones take several
// Runs of white and of black pixels: 0 to 63, then the words for 64, 128 and so on, to kLongestRun, which one for
// 0 to 63 follows.
inline constexpr int kShortRuns = 64, kRunWords = kShortRuns + kLongestRun / 64;
using RunCodes = std::array<CodeWord, kRunWords>;
extern const std::array<RunCodes, 2> kRunCodes;  // white, black

}  // namespace riders::plates
