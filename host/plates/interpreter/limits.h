// What each run of the interpreter may use up.
#pragma once

namespace riders::plates {

struct InterpreterLimits {
    int secondsAPage = 300;  // it is ended when a page takes longer
    int megabytes = 2048;    // of memory
    int pages = 100000;      // a job with more is ended
};

}  // namespace riders::plates
