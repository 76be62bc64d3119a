#include "make/answers.h"

#include "make/menu_match.h"
#include "toolbox/dialogs.h"
#include "toolbox/files.h"
#include "toolbox/host/dialog_text.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/text.h"

namespace riders::make {
namespace {

// The plug-in's dialogs and the items a user touches in them.
enum { settingsDialog = 16300, valueDialog = 16301, annotationDialog = 16302 };
enum { saveDialog = 16399, spotFileDialog = 16401, importQuestion = 16132 };
enum { okButton = 1 };
enum { frequencyPopup = 4, anglePopup = 5, spotPopup = 6, flatnessPopup = 7, annotationPopup = 8, errorPopup = 9 };
enum { fontPopup = 6 };
enum { leftToPrinter = 1, errorHandlerOn = 2 };

// What to type so that the file gets its name: the name itself, or, if no
// dialog accepts it, the stand-in that the File Manager keeps for it.
std::string typedName(const std::filesystem::path &output)
{
    std::filesystem::path file = std::filesystem::absolute(output);
    return toolbox::utf8FromRoman(toolbox::folders::macName(file.parent_path(), file.filename().string()));
}

bool isText(const std::filesystem::path &file)
{
    auto folder = toolbox::folders::workingDirectory(file.parent_path());
    Str255 name;
    toolbox::setPascal(name, toolbox::folders::macName(file.parent_path(), file.filename().string()), 63);
    FInfo info{};
    return folder && GetFInfo(name, *folder, &info) == noErr && info.fdType == 'TEXT';
}

// Why the open dialog would not offer the file; empty when it does.
std::string whyNotOffered(const std::filesystem::path &file)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(file, ignored))
        return file.string() + " is no ordinary file";
    for (const std::filesystem::path &part : file)
        if (part.string().starts_with('.'))
            return file.string() + " is hidden or in a hidden folder, where no dialog finds it";
    return isText(file) ? "" : file.string() + " is no text file";
}

// As Standard File knows it: a link to a folder is followed, one to a file is not.
std::filesystem::path asListed(const std::filesystem::path &file)
{
    std::filesystem::path absolute = std::filesystem::absolute(file);
    return std::filesystem::weakly_canonical(absolute.parent_path()) / absolute.filename();
}

int last(const std::vector<std::string> &items)
{
    return static_cast<int>(items.size());
}

}  // namespace

Answers::Answers(toolbox::ScriptedUser &user, const MakeRequest &request) : user_(user), request_(request)
{
    user_.onSurprise([this](int) { return surprised(); });
}

// Everything is chosen, even what was not named: a saved setting must not get
// into a file that was made without asking for it.
void Answers::queue()
{
    user_.in(settingsDialog);
    chooseValue(frequencyPopup, request_.frequency);
    chooseValue(anglePopup, request_.angle);
    chooseSpot();
    chooseValue(flatnessPopup, request_.flatness);
    chooseAnnotation();
    user_.choose(errorPopup, request_.errorHandler ? errorHandlerOn : leftToPrinter);
    user_.press(okButton);
    user_.in(saveDialog);
    user_.answerSave(typedName(request_.output));
    user_.in(0);
    user_.atHost([] {});
}

void Answers::chooseValue(int popupItem, const std::optional<std::string> &value)
{
    if (!value) {
        user_.choose(popupItem, leftToPrinter);
        return;
    }
    user_.chooseWhere(popupItem, [this, value = *value](const std::vector<std::string> &items) {
        if (int item = itemWithValue(items, value))
            return item;
        user_.in(settingsDialog);
        user_.insertNext([this, value] {
            user_.in(valueDialog);
            paste(value);
            user_.press(okButton);
        });
        return last(items);
    });
}

void Answers::chooseSpot()
{
    if (!request_.spot) {
        user_.choose(spotPopup, leftToPrinter);
        return;
    }
    user_.chooseWhere(spotPopup, [this](const std::vector<std::string> &items) {
        if (int item = itemWithName(items, *request_.spot))
            return item;
        std::error_code ignored;
        if (!std::filesystem::exists(*request_.spot, ignored))
            return notOffered("there is no dot shape and no file \"" + *request_.spot + "\"", items);
        if (std::string why = whyNotOffered(asListed(*request_.spot)); !why.empty())
            return giveUp("the spot function cannot be imported: " + why);
        user_.insertNext([this] { importSpot(); });
        return last(items);
    });
}

void Answers::importSpot()
{
    user_.in(importQuestion);
    user_.press(okButton);
    user_.in(spotFileDialog);
    user_.answerOpen(asListed(*request_.spot));
}

void Answers::chooseAnnotation()
{
    if (!request_.annotation) {
        user_.choose(annotationPopup, leftToPrinter);
        return;
    }
    user_.chooseWhere(annotationPopup, [this](const std::vector<std::string> &items) {
        user_.insertNext([this] { fillAnnotation(); });
        return last(items);
    });
}

void Answers::fillAnnotation()
{
    user_.in(annotationDialog);
    paste(*request_.annotation);
    if (request_.font)
        user_.chooseWhere(fontPopup, [this](const std::vector<std::string> &items) {
            int item = itemWithName(items, *request_.font);
            return item ? item : notOffered("there is no font \"" + *request_.font + "\"", items);
        });
    if (request_.size) {
        user_.key("tab");
        paste(*request_.size);
    }
    user_.press(okButton);
}

// Pasted, not typed: a key that a field refuses only beeps and would leave
// another value than the one asked for; a pasted text is judged as a whole.
void Answers::paste(const std::string &text)
{
    user_.putOnClipboard(text);
    user_.key("v", cmdKey);
}

int Answers::notOffered(const std::string &words, const std::vector<std::string> &items)
{
    std::string offered;
    for (const std::string &item : items)
        if (isValue(item))
            offered += (offered.empty() ? "" : ", ") + item;
    return giveUp(words + "; there are " + offered);
}

// Releases the menu without a choice, and closes what is open.
int Answers::giveUp(const std::string &words)
{
    refuse(words);
    closeDialogs();
    return 0;
}

// The plug-in shows a message instead of going on: keeps its words, presses OK.
bool Answers::surprised()
{
    refuse(toolbox::frontDialogText());
    user_.key("return");
    closeDialogs();
    return true;
}

void Answers::refuse(const std::string &words)
{
    if (refusal_.empty())
        refusal_ = words;
    user_.forgetRest();
    user_.in(0);
}

void Answers::closeDialogs()
{
    user_.then([this] {
        if (!FrontWindow())
            return;
        user_.key("escape");
        closeDialogs();
    });
}

}  // namespace riders::make
