// Any bytes as a job: of a kind or refused; and the PostScript in an EPS file's binary wrapper lies in the file.
#include <cstdint>
#include <cstdlib>
#include <filesystem>

#include "fuzz/memory_file.h"
#include "io/refusal.h"
#include "plates/job/prepared_job.h"

namespace fs = std::filesystem;

namespace {

struct Folder {
    Folder()
    {
        char name[] = "/tmp/riders-fuzz-XXXXXX";
        if (!mkdtemp(name))
            abort();
        path = name;
    }
    ~Folder() { fs::remove_all(path); }
    fs::path path;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const Folder folder;
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    try {
        const riders::plates::JobKind kind = riders::plates::kindOfHead(bytes.substr(0, 1024), "job");
        if (kind != riders::plates::JobKind::eps && !riders::plates::isWrapped(bytes))
            return 0;
        const auto prepared = riders::plates::prepareJob(memoryFile(data, size), {}, folder.path);
        if (prepared.files.size() != 1 || fs::file_size(prepared.files[0]) > size)
            abort();
    } catch (const riders::io::Refusal &) {
    }
    return 0;
}
