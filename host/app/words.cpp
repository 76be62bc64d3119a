#include "app/words.h"

#include "app/dialog_items.h"
#include "io/plain_text.h"
#include "toolbox/bigendian.h"
#include "toolbox/host/menu_bar.h"
#include "toolbox/host/text.h"
#include "toolbox/resources.h"
#include "toolbox/system.h"

namespace riders::app {
namespace {

constexpr int16_t kStringList = 1000;
constexpr int16_t kProblemAlert = 1010, kNoteAlert = 1012;

// Both kinds of template begin with the bounds.
struct Bounds {
    BigInt16 top, left, bottom, right;
};

// Nil when there is none.
Bounds *boundsOf(ResType type, int id)
{
    Handle resource = GetResource(type, static_cast<int16_t>(id));
    return resource ? reinterpret_cast<Bounds *>(*resource) : nullptr;
}

// Alerts appear where their resource says.
void center(int16_t alert)
{
    Point corner = centered('ALRT', alert);
    Bounds *bounds = boundsOf('ALRT', alert);
    if (!bounds)
        return;
    bounds->bottom = static_cast<int16_t>(corner.v + bounds->bottom - bounds->top);
    bounds->right = static_cast<int16_t>(corner.h + bounds->right - bounds->left);
    bounds->top = corner.v;
    bounds->left = corner.h;
}

}  // namespace

std::string words(Words which, const std::vector<std::string> &parts)
{
    Str255 text;
    GetIndString(text, kStringList, static_cast<int16_t>(which));
    std::string all = toolbox::utf8FromPascal(text);
    for (size_t at = 0; (at = all.find('^', at)) != all.npos;) {
        const auto part = static_cast<size_t>(at + 1 < all.size() ? all[at + 1] - '0' : -1);
        const std::string with = part < parts.size() ? parts[part] : "";
        all.replace(at, 2, with);
        at += with.size();
    }
    return all;
}

std::string inPlainWords(std::string problem, const std::filesystem::path &folder)
{
    const std::string prefix = folder.string() + "/";
    for (size_t at; !folder.empty() && (at = problem.find(prefix)) != problem.npos;)
        problem.erase(at, prefix.size());
    return problem;
}

Point centered(ResType type, int id)
{
    Rect display = qd.screenBits.bounds;
    display.top = static_cast<int16_t>(display.top + toolbox::menuBarHeight);
    Bounds *bounds = boundsOf(type, id);
    if (!bounds)
        return {display.top, display.left};
    int freeHeight = display.bottom - display.top - (bounds->bottom - bounds->top);
    int freeWidth = display.right - display.left - (bounds->right - bounds->left);
    return {static_cast<int16_t>(display.top + freeHeight / 3),
            static_cast<int16_t>(display.left + freeWidth / 2)};
}

static void setText0(const std::string &text)
{
    Str255 shown, empty = {0};
    toolbox::setPascal(shown, toolbox::romanFromUtf8Lossy(io::plainText(text)));
    ParamText(shown, empty, empty, empty);
}

static Boolean questionFilter(DialogPtr alert, EventRecord *event, int16_t *hit)
{
    *hit = buttonForKey(*event, ok, cancel);
    return *hit != 0 && pressByKey(alert, *hit);
}

bool ask(Question question, const std::string &text)
{
    const auto alert = static_cast<int16_t>(question);
    setText0(text);
    center(alert);
    return NoteAlert(alert, questionFilter) == ok;
}

void showNote(const std::string &text)
{
    setText0(text);
    center(kNoteAlert);
    NoteAlert(kNoteAlert, nullptr);
}

void showProblem(const std::string &text)
{
    setText0(text);
    SysBeep(1);
    center(kProblemAlert);
    StopAlert(kProblemAlert, nullptr);
}

}  // namespace riders::app
