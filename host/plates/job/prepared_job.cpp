#include "plates/job/prepared_job.h"

#include <errno.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

#include "apply/apply.h"
#include "io/bytes.h"
#include "io/output.h"
#include "io/refusal.h"
#include "io/stream.h"

namespace fs = std::filesystem;

namespace riders::plates {
namespace {

constexpr size_t kAtOnce = 256 << 10;

size_t littleEndian(std::string_view bytes, size_t at)
{
    size_t value = 0;
    for (size_t i = 0; i < 4; ++i)
        value |= static_cast<size_t>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
    return value;
}

// The PostScript of an EPS in its binary wrapper; the job itself if it has none.
fs::path unwrapped(const fs::path &job, const fs::path &folder)
{
    const io::OpenFile in = io::openInput(job);
    const std::string head = headOf(in);
    if (!isWrapped(head))
        return fs::absolute(job);
    const auto damaged = [&job] {
        return io::Refusal(job.string() + ": is an EPS file whose wrapper is damaged");
    };
    if (head.size() < 12)
        throw damaged();
    const size_t start = littleEndian(head, 4), length = littleEndian(head, 8);
    std::error_code error;
    const uintmax_t size = fs::file_size(job, error);
    if (error || start > size || length > size - start)
        throw damaged();
    if (lseek(in.descriptor(), static_cast<off_t>(start), SEEK_SET) < 0)
        io::refuseErrno(job, errno);
    std::string text(length, '\0');
    text.resize(io::readFully(in, text.data(), length));
    if (!text.starts_with("%!"))
        throw damaged();
    io::writeFile(folder / "unwrapped.eps", text);
    return folder / "unwrapped.eps";
}

// Adds the riders file; a refusal names the job as the user does.
void applyNamed(const apply::ApplyRequest &request, const fs::path &name)
{
    try {
        apply::applyRiders(request);
    } catch (const io::Refusal &refusal) {
        std::string text = refusal.message;
        const std::string given = request.job;
        if (text.starts_with(given + ":"))
            text.replace(0, given.size(), name);
        throw io::Refusal(text);
    }
}

// The riders file as a separate program, for a job that has no place for it.
fs::path aloneAsProgram(const fs::path &riders, const fs::path &folder)
{
    io::writeFile(folder / "empty.ps", "%!PS\n");
    apply::applyRiders({riders, folder / "empty.ps", folder / "riders.ps"});
    return folder / "riders.ps";
}

}  // namespace

bool comesOnce(const fs::path &path)
{
    return fs::exists(path) && !fs::is_regular_file(path) && !fs::is_directory(path);
}

fs::path readableAgain(const fs::path &path, const fs::path &file, int seconds,
                       const std::function<void(std::string_view head)> &check)
{
    if (path.empty() || !comesOnce(path))
        return path;
    io::Stream in(path, seconds);
    io::Output out(file);
    std::string bytes(kAtOnce, '\0');
    size_t size = 0;
    for (size_t got = 1; size < kJobHead && got != 0; size += got)
        got = in.read(bytes.data() + size, bytes.size() - size);
    check(std::string_view(bytes).substr(0, std::min(size, kJobHead)));
    for (; size != 0; size = in.read(bytes.data(), bytes.size()))
        io::writeAll(out.file(), std::string_view(bytes).substr(0, size));
    out.finish();
    return file;
}

PreparedJob prepareJob(const fs::path &job, const fs::path &riders, const fs::path &folder, int seconds)
{
    fs::path file =
        readableAgain(job, folder / "job", seconds, [&](std::string_view head) { kindOfHead(head, job); });
    PreparedJob prepared{kindOfJob(file, job), job, {}};
    if (prepared.kind == JobKind::pdf) {
        if (!riders.empty())
            prepared.files.push_back(aloneAsProgram(riders, folder));
        prepared.files.push_back(fs::absolute(file));
        return prepared;
    }
    file = unwrapped(file, folder);
    if (!riders.empty()) {
        applyNamed({riders, file, folder / "applied.ps"}, job);
        file = folder / "applied.ps";
    }
    prepared.files.push_back(file);
    return prepared;
}

}  // namespace riders::plates
