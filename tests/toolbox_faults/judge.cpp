#include "toolbox_faults/judge.h"

#include <algorithm>

namespace toolbox_faults {
namespace {

bool has(const Files &files, const std::string &name, const std::string &bytes)
{
    auto found = files.find(name);
    return found != files.end() && found->second == bytes;
}

bool isAnywhere(const Files &files, const std::string &bytes)
{
    return std::any_of(files.begin(), files.end(), [&](const auto &file) { return file.second == bytes; });
}

bool isWholeRidersFile(const std::string &bytes)
{
    return bytes.starts_with("%!Zu3_Riders") && bytes.find("%Zu3_RidersEnd") != std::string::npos;
}

bool isScratch(const std::string &name)
{
    return name.find("KTTemp") != std::string::npos;
}

// Where deleting or renaming fails there is no way to clear up.
bool hindersClearing(const Fault &fault)
{
    return fault.call == toolbox::FileCall::remove || fault.call == toolbox::FileCall::rename;
}

bool saidMore(const Outcome &is, const Usual &usual)
{
    return !is.err.empty() || std::any_of(is.said.begin(), is.said.end(), [&](const std::string &words) {
        const auto times = [&](const Outcome &outcome) {
            return std::count(outcome.said.begin(), outcome.said.end(), words);
        };
        return times(is) > times(usual.after);
    });
}

void judgeEnd(const Outcome &is, std::vector<std::string> &wrong)
{
    if (is.status < 0)
        wrong.push_back(is.how);
    else if (is.status > 1)
        wrong.push_back("exit code " + std::to_string(is.status));
    const auto lines = std::count(is.err.begin(), is.err.end(), '\n');
    if (is.status == 1 && (lines < 1 || is.err.size() < 10))
        wrong.push_back("failed without a word");
    if (lines > 1)
        wrong.push_back("more than one line");
}

// A letter that found no memory was followed by a beep, and the file has the name that was then shown.
bool isNamedAsShown(const Outcome &is, const Usual &usual, const std::string &bytes)
{
    return isWholeRidersFile(bytes) && saidMore(is, usual);
}

std::string whatIsWrongWith(const std::string &name, const std::string &bytes, const Usual &usual,
                            bool scratchAllowed)
{
    if (has(usual.filesBefore, name, bytes) || has(usual.after.files, name, bytes))
        return {};
    if (isScratch(name))
        return scratchAllowed ? "" : "left behind: " + name;
    const auto &made = usual.after.made;
    if (!usual.filesBefore.contains(name) && !usual.after.files.contains(name) &&
        std::find(made.begin(), made.end(), '"' + name + '"') == made.end())
        return "left behind: " + name;
    return isWholeRidersFile(bytes) ? "" : name + " is neither the old nor the new one";
}

void judgeFiles(const Outcome &is, const Usual &usual, const Fault &fault, std::vector<std::string> &wrong)
{
    for (const auto &[name, bytes] : is.files)
        if (std::string what = whatIsWrongWith(name, bytes, usual, hindersClearing(fault));
            !what.empty() && (isScratch(name) || !isNamedAsShown(is, usual, bytes)))
            wrong.push_back(what);
    for (const auto &[name, bytes] : usual.filesBefore) {
        const bool kept = is.files.contains(name) || (hindersClearing(fault) && isAnywhere(is.files, bytes));
        if (usual.after.files.contains(name) && !kept)
            wrong.push_back(name + " is lost");
    }
}

// The settings that the host puts in place; those that the plug-in writes itself may be lost.
void judgeSettings(const Outcome &is, const Usual &usual, std::vector<std::string> &wrong)
{
    if (is.settings != usual.settingsBefore && is.settings != usual.after.settings)
        wrong.push_back("the saved settings are neither the old nor the new ones");
    if (is.status == 0 && is.settings != usual.after.settings)
        wrong.push_back("exit code 0, and the settings are not saved");
}

// Where its settings cannot be found the plug-in takes the standard ones, and says nothing.
bool hidesTheSettings(const Fault &fault)
{
    return fault.call == toolbox::FileCall::openResFile || fault.call == toolbox::FileCall::findFolder;
}

void judgeWords(const Outcome &is, const Usual &usual, const Scenario &scenario, const Fault &fault,
                std::vector<std::string> &wrong)
{
    if (is.status != 0 || is.files == usual.after.files || (!scenario.byHost && hidesTheSettings(fault)))
        return;
    if (scenario.byHost)
        wrong.push_back("exit code 0 with a wrong result");
    else if (!saidMore(is, usual))
        wrong.push_back("a wrong result, and nothing said");
}

// What the host keeps itself is there after a usual run, too.
bool isUsual(const std::string &leak, const Usual &usual)
{
    const auto counts = [](const std::string &text) { return text.substr(0, text.find(" after ")); };
    return std::any_of(usual.after.leaks.begin(), usual.after.leaks.end(),
                       [&](const std::string &other) { return counts(other) == counts(leak); });
}

}  // namespace

std::vector<std::string> wrongIn(const Outcome &is, const Usual &usual, const Scenario &scenario,
                                 const Fault &fault)
{
    std::vector<std::string> wrong;
    judgeEnd(is, wrong);
    judgeFiles(is, usual, fault, wrong);
    judgeWords(is, usual, scenario, fault, wrong);
    if (scenario.byHost)
        judgeSettings(is, usual, wrong);
    for (const std::string &leak : is.leaks)
        if (!isUsual(leak, usual))
            wrong.push_back(leak);
    return wrong;
}

}  // namespace toolbox_faults
