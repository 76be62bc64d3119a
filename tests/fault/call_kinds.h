// The kinds of system calls that the program makes, and how each can fail.
#pragma once

#include <string>
#include <vector>

// How a call fails: with an error, or by moving only a part of what it was to move.
struct Failure {
    const char *name;
    int error;  // 0: a short count
};

struct CallKind {
    long number;
    const char *name;
    std::vector<Failure> failures;
};

const std::vector<CallKind> &callKinds();

// Calls that cannot fail, or whose failure means nothing to a program that is right.
bool neverFails(long call);

// True where folders cannot be removed without such calls.
bool removes(long call);

// True where a failed call has still done its work: a file that could not be closed is closed.
bool isDoneAllTheSame(long call);
