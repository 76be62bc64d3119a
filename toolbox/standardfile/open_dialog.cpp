// SFPGetFile: a file to open.
#include <algorithm>
#include <string>
#include <vector>

#include "files/directory.h"
#include "standardfile/file_dialog.h"
#include "standardfile/folders_used.h"
#include "standardfile/listed_files.h"
#include "standardfile/opened_file.h"
#include "toolbox/host/text.h"

namespace fs = std::filesystem;

namespace toolbox::standardfile {
namespace {

constexpr std::uint32_t typingPause = 60;

class OpenDialog : public FileDialog {
public:
    OpenDialog(std::int16_t dialogID, Point where, DlgHookProcPtr hook, ModalFilterProcPtr filter,
               FileFilterProcPtr fileFilter, std::int16_t typeCount, const OSType *types)
        : FileDialog(dialogID, where, {3, 0, 7, 8}, hook, filter), fileFilter_(fileFilter), allTypes_(typeCount < 0)
    {
        if (!allTypes_ && types)
            types_.assign(types, types + typeCount);
    }

    const Row &chosen() const { return chosen_; }
    std::int16_t workingDirectory() const { return workingDirectory_; }

protected:
    std::vector<Row> rowsOf(const fs::path &folder) const override;
    bool acceptPossible() const override { return list().selected() != nullptr; }
    bool accept() override;
    bool key(std::uint8_t character, std::uint16_t modifiers, std::uint32_t when) override;

private:
    bool wanted(const fs::path &folder, const files::FolderEntry &entry) const;

    FileFilterProcPtr fileFilter_;
    bool allTypes_;
    std::vector<OSType> types_;
    Row chosen_{};
    std::int16_t workingDirectory_ = 0;
    std::string typed_;
    std::uint32_t lastTyped_ = 0;
};

bool OpenDialog::wanted(const fs::path &folder, const files::FolderEntry &entry) const
{
    if (entry.isFolder)
        return true;
    if (!allTypes_ && std::find(types_.begin(), types_.end(), entry.type) == types_.end())
        return false;
    Str255 name;
    setPascal(name, entry.macName);
    if (fileFilter_ && fileFilter_(name))
        return false;
    return !listedFiles() || listedFiles()(folder / entry.linuxName);
}

std::vector<Row> OpenDialog::rowsOf(const fs::path &folder) const
{
    std::vector<Row> rows;
    // The host looks at each file itself.
    const auto types = allTypes_ && listedFiles() ? files::FolderTypes::leftOut : files::FolderTypes::included;
    for (const files::FolderEntry &entry : files::listFolder(folder, files::FolderOrder::foldersFirst, types))
        if (wanted(folder, entry))
            rows.push_back({entry.macName, entry.linuxName, entry.isFolder, true, entry.type});
    return rows;
}

bool OpenDialog::accept()
{
    if (!list().selected() || openSelectedFolder())
        return false;
    chosen_ = *list().selected();
    return folderThere(workingDirectory_);
}

// Typing selects the row that begins with what was typed.
bool OpenDialog::key(std::uint8_t character, std::uint16_t modifiers, std::uint32_t when)
{
    constexpr std::uint8_t firstPrintable = 0x20;
    if (character < firstPrintable || (modifiers & cmdKey))
        return true;
    if (when - lastTyped_ > typingPause)
        typed_.clear();
    lastTyped_ = when;
    typed_ += static_cast<char>(character);
    list().selectNamed(typed_);
    return true;
}

}  // namespace
}  // namespace toolbox::standardfile

using namespace toolbox;
using namespace toolbox::standardfile;

extern "C" void SFPGetFile(Point where, ConstStr255Param, FileFilterProcPtr fileFilter, int16_t typeCount,
                           const OSType *types, DlgHookProcPtr hook, SFReply *reply, int16_t dialogID,
                           ModalFilterProcPtr filter)
{
    *reply = SFReply{};
    OpenDialog dialog(dialogID, where, hook, filter, fileFilter, typeCount, types);
    if (!dialog.run())
        return;
    rememberFolder(dialog.folder());
    rememberOpened({utf8FromRoman(dialog.chosen().name), dialog.folder() / dialog.chosen().linuxName});
    reply->good = true;
    reply->fType = dialog.chosen().type;
    reply->vRefNum = dialog.workingDirectory();
    setPascal(reply->fName, dialog.chosen().name, 63);
}
