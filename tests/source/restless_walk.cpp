#include "source/restless_walk.h"

#include <algorithm>
#include <filesystem>
#include <memory>

#include "source/ktAnnoDlg.h"
#include "source/ktCustomDlg.h"
#include "source/ktFreqDlg.h"
#include "play/script.h"
#include "source/popup.h"
#include "standardfile/file_dialog.h"
#include "toolbox/host/folders.h"
#include "user/front_dialog.h"
#include "user/hand.h"

namespace fs = std::filesystem;
namespace sf = toolbox::standardfile;

namespace restless {
namespace {

enum { kSpotItem = 6 };
enum { kQuestion = 16132, kSave = 16399, kRemove = 16400, kImport = 16401 };

bool isFileDialog(int dialogID)
{
    return dialogID == kSave || dialogID == kRemove || dialogID == kImport;
}

// The user must not leave the walk's folder, outside of which files are not the test's.
bool isElsewhere()
{
    auto state = sf::state();
    std::string here = fs::current_path();
    return state && (state->folder.string() + "/").rfind(here + "/", 0) != 0;
}

std::string quoted(const std::string &text)
{
    std::string word = "\"";
    for (char letter : text) {
        if (letter == '"' || letter == '\\')
            word += '\\';
        word += letter == '\n' ? 'n' : letter;
    }
    return word + "\"";
}

bool canPress(int item)
{
    try {
        toolbox::user::pressableMiddleOf(item);
        return true;
    } catch (const toolbox::user::Problem &) {
        return false;
    }
}

// The popup at the item of the dialog, nil if there is none.
Handle popupAt(int dialogID, int item)
{
    const Handle settings[] = {gFreqPopInfo, gAnglePopInfo, gSpotPopInfo,
                               gFlatPopInfo, gAnnoPopInfo,  gErrorPopInfo};
    if (dialogID == kCustomDialogID && item >= 4 && item <= 9)
        return settings[item - 4];
    if (dialogID == kAnnoDialogID && (item == 6 || item == 7))
        return item == 6 ? gAnnoFontPopInfo : gAnnoSizePopInfo;
    return nullptr;
}

int itemsOf(Handle popup)
{
    return CountMItems(PopupRecord(popup)->menu);
}

std::vector<std::string> filesToChoose()
{
    std::vector<std::string> names;
    if (auto state = sf::state(); state && !state->saving)
        for (const sf::Row &row : state->rows)
            if (!row.isFolder && row.selectable)
                names.push_back(row.linuxName);
    return names;
}

bool contains(const std::vector<std::string> &names, const std::string &wanted)
{
    return std::find(names.begin(), names.end(), wanted) != names.end();
}

class Walker {
public:
    Walker(unsigned seed, int events, bool faults) : random_(seed), left_(events), faults_(faults) {}

    std::optional<std::string> next(int dialogID)
    {
        if (left_ <= 0)
            return std::nullopt;
        --left_;
        if (dialogID == 0)
            return below(5) ? "command 0" : "command 1";
        if (isFileDialog(dialogID) && isElsewhere())
            return "cancel-file";
        if (below(12) == 0)
            return anywhere();
        return inDialog(dialogID);
    }

private:
    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
    std::string oneOf(const Lines &lines)
    {
        return lines[static_cast<std::size_t>(below(static_cast<int>(lines.size())))];
    }
    static std::string number(int value) { return std::to_string(value); }

    std::string anywhere()
    {
        switch (below(faults_ ? 4 : 3)) {
        case 0:
            return "depth " + oneOf({"1", "2", "4", "8", "32"});
        case 1:
            return "wait " + number(below(60));
        case 2:
            return "clipboard " + quoted(text());
        default:
            return "fail " +
                   oneOf({"create", "open", "close", "read", "write", "getEOF", "setEOF", "setFPos", "remove",
                          "rename", "getFInfo", "setFInfo", "flushVol", "openResFile", "createResFile",
                          "findFolder", "any"}) +
                   " " + number(1 + below(6)) + " " +
                   oneOf({"-34", "-36", "-39", "-43", "-44", "-45", "-46", "-47", "-48", "-50", "-61", "-120"});
        }
    }

    std::string inDialog(int dialogID)
    {
        if (dialogID == kCustomDialogID)
            return below(15) == 0 ? leaving()
                   : below(4)     ? choice(dialogID, below(3) ? 4 + below(6) : kSpotItem)
                                  : anything();
        if (dialogID == kFreqDialogID)
            return below(6) == 0 ? leaving() : below(3) ? typing(number(below(1100))) : anything();
        if (dialogID == kAnnoDialogID && below(4) == 0)
            return below(2) ? leaving() : choice(dialogID, 6 + below(2));
        if (dialogID == kAnnoDialogID)
            return below(2) ? typing(text()) : anything();
        if (isFileDialog(dialogID))
            return inFileDialog(dialogID);
        if (dialogID == kQuestion && below(3))
            return "press 1";
        return below(4) ? wayOut(dialogID) : anything();
    }

    std::string inFileDialog(int dialogID)
    {
        Lines files = filesToChoose();
        if (below(4) == 0)
            return anything();
        if (below(6) == 0)
            return "cancel-file";
        if (dialogID == kImport && below(2) && contains(files, "Star dot"))
            return oneOf({"open \"Star dot\"", "open \"Plain dot\""});
        if (dialogID == kSave)
            return "save " +
                   quoted(oneOf({"Film", "Film", "Käse", "x:y", "Plates/Black", std::string(70, 'x'), "Plates",
                                 "Letter"})) +
                   (below(3) ? "" : " keep");
        return files.empty() ? key() : "open " + quoted(oneOf(files));
    }

    std::string leaving() { return oneOf({"press 1", "press 1", "press 2", "key return", "key escape"}); }

    std::string choice(int dialogID, int item)
    {
        Handle popup = popupAt(dialogID, item);
        if (!popup || below(12) == 0)
            return "leave " + number(item);
        int count = itemsOf(popup);
        return "choose " + number(item) + " " + number(below(3) ? 1 + below(count) : count);
    }

    std::string typing(const std::string &what)
    {
        if (below(3))
            return key();
        left_ -= static_cast<int>(what.size());
        return "type " + quoted(what);
    }

    std::string anything()
    {
        switch (below(4)) {
        case 0:
            return "click " + number(below(640)) + " " + number(below(480));
        case 1:
        case 2:
            return key();
        default:
            if (int item = 1 + below(16); canPress(item))
                return "press " + number(item);
            return canPress(1) ? "press 1" : key();
        }
    }

    std::string key()
    {
        const Lines keys = {"return", "enter", "escape", "tab",    "backspace", "left", "right", "up",
                            "down",   "home",  "end",    "delete", "space",     "x",    "c",     "v",
                            "v",      ".",     ",",      "0",      "1",         "9",    "a",     "é"};
        std::string line = "key " + oneOf(keys);
        if (below(4) == 0)
            line += " with " + oneOf({"command", "command", "command", "shift", "option"});
        return line;
    }

    std::string text()
    {
        const Lines letters = {"0", "1", "2", "5", "9",  "0", ".",  ",", "a",
                               "Z", " ", "(", ")", "\\", "é", "\n", "\""};
        std::string all;
        for (int length = below(8) ? below(8) : below(300); length > 0; --length)
            all += oneOf(letters);
        return all;
    }

    std::mt19937 random_;
    int left_;
    bool faults_;
};

// Whether the line can be carried out with what is in front.
bool fits(const riders::play::ScriptLine &line, int dialogID)
{
    const std::string &verb = line.words[0];
    bool always = verb == "fail" || verb == "depth" || verb == "wait" || verb == "clipboard";
    if (always || dialogID == 0 || verb == "command")
        return always || (dialogID == 0 && verb == "command");
    if (isFileDialog(dialogID) && isElsewhere())
        return verb == "cancel-file";
    if (verb == "press")
        return canPress(std::stoi(line.words[1]));
    if (verb == "choose" || verb == "leave") {
        Handle popup = popupAt(dialogID, std::stoi(line.words[1]));
        return popup && (verb == "leave" || std::stoi(line.words[2]) <= itemsOf(popup));
    }
    if (verb == "save")
        return dialogID == kSave;
    if (verb == "cancel-file")
        return isFileDialog(dialogID);
    return verb != "open" || contains(filesToChoose(), line.words[1]);
}

}  // namespace

Source walking(unsigned seed, int events, bool faults)
{
    auto walker = std::make_shared<Walker>(seed, events, faults);
    return [walker](int dialogID) { return walker->next(dialogID); };
}

Source repeating(Lines lines)
{
    auto rest = std::make_shared<Lines>(lines.rbegin(), lines.rend());
    return [rest](int dialogID) -> std::optional<std::string> {
        while (!rest->empty()) {
            std::string line = rest->back();
            rest->pop_back();
            if (fits(riders::play::splitScript(line).front(), dialogID))
                return line;
        }
        return std::nullopt;
    };
}

std::string wayOut(int dialogID)
{
    if (isFileDialog(dialogID))
        return "cancel-file";
    if (dialogID == sf::replaceAlert)
        return "press 2";
    if (dialogID == kCustomDialogID || dialogID == kFreqDialogID || dialogID == kAnnoDialogID)
        return "key escape";
    return dialogID == kQuestion ? "press 5" : "press 1";
}

namespace {

Lines without(const Lines &lines, std::size_t from, std::size_t count)
{
    Lines fewer = lines;
    const auto first = fewer.begin() + static_cast<std::ptrdiff_t>(from);
    fewer.erase(first, first + static_cast<std::ptrdiff_t>(std::min(count, lines.size() - from)));
    return fewer;
}

}  // namespace

// Larger parts first. What is left can still have steps that need each other, as those that open a dialog and
// close it: of few lines every part is tried.
Lines shrunk(Lines lines, const std::function<bool(const Lines &)> &fails)
{
    constexpr std::size_t kFew = 12;
    for (std::size_t size = lines.size() / 2; size > 0; size = size > kFew ? size / 2 : size - 1)
        for (std::size_t at = 0; at < lines.size();) {
            const Lines fewer = without(lines, at, size);
            if (fails(fewer))
                lines = fewer;
            else
                at += size > kFew ? size : 1;
        }
    return lines;
}

}  // namespace restless
