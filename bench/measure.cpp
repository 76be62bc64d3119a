// riders_measure RIDERS: prints every table, each figure beside something else
// taken in the same run.
#include <cstdio>
#include <exception>
#include <filesystem>

#include "benches.h"
#include "toolbox/host/user.h"

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: riders_measure RIDERS\n");
        return 2;
    }
    try {
        std::filesystem::path riders = std::filesystem::absolute(argv[1]);
        measureMake(riders);
        measureApply(riders);
        measureDialogs(riders);
        measureImport();
        measureProof(riders);
    } catch (const toolbox::ScriptError &error) {
        std::fprintf(stderr, "measure: %s\n", error.message.c_str());
        return 1;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "measure: %s\n", error.what());
        return 1;
    }
    return 0;
}
