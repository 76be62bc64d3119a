// A queue of the printer: a set of choices, and where its films go.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "printer/queues/choices.h"

namespace riders::printer {

struct Queue {
    std::string name;  // letters, digits, - and _
    Choices choices = {};
    std::filesystem::path folder = {};  // of its films; empty: the printer's
    std::string printer = {};           // a queue of CUPS on which films are printed instead of kept
    bool hold = false;                  // films wait until somebody has looked at them and releases them
    bool look = false;                  // a page to look at is made with the films

    // Whether a page to look at is made.
    bool isLookedAt() const { return look || hold; }
};

inline constexpr const char *kUsualQueue = "films";
inline constexpr std::size_t kMostQueues = 100;

// NAME, or NAME:CHOICE=VALUE,..., where a part without = is a flag, or goes on with the value before it. Throws
// io::Refusal.
Queue queueFromText(std::string_view text);
// [queue.NAME] tables of TOML; `file` is named in messages. Throws io::Refusal.
std::vector<Queue> queuesFromToml(std::string_view bytes, const std::string &file);
// Throws io::Refusal where the name is no name, or no film could be made of any job.
void checkQueue(const Queue &queue);
// The table of such a queue.
std::string tomlOf(const Queue &queue);
// All of them, each name once; the usual one where there is none. Throws io::Refusal.
std::vector<Queue> queuesFrom(const std::vector<std::string> &texts, const std::filesystem::path &file);

}  // namespace riders::printer
