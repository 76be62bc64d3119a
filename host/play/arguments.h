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

    // What is wanted, in words, is for the message when it is not there.
    std::string word(const char *what);
    int number(const char *what, int least, int most);
    // What the Toolbox counts in 16 bits, from 1.
    int ordinal(const char *what) { return number(what, 1, INT16_MAX); }
    // A place on the screens: horizontal, then vertical.
    Point point();
    // Takes nothing: whether the next word is all digits. In quotes they are a
    // text.
    bool numberFollows() const;
    // Takes nothing: whether a point stands there, not modifiers or nothing.
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
