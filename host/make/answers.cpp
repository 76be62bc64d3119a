#include "make/answers.h"

#include <algorithm>
#include <array>
#include <fstream>

#include "io/nearest.h"
#include "make/menu_match.h"
#include "screens/shapes.h"
#include "toolbox/dialogs.h"
#include "toolbox/files.h"
#include "toolbox/host/dialog_text.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/standardfile_folder.h"
#include "toolbox/host/text.h"
#include "toolbox/windows.h"

namespace riders::make {
namespace {

// The plug-in's dialogs and the items a user touches in them.
enum { settingsDialog = 16300, valueDialog = 16301, annotationDialog = 16302 };
enum { saveDialog = 16399, spotFileDialog = 16401, settingsWarning = 16131, importQuestion = 16132 };
enum { okButton = 1 };
enum { frequencyPopup = 4, anglePopup = 5, spotPopup = 6, flatnessPopup = 7, annotationPopup = 8, errorPopup = 9 };
enum { fontPopup = 6 };
enum { leftToPrinter = 1, errorHandlerOn = 2 };

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
        return file.string() + " is not an ordinary file";
    for (const std::filesystem::path &part : file)
        if (part.string().starts_with('.'))
            return file.string() + " is hidden or in a hidden folder, where no dialog finds it";
    return isText(file) ? "" : file.string() + " is not a text file";
}

// The plug-in looks for the end of the first line in as many bytes, and its words do not say which end it wants.
std::string hintOnFirstLine(const std::filesystem::path &spot)
{
    char start[96];
    std::ifstream file(spot, std::ios::binary);
    file.read(start, sizeof start);
    const std::string_view read(start, static_cast<std::size_t>(file.gcount()));
    if (read.find("%!KT1_Spot") == read.npos || read.find('\r') != read.npos || read.find('\n') == read.npos)
        return {};
    return " (the first line of " + spot.string() +
           " ends in a line feed; it must end in a carriage return: "
           "riders shapes FILE --fix makes a copy in which it does)";
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

// Escape closes these; what else there is says something, and waits for its default button.
bool isClosedByEscape(int dialogID)
{
    constexpr std::array<int, 5> own = {settingsDialog, valueDialog, annotationDialog, saveDialog, spotFileDialog};
    return std::find(own.begin(), own.end(), dialogID) != own.end();
}

// Without memory a field keeps what it has, and only a beep says so.
std::string currentField()
{
    DialogPtr dialog = FrontWindow();
    int16_t type;
    Handle item = nullptr;
    Rect box;
    Str255 text;
    GetDItem(dialog, static_cast<int16_t>(reinterpret_cast<DialogPeek>(dialog)->editField + 1), &type, &item,
             &box);
    GetIText(item, text);
    return std::string(toolbox::pascalView(text));
}

std::string asPasted(const std::string &text)
{
    std::string pasted = toolbox::romanFromUtf8Lossy(text);
    for (std::size_t at; (at = pasted.find("\r\n")) != pasted.npos;)
        pasted.erase(at, 1);
    std::replace(pasted.begin(), pasted.end(), '\n', '\r');
    return pasted;
}

Point placeOf(WindowPtr window)
{
    GrafPtr before;
    GetPort(&before);
    SetPort(window);
    Point place{window->portRect.top, window->portRect.left};
    LocalToGlobal(&place);
    SetPort(before);
    return place;
}

}  // namespace

Answers::Answers(toolbox::ScriptedUser &user, const MakeRequest &request, std::filesystem::path made,
                 std::filesystem::path spot)
    : user_(user), request_(request), made_(std::move(made)), spot_(std::move(spot))
{
    user_.onSurprise([this](int dialogID) { return surprised(dialogID); });
}

// Everything is chosen, even what was not named: a saved setting must not get
// into a file that was made without asking for it.
void Answers::queue()
{
    user_.in(settingsDialog);
    user_.thenInDialog([this] { takeToMiddle(); });
    chooseValue(frequencyPopup, request_.frequency);
    chooseValue(anglePopup, request_.angle);
    chooseSpot();
    chooseValue(flatnessPopup, request_.flatness);
    chooseAnnotation();
    user_.choose(errorPopup, request_.errorHandler ? errorHandlerOn : leftToPrinter);
    user_.thenInDialog([this] { putBack(); });
    user_.key("return");
    user_.in(saveDialog);
    user_.answerSave(made_.filename());
    user_.in(0);
    user_.atHost([] {});
}

// A person may have left the dialog where this display does not reach. The place is kept with the settings, so it
// gets that place back.
void Answers::takeToMiddle()
{
    WindowPtr dialog = FrontWindow();
    place_ = placeOf(dialog);
    const Rect &size = dialog->portRect, &display = qd.screenBits.bounds;
    MoveWindow(dialog, static_cast<int16_t>((display.right - (size.right - size.left)) / 2),
               static_cast<int16_t>((display.bottom - (size.bottom - size.top)) / 2), false);
}

// The next file dialog is the one for saving, whatever was opened before.
void Answers::putBack()
{
    MoveWindow(FrontWindow(), place_.h, place_.v, false);
    toolbox::setStandardFileFolder(made_.parent_path());
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
        if (!std::filesystem::exists(spot_, ignored))
            return notOffered("there is no dot shape and no file \"" + *request_.spot + "\"", items,
                              ", and those of `riders shapes`" + screens::shapeMeant(*request_.spot));
        if (std::string why = whyNotOffered(asListed(spot_)); !why.empty())
            return giveUp("the spot function cannot be imported: " + why);
        user_.insertNext([this] { importSpot(); });
        return last(items);
    });
}

void Answers::importSpot()
{
    const std::filesystem::path spot = asListed(spot_);
    toolbox::setStandardFileFolder(spot.parent_path());
    user_.in(importQuestion);
    user_.press(okButton);
    user_.in(spotFileDialog);
    user_.answerOpen(spot.filename());
    importing_ = true;
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
            return item ? item
                        : notOffered("there is no font \"" + *request_.font + "\"", items,
                                     io::didYouMean(*request_.font, items));
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
    user_.thenInDialog([this, text] {
        if (currentField() != asPasted(text))
            refuse("there is not enough memory for \"" + text + "\"");
    });
}

int Answers::notOffered(const std::string &words, const std::vector<std::string> &items, const std::string &more)
{
    std::string offered;
    for (const std::string &item : items)
        if (isValue(item))
            offered += (offered.empty() ? "" : ", ") + item;
    return giveUp(words + "; there are " + offered + more);
}

// Releases the menu without a choice, and closes what is open.
int Answers::giveUp(const std::string &words)
{
    refuse(words);
    return 0;
}

// A dialog that was not expected, or one that is still open when there is nothing more to do: keeps what the
// plug-in says, and closes it. Called again for the next one.
bool Answers::surprised(int dialogID)
{
    constexpr int mostDialogs = 50;
    if (++closed_ > mostDialogs)
        return false;
    if (dialogID == settingsWarning && refusal_.empty()) {
        passWarning();
        return true;
    }
    if (refusal_.empty() || !isClosedByEscape(dialogID))
        refuse(toolbox::frontDialogText() + (importing_ ? hintOnFirstLine(spot_) : ""));
    user_.key(isClosedByEscape(dialogID) ? "escape" : "return");
    return true;
}

// What is chosen does not depend on what was saved, so this is no reason to stop.
void Answers::passWarning()
{
    warning_ = toolbox::frontDialogText();
    user_.insertNext([this] {
        user_.in(settingsWarning);
        user_.key("return");
        user_.in(settingsDialog);
    });
}

// All that is said counts, but nothing twice.
void Answers::refuse(const std::string &words)
{
    if (refusal_.find(words) == std::string::npos)
        refusal_ += (refusal_.empty() ? "" : "; ") + words;
    user_.forgetRest();
    user_.in(0);
}

}  // namespace riders::make
