// Read before every file of the tree that ./mutate builds. Its sources hold many changes at once, each as
// `(woven::changed(7) ? CHANGED : ORIGINAL)`; at most one of them is in force in a run.
#pragma once
#include <fcntl.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace woven {

struct Run {
    int change = -1;
    // One byte for each change, kept in a file: children share it, and nothing is lost when a process is killed.
    char *reached = nullptr;
    int changes = 0;

    Run()
    {
        if (const char *number = getenv("RIDERS_CHANGE"))
            change = atoi(number);
        const char *path = getenv("RIDERS_CHANGES_REACHED");
        const int file = path ? open(path, O_RDWR | O_CLOEXEC) : -1;
        struct stat about;
        if (file < 0)
            return;
        if (fstat(file, &about) == 0 && about.st_size > 0) {
            void *bytes = mmap(nullptr, about.st_size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
            if (bytes != MAP_FAILED) {
                reached = static_cast<char *>(bytes);
                changes = static_cast<int>(about.st_size);
            }
        }
        close(file);
    }
};

// Whether this change is in force; notes that a test came here.
inline bool changed(int number)
{
    static const Run run;
    if (number < run.changes)
        run.reached[number] = 1;
    return number == run.change;
}

} // namespace woven
