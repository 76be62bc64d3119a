// SFPPutFile: a name to save under.
#include <algorithm>
#include <string>
#include <utility>

#include "files/directory.h"
#include "files/names.h"
#include "standardfile/file_dialog.h"
#include "standardfile/folders_used.h"
#include "standardfile/save_place.h"
#include "textedit/keys.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/text.h"

namespace fs = std::filesystem;

namespace toolbox::standardfile {
namespace {

constexpr std::int16_t promptItem = 3, nameItem = 7;
constexpr std::size_t longestName = 63;

// The keys in the question before replacing: Escape and Command-period keep the
// file, Return and Enter press the default button.
Boolean questionFilter(DialogPtr alert, EventRecord *event, int16_t *hit)
{
    if (event->what != keyDown)
        return false;
    auto character = static_cast<std::uint8_t>(event->message & charCodeMask);
    if (isCancelKey(character, event->modifiers))
        *hit = cancel;
    else if (isAcceptKey(character))
        *hit = reinterpret_cast<DialogPeek>(alert)->aDefItem;
    else
        return false;
    flashItem(alert, *hit);
    return true;
}

class SaveDialog : public FileDialog {
public:
    SaveDialog(std::int16_t dialogID, Point where, DlgHookProcPtr hook, ModalFilterProcPtr filter,
               ConstStr255Param prompt, ConstStr255Param originalName)
        : FileDialog(dialogID, where, {2, nameItem, 8, 9}, hook, filter), prompt_(prompt), originalName_(originalName)
    {
    }

    // Where the file is to be saved, and under what name.
    const std::string &chosenName() const { return chosenName_; }
    std::int16_t workingDirectory() const { return workingDirectory_; }

protected:
    std::vector<Row> rowsOf(const fs::path &folder) const override
    {
        std::vector<Row> rows;
        for (const files::FolderEntry &entry : files::listFolder(folder, files::FolderOrder::foldersFirst,
                                                                   files::FolderTypes::leftOut))
            rows.push_back({entry.macName, entry.linuxName, entry.isFolder, entry.isFolder, entry.type});
        return rows;
    }
    void prepare() override;
    bool acceptPossible() const override { return !name().empty(); }
    bool accept() override;
    bool key(std::uint8_t character, std::uint16_t modifiers, std::uint32_t when) override;

private:
    std::string name() const
    {
        Str255 text;
        GetIText(item(nameItem), text);
        return std::string(pascalView(text));
    }
    bool nameGood(const std::string &name);
    bool mayReplace(const std::string &name);
    bool goElsewhere();

    ConstStr255Param prompt_, originalName_;
    std::string chosenName_;
    std::int16_t workingDirectory_ = 0;
};

void SaveDialog::prepare()
{
    SetIText(item(promptItem), prompt_);
    if (proposedFile().empty()) {
        SetIText(item(nameItem), originalName_);
        return SelIText(dialog(), nameItem, 0, 32767);
    }
    Str255 name;
    const std::string proposed = folders::macName(folder(), proposedFile().filename());
    setPascal(name, proposed);
    SetIText(item(nameItem), name);
    SelIText(dialog(), nameItem, 0, static_cast<std::int16_t>(std::min(proposed.rfind('.'), proposed.size())));
}

bool SaveDialog::nameGood(const std::string &name)
{
    if (name.find_first_of(":/") != name.npos)
        return refuse(nameHasSeparator), false;
    if (name.size() > longestName)
        return refuse(nameTooLong), false;
    if (!files::nameUsable(name))
        return refuse(nameNotUsable, name), false;
    return true;
}

bool SaveDialog::mayReplace(const std::string &name)
{
    Str255 text, empty = {0};
    setPascal(text, name);
    std::error_code ignored;
    if (fs::is_directory(folders::pathOf(workingDirectory_, 0, text), ignored))
        return refuse(nameIsFolder, name), false;
    if (!files::nameTaken(folder(), name))
        return true;
    ParamText(text, empty, empty, empty);
    return CautionAlert(replaceAlert, &questionFilter) == ok;
}

// To where the host wants the file, if it has such wishes.
bool SaveDialog::goElsewhere()
{
    fs::path file;
    if (!savePlace() || files::pathFor(folder(), chosenName_, files::Match::literal, file) != noErr)
        return true;
    const SavePlace place = savePlace()(file);
    if (!place.refusal.empty())
        return refuseInWords(romanFromUtf8Lossy(place.refusal)), false;
    if (place.folder.empty())
        return true;
    const std::optional<std::int16_t> number = folders::workingDirectory(place.folder);
    if (!number)
        return refuse(folderIsGone, files::folderName(place.folder)), false;
    workingDirectory_ = *number;
    chosenName_ = folders::macName(place.folder, file.filename());
    return true;
}

bool SaveDialog::accept()
{
    chosenName_ = name();
    return !chosenName_.empty() && nameGood(chosenName_) && folderThere(workingDirectory_) &&
           mayReplace(chosenName_) && goElsewhere();
}

// Typing goes to the name; only Command keys are handled here.
bool SaveDialog::key(std::uint8_t character, std::uint16_t modifiers, std::uint32_t)
{
    if (!(modifiers & cmdKey) || textedit::movesCaret(character))
        return false;
    DlgCommandKey(dialog(), character);
    return true;
}

}  // namespace

}  // namespace toolbox::standardfile

using namespace toolbox;
using namespace toolbox::standardfile;

extern "C" void SFPPutFile(Point where, ConstStr255Param prompt, ConstStr255Param originalName, DlgHookProcPtr hook,
                           SFReply *reply, int16_t dialogID, ModalFilterProcPtr filter)
{
    static const Str255 none = {0};
    *reply = SFReply{};
    if (proposedFile().has_parent_path())
        rememberFolder(proposedFile().parent_path());
    SaveDialog dialog(dialogID, where, hook, filter, prompt ? prompt : none, originalName ? originalName : none);
    if (!dialog.run())
        return;
    rememberFolder(dialog.folder());
    reply->good = true;
    reply->vRefNum = dialog.workingDirectory();
    setPascal(reply->fName, dialog.chosenName(), longestName);
}
