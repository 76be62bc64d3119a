// Read before every file of the tree that ./mutate builds. Its sources hold many changes at once, each as
// `(woven::changed(7) ? CHANGED : ORIGINAL)`; at most one of them is in force in a run.
//
// It includes nothing, so that every file sees the names that it asks for and no others; hence the system's calls
// under names of their own.
#pragma once

namespace woven {

char *environment(const char *name) __asm__("getenv");
int number(const char *text) __asm__("atoi");
int openFile(const char *path, int flags, ...) __asm__("open");
long seek(int file, long offset, int whence) __asm__("lseek");
void *map(void *where, unsigned long bytes, int protection, int flags, int file, long offset) __asm__("mmap");
int closeFile(int file) __asm__("close");

struct Run {
    int change = -1;
    // One byte for each change, kept in a file: children share it, and nothing is lost when a process is killed.
    char *reached = nullptr;
    long changes = 0;

    Run()
    {
        constexpr int readWriteCloseOnExec = 02000002, fromEnd = 2, readWrite = 3, shared = 1;
        if (const char *text = environment("RIDERS_CHANGE"))
            change = number(text);
        const char *path = environment("RIDERS_CHANGES_REACHED");
        const int file = path ? openFile(path, readWriteCloseOnExec) : -1;
        if (file < 0)
            return;
        const long size = seek(file, 0, fromEnd);
        void *bytes = size > 0 ? map(nullptr, static_cast<unsigned long>(size), readWrite, shared, file, 0) : nullptr;
        if (size > 0 && bytes != reinterpret_cast<void *>(-1L)) {
            reached = static_cast<char *>(bytes);
            changes = size;
        }
        closeFile(file);
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
