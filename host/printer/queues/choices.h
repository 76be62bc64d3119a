// What films of a job are to be like: the choices of a queue, and what a job wants otherwise.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace riders::printer {

// Who makes a choice: the owner of the printer may name files, whoever sends a job may not.
enum class ChosenBy { owner, job };

// A choice that a queue or a job can make.
struct ChoiceKind {
    const char *name;       // in queues
    const char *attribute;  // of a job in IPP; nullptr where jobs cannot choose it
};
const std::vector<ChoiceKind> &choiceKinds();

class Choices {
public:
    // Text as it is written in a queue; empty takes the choice back. Throws io::Refusal where there is no such
    // choice, or not with that value.
    void set(std::string_view name, const std::string &value, ChosenBy by);
    // Empty where nothing is chosen.
    const std::string &get(std::string_view name) const;
    // Those of a job over those of its queue. What no longer fits is dropped: a set of screens takes the place of
    // single ones, and an angle for all plates that of a set.
    Choices over(const Choices &queue) const;
    const std::map<std::string, std::string, std::less<>> &all() const { return chosen_; }
    // As `riders film` takes them.
    std::vector<std::string> arguments() const;
    // For people: "screens offset, dpi 2400".
    std::string inWords() const;

    bool operator==(const Choices &) const = default;

private:
    std::map<std::string, std::string, std::less<>> chosen_;
};

}  // namespace riders::printer
