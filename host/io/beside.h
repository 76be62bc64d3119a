// What a program gives besides the lines that it writes, taken while it runs.
#pragma once

namespace riders::io {

class Beside {
public:
    virtual ~Beside() = default;
    // What to wait for until there is something to take; -1 while there is nothing to wait for.
    virtual int descriptor() const = 0;
    // Called when the descriptor can be read or its other end is closed, and not before every line that the
    // program wrote earlier has been taken. Takes some of what there is, not more than a moment's work at a time;
    // true where that is progress. The time it takes is not the program's. What it throws ends the program.
    virtual bool take() = 0;
    // True where the program has to wait until something has been taken.
    virtual bool isFarBehind() const { return false; }
    // The program has ended: takes all that is left.
    virtual void ended() = 0;
};

}  // namespace riders::io
