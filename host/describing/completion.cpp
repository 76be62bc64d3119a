#include "describing/completion.h"

#include <strings.h>

#include <algorithm>

namespace riders::describing {
namespace {

// The words before the one to be completed, understood as far as they can be.
class Read {
public:
    explicit Read(const CommandWords &program) : command_(&program) {}

    void take(const std::string &word)
    {
        if (awaited_ != nullptr)
            awaited_ = nullptr;
        else if (!optionsEnded_ && word == "--")
            optionsEnded_ = true;
        else if (!optionsEnded_ && word.size() > 1 && word[0] == '-')
            takeOption(word);
        else
            takeOperand(word);
    }

    const CommandWords &command() const { return *command_; }
    // The option whose value comes next, or null.
    const OptionWords *awaited() const { return awaited_; }
    const OptionWords *nextOperand() const
    {
        return operands_ < command_->operands.size() ? &command_->operands[operands_] : nullptr;
    }
    bool mayBeCommand() const { return operands_ == 0 && !optionsEnded_; }
    bool mayBeOption() const { return !optionsEnded_; }
    bool canStillUse(const OptionWords &option) const
    {
        return option.repeated || std::find(used_.begin(), used_.end(), &option) == used_.end();
    }
    const OptionWords *optionNamed(const std::string &name) const
    {
        for (const OptionWords &option : command_->options)
            if (std::find(option.names.begin(), option.names.end(), name) != option.names.end())
                return &option;
        return nullptr;
    }

private:
    void takeOption(const std::string &word)
    {
        const std::size_t equals = word.find('=');
        const OptionWords *option = optionNamed(word.substr(0, equals));
        if (option == nullptr)
            return;
        used_.push_back(option);
        if (equals == word.npos && !option->value.empty())
            awaited_ = option;
    }

    void takeOperand(const std::string &word)
    {
        for (const CommandWords &command : command_->commands)
            if (mayBeCommand() && command.name == word) {
                *this = Read(command);
                return;
            }
        ++operands_;
    }

    const CommandWords *command_;
    const OptionWords *awaited_ = nullptr;
    std::vector<const OptionWords *> used_;
    std::size_t operands_ = 0;
    bool optionsEnded_ = false;
};

// As far as its first clause: there is one line for it.
std::string inShort(const std::string &about)
{
    return about.substr(0, std::min(about.find(';'), about.find(". ")));
}

class Collected {
public:
    explicit Collected(std::string begun, std::string before = {})
        : begun_(std::move(begun)), before_(std::move(before))
    {
    }

    void add(const Candidate &candidate)
    {
        if (candidate.word.starts_with(begun_))
            completion_.candidates.push_back(candidate);
    }

    // Values are taken in upper and lower case.
    void addValue(const Candidate &candidate)
    {
        if (strncasecmp(candidate.word.c_str(), begun_.c_str(), begun_.size()) == 0)
            completion_.candidates.push_back({before_ + candidate.word, candidate.about});
    }

    void addValuesOf(const OptionWords &option, const std::vector<KnownWords> &known)
    {
        completion_.kind = valueKindOf(option);
        for (const std::string &choice : option.choices)
            addValue({choice, {}});
        for (const KnownWords &words : known)
            if (words.of == completion_.kind.of)
                for (const Candidate &candidate : words.list())
                    addValue(candidate);
    }

    const Completion &completion() const { return completion_; }

private:
    std::string begun_, before_;
    Completion completion_;
};

Completion completeOption(const Read &read, const std::string &begun, const std::vector<KnownWords> &known)
{
    if (const std::size_t equals = begun.find('='); equals != begun.npos) {
        Collected values(begun.substr(equals + 1), begun.substr(0, equals + 1));
        if (const OptionWords *option = read.optionNamed(begun.substr(0, equals)))
            values.addValuesOf(*option, known);
        return values.completion();
    }
    Collected names(begun);
    for (const OptionWords &option : read.command().options)
        if (read.canStillUse(option))
            for (const std::string &name : option.names)
                names.add({name, inShort(option.about)});
    return names.completion();
}

}  // namespace

Completion complete(const CommandWords &program, const std::vector<std::string> &typed,
                    const std::vector<KnownWords> &known)
{
    Read read(program);
    for (std::size_t at = 0; at + 1 < typed.size(); ++at)
        read.take(typed[at]);
    const std::string begun = typed.empty() ? "" : typed.back();
    Collected found(begun);
    if (read.awaited() != nullptr) {
        found.addValuesOf(*read.awaited(), known);
        return found.completion();
    }
    if (read.mayBeOption() && begun.starts_with('-'))
        return completeOption(read, begun, known);
    if (const OptionWords *operand = read.nextOperand())
        found.addValuesOf(*operand, known);
    if (read.mayBeCommand())
        for (const CommandWords &command : read.command().commands)
            found.add({command.name, inShort(command.about)});
    return found.completion();
}

std::string completionLines(const Completion &completion)
{
    std::string lines;
    for (const Candidate &candidate : completion.candidates)
        lines += candidate.word + "\t" + candidate.about + "\n";
    if (!completion.kind.files)
        return lines + (completion.kind.folders ? ":folders\n" : ":none\n");
    lines += ":files";
    for (const std::string &ending : completion.kind.endings)
        lines += " " + ending;
    return lines + "\n";
}

}  // namespace riders::describing
