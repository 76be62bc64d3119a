#include "app/ask_file.h"

#include "toolbox/host/folders.h"
#include "toolbox/host/standardfile_folder.h"
#include "toolbox/host/text.h"
#include "toolbox/standardfile.h"

namespace fs = std::filesystem;

namespace riders::app {
namespace {

enum { jobDialog = 1001, ridersDialog = 1002, saveDialog = 1003 };
constexpr int16_t kAllTypes = -1;

fs::path chosen(const SFReply &reply)
{
    return reply.good ? toolbox::folders::pathOf(reply.vRefNum, 0, reply.fName) : fs::path();
}

fs::path askToOpen(int dialog, int16_t typeCount, const OSType *types)
{
    const Str255 none = {0};
    SFReply reply;
    SFPGetFile(centered('DLOG', dialog), none, nullptr, typeCount, types, nullptr, &reply,
               static_cast<int16_t>(dialog), nullptr);
    return chosen(reply);
}

}  // namespace

fs::path askForJob()
{
    return askToOpen(jobDialog, kAllTypes, nullptr);
}

fs::path askForRiders()
{
    const OSType text = 'TEXT';
    return askToOpen(ridersDialog, 1, &text);
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
