#include "remaking/settings_record.h"

#include <algorithm>
#include <fstream>
#include <string_view>

#include "io/refusal.h"
#include "toolbox/files.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/text.h"
#include "toolbox/memory.h"
#include "toolbox/resources.h"

namespace fs = std::filesystem;

namespace riders::remaking {
namespace {

constexpr std::size_t kRecordBytes = 444;

// Where things are in the record. Each text has a length byte, and zeros up to its end.
enum At : std::size_t {
    frequencyItem = 32,
    angleItem = 34,
    shapeItem = 36,
    flatnessItem = 38,
    annotationItem = 40,
    errorItem = 42,
    fontItem = 44,
    shapeImported = 49,
    frequencyText = 60,
    angleText = 76,
    flatnessText = 92,
    sizeText = 108,
    shapeName = 124,
    annotationText = 188
};

class Record {
public:
    explicit Record(std::string bytes) : bytes_(std::move(bytes)) {}

    void setItem(At at, std::int16_t item)
    {
        bytes_[at] = static_cast<char>(item >> 8);
        bytes_[at + 1] = static_cast<char>(item & 0xFF);
    }
    void setFlag(At at, bool flag) { bytes_[at] = flag ? 1 : 0; }
    // An empty text leaves what is there.
    void setText(At at, std::size_t bytes, const std::string &text)
    {
        if (text.empty())
            return;
        const std::size_t length = std::min(text.size(), bytes - 1);
        std::string field(bytes, '\0');
        field[0] = static_cast<char>(length);
        bytes_.replace(at, bytes, field.replace(1, length, text, 0, length));
    }
    const std::string &bytes() const { return bytes_; }

private:
    std::string bytes_;
};

std::string filledIn(std::string bytes, const DialogValues &values)
{
    Record record(std::move(bytes));
    record.setItem(frequencyItem, values.frequency);
    record.setItem(angleItem, values.angle);
    record.setItem(shapeItem, values.shape);
    record.setItem(flatnessItem, values.flatness);
    record.setItem(annotationItem, values.annotation);
    record.setItem(errorItem, values.errorHandler);
    if (values.font != 0)
        record.setItem(fontItem, values.font);
    record.setFlag(shapeImported, !values.shapeBody.empty());
    record.setText(frequencyText, 16, values.frequencyText);
    record.setText(angleText, 16, values.angleText);
    record.setText(flatnessText, 16, values.flatnessText);
    record.setText(sizeText, 16, values.sizeText);
    record.setText(shapeName, 64, values.shapeName);
    record.setText(annotationText, 256, values.annotationText);
    return record.bytes();
}

[[noreturn]] void refuse()
{
    throw io::Refusal("the settings dialog cannot be opened on these choices: its settings are not as expected");
}

// Into the file that is there: the plug-in has made it, and opens no other in its place.
void writeDataFork(const fs::path &file, const std::string &bytes)
{
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << bytes;
    out.close();
    if (!out)
        refuse();
}

// The resource fork of a file, open for writing as long as this exists; the current one is as before after that.
class OpenFork {
public:
    explicit OpenFork(const fs::path &file) : before_(CurResFile())
    {
        const auto folder = toolbox::folders::workingDirectory(file.parent_path());
        Str255 name;
        toolbox::setPascal(name, toolbox::folders::macName(file.parent_path(), file.filename().string()), 63);
        fork_ = folder ? HOpenResFile(*folder, 0, name, fsRdWrPerm) : -1;
        if (fork_ == -1)
            refuse();
    }
    ~OpenFork()
    {
        CloseResFile(fork_);
        UseResFile(before_);
    }
    OpenFork(const OpenFork &) = delete;
    OpenFork &operator=(const OpenFork &) = delete;

private:
    std::int16_t before_, fork_ = -1;
};

}  // namespace

void putIntoSettings(const fs::path &settings, const DialogValues &values)
{
    writeDataFork(settings, values.shapeBody);
    const OpenFork fork(settings);
    const Handle stored = Get1Resource('STUF', 128);
    if (!stored || GetHandleSize(stored) != static_cast<std::int32_t>(kRecordBytes))
        refuse();
    const std::string record = filledIn(std::string(*stored, kRecordBytes), values);
    std::copy(record.begin(), record.end(), *stored);
    ChangedResource(stored);
    WriteResource(stored);
    if (ResError() != noErr)
        refuse();
}

}  // namespace riders::remaking
