// The words of one step after its verb.
#pragma once

#include <cstdint>
#include <string>

#include "play/script.h"
#include "toolbox/types.h"

namespace riders::play {

// Taken one after the other; what does not fit is a toolbox::ScriptError with
// the step's line.
class Arguments {
public:
    explicit Arguments(const ScriptLine &line) : line_(line) {}

    bool more() const { return next_ < line_.words.size(); }

    // `what` says in words what is wanted, for the message when it is missing.
    std::string word(const char *what);
    int number(const char *what, int least, int most);
    // What the Toolbox counts in 16 bits, from 1.
    int ordinal(const char *what) { return number(what, 1, INT16_MAX); }
    // A place on the displays: horizontal, then vertical.
    Point point();
    // Whether the next word is all digits; in quotes they are a text. Takes
    // nothing.
    bool numberFollows() const;
    // Whether a point follows, not modifiers or the end. Takes nothing.
    bool pointFollows() const;
    // Takes the next word if it is this one.
    bool take(const std::string &expected);
    // "with command shift": the rest of the line, when it begins so.
    std::uint16_t modifiers();
    // Nothing more may follow.
    void end();

    [[noreturn]] void fail(const std::string &message);

private:
    const ScriptLine &line_;
    std::size_t next_ = 1;
};

}  // namespace riders::play
