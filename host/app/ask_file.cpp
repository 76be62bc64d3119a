#include "app/ask_file.h"

#include <utility>

#include "app/dialog_items.h"
#include "app/file_kinds.h"
#include "app/focus.h"
#include "toolbox/host/folders.h"
#include "toolbox/host/listed_files.h"
#include "toolbox/host/standardfile_folder.h"
#include "toolbox/host/text.h"
#include "toolbox/keys.h"
#include "toolbox/standardfile.h"

namespace fs = std::filesystem;

namespace riders::app {
namespace {

enum { jobDialog = 1001, ridersDialog = 1002, saveDialog = 1003 };
constexpr int16_t kAllTypes = -1;
constexpr int16_t allFilesSwitch = 10;

fs::path chosen(const SFReply &reply)
{
    return reply.good ? toolbox::folders::pathOf(reply.vRefNum, 0, reply.fName) : fs::path();
}

// The switch that lists all files, in the dialog that is open. It has the focus after Tab.
struct Kinds {
    toolbox::ListedFilesProc wanted;
    bool all = false, focus = false;
};
Kinds kinds;

void drawSwitch(DialogPtr dialog)
{
    setCheckbox(dialog, allFilesSwitch, kinds.all);
    drawFocus(dialog, allFilesSwitch, kinds.focus);
}

void listWanted()
{
    toolbox::setListedFiles(kinds.all ? nullptr : kinds.wanted);
}

int16_t switchHook(int16_t item, DialogPtr dialog)
{
    if (item != allFilesSwitch)
        return item;
    kinds.all = !kinds.all;
    drawSwitch(dialog);
    listWanted();
    toolbox::listFilesAgain();
    return 0;
}

// Space belongs to names while the switch has not the focus.
Boolean switchFilter(DialogPtr dialog, EventRecord *event, int16_t *hit)
{
    if (event->what != keyDown || event->modifiers & cmdKey)
        return false;
    const auto character = static_cast<int>(event->message & charCodeMask);
    if (character == ' ' && kinds.focus) {
        *hit = allFilesSwitch;
        return true;
    }
    if (character != toolbox::key::tab)
        return false;
    kinds.focus = !kinds.focus;
    drawSwitch(dialog);
    *hit = 0;
    return true;
}

fs::path askToOpen(int dialog, toolbox::ListedFilesProc wanted)
{
    const Str255 none = {0};
    SFReply reply;
    kinds = {std::move(wanted)};
    listWanted();
    SFPGetFile(centered('DLOG', dialog), none, nullptr, kAllTypes, nullptr, switchHook, &reply,
               static_cast<int16_t>(dialog), switchFilter);
    toolbox::setListedFiles({});
    return chosen(reply);
}

}  // namespace

fs::path askForJob()
{
    return askToOpen(jobDialog, isJobFile);
}

fs::path askForRiders()
{
    return askToOpen(ridersDialog, isRidersFile);
}

fs::path askWhereToSave(Words prompt, const fs::path &proposed)
{
    constexpr std::size_t longestName = 63;
    Str255 promptText, name;
    toolbox::setPascal(promptText, toolbox::romanFromUtf8Lossy(words(prompt)));
    toolbox::setPascal(name, toolbox::romanFromUtf8Lossy(proposed.filename().string()).substr(0, longestName));
    toolbox::setStandardFileFolder(proposed.parent_path());
    SFReply reply;
    SFPPutFile(centered('DLOG', saveDialog), promptText, name, nullptr, &reply, saveDialog, nullptr);
    return chosen(reply);
}

}  // namespace riders::app
