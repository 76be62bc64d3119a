#include "app/menus.h"

#include "app/words.h"
#include "toolbox/host/text.h"

namespace riders::app {
namespace {

enum Menu : int16_t {
    programMenu = 128,
    fileMenu,
    editMenu,
    pluginMenu,
    displayMenu,
    jobMenu,
    viewMenu,
    recentMenu
};
enum FileItem : int16_t { openItem = 1, closeItem, quitItem = 4 };
enum JobItem : int16_t { addItem = 1, takeOutItem, saveItem = 4, proofItem, printItem };
enum ViewItem : int16_t { nextItem = 1, previousItem, largerItem = 4, smallerItem, firstDpiItem = 7 };
constexpr int kDpis[] = {300, 600, 720, 1200, 1270, 1440, 2400, 2540, 3600};
enum DisplayItem : int16_t { fullScreenItem = 1, firstDepthItem = 3 };
constexpr int kDepths[] = {1, 2, 4, 8, 32};

void insert(int16_t id)
{
    MenuHandle menu = GetMenu(id);
    if (!menu)
        throw plugin::PluginError("menu " + std::to_string(id) + " is missing from the program's resources");
    InsertMenu(menu, 0);
}

void enable(MenuHandle menu, int16_t item, bool enabled)
{
    if (enabled)
        EnableItem(menu, item);
    else
        DisableItem(menu, item);
}

void setText(const std::string &utf8, Str255 text)
{
    toolbox::setPascal(text, toolbox::romanFromUtf8Lossy(utf8));
}

// As it stands, without AppendMenu's notation.
void append(MenuHandle menu, const std::string &utf8)
{
    Str255 text;
    setText("x", text);
    AppendMenu(menu, text);
    setText(utf8, text);
    SetItem(menu, CountMItems(menu), text);
}

}  // namespace

Menus::Menus(const std::vector<plugin::MenuCommand> &commands, const std::optional<DisplaySettings> &display)
    : commands_(commands), display_(display)
{
    insert(programMenu);
    insert(fileMenu);
    insert(editMenu);
    addCommands();
    insert(jobMenu);
    insert(viewMenu);
    insert(recentMenu);
    if (display_)
        insert(displayMenu);
    DrawMenuBar();
}

// Under the heading of the first one: a plug-in has only one heading. After them what the program itself does with
// a riders file.
void Menus::addCommands()
{
    if (commands_.empty())
        return;
    Str255 text;
    setText(commands_.front().group, text);
    MenuHandle menu = NewMenu(pluginMenu, text);
    if (!menu)
        return;
    for (const plugin::MenuCommand &command : commands_)
        append(menu, command.text);
    setText("-", text);
    AppendMenu(menu, text);
    append(menu, words(Words::change));
    append(menu, words(Words::makeAgain));
    InsertMenu(menu, 0);
}

void Menus::update(const Offers &offers)
{
    enable(GetMHandle(fileMenu), closeItem, offers.job.has_value());
    const Offers::Job job = offers.job.value_or(Offers::Job());
    MenuHandle jobs = GetMHandle(jobMenu), view = GetMHandle(viewMenu);
    enable(jobs, addItem, job.add);
    enable(jobs, takeOutItem, job.takeOut);
    enable(jobs, saveItem, job.save);
    enable(jobs, proofItem, job.output);
    enable(jobs, printItem, job.output);
    enable(view, nextItem, job.next);
    enable(view, previousItem, job.previous);
    enable(view, largerItem, offers.job.has_value());
    enable(view, smallerItem, offers.job.has_value());
    for (std::size_t i = 0; i < std::size(kDpis); ++i) {
        enable(view, static_cast<int16_t>(firstDpiItem + i), offers.job.has_value());
        CheckItem(view, static_cast<int16_t>(firstDpiItem + i), job.dpi == kDpis[i]);
    }
    if (MenuHandle riders = GetMHandle(pluginMenu)) {
        enable(riders, static_cast<int16_t>(firstOfRiders() + 1), offers.riders);
        enable(riders, static_cast<int16_t>(firstOfRiders() + 2), offers.riders);
    }
    if (offers.recent != recent_)
        updateRecent(offers.recent);
    if (!display_)
        return;
    MenuHandle display = GetMHandle(displayMenu);
    CheckItem(display, fullScreenItem, display_->fullScreen());
    for (std::size_t i = 0; i < std::size(kDepths); ++i)
        CheckItem(display, static_cast<int16_t>(firstDepthItem + i), display_->depth() == kDepths[i]);
}

// The divider after the plug-in's commands.
int Menus::firstOfRiders() const
{
    return static_cast<int>(commands_.size()) + 1;
}

// A menu's items cannot be taken away, but it can be loaded anew.
void Menus::updateRecent(const std::vector<std::string> &names)
{
    Str255 text;
    MenuHandle menu = GetMHandle(recentMenu);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (static_cast<std::size_t>(CountMItems(menu)) <= i)
            append(menu, names[i]);
        setText(names[i], text);
        SetItem(menu, static_cast<int16_t>(i + 1), text);
    }
    recent_ = names;
}

Command Menus::chosen(int32_t choice) const
{
    using Kind = Command::Kind;
    const int16_t item = LoWord(choice);
    switch (HiWord(choice)) {
    case programMenu:
        return {Kind::about};
    case fileMenu:
        return {item == openItem ? Kind::open : item == closeItem ? Kind::close : Kind::quit};
    case pluginMenu:
        if (item > firstOfRiders())
            return {item == firstOfRiders() + 1 ? Kind::change : Kind::makeAgain};
        return {Kind::plugin, commands_.at(static_cast<std::size_t>(item - 1)).number};
    case jobMenu:
        return {item == addItem       ? Kind::add
                : item == takeOutItem ? Kind::takeOut
                : item == saveItem    ? Kind::save
                : item == proofItem   ? Kind::proof
                                      : Kind::print};
    case viewMenu:
        if (item >= firstDpiItem)
            return {Kind::dpi, kDpis[item - firstDpiItem]};
        if (item >= largerItem)
            return {Kind::enlarge, item == largerItem ? 1 : -1};
        return {Kind::page, item == nextItem ? 1 : -1};
    case recentMenu:
        return {Kind::recent, item - 1};
    case displayMenu:
        if (item == fullScreenItem)
            return {Kind::fullScreen};
        return {Kind::depth, kDepths[item - firstDepthItem]};
    default:
        return {};
    }
}

}  // namespace riders::app
