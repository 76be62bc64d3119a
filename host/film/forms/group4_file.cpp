#include "film/forms/group4_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "io/bytes.h"
#include "io/refusal.h"
#include "plates/files/group4.h"

namespace fs = std::filesystem;

namespace riders::film {

namespace {

constexpr std::size_t kPiece = std::size_t(1) << 18;

io::OpenFile newFile(const fs::path &file)
{
    const int descriptor = open(file.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600);
    if (descriptor < 0)
        io::refuseErrno(file, errno);
    return {descriptor, file};
}

class Group4File : public PlateWriter {
public:
    explicit Group4File(const PlateSheet &sheet)
        : path_(sheet.file), file_(newFile(path_)), encoder_(sheet.columns)
    {
    }

    Group4File(const Group4File &) = delete;
    Group4File &operator=(const Group4File &) = delete;
    ~Group4File() override
    {
        if (!whole_)
            unlink(path_.c_str());
    }

    void row(const std::uint8_t *bits) override
    {
        encoder_.row(bits);
        if (encoder_.bytes().size() >= kPiece)
            write();
    }

    void end() override
    {
        encoder_.end();
        write();
        file_.close();
        whole_ = true;
    }

private:
    void write()
    {
        io::writeAll(file_, encoder_.bytes());
        encoder_.taken();
    }

    const fs::path path_;
    io::OpenFile file_;
    plates::Group4Encoder encoder_;
    bool whole_ = false;
};

}  // namespace

std::unique_ptr<PlateWriter> group4File(const PlateSheet &sheet)
{
    return std::make_unique<Group4File>(sheet);
}

}  // namespace riders::film
