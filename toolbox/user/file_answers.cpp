#include "user/file_answers.h"

#include <algorithm>

#include "standardfile/file_dialog.h"
#include "toolbox/events.h"
#include "toolbox/host/text.h"
#include "user/front_dialog.h"

namespace fs = std::filesystem;

namespace toolbox::user {
namespace {

standardfile::State stateOf(bool saving)
{
    auto state = standardfile::state();
    if (!state || state->saving != saving)
        throw Problem{saving ? "no save dialog is open" : "no open dialog is open"};
    if (frontDialog() != state->dialog)
        throw Problem{"dialog " + std::to_string(frontDialogID()) + " is in front of the file dialog"};
    return *state;
}

bool isWithin(const fs::path &folder, const fs::path &above)
{
    auto [mismatch, ignored] = std::mismatch(above.begin(), above.end(), folder.begin(), folder.end());
    return mismatch == above.end();
}

std::string nameShown(const standardfile::State &state)
{
    std::int16_t type;
    Handle item;
    Rect box;
    Str255 text;
    GetDItem(state.dialog, state.nameItem, &type, &item, &box);
    GetIText(item, text);
    return std::string(pascalView(text));
}

int firstShown(const standardfile::State &state)
{
    for (std::size_t i = 0; i < state.rowRects.size(); ++i)
        if (!EmptyRect(&state.rowRects[i]))
            return static_cast<int>(i);
    return 0;
}

}  // namespace

AnswerFile::AnswerFile(const fs::path &path) : fileName_(path.filename())
{
    std::error_code error;
    if (path.has_parent_path())
        folder_ = fs::weakly_canonical(fs::absolute(path.parent_path(), error), error);
}

Progress AnswerFile::advance(Hand &hand)
{
    if (goingUp_) {
        goingUp_->advance(hand);
        goingUp_.reset();
        return Progress::more;
    }
    closeOpenMenu(hand);
    standardfile::State state = stateOf(saving());
    if (!folder_.empty() && state.folder != folder_)
        return goTowards(hand, state);
    return answer(hand, state);
}

// Up with the popup to a folder that contains the wanted one, then down with the
// list.
Progress AnswerFile::goTowards(Hand &hand, const standardfile::State &state)
{
    fs::path shared = state.folder;
    int up = 0;
    for (; !isWithin(folder_, shared); shared = shared.parent_path())
        ++up;
    if (up > 0) {
        goingUp_ = std::make_unique<Choose>(standardfile::folderItem,
                                            [up](const std::vector<std::string> &) { return up + 1; });
        goingUp_->advance(hand);
        return Progress::more;
    }
    auto next = std::next(folder_.begin(), std::distance(shared.begin(), shared.end()));
    clickRow(hand, state, *next, 2);
    return Progress::more;
}

bool AnswerFile::clickRow(Hand &hand, const standardfile::State &state, const std::string &linuxName, int clicks)
{
    auto row = std::find_if(state.rows.begin(), state.rows.end(),
                            [&](const standardfile::Row &candidate) { return candidate.linuxName == linuxName; });
    if (row == state.rows.end())
        throw Problem{"there is no \"" + linuxName + "\" in the list of " + state.folder.string()};
    if (!row->selectable)
        throw Problem{"\"" + linuxName + "\" is dimmed in the list of " + state.folder.string()};
    auto index = static_cast<int>(row - state.rows.begin());
    Rect place = state.rowRects[static_cast<std::size_t>(index)];
    // An earlier click must not make this a double-click.
    hand.machine.passTicks(GetDblTime() + 1);
    if (!EmptyRect(&place)) {
        for (int i = 0; i < clicks; ++i)
            hand.clickAt(middle(place));
        return true;
    }
    int first = firstShown(state);
    if (first == lastFirstRow_)
        throw Problem{"the list does not scroll to \"" + linuxName + "\""};
    lastFirstRow_ = first;
    hand.clickAt(middle(index < first ? state.arrowUp : state.arrowDown));
    return false;
}

// Tab selects what is in the field, and typing replaces it. A key that the field does not take would give the file
// another name.
Progress AnswerSave::answer(Hand &hand, const standardfile::State &state)
{
    if (!named_) {
        hand.key("tab");
        hand.type(fileName_);
        named_ = true;
        return Progress::more;
    }
    if (std::string shown = nameShown(state); romanFromUtf8(fileName_) != shown)
        throw Problem{"\"" + fileName_ + "\" cannot be typed: the field shows \"" + utf8FromRoman(shown) + "\""};
    return accept_.advance(hand);
}

Progress AnswerOpen::answer(Hand &hand, const standardfile::State &state)
{
    if (!chosen_) {
        chosen_ = clickRow(hand, state, fileName_, 1);
        return Progress::more;
    }
    return accept_.advance(hand);
}

Progress AnswerReplace::advance(Hand &hand)
{
    if (frontDialogID() != standardfile::replaceAlert)
        return Progress::done;
    return press_.advance(hand);
}

void cancelFile(Hand &hand)
{
    auto state = standardfile::state();
    if (!state || frontDialog() != state->dialog)
        throw Problem{"no save or open dialog is open"};
    closeOpenMenu(hand);
    hand.clickAt(pressableMiddleOf(state->cancelItem));
}

}  // namespace toolbox::user
