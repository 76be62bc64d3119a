// riders_measure RIDERS [TABLE...]: prints every table, or those named, each
// figure beside another measured in the same run.
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>

#include "benches.h"
#include "processes.h"
#include "toolbox/host/user.h"

namespace {

struct Table {
    const char *name;
    void (*print)(const std::filesystem::path &riders);
    bool again = true;  // where an aim is missed: whatever else the machine did may have been why
};

const Table tables[] = {
    {"make", measureMake},
    {"apply", measureApply},
    {"dialogs", measureDialogs},
    {"desktop", measureDesktop},
    {"looking", measureLooking},
    {"import", [](const std::filesystem::path &) { measureImport(); }},
    {"proof", measureProof, false},
    {"meter", [](const std::filesystem::path &) { measureMeter(); }},
    {"screen-time", measureScreenTime},
    {"plates-sample", measurePlatesSample, false},
    {"plates", measurePlates, false},
    {"plates-time", measurePlatesTime, false},
    {"screens-sample", measureScreensSample, false},
    {"screens", measureScreens, false},
    {"film-sample", measureFilmSample, false},
    {"film", measureFilm, false},
    {"printer-sample", measurePrinterSample, false},
    {"printer", measurePrinter, false},
    {"loupe-sample", measureLoupeSample, false},
    {"loupe", measureLoupe, false},
    {"film-dots-sample", measureFilmDotsSample, false},
    {"film-dots", measureFilmDots, false},
};

bool known(const char *name)
{
    for (const Table &table : tables)
        if (std::strcmp(table.name, name) == 0)
            return true;
    return false;
}

// Without names all but the samples, which are parts of others.
bool wanted(const Table &table, int names, char **name)
{
    for (int i = 0; i < names; ++i)
        if (std::strcmp(table.name, name[i]) == 0)
            return true;
    return names == 0 && table.print != measureScreensSample && table.print != measurePlatesSample &&
           table.print != measurePlatesTime && table.print != measureFilmDotsSample &&
           table.print != measureFilmSample && table.print != measureLoupeSample && table.print != measureLoupe &&
           table.print != measurePrinterSample && table.print != measurePrinter;
}

void print(const Table &table, const std::filesystem::path &riders)
{
    const int before = missedSoFar();
    table.print(riders);
    if (!table.again || missedSoFar() == before)
        return;
    std::printf("\nMissed, and so measured once more\n");
    table.print(riders);
}

int usage()
{
    std::fprintf(stderr, "usage: riders_measure RIDERS [TABLE...]\ntables:");
    for (const Table &table : tables)
        std::fprintf(stderr, " %s", table.name);
    std::fprintf(stderr, "\n");
    return 2;
}

}  // namespace

int main(int argc, char **argv)
{
    if (argc < 2)
        return usage();
    for (int i = 2; i < argc; ++i)
        if (!known(argv[i]))
            return usage();
    try {
        const std::filesystem::path riders = std::filesystem::absolute(argv[1]);
        for (const Table &table : tables)
            if (wanted(table, argc - 2, argv + 2))
                print(table, riders);
    } catch (const toolbox::ScriptError &error) {
        std::fprintf(stderr, "measure: %s\n", error.message.c_str());
        return 1;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "measure: %s\n", error.what());
        return 1;
    }
    return 0;
}
